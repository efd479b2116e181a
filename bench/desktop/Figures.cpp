#include "Figures.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string_view>

namespace bench {

namespace {

constexpr std::string_view MedianCounter = "MedianMs";

std::string Number(double value, const char* format) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

struct Ratio {
    double Measured = 0.0;
    double Baseline = 0.0;
    double Value() const { return Measured / Baseline; }
};

std::optional<Ratio> RatioOf(const FigureReporter& results, const std::string& measured,
                             const std::string& baseline) {
    const auto m = results.Milliseconds.find(measured);
    const auto b = results.Milliseconds.find(baseline);
    if (m == results.Milliseconds.end() || b == results.Milliseconds.end() || b->second <= 0.0)
        return std::nullopt;
    return Ratio{m->second, b->second};
}

// "0.42 (3.10 / 7.40 ms)", marked when over budget; "-" when not measured.
std::string Cell(const std::optional<Ratio>& ratio, double budget, int& over) {
    if (!ratio) {
        ++over;
        return "not measured";
    }
    const bool holds = ratio->Value() <= budget;
    if (!holds) ++over;
    return (holds ? "" : "**OVER** ") + Number(ratio->Value(), "%.3f") + " (" +
           Number(ratio->Measured, "%.2f") + " / " + Number(ratio->Baseline, "%.2f") + " ms)";
}

std::string Growth(const std::optional<Ratio>& small, const std::optional<Ratio>& large) {
    if (!small || !large) return "-";
    return "x" + Number(large->Measured / small->Measured, "%.2f");
}

} // namespace

std::string NameOn(const std::string& stem, ScanForm form, int megapixels) {
    return stem + "/" + FormKey(form) + "/" + std::to_string(megapixels) + "MP";
}

const std::vector<Figure>& Figures() {
    static const std::vector<Figure> figures = [] {
        std::vector<Figure> f = {
            {"Open to first painted frame / QImageReader read", "Open", "Read", 1.25, true}};
        for (const char* zoom : {"100", "25"}) {
            const std::string at = std::string("@") + zoom;
            const std::string view = std::string(", zoom ") + zoom + " % / one plain repaint";
            f.push_back({std::string("ENTER to repainted frame") + view, "Enter" + at,
                         "Repaint" + at, 1.5, true});
            f.push_back({std::string("SHIFT+Down to repainted frame") + view, "ShiftDown" + at,
                         "Repaint" + at, 1.5, true});
            f.push_back({std::string("+ key to repainted frame") + view, "Plus" + at,
                         "Repaint" + at, 1.5, true});
            f.push_back({std::string("Rotation step (0.4 degrees), zoom ") + zoom +
                             " % / whole-image smooth rotation",
                         "Rotate" + at, "RotateWhole", 0.1, true});
        }
        // The reader runs on threads of its own behind the window's: a key never waits for it.
        f.push_back({"ENTER to repainted frame while the page is read, zoom 100 % / ENTER alone",
                     "EnterWhileReading@100", "Enter@100", 1.5, true});
        f.push_back({"Zoom step (100 % to 90 % and back) / whole-image smooth scaling", "ZoomStep",
                     "ScaleWhole", 0.1, true});
        // The finder runs on a worker once per scan; the window never waits for it. A Group 4
        // scan decodes in a few milliseconds, so there the finder's own cost is the ratio.
        f.push_back({"Finding the printed lines (worker thread) / decoding the same scan",
                     "FindLines", "Decode", 60.0, true});
        // Reading runs on a worker; the goal is half of Tesseract's own reading of the page.
        f.push_back({"Reading the scan (lines found, then read on two threads) / Tesseract's own "
                     "reading of the whole page",
                     NameOn("ReadScan", ScanForm::GreyJpeg, 10),
                     NameOn("TesseractPage", ScanForm::GreyJpeg, 10), 0.5, false});
        f.push_back({"Start-up to the start window shown / minimal Qt Widgets window",
                     "Startup/StartWindow", "Startup/MinimalWindow", 1.5, false});
        f.push_back({"1000-line transcription read, checked, reported / opening the 10 MP grey "
                     "JPEG scan",
                     "Transcription/1000Lines", NameOn("Open", ScanForm::GreyJpeg, 10), 0.01,
                     false});
        return f;
    }();
    return figures;
}

void FigureReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        const std::string name = run.run_name.function_name;
        if (run.error_occurred) {
            Failed.insert(name);
            continue;
        }
        const bool aggregate = run.run_type == Run::RT_Aggregate;
        if (aggregate ? run.aggregate_name != "median" : run.repetitions > 1) continue;
        const auto median = run.counters.find(std::string(MedianCounter));
        Milliseconds[name] =
            median != run.counters.end()
                ? median->second.value
                : run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit) * 1e3;
        // A baseline timed within the same iterations: "ReadMedianMs" of "Open/GreyJpeg/10MP" is
        // the figure "Read/GreyJpeg/10MP".
        const std::string scan = name.substr(std::min(name.find('/'), name.size()));
        for (const auto& [counter, value] : run.counters) {
            const std::string_view stem(counter);
            if (counter != MedianCounter && stem.ends_with(MedianCounter))
                Milliseconds[std::string(stem.substr(0, stem.size() - MedianCounter.size())) +
                             scan] = value.value;
        }
    }
}

int PrintTable(const FigureReporter& results, std::ostream& out) {
    int over = 0;
    out << "\n| Figure | Scan | 10 MP: ratio (time / baseline) | 40 MP: ratio (time / baseline) "
           "| Budget | Growth 10 to 40 MP |\n|---|---|---|---|---|---|\n";
    for (const Figure& figure : Figures()) {
        const std::string budget = "<= " + Number(figure.Budget, "%g");
        if (!figure.PerScan) {
            const auto ratio = RatioOf(results, figure.Measured, figure.Baseline);
            out << "| " << figure.Title << " | - | " << Cell(ratio, figure.Budget, over) << " | | "
                << budget << " | - |\n";
            continue;
        }
        for (ScanForm form : AllForms) {
            std::vector<std::optional<Ratio>> ratios;
            out << "| " << figure.Title << " | " << FormTitle(form) << " | ";
            for (int megapixels : AllMegapixels) {
                ratios.push_back(RatioOf(results, NameOn(figure.Measured, form, megapixels),
                                         NameOn(figure.Baseline, form, megapixels)));
                out << Cell(ratios.back(), figure.Budget, over) << " | ";
            }
            out << budget << " | " << Growth(ratios.front(), ratios.back()) << " |\n";
        }
    }
    for (const std::string& name : results.Failed)
        out << "\nFailed: " << name << "\n";
    out << (over == 0 ? "\nEvery budget holds.\n"
                      : "\n" + std::to_string(over) + " figure(s) over budget or not measured.\n");
    return over + static_cast<int>(results.Failed.size());
}

} // namespace bench
