// The printed lines of a scan found by the finder, as the program runs it on a worker once a
// scan is loaded, against decoding the same scan (the finder's input) in the same iterations.
#include "LineFindBenchmarks.h"

#include "Figures.h"
#include "IterationClock.h"

#include "view/ImageViewDecode.h"
#include "view/QtLineFinder.h"

#include <benchmark/benchmark.h>

namespace bench {

namespace {

void FindLines(benchmark::State& state, const ScanFile& file) {
    IterationClock clock(state);
    IterationClock decode(state, "Decode");
    for (auto _ : state) {
        decode.Start();
        const tv::DecodedScan scan = tv::DecodeScan(file.Scan);
        decode.Stop();
        if (scan.ErrorCode != tv::LoadOk) {
            state.SkipWithError("the scan did not load");
            break;
        }
        clock.Start();
        const tv::PrintedLines lines = tv::FindPrintedLines(tv::GreyRowsOf(scan.Pristine), 2);
        clock.Stop();
        // The columns found are reported beside the time; a run that does not find both columns
        // of the page would time a finding that stops short, and gives no figure.
        state.counters["Columns"] = static_cast<double>(lines.Columns.size());
        benchmark::DoNotOptimize(lines);
        if (lines.Columns.size() != 2) {
            state.SkipWithError("the finder did not find both columns of the page");
            break;
        }
    }
}

} // namespace

void RegisterLineFindBenchmarks(const std::vector<ScanFile>& files) {
    for (const ScanFile& file : files)
        benchmark::RegisterBenchmark(NameOn("FindLines", file.Form, file.Megapixels).c_str(),
                                     [&file](benchmark::State& state) { FindLines(state, file); })
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
}

} // namespace bench
