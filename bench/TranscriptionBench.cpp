// Reading a transcription, running every check and building the report: the work of loading
// and reloading a file. Figures at 250 and 1000 lines show that the path grows linearly.
#include "core/Prompts.h"
#include "layout/ScanType.h"
#include "stats/Statistics.h"
#include "transcription/ReadTranscription.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

class SilentPrompts : public tv::Prompts {
  public:
    tv::Answer Ask(const tv::Prompt&) override { return tv::Answer::Ok; }
};

// A births transcription of the given number of lines, every tenth one out of order.
std::string WriteTranscription(int lines) {
    std::string path =
        (std::filesystem::temp_directory_path() /
         ("tallyview-bench-" + std::to_string(getpid()) + "-" + std::to_string(lines) + ".QRL"))
            .string();
    std::ofstream out(path, std::ios::binary);
    out << "+INFO,someone@example.org,password,SEQUENCED,BIRTHS,cp1252\r\n"
        << "+S,1911,Sep,BX1911C3,12/03/2024\r\n+PAGE,0123\r\n";
    for (int i = 3; i < lines; ++i) {
        char name[64];
        std::snprintf(name, sizeof name, "SURNAME%04d", i % 10 == 0 ? i - 5 : i);
        out << name << ",Forename " << i << ",MOTHER,Bolton,8c," << 100 + i % 900
            << (i % 50 == 0 ? ",?" : "") << "\r\n";
    }
    return path;
}

void ReadCheckAndReport(benchmark::State& state) {
    std::string path = WriteTranscription(static_cast<int>(state.range(0)));
    SilentPrompts prompts;
    for (auto _ : state) {
        tv::RecordTable table;
        tv::ScanType scan;
        tv::ColumnTopLines tops;
        std::string file = path;
        std::string graphics = "1911B30123.jpg";
        tv::ReaderContext context{table, scan, tops, graphics, prompts};
        tv::ReadTranscription(file, context);
        tv::CheckIterator it;
        tv::CheckInputs in{table, scan.ScanTypeCode, graphics, file};
        auto lines = tv::ReportLines(false, tv::ScanDescription(table), it, in, tv::DateTime{});
        benchmark::DoNotOptimize(lines);
        benchmark::DoNotOptimize(tv::ReportHasFindings(it, in));
    }
    std::filesystem::remove(path);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(ReadCheckAndReport)->Arg(250)->Arg(1000)->Complexity(benchmark::oN);

// The baseline: reading the same file's bytes and nothing else.
void ReadBytesOnly(benchmark::State& state) {
    std::string path = WriteTranscription(static_cast<int>(state.range(0)));
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
