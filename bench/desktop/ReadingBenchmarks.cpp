#include "ReadingBenchmarks.h"

#include "Figures.h"
#include "IterationClock.h"

#include "ocr/ReadScanLines.h"
#include "view/ImageViewDecode.h"
#include "view/QtLineFinder.h"
#include "view/QtScanReading.h"

#include <benchmark/benchmark.h>

namespace bench {

namespace {

// One iteration: the whole reading (the finder and the lines read on two threads, as the
// window's worker runs them), then Tesseract's own reading of the same decoded page.
void ReadPage(benchmark::State& state, const ScanFile& file) {
    const tv::DecodedScan scan = tv::DecodeScan(file.Scan);
    if (scan.ErrorCode != tv::LoadOk) {
        state.SkipWithError("the scan did not load");
        return;
    }
    const QImage grey = scan.Pristine.convertToFormat(QImage::Format_Grayscale8);
    tv::GreyImage page;
    page.Width = grey.width();
    page.Height = grey.height();
    page.Stride = static_cast<int>(grey.bytesPerLine());
    page.Pixels = grey.constBits();
    IterationClock clock(state);
    IterationClock whole(state, "TesseractPage");
    for (auto _ : state) {
        clock.Start();
        const tv::PrintedLines lines = tv::FindPrintedLines(tv::GreyRowsOf(scan.Pristine), 2);
        tv::ReadOptions options;
        options.Threads = 2;
        const tv::ScanReading reading = tv::ReadScan(scan.Pristine, lines, options);
        clock.Stop();
        std::size_t words = 0;
        for (const tv::ReadLine& line : reading.Lines)
            words += line.Words.size();
        state.counters["Words"] = static_cast<double>(words);
        whole.Start();
        const int wholeWords = tv::ReadWholePage(page);
        whole.Stop();
        state.counters["TesseractWords"] = wholeWords;
        if (words == 0 || wholeWords <= 0) {
            state.SkipWithError("nothing was read");
            break;
        }
    }
}

} // namespace

void RegisterReadingBenchmarks(const std::vector<ScanFile>& files) {
    for (const ScanFile& file : files)
        if (file.Form == ScanForm::GreyJpeg && file.Megapixels == 10)
            benchmark::RegisterBenchmark(
                NameOn("ReadScan", file.Form, file.Megapixels).c_str(),
                [&file](benchmark::State& state) { ReadPage(state, file); })
                ->Unit(benchmark::kMillisecond)
                ->UseRealTime()
                ->Iterations(1);
}

} // namespace bench
