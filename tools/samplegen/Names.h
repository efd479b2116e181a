#pragma once
// The names, districts and volumes the sample pages are drawn from: a stretch of neighbouring
// surnames of the index for each page, and the forenames and districts of its period. All text
// is Windows-1252, as in a transcription.
#include <string>
#include <utility>
#include <vector>

namespace samplegen {

struct District {
    std::string Name;
    std::string Volume;
};

// One surname of the page's stretch of the index and how many entries it has.
struct SurnameRun {
    SurnameRun(std::string surname, int count, std::vector<std::string> forenames = {},
               std::vector<int> longAt = {})
        : Surname(std::move(surname)), Count(count), Forenames(std::move(forenames)),
          LongAt(std::move(longAt)) {}

    std::string Surname;
    int Count;
    std::vector<std::string> Forenames; // forenames that are always among the run's entries
    std::vector<int> LongAt; // places in the run (from 1) whose third field takes a second line
};

struct NamePools {
    std::vector<SurnameRun> Runs;
    std::vector<std::string> Forenames;
    std::vector<District> Districts;
    std::vector<std::string> Mothers;     // empty: the index has no third field
    std::vector<std::string> LongMothers; // used in turn at the LongAt places
    int HighestPage = 500;                // pages of a volume run from 1 to this
    int ReferenceFields = 0; // an annual index's reference fields: 1 (to 1992) or 4; 0: none
};

// Text written in this source as UTF-8, as Windows-1252 bytes; a character outside Latin-1
// letters is refused.
std::string Cp1252(const std::string& utf8);

NamePools Names1843();
NamePools Names1872();
NamePools Names1872Double();
NamePools Names1911();
NamePools Names1965();
NamePools Names1988();
NamePools Names1995();

} // namespace samplegen
