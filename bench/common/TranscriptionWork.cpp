#include "TranscriptionWork.h"

#include "core/Prompts.h"
#include "layout/ScanType.h"
#include "stats/Statistics.h"
#include "transcription/ReadTranscription.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace bench {

namespace {

class SilentPrompts : public tv::Prompts {
  public:
    tv::Answer Ask(const tv::Prompt&) override { return tv::Answer::Ok; }
};

} // namespace

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

std::size_t ReadCheckAndReport(const std::string& path) {
    SilentPrompts prompts;
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
    benchmark::DoNotOptimize(tv::ReportHasFindings(it, in));
    return lines.size();
}

} // namespace bench
