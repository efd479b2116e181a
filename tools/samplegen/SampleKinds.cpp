#include "SampleKinds.h"

#include "SampleRandom.h"
#include "transcription/TextConversion.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <utility>

namespace samplegen {

namespace {

const std::vector<std::string> VictorianHeadings = {
    "Surname.", "Name.", "", "Superintendent Registrar's District.", "Vol.", "Page."};
const std::vector<std::string> MotherHeadings = {"Surname.",  "Forenames.", "Mother's Maiden Name.",
                                                 "District.", "Vol.",       "Page."};

KindSpec Births1843() {
    KindSpec k;
    k.Name = "births1843";
    k.Year = 1843;
    k.Quarter = 1;
    k.FirstPage = 214;
    k.LinesPerColumn = 70;
    k.Pitch = 40;
    k.PageWidth = 2400;
    k.PageHeight = 3400;
    k.IndexFont = 'C';
    k.FontPixels = 30;
    k.Repeat = RepeatStyle::Dash;
    k.Stops = {0.20, 0.0, 0.44, 0.82};
    k.Headings = VictorianHeadings;
    k.RotationDegrees = 0.30;
    k.Seed = 1843;
    k.Names = Names1843;
    return k;
}

KindSpec Births1872() {
    KindSpec k;
    k.Name = "births1872";
    k.Year = 1872;
    k.Quarter = 2;
    k.FirstPage = 234;
    k.ColumnsPerPage = 3;
    k.LinesPerColumn = 40;
    k.Pitch = 66;
    k.PageWidth = 2400;
    k.PageHeight = 3400;
    k.IndexFont = 'T';
    k.FontPixels = 26;
    k.Repeat = RepeatStyle::Full;
    k.Stops = {0.0, 0.0, 0.53, 0.86};
    k.Headings = {"Name.", "", "", "District.", "Vol.", "Page."};
    k.RotationDegrees = -0.25;
    k.Seed = 1872;
    k.Names = Names1872;
    return k;
}

KindSpec Births1872Double() {
    KindSpec k = Births1872();
    k.Name = "births1872double";
    k.FirstPage = 412;
    k.Pages = 2;
    k.RotationDegrees = 0.35;
    k.Seed = 18722;
    k.Names = Names1872Double;
    return k;
}

KindSpec Births1911() {
    KindSpec k;
    k.Name = "births1911";
    k.Year = 1911;
    k.Quarter = 3;
    k.FirstPage = 456;
    k.ColumnsPerPage = 2;
    k.LinesPerColumn = 55;
    k.Pitch = 50;
    k.PageWidth = 2400;
    k.PageHeight = 3400;
    k.IndexFont = 'C';
    k.FontPixels = 22;
    k.Repeat = RepeatStyle::Blank;
    k.Stops = {0.16, 0.37, 0.61, 0.85};
    k.Headings = MotherHeadings;
    k.RotationDegrees = 0.28;
    k.Seed = 1911;
    k.Names = Names1911;
    return k;
}

KindSpec Births1965() {
    KindSpec k;
    k.Name = "births1965";
    k.Year = 1965;
    k.Quarter = 2;
    k.FirstPage = 389;
    k.ColumnsPerPage = 2;
    k.LinesPerColumn = 60;
    k.Pitch = 46;
    k.PageWidth = 2400;
    k.PageHeight = 3400;
    k.IndexFont = 'C';
    k.FontPixels = 22;
    k.Repeat = RepeatStyle::OwnLine;
    k.TenLineGap = true;
    k.LongExtraLen = 19;
    k.Stops = {0.04, 0.36, 0.61, 0.85};
    k.Headings = {
        "Surname and First Name(s).", "", "Mother's Maiden Name.", "District.", "Vol.", "Page."};
    k.RotationDegrees = -0.32;
    k.Seed = 1965;
    k.Names = Names1965;
    return k;
}

// An annual index: two columns in the fixed-pitch face, surnames on lines of their own and the
// ten-line gaps as in the quarterly indexes before it, and the register reference of each entry
// printed between the district and the volume.
KindSpec Births1988() {
    KindSpec k;
    k.Name = "births1988";
    k.Year = 1988;
    k.Quarter = 0;
    k.FirstPage = 512;
    k.ColumnsPerPage = 2;
    k.LinesPerColumn = 62;
    k.Pitch = 45;
    k.PageWidth = 2400;
    k.PageHeight = 3400;
    k.IndexFont = 'C';
    k.FontPixels = 21;
    k.Repeat = RepeatStyle::OwnLine;
    k.TenLineGap = true;
    k.LongExtraLen = 16;
    k.Stops = {0.04, 0.33, 0.56, 0.84, 0.75};
    k.Headings = {"Surname and First Name(s).",
                  "",
                  "Mother's Maiden Name.",
                  "District.",
                  "Vol.",
                  "Page.",
                  "Reg."};
    k.RotationDegrees = 0.22;
    k.Seed = 1988;
    k.Names = Names1988;
    return k;
}

// The annual index from 1993: as before, with four reference fields in place of the register,
// volume and page.
KindSpec Births1995() {
    KindSpec k;
    k.Name = "births1995";
    k.Year = 1995;
    k.Quarter = 0;
    k.FirstPage = 301;
    k.ColumnsPerPage = 2;
    k.LinesPerColumn = 62;
    k.Pitch = 45;
    k.PageWidth = 2400;
    k.PageHeight = 3400;
    k.IndexFont = 'C';
    k.FontPixels = 21;
    k.Repeat = RepeatStyle::OwnLine;
    k.TenLineGap = true;
    k.LongExtraLen = 9;
    k.Stops = {0.04, 0.28, 0.51, 1.0, 0.71};
    k.Headings = {"Surname and First Name(s).",
                  "",
                  "Mother's Maiden Name.",
                  "District.",
                  "",
                  "",
                  "Dist.",
                  "Reg.",
                  "Entry.",
                  "Date."};
    k.RotationDegrees = -0.27;
    k.Seed = 1995;
    k.Names = Names1995;
    return k;
}

// The order of names within one surname: the folded, lower-cased forenames as the index
// sorts them, then the district.
std::pair<std::string, std::string> SortKey(const Entry& e) {
    std::string key = tv::ConvTo7BitASCII(e.Forenames);
    std::transform(key.begin(), key.end(), key.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return {key, e.District};
}

Entry RandomEntry(const std::string& surname, const std::string& forenames, const NamePools& pools,
                  SampleRandom& rng) {
    const District& district = rng.Pick(pools.Districts);
    Entry e{surname,
            forenames,
            "",
            district.Name,
            district.Volume,
            std::to_string(rng.Between(1, pools.HighestPage)),
            {}};
    if (!pools.Mothers.empty()) e.Extra = rng.Pick(pools.Mothers);
    static const std::vector<std::string> registers = {"A", "B", "C", "D"};
    if (pools.ReferenceFields == 1)
        e.References = {rng.Pick(registers) + std::to_string(rng.Between(1, 99))};
    if (pools.ReferenceFields == 4) {
        // From 1993: no volume and page, but the district's number, the register, the entry
        // and the month of registration.
        e.Volume.clear();
        e.Page.clear();
        char month[8];
        std::snprintf(month, sizeof month, "%02d95", rng.Between(1, 12));
        e.References = {std::to_string(rng.Between(1001, 4999)),
                        std::to_string(rng.Between(1, 9)) +
                            static_cast<char>('A' + rng.Between(0, 2)),
                        std::to_string(rng.Between(1, 499)), month};
    }
    return e;
}

void AddRun(const SurnameRun& run, const NamePools& pools, SampleRandom& rng, std::size_t& longUsed,
            std::vector<Entry>& out) {
    std::vector<Entry> entries;
    for (const std::string& forenames : run.Forenames)
        entries.push_back(RandomEntry(run.Surname, forenames, pools, rng));
    while (std::ssize(entries) < run.Count)
        entries.push_back(RandomEntry(run.Surname, rng.Pick(pools.Forenames), pools, rng));
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return SortKey(a) < SortKey(b); });
    for (int place : run.LongAt)
        entries.at(static_cast<std::size_t>(place - 1)).Extra =
            pools.LongMothers.at(longUsed++ % pools.LongMothers.size());
    out.insert(out.end(), entries.begin(), entries.end());
}

} // namespace

