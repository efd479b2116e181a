#include "ScanTypeTesting.h"

#include <cstring>
#include <string>
#include <string_view>

namespace tv {

namespace {

// Every variable of the scan type that the tables set, in the order of a row.
struct Layout {
    int NumColumns;
    int ScanTypeCode;
    bool AskScanType;
    char IndexFont;
    int SurnamePad;
    int ExtraPad;
    int DistrictPad;
    int VolPageStyle;
    float FirstLineFraction;
    bool SurnameOwnLine;
    bool TenLineGap;
    int LongForenamesLen;
    int LongExtraLen;
};

constexpr Layout DefaultLayout = {3, 1, true, 'T', 0, 0, 99, 0, 0.07F, false, false, 99, 99};

void ExpectLayout(const ScanType& s, const Layout& e) {
    EXPECT_EQ(s.NumColumns, e.NumColumns);
    EXPECT_EQ(s.ScanTypeCode, e.ScanTypeCode);
    EXPECT_EQ(s.AskScanType, e.AskScanType);
    EXPECT_EQ(s.IndexFont, e.IndexFont);
    EXPECT_EQ(s.SurnamePad, e.SurnamePad);
    EXPECT_EQ(s.ExtraPad, e.ExtraPad);
    EXPECT_EQ(s.DistrictPad, e.DistrictPad);
    EXPECT_EQ(s.VolPageStyle, e.VolPageStyle);
    EXPECT_FLOAT_EQ(s.FirstLineFraction, e.FirstLineFraction);
    EXPECT_EQ(s.SurnameOwnLine, e.SurnameOwnLine);
    EXPECT_EQ(s.TenLineGap, e.TenLineGap);
    EXPECT_EQ(s.LongForenamesLen, e.LongForenamesLen);
    EXPECT_EQ(s.LongExtraLen, e.LongExtraLen);
}

struct NamedTable {
    const char* event;
    const char* rows;
};

const NamedTable Tables[] = {{"B", BirthsTable}, {"M", MarriagesTable}, {"D", DeathsTable}};

// The checks below read a row's fields independently of the program's own parsing.
void ExpectRowFieldsHold(std::string_view row, const ScanType& s) {
    auto number = [&](std::size_t first, std::size_t width, int actual) {
        std::string field(row.substr(first - 1, width));
        if (field.find('-') == std::string::npos) {
            EXPECT_EQ(actual, std::stoi(field)) << field;
        }
    };
    auto flag = [&](std::size_t position, bool actual) {
        if (row[position - 1] != '-') {
            EXPECT_EQ(actual, row[position - 1] == 'Y');
        }
    };
    number(7, 1, s.NumColumns);
    number(8, 2, s.ScanTypeCode);
    flag(10, s.AskScanType);
    if (row[11] != '-') {
        EXPECT_EQ(s.IndexFont, row[11]);
    }
    number(13, 2, s.SurnamePad);
    number(15, 2, s.ExtraPad);
    number(17, 2, s.DistrictPad);
    number(19, 1, s.VolPageStyle);
    if (row[19] != '-') {
        EXPECT_FLOAT_EQ(s.FirstLineFraction, std::stoi(std::string(row.substr(19, 2))) / 100.0F);
    }
    flag(23, s.SurnameOwnLine);
    flag(24, s.TenLineGap);
    number(25, 2, s.LongForenamesLen);
    number(27, 2, s.LongExtraLen);
}

} // namespace

using ScanTypeTable = test::ScanTypeTest;

TEST(ScanTypeTables, HaveTheirDocumentedLengthsInRowsOf28Characters) {
    EXPECT_EQ(std::strlen(BirthsTable), 476U);
    EXPECT_EQ(std::strlen(MarriagesTable), 728U);
    EXPECT_EQ(std::strlen(DeathsTable), 420U);
    for (const NamedTable& t : Tables) {
        std::string_view rows = t.rows;
        int previousKey = -1;
        for (std::size_t i = 0; i < rows.size(); i += 28) {
            std::string_view row = rows.substr(i, 28);
            ASSERT_EQ(row.size(), 28U);
            EXPECT_EQ(row[5], ' ');
            EXPECT_EQ(row[10], ' ');
            EXPECT_EQ(row[21], ' ');
            int key = std::stoi(std::string(row.substr(0, 5)));
            EXPECT_GT(key, previousKey) << t.event << " rows are in ascending key order";
            previousKey = key;
        }
        EXPECT_EQ(rows.substr(0, 28), "00000 301Y T000099007 NN9999");
    }
}

TEST_F(ScanTypeTable, EveryRowIsAppliedAtItsOwnKeyAndNotJustBelowIt) {
    for (const NamedTable& t : Tables) {
        std::string_view rows = t.rows;
        for (std::size_t i = 28; i < rows.size(); i += 28) {
            std::string_view row = rows.substr(i, 28);
            int key = std::stoi(std::string(row.substr(0, 5)));
            SCOPED_TRACE(std::string(t.event) + " " + std::string(row));
            Read(t.event, static_cast<int16_t>(key / 10), static_cast<int16_t>(key % 10));
            ExpectRowFieldsHold(row, scanType);
            ScanType atKey = scanType;
            // One below the key (quarter 9 of the year before for a quarter 0 key).
            Read(t.event, static_cast<int16_t>((key - 1) / 10),
                 static_cast<int16_t>((key - 1) % 10));
            bool differs =
                atKey.NumColumns != scanType.NumColumns ||
                atKey.AskScanType != scanType.AskScanType ||
                atKey.IndexFont != scanType.IndexFont || atKey.SurnamePad != scanType.SurnamePad ||
                atKey.ExtraPad != scanType.ExtraPad || atKey.DistrictPad != scanType.DistrictPad ||
                atKey.VolPageStyle != scanType.VolPageStyle ||
                atKey.FirstLineFraction != scanType.FirstLineFraction ||
                atKey.SurnameOwnLine != scanType.SurnameOwnLine ||
                atKey.TenLineGap != scanType.TenLineGap ||
                atKey.LongForenamesLen != scanType.LongForenamesLen ||
                atKey.LongExtraLen != scanType.LongExtraLen;
            EXPECT_TRUE(differs);
        }
    }
}

TEST_F(ScanTypeTable, UnknownEventGetsExactlyTheDefaultRow) {
    scanType.NumColumns = 6;
    scanType.ScanTypeCode = 40;
    scanType.AskScanType = false;
    scanType.IndexFont = 'C';
    scanType.SurnameOwnLine = true;
    Read("?", 1990, 0);
    ExpectLayout(scanType, DefaultLayout);
}

TEST_F(ScanTypeTable, Births1837Q2GetsOnlyTheDefaultRowAndQ3OneColumnInCourier) {
    Read("B", 1837, 2);
    ExpectLayout(scanType, DefaultLayout);
    Read("B", 1837, 3);
    ExpectLayout(scanType, {1, 1, true, 'C', 17, 0, 35, 0, 0.07F, false, false, 99, 99});
}

TEST_F(ScanTypeTable, Births1866Q1IsThreeColumnsTimesWithoutAskingAnd1868AddsDistrictPad99) {
    Read("B", 1866, 1);
    ExpectLayout(scanType, {3, 1, false, 'T', 0, 0, 0, 0, 0.07F, false, false, 99, 99});
    Read("B", 1868, 1);
    ExpectLayout(scanType, {3, 1, false, 'T', 0, 0, 99, 0, 0.07F, false, false, 99, 99});
}

TEST_F(ScanTypeTable, Births1984AnnualGetsThe1984RowAnd1983Q4DoesNot) {
    Read("B", 1984, 0);
    ExpectLayout(scanType, {2, 1, false, 'C', 0, 33, 46, 5, 0.07F, true, true, 20, 16});
    Read("B", 1983, 4);
    ExpectLayout(scanType, {2, 1, false, 'C', 0, 23, 36, 4, 0.07F, true, true, 20, 16});
}

TEST_F(ScanTypeTable, Marriages1853AsksOnlyInTheSecondQuarter) {
    Read("M", 1853, 1);
    EXPECT_FALSE(scanType.AskScanType);
    Read("M", 1853, 2);
    EXPECT_TRUE(scanType.AskScanType);
    Read("M", 1853, 3);
    EXPECT_FALSE(scanType.AskScanType);
    Read("M", 1853, 4);
    EXPECT_FALSE(scanType.AskScanType);
}

TEST_F(ScanTypeTable, BirthsFrom1963Q2OverlayEveryRowUpToTheKey) {
    Read("B", 1963, 2);
    ExpectLayout(scanType, {2, 1, false, 'C', 0, 23, 36, 3, 0.07F, true, false, 99, 18});
    Read("B", 1964, 2);
    ExpectLayout(scanType, {2, 1, false, 'C', 0, 23, 36, 3, 0.07F, true, true, 99, 19});
    Read("B", 1966, 1);
    ExpectLayout(scanType, {2, 1, false, 'C', 0, 23, 36, 1, 0.07F, true, true, 22, 13});
    Read("B", 1974, 2);
    ExpectLayout(scanType, {2, 1, false, 'C', 0, 23, 36, 4, 0.07F, true, true, 20, 16});
    Read("B", 1993, 0);
    ExpectLayout(scanType, {2, 1, false, 'C', 0, 23, 34, 5, 0.16F, true, true, 21, 9});
}

TEST_F(ScanTypeTable, BirthsFirstLineFractionFollowsThe1870sAnd1890sRows) {
    Read("B", 1870, 4);
    EXPECT_FLOAT_EQ(scanType.FirstLineFraction, 0.17F);
    Read("B", 1871, 1);
    EXPECT_FLOAT_EQ(scanType.FirstLineFraction, 0.07F);
    Read("B", 1891, 4);
    EXPECT_FLOAT_EQ(scanType.FirstLineFraction, 0.17F);
    Read("B", 1892, 1);
    EXPECT_FLOAT_EQ(scanType.FirstLineFraction, 0.07F);
}

TEST_F(ScanTypeTable, Marriages1994AndDeaths1993TakeTheirLastRows) {
    Read("M", 1993, 0);
    ExpectLayout(scanType, {2, 1, false, 'C', 0, 33, 46, 5, 0.07F, true, true, 99, 14});
    Read("M", 1994, 0);
    ExpectLayout(scanType, {2, 1, false, 'C', 0, 18, 29, 5, 0.16F, true, true, 21, 11});
    Read("D", 1993, 0);
    ExpectLayout(scanType, {2, 1, false, 'C', 0, 23, 32, 5, 0.16F, true, true, 21, 9});
    Read("D", 1837, 3);
    ExpectLayout(scanType, {1, 1, true, 'C', 12, 21, 26, 0, 0.07F, false, false, 99, 99});
}

TEST_F(ScanTypeTable, UnknownYearOrQuarterGetsOnlyTheDefaultRow) {
    Read("B", -1, 3);
    ExpectLayout(scanType, DefaultLayout);
    Read("D", 1836, 4);
    ExpectLayout(scanType, DefaultLayout);
    Read("M", 1990, -1);
    ExpectLayout(scanType, DefaultLayout);
}

TEST_F(ScanTypeTable, YearKeyOverflowIsARunTimeError) {
    EXPECT_THROW(Read("B", 3300, 1), RunTimeError);
    EXPECT_THROW(Read("B", 3277, 0), RunTimeError);
    // The key is formed before the event is looked at.
    EXPECT_THROW(Read("?", 3300, 1), RunTimeError);
    EXPECT_NO_THROW(Read("B", 3276, 4));
    ExpectLayout(scanType, {2, 1, false, 'C', 0, 23, 34, 5, 0.16F, true, true, 21, 9});
}

TEST_F(ScanTypeTable, EndsByWorkingOutTheLineJumps) {
    AddRecords("SMITH", 2);
    AddRecord("TAYLOR");
    Read("B", 1963, 2);
    EXPECT_EQ(table.LineJump[1], 2);
    EXPECT_EQ(table.LineJump[2], 1);
    EXPECT_EQ(table.LineJump[3], 2);
}

TEST_F(ScanTypeTable, LeavesTheFontNameAlone) {
    scanType.FontName = "Arial";
    Read("B", 1837, 3);
    EXPECT_EQ(scanType.FontName, "Arial");
}

} // namespace tv
