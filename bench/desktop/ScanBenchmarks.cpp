// The figures of every scan: opening it, the keys pressed hundreds of times a page, a rotation
// step and a zoom step, each with the baseline it is measured against.
#include "ScanBenchmarks.h"

#include "BenchWindow.h"
#include "Figures.h"
#include "IterationClock.h"

#include "session/Form1.h"
#include "view/ImageView.h"
#include "view/QtScanReader.h"

#include <QImageReader>
#include <QTransform>

#include <exception>
#include <memory>
#include <optional>
#include <vector>

namespace bench {

namespace {

// The zoom step's baseline scales the whole scan to the step's 90 %.
constexpr double ZoomStepScale = 0.9;
constexpr double RotationStep = 0.4;
constexpr double OpenMinSeconds = 2.0;

// One main window at a time: a 40 megapixel colour scan holds 160 MB.
std::unique_ptr<VerifyingWindow>& OpenWindow() {
    static std::unique_ptr<VerifyingWindow> window;
    return window;
}

VerifyingWindow& WindowOn(const ScanFile& file) {
    std::unique_ptr<VerifyingWindow>& window = OpenWindow();
    if (!window || window->File().Scan != file.Scan) {
        window.reset();
        window = std::make_unique<VerifyingWindow>(file);
    }
    return *window;
}

QImage ReadScan(const QString& path) {
    QImageReader reader(path);
    return reader.read();
}

// QImageReader reading the file, destroyed outside the time as the view's scan is kept.
void TimeRead(IterationClock& clock, const ScanFile& file, benchmark::State& state) {
    clock.Start();
    const QImage image = ReadScan(file.Scan);
    clock.Stop();
    if (image.isNull()) state.SkipWithError("the scan could not be read");
    benchmark::DoNotOptimize(image.constBits());
}

// The scan view alone in a window of the screen's size: from the file to the first frame. Its
// baseline, QImageReader reading the same file, is timed in the same iterations, before the open
// in one and after it in the next: the machine's speed drifts over seconds on a shared host, and
// a baseline measured a few seconds apart drifted with it by up to a fifth.
void Open(benchmark::State& state, const ScanFile& file) {
    tv::ImageView view;
    view.resize(WindowSize);
    view.show();
    Settle();
    bool loaded = false;
    int frames = 0;
    QObject::connect(&view, &tv::ImageView::loadFinished, [&] { loaded = true; });
    QObject::connect(&view, &tv::ImageView::repainted, [&] { frames += loaded ? 1 : 0; });
    IterationClock clock(state);
    IterationClock read(state, "Read");
    bool readFirst = true;
    for (auto _ : state) {
        state.PauseTiming();
        if (readFirst) TimeRead(read, file, state);
        state.ResumeTiming();
        loaded = false;
        frames = 0;
        clock.Start();
        view.BeginLoad(file.Scan);
        view.WaitForLoad();
        WaitFor([&] { return frames > 0; });
        clock.Stop();
        state.PauseTiming();
        if (view.ErrorCode() != tv::LoadOk) state.SkipWithError("the scan did not load");
        // The reduced copies are made after the first frame; the next open waits for them.
        WaitFor([&] { return view.ErrorCode() != tv::LoadOk || view.ReducedCopiesReady(); });
        if (!readFirst) TimeRead(read, file, state);
        readFirst = !readFirst;
        state.ResumeTiming();
    }
}

void RotateWhole(benchmark::State& state, const ScanFile& file) {
    const QImage scan = ReadScan(file.Scan);
    const QTransform turn = QTransform().rotate(RotationStep);
    IterationClock clock(state);
    for (auto _ : state) {
        clock.Start();
        benchmark::DoNotOptimize(scan.transformed(turn, Qt::SmoothTransformation).constBits());
        clock.Stop();
    }
}

void ScaleWhole(benchmark::State& state, const ScanFile& file) {
    const QImage scan = ReadScan(file.Scan);
    const int width = qRound(scan.width() * ZoomStepScale);
    const int height = qRound(scan.height() * ZoomStepScale);
    IterationClock clock(state);
    for (auto _ : state) {
        clock.Start();
        benchmark::DoNotOptimize(
            scan.scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                .constBits());
        clock.Stop();
    }
}

void Repaint(benchmark::State& state, const ScanFile& file, int zoom) {
    VerifyingWindow& w = WindowOn(file);
    w.ZoomTo(zoom);
    w.Home();
    IterationClock clock(state);
    for (auto _ : state) {
        clock.Start();
        w.View().viewport()->update();
        Settle();
        clock.Stop();
    }
}

// A key pressed again and again down the page; back at the top of column 1 (untimed) when
// the key has nothing more to do.
void KeyDownThePage(benchmark::State& state, const ScanFile& file, int zoom, Qt::Key key,
                    Qt::KeyboardModifiers modifiers) {
    VerifyingWindow& w = WindowOn(file);
    w.ZoomTo(zoom);
    w.Home();
    int presses = 0;
    IterationClock clock(state);
    for (auto _ : state) {
        if (w.AtLastRecord() || presses == LinesPerColumn - 1) {
            state.PauseTiming();
            w.Home();
            presses = 0;
            state.ResumeTiming();
        }
        clock.Start();
        w.Key(key, modifiers);
        Settle();
        clock.Stop();
        ++presses;
    }
}

// ENTER pressed down the page as above while the page's found lines are read by the window's
// reader, at its own priority, its progress coming to the event loop; a reading that ends is
// started again (untimed), so that every press meets one under way.
void EnterWhileReading(benchmark::State& state, const ScanFile& file, int zoom) {
    VerifyingWindow& w = WindowOn(file);
    w.ZoomTo(zoom);
    w.Home();
    const std::optional<tv::PrintedLines>& found = w.Model().Lines.Found;
    if (!found || found->Empty()) {
        state.SkipWithError("no printed lines were found on the page");
        return;
    }
    const tv::PrintedLines lines = *found;
    int readings = 0;
    int progress = 0;
    tv::QtScanReader reader([&progress](int, int) { ++progress; }, [](int, tv::ScanReading) {},
                            [](int, std::vector<tv::Disagreement>) {});
    // A reading under way: past the OCR reader's start, which loads its data, into the lines.
    auto startReading = [&] {
        const int before = progress;
        reader.Read(w.View().Scan(), lines, 0.0F, ++readings);
        WaitFor([&] { return progress > before || !reader.Running(); });
        return progress > before;
    };
    if (!startReading()) {
        state.SkipWithError("the page could not be read");
        return;
    }
    int presses = 0;
    IterationClock clock(state);
    for (auto _ : state) {
        if (!reader.Running() || w.AtLastRecord() || presses == LinesPerColumn - 1) {
            state.PauseTiming();
            if (!reader.Running()) startReading();
            if (w.AtLastRecord() || presses == LinesPerColumn - 1) {
                w.Home();
                presses = 0;
            }
            state.ResumeTiming();
        }
        clock.Start();
        w.Key(Qt::Key_Return);
        Settle();
        clock.Stop();
        ++presses;
    }
    state.counters["Readings"] = readings;
    state.counters["ProgressReports"] = progress;
}

// Turned by one step and back again, never at 0 degrees, where nothing is turned at all.
void Rotate(benchmark::State& state, const ScanFile& file, int zoom) {
    VerifyingWindow& w = WindowOn(file);
    w.ZoomTo(zoom);
    w.Home();
    w.Click("RotateLeft");
    Settle();
    bool left = true;
    IterationClock clock(state);
    for (auto _ : state) {
        clock.Start();
        w.Click(left ? "RotateLeft" : "RotateRight");
        Settle();
        clock.Stop();
        left = !left;
    }
    while (w.Model().Box.ScanRotation > 0.0F)
        w.Click("RotateRight");
    Settle();
}

void ZoomStep(benchmark::State& state, const ScanFile& file) {
    VerifyingWindow& w = WindowOn(file);
    w.ZoomTo(100);
    w.Home();
    bool out = true;
    IterationClock clock(state);
    for (auto _ : state) {
        clock.Start();
        w.Key(out ? Qt::Key_F12 : Qt::Key_F11);
        Settle();
        clock.Stop();
        out = !out;
    }
    w.ZoomTo(100);
}

// A page that cannot be opened or driven stops its benchmark with the reason, not the run.
template <typename Function>
benchmark::internal::Benchmark* Register(const std::string& stem, const ScanFile& file,
                                         Function function) {
    return benchmark::RegisterBenchmark(NameOn(stem, file.Form, file.Megapixels).c_str(),
                                        [function, &file](benchmark::State& state) {
                                            try {
                                                function(state, file);
                                            } catch (const std::exception& e) {
                                                state.SkipWithError(e.what());
                                            }
                                        })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

void RegisterKeys(const ScanFile& file, int zoom) {
    const std::string at = "@" + std::to_string(zoom);
    auto keys = [zoom](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        return [zoom, key, modifiers](benchmark::State& state, const ScanFile& f) {
            KeyDownThePage(state, f, zoom, key, modifiers);
        };
    };
    Register("Repaint" + at, file,
             [zoom](benchmark::State& state, const ScanFile& f) { Repaint(state, f, zoom); });
    Register("Enter" + at, file, keys(Qt::Key_Return, Qt::NoModifier));
    Register("ShiftDown" + at, file, keys(Qt::Key_Down, Qt::ShiftModifier));
    Register("Plus" + at, file, keys(Qt::Key_Plus, Qt::NoModifier));
    Register("Rotate" + at, file,
             [zoom](benchmark::State& state, const ScanFile& f) { Rotate(state, f, zoom); });
}

} // namespace

void RegisterScanBenchmarks(const std::vector<ScanFile>& files, bool briefly) {
    for (const ScanFile& file : files) {
        benchmark::internal::Benchmark* open = Register("Open", file, Open);
        // A 40 megapixel scan opens in a few tenths of a second: the default half second of
        // timed opens would give a median of three or four, which the machine's moments move.
        if (!briefly) open->MinTime(OpenMinSeconds);
        Register("RotateWhole", file, RotateWhole);
        Register("ScaleWhole", file, ScaleWhole);
        RegisterKeys(file, 100);
        Register("EnterWhileReading@100", file, [](benchmark::State& state, const ScanFile& f) {
            EnterWhileReading(state, f, 100);
        });
        Register("ZoomStep", file, ZoomStep);
        RegisterKeys(file, 25);
    }
}

void CloseScanWindow() {
    OpenWindow().reset();
}

} // namespace bench
