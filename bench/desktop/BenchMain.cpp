// tallyview_bench_desktop: the desktop's benchmarks, on Qt's offscreen platform with a screen of
// 1920 x 1080, on scans generated at start into a temporary folder. After Google Benchmark's
// own output it prints the table of every figure against its budget, and exits 1 when a budget
// does not hold.
//
//   tallyview_bench_desktop [--short] [--benchmark_...]
//       --short: every benchmark runs only briefly (CI keeps them building and running; the
//       figures are rough and the budgets are not enforced).
//   tallyview_bench_desktop --write-scan FORM MEGAPIXELS DIR
//   tallyview_bench_desktop --verify-to-end FORM MEGAPIXELS DIR
//       The memory measurement's two steps: write a scan (FORM one of GreyJpeg, ColourJpeg,
//       BilevelG4, GreyLzw) and its transcription under DIR; then open them as the program
//       does, calibrate, press ENTER to the last record and print the decoded image's size.
#include "BenchScans.h"
#include "BenchWindow.h"
#include "Figures.h"
#include "LineFindBenchmarks.h"
#include "ProgramBenchmarks.h"
#include "ReadingBenchmarks.h"
#include "ScanBenchmarks.h"

#include "session/Session.h"
#include "view/ImageView.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr const char* Usage =
    "usage: tallyview_bench_desktop [--short] [--benchmark_...]\n"
    "       tallyview_bench_desktop --write-scan|--verify-to-end FORM MEGAPIXELS DIR\n";

// The offscreen platform with one screen of the benchmarks' window size, unless the caller
// chose a platform.
void UseOffscreenScreen(const QTemporaryDir& dir) {
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) return;
    const QString config = dir.filePath(QStringLiteral("screen.json"));
    QFile file(config);
    if (file.open(QIODevice::WriteOnly))
        file.write(QStringLiteral("{\"screens\": [{\"name\": \"bench\", \"x\": 0, \"y\": 0, "
                                  "\"width\": %1, \"height\": %2, \"logicalDpi\": 96, "
                                  "\"logicalBaseDpi\": 96, \"dpr\": 1}]}")
                       .arg(bench::WindowSize.width())
                       .arg(bench::WindowSize.height())
                       .toUtf8());
    qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + config).toLocal8Bit());
}

// The offscreen platform's notes (it cannot raise a window, nor pass size hints on) would
// interleave with the figures; only Qt's critical and fatal messages are shown.
void OnlySeriousMessages(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "tallyview_bench_desktop: %s\n", qPrintable(message));
}

int VerifyToEnd(const bench::ScanFile& file) {
    bench::VerifyingWindow window(file);
    while (!window.AtLastRecord()) {
        window.Key(Qt::Key_Return);
        bench::Settle();
    }
    const tv::ViewMetrics m = window.View().Metrics();
    const qint64 bits = QImage::toPixelFormat(window.View().PixelFormat()).bitsPerPixel();
    const qint64 bytes = (m.ImagePixelWidth * bits + 31) / 32 * 4 * m.ImagePixelHeight;
    std::printf("verified to line %d; decoded image %d x %d, %lld bits per pixel, %lld bytes\n",
                window.Model().Table.CurrentLine, m.ImagePixelWidth, m.ImagePixelHeight,
                static_cast<long long>(bits), static_cast<long long>(bytes));
    return 0;
}

int Step(int argc, char** argv) {
    const std::string mode = argv[1];
    const bench::ScanForm form = bench::FormOfKey(argv[2]);
    const int megapixels = std::stoi(argv[3]);
    const QString dir = QString::fromLocal8Bit(argv[4]);
    const QTemporaryDir screen;
    UseOffscreenScreen(screen);
    qInstallMessageHandler(OnlySeriousMessages);
    int qtArgc = 1;
    QApplication app(qtArgc, argv);
    QImageReader::setAllocationLimit(tv::AllocationLimitMegabytes);
    tv::KeepScanMemoryForTheNextScan();
    if (mode == "--write-scan") {
        std::printf("%s\n", qPrintable(bench::WriteScan(form, megapixels, dir).Scan));
        return 0;
    }
    if (mode == "--verify-to-end" && argc == 5)
        return VerifyToEnd(bench::ScanFileIn(form, megapixels, dir));
    std::fputs(Usage, stderr);
    return 2;
}

int RunBenchmarks(int argc, char** argv, bool briefly) {
    const QTemporaryDir dir;
    UseOffscreenScreen(dir);
    qInstallMessageHandler(OnlySeriousMessages);
    QApplication app(argc, argv);
    QImageReader::setAllocationLimit(tv::AllocationLimitMegabytes);
    // As the program sets its memory up at start.
    tv::KeepScanMemoryForTheNextScan();
    std::fprintf(stderr, "Writing the scans into %s\n", qPrintable(dir.path()));
    const std::vector<bench::ScanFile> files = bench::WriteAllScans(
        dir.path(), {bench::AllMegapixels.begin(), bench::AllMegapixels.end()});
    bench::RegisterScanBenchmarks(files, briefly);
    bench::RegisterProgramBenchmarks();
    bench::RegisterLineFindBenchmarks(files);
    bench::RegisterReadingBenchmarks(files);
    bench::FigureReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    bench::CloseScanWindow();
    const int over = bench::PrintTable(reporter, std::cout);
    benchmark::Shutdown();
    return briefly || over == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    try {
        if (argc == 5 &&
            (std::string(argv[1]) == "--write-scan" || std::string(argv[1]) == "--verify-to-end"))
            return Step(argc, argv);
        std::vector<char*> args(argv, argv + argc);
        std::string brief = "--benchmark_min_time=0.01";
        const auto found = std::find(args.begin(), args.end(), std::string("--short"));
        const bool briefly = found != args.end();
        if (briefly) *found = brief.data();
        int count = static_cast<int>(args.size());
        benchmark::Initialize(&count, args.data());
        if (benchmark::ReportUnrecognizedArguments(count, args.data())) {
            std::fputs(Usage, stderr);
            return 2;
        }
        return RunBenchmarks(count, args.data(), briefly);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "tallyview_bench_desktop: %s\n", e.what());
        return 1;
    }
}
