#pragma once
// Pages of the sample generator with their true positions: the baselines of the records.
#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace tv::test {

struct TruePlace {
    int Column = 0;
    double X = 0.0;
    double Baseline = 0.0; // y of the entry's baseline at the column's left edge
};

struct TruePage {
    std::filesystem::path Scan;
    std::filesystem::path Transcription;
    double Pitch = 0.0;
    int Columns = 0;
    std::map<int, TruePlace> Places; // by table line
    // With the generator's --slips: the fields (table line, field) the volunteer got wrong.
    std::set<std::pair<int, int>> Slips;
};

// Draws the kind once per run (the generator's own options after it) and reads its positions.
const TruePage& SamplePage(const std::string& kind, const std::string& options = "");

} // namespace tv::test