std::string KindSpec::BaseName() const {
    char page[8];
    std::snprintf(page, sizeof page, "%04d", static_cast<int>(FirstPage));
    return std::to_string(Year) + Event + (Annual() ? "" : std::to_string(Quarter)) + page;
}

std::string KindSpec::Title() const {
    if (Annual()) return std::string("INDEX OF BIRTHS REGISTERED IN ") + std::to_string(Year) + ".";
    static const char* const months[] = {"JANUARY, FEBRUARY AND MARCH", "APRIL, MAY AND JUNE",
                                         "JULY, AUGUST AND SEPTEMBER",
                                         "OCTOBER, NOVEMBER AND DECEMBER"};
    return std::string("INDEX OF BIRTHS REGISTERED IN ") + months[Quarter - 1] + " " +
           std::to_string(Year) + ".";
}

const std::vector<KindSpec>& AllKinds() {
    static const std::vector<KindSpec> kinds = {Births1843(), Births1872(), Births1872Double(),
                                                Births1911(), Births1965(), Births1988(),
                                                Births1995()};
    return kinds;
}

std::vector<Entry> IndexEntries(const KindSpec& kind) {
    const NamePools pools = kind.Names();
    SampleRandom rng(kind.Seed);
    std::vector<Entry> out;
    std::size_t longUsed = 0;
    for (const SurnameRun& run : pools.Runs)
        AddRun(run, pools, rng, longUsed, out);
    return out;
}

} // namespace samplegen
