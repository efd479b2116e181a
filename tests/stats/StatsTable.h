#pragma once
// Record tables for the statistics tests, built line by line as the reader would leave them.
#include "core/Checked.h"
#include "stats/Checks.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tv::test {

class StatsTable {
  public:
    // A non-record line (header, comment or blank line); its first field is its surname.
    int Header(const std::string& text) {
        int i = NextLine(text);
        Table.Surname[i] = text.substr(0, text.find(','));
        Table.LineRecNo[i] = -1;
        return i;
    }

    // A record line; an empty surname is stored as "(blank)", as the reader does.
    int Record(const std::string& surname, const std::string& forenames,
               const std::string& extra = "") {
        int i = NextLine(surname + "," + forenames + (extra.empty() ? "" : "," + extra));
        Table.RecordCount = To16(Table.RecordCount + 1);
        Table.LineRecNo[i] = Table.RecordCount;
        Table.Surname[i] = surname.empty() ? "(blank)" : surname;
        Table.Forenames[i] = forenames;
        Table.ExtraField[i] = extra;
        return i;
    }

    void HeaderOf(const std::string& event, int16_t year, int16_t quarter,
                  std::vector<int16_t> pages) {
        Table.HeaderEvent = event;
        Table.HeaderYear = year;
        Table.HeaderQuarter = quarter;
        Table.HeaderPageCount = To16(static_cast<long long>(pages.size()));
        for (std::size_t k = 0; k < pages.size(); ++k)
            Table.HeaderPages[static_cast<int>(k) + 1] = pages[k];
    }

    CheckInputs Inputs(const std::string& graphics = "", const std::string& transcription = "",
                       int16_t scanTypeCode = 0) const {
        return CheckInputs{Table, scanTypeCode, graphics, transcription};
    }

    RecordTable Table;

  private:
    int NextLine(const std::string& text) {
        Table.LineCount = To16(Table.LineCount + 1);
        int i = Table.LineCount;
        Table.LineText[i] = text;
        Table.LineFlagged[i] = false;
        Table.LineQuery[i] = false;
        return i;
    }
};

struct Drained {
    std::string Title;
    std::vector<std::string> Lines;
};

// Calls the iterator until it finds nothing, checking that only the first call gives the title
// and that the end leaves an empty line and no running category.
inline Drained Drain(CheckIterator& it, int16_t category, const CheckInputs& in) {
    Drained result;
    std::string title;
    std::string line;
    bool found = GetNextCheckLine(it, category, result.Title, line, in);
    while (found) {
        result.Lines.push_back(line);
        found = GetNextCheckLine(it, category, title, line, in);
        EXPECT_EQ(title, "");
    }
    EXPECT_EQ(line, "");
    EXPECT_EQ(it.CheckCategory, -1);
    return result;
}

} // namespace tv::test
