// Reading a transcription, running every check and building the report: the work of loading
// and reloading a file. Figures at 250 and 1000 lines show that the path grows linearly.
#include "common/TranscriptionWork.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

void ReadCheckAndReport(benchmark::State& state) {
    const std::string path = bench::WriteTranscription(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(bench::ReadCheckAndReport(path));
    std::filesystem::remove(path);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(ReadCheckAndReport)->Arg(250)->Arg(1000)->Complexity(benchmark::oN);

// The baseline: reading the same file's bytes and nothing else.
void ReadBytesOnly(benchmark::State& state) {
    const std::string path = bench::WriteTranscription(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        std::ifstream in(path, std::ios::binary);
        std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        benchmark::DoNotOptimize(bytes);
    }
    std::filesystem::remove(path);
}
BENCHMARK(ReadBytesOnly)->Arg(1000);

} // namespace

BENCHMARK_MAIN();
