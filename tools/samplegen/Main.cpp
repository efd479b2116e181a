// tallyview_samplegen [--preview] KIND OUTDIR: draws sample scans of index pages with known
// line positions, and the transcriptions that go with them.
#include "PageRenderer.h"
#include "PageShape.h"
#include "Preview.h"
#include "ScanFinish.h"
#include "ScanWear.h"
#include "SelfCheck.h"
#include "Slips.h"

#include <QDir>
#include <QGuiApplication>
#include <QImageWriter>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace samplegen {

namespace {

constexpr int JpegQuality = 88;

void SaveJpeg(const QImage& scan, const std::string& path) {
    QImageWriter writer(QString::fromStdString(path), "jpg");
    writer.setQuality(JpegQuality);
    if (!writer.write(scan))
        throw std::runtime_error("cannot write " + path + ": " +
                                 writer.errorString().toStdString());
}

// What the generator adds beyond the page itself: a volunteer's slips, a worn scan.
struct Extras {
    bool Slips = false;
    bool Worn = false;
};

void Generate(const KindSpec& kind, const std::string& outDir, bool preview, const PageShape& shape,
              const Extras& extras) {
    const PageLayout layout = LayOutPage(kind, IndexEntries(kind));
    const PageGeometry geometry(kind);
    const std::string base = outDir + "/" + kind.BaseName();
    Transcription transcription = BuildTranscription(kind, layout);
    WriteTranscription(transcription, base + ".QRL");
    CheckWithModel(kind, layout, geometry, transcription, base + ".QRL");
    if (extras.Slips) {
        WriteSlips(MakeSlips(kind, transcription), base + ".slips");
        WriteTranscription(transcription, base + ".QRL");
    }
    QImage scan = shape.Apply(DrawPage(kind, layout, geometry), kind);
    AgeScan(scan, kind.Seed);
    if (extras.Worn) WearScan(scan, kind.Seed);
    SaveJpeg(scan, base + ".jpg");
    WritePositions(kind, layout, geometry, transcription, base + ".lines", shape);
    if (preview) {
        std::vector<QPointF> points;
        for (const Placement& place : layout.Places)
            points.push_back(shape.Map(geometry.ScanPoint(place), kind));
        WritePreviews(scan, points, base);
    }
    std::printf("%-17s %s.jpg  %zu records  %d column%s\n", kind.Name.c_str(),
                kind.BaseName().c_str(), layout.Records.size(), kind.Columns(),
                kind.Columns() == 1 ? "" : "s");
}

std::vector<const KindSpec*> Chosen(const std::string& name) {
    std::vector<const KindSpec*> chosen;
    for (const KindSpec& kind : AllKinds())
        if (name == "all" || name == kind.Name) chosen.push_back(&kind);
    return chosen;
}

int Usage() {
    std::string kinds;
    for (const KindSpec& kind : AllKinds())
        kinds += " " + kind.Name;
    std::fprintf(stderr,
                 "usage: tallyview_samplegen [--preview] [--shape flat|curved|keystoned] "
                 "[--rotation DEGREES] [--scale FACTOR] [--slips] [--worn] KIND OUTDIR\n"
                 "KIND:%s all\n",
                 kinds.c_str());
    return 2;
}

} // namespace

} // namespace samplegen

int main(int argc, char** argv) {
    using namespace samplegen;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    std::vector<std::string> args(argv + 1, argv + argc);
    const bool preview = !args.empty() && args.front() == "--preview";
    if (preview) args.erase(args.begin());
    Extras extras;
    for (auto flag = args.begin(); flag != args.end();) {
        if (*flag == "--slips")
            extras.Slips = true;
        else if (*flag == "--worn")
            extras.Worn = true;
        else {
            ++flag;
            continue;
        }
        flag = args.erase(flag);
    }
    PageShape shape;
    std::optional<double> rotation;
    while (args.size() > 2 && args[0].starts_with("--")) {
        const std::string option = args[0];
        const std::string value = args[1];
        args.erase(args.begin(), args.begin() + 2);
        if (option == "--shape" && shape.Parse(value)) continue;
        const double number = std::atof(value.c_str());
        if (option == "--rotation" && std::abs(number) <= 5.0)
            rotation = number;
        else if (option == "--scale" && number >= 1.0 && number <= 4.0)
            shape.Scale = number;
        else
            return Usage();
    }
    if (args.size() != 2) return Usage();
    const std::vector<const KindSpec*> kinds = Chosen(args[0]);
    if (kinds.empty()) return Usage();
    try {
        if (!QDir().mkpath(QString::fromStdString(args[1])))
            throw std::runtime_error("cannot make the folder " + args[1]);
        for (const KindSpec* kind : kinds) {
            KindSpec turned = *kind;
            if (rotation) turned.RotationDegrees = *rotation;
            Generate(turned, args[1], preview, shape, extras);
        }
    } catch (const std::exception& e) {
        std::fprintf(stderr, "tallyview_samplegen: %s\n", e.what());
        return 1;
    }
    return 0;
}
