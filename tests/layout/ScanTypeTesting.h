#pragma once
// A record table built line by line, and a scan type with its column tops, for the scan type
// tests.
#include "layout/ScanType.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tv::test {

class ScanTypeTest : public ::testing::Test {
  protected:
    RecordTable table;
    ScanType scanType;
    ColumnTopLines columnTops; // all 0 until calibrated

    void SetHeader(const std::string& event, int16_t year, int16_t quarter) {
        table.HeaderEvent = event;
        table.HeaderYear = year;
        table.HeaderQuarter = quarter;
    }

    void Read(const std::string& event, int16_t year, int16_t quarter) {
        SetHeader(event, year, quarter);
        ReadScanTypeTable(table, scanType, columnTops);
    }

    // Every line's LineJump, from line 1.
    std::vector<int> Jumps() const {
        std::vector<int> jumps;
        for (int line = 1; line <= table.LineCount; ++line)
            jumps.push_back(table.LineJump[line]);
        return jumps;
    }

    // A record line as the reader leaves it: LineJump 1 and the next record number.
    int AddRecord(const std::string& surname, const std::string& forenames = "John",
                  const std::string& extra = "") {
        int line = ++table.LineCount;
        table.Surname[line] = surname;
        table.Forenames[line] = forenames;
        table.ExtraField[line] = extra;
        table.LineJump[line] = 1;
        table.LineRecNo[line] = ++table.RecordCount;
        return line;
    }

    void AddRecords(const std::string& surname, int count) {
        for (int k = 0; k < count; ++k)
            AddRecord(surname);
    }

    // A comment line: not a record, LineJump 0.
    int AddComment(const std::string& text) {
        int line = ++table.LineCount;
        table.Surname[line] = text;
        table.Forenames[line] = "";
        table.ExtraField[line] = "";
        table.LineJump[line] = 0;
        table.LineRecNo[line] = -1;
        return line;
    }

    void SetPages(const std::vector<int16_t>& pages) {
        table.HeaderPageCount = 0;
        for (int16_t page : pages)
            table.HeaderPages[++table.HeaderPageCount] = page;
    }

    void CalcJumps() { CalcLineJump(table, scanType, columnTops); }
};

} // namespace tv::test
