#include "ScanTypeTesting.h"

#include <string>
#include <vector>

namespace tv {

class SetScanTypesTest : public test::ScanTypeTest {
  protected:
    void Set(int16_t columns, int16_t pageOption, bool surnameOwnLine = false) {
        SetScanTypes(scanType, columns, pageOption, surnameOwnLine, table, columnTops);
    }
};

TEST_F(SetScanTypesTest, HalvingColumnsOfOnePageRoundsHalvesToEven) {
    Set(5, 9);
    EXPECT_EQ(scanType.NumColumns, 2);
    EXPECT_EQ(scanType.ScanTypeCode, 42);
    Set(6, 8);
    EXPECT_EQ(scanType.NumColumns, 3);
    EXPECT_EQ(scanType.ScanTypeCode, 41);
    Set(3, 9);
    EXPECT_EQ(scanType.NumColumns, 2);
    Set(7, 8);
    EXPECT_EQ(scanType.NumColumns, 4);
    Set(1, 8);
    EXPECT_EQ(scanType.NumColumns, 0);
    Set(4, 8);
    EXPECT_EQ(scanType.NumColumns, 2);
    EXPECT_EQ(scanType.ScanTypeCode, 41);
}

TEST_F(SetScanTypesTest, PageOptionsOneToSevenGiveTheirCodesAndTheColumnsAsTheyAre) {
    const std::vector<int> codes = {1, 21, 22, 31, 32, 33, 40};
    for (int16_t option = 1; option <= 7; ++option) {
        scanType.NumColumns = 1;
        Set(3, option);
        EXPECT_EQ(scanType.ScanTypeCode, codes[static_cast<std::size_t>(option - 1)]) << option;
        EXPECT_EQ(scanType.NumColumns, 3) << option;
    }
}

TEST_F(SetScanTypesTest, AnyOtherPageOptionChangesNeither) {
    scanType.NumColumns = 2;
    scanType.ScanTypeCode = 22;
    for (int16_t option : {0, 10, -1}) {
        Set(6, option);
        EXPECT_EQ(scanType.NumColumns, 2);
        EXPECT_EQ(scanType.ScanTypeCode, 22);
    }
}

TEST_F(SetScanTypesTest, ChangingSurnameOwnLineRecomputesTheLineJumps) {
    AddRecords("SMITH", 2);
    AddRecord("TAYLOR");
    Set(3, 1, true);
    EXPECT_TRUE(scanType.SurnameOwnLine);
    EXPECT_EQ(table.LineJump[1], 2);
    EXPECT_EQ(table.LineJump[2], 1);
    EXPECT_EQ(table.LineJump[3], 2);
    Set(3, 1, false);
    EXPECT_FALSE(scanType.SurnameOwnLine);
    EXPECT_EQ(table.LineJump[1], 1);
    EXPECT_EQ(table.LineJump[3], 1);
}

TEST_F(SetScanTypesTest, UnchangedSurnameOwnLineLeavesTheLineJumps) {
    scanType.SurnameOwnLine = true;
    AddRecords("SMITH", 2);
    table.LineJump[2] = 3; // not what CalcLineJump would give
    Set(3, 1, true);
    EXPECT_EQ(table.LineJump[1], 1);
    EXPECT_EQ(table.LineJump[2], 3);
}

class ScanDescriptionTest : public test::ScanTypeTest {
  protected:
    std::string Describe(const std::string& event, int16_t year, int16_t quarter,
                         const std::vector<int16_t>& pages) {
        SetHeader(event, year, quarter);
        SetPages(pages);
        return ScanDescription(table);
    }
};

TEST_F(ScanDescriptionTest, JoinsEventYearQuarterAndPage) {
    EXPECT_EQ(Describe("B", 1911, 3, {123}), "Births 1911 Qtr 3 Page 123");
}

TEST_F(ScanDescriptionTest, NoPiecesGiveAnEmptyText) {
    EXPECT_EQ(Describe("?", -1, -1, {}), "");
    EXPECT_EQ(Describe("?", -1, 0, {}), "");
}

TEST_F(ScanDescriptionTest, SeveralPagesShowTheFirstAndTheLast) {
    EXPECT_EQ(Describe("?", -1, -1, {12, 13, 14}), "Pages 12-14");
    EXPECT_EQ(Describe("D", 1990, 0, {12, 14}), "Deaths 1990 Pages 12-14");
}

TEST_F(ScanDescriptionTest, EachEventHasItsWord) {
    EXPECT_EQ(Describe("B", -1, -1, {}), "Births");
    EXPECT_EQ(Describe("M", -1, -1, {}), "Marriages");
    EXPECT_EQ(Describe("D", -1, -1, {}), "Deaths");
    EXPECT_EQ(Describe("?", 1850, 2, {}), "1850 Qtr 2");
}

TEST_F(ScanDescriptionTest, EveryCombinationOfPieces) {
    struct Case {
        const char* event;
        int16_t year;
        int16_t quarter;
        std::vector<int16_t> pages;
        const char* expected;
    };
    const std::vector<Case> cases = {
        {"?", -1, 0, {}, ""},
        {"?", -1, 0, {123}, "Page 123"},
        {"?", -1, 0, {12, 13, 14}, "Pages 12-14"},
        {"?", -1, 3, {}, "Qtr 3"},
        {"?", -1, 3, {123}, "Qtr 3 Page 123"},
        {"?", -1, 3, {12, 13, 14}, "Qtr 3 Pages 12-14"},
        {"?", 1911, 0, {}, "1911"},
        {"?", 1911, 0, {123}, "1911 Page 123"},
        {"?", 1911, 0, {12, 13, 14}, "1911 Pages 12-14"},
        {"?", 1911, 3, {}, "1911 Qtr 3"},
        {"?", 1911, 3, {123}, "1911 Qtr 3 Page 123"},
        {"?", 1911, 3, {12, 13, 14}, "1911 Qtr 3 Pages 12-14"},
        {"B", -1, 0, {}, "Births"},
        {"B", -1, 0, {123}, "Births Page 123"},
        {"B", -1, 0, {12, 13, 14}, "Births Pages 12-14"},
        {"B", -1, 3, {}, "Births Qtr 3"},
        {"B", -1, 3, {123}, "Births Qtr 3 Page 123"},
        {"B", -1, 3, {12, 13, 14}, "Births Qtr 3 Pages 12-14"},
        {"B", 1911, 0, {}, "Births 1911"},
        {"B", 1911, 0, {123}, "Births 1911 Page 123"},
        {"B", 1911, 0, {12, 13, 14}, "Births 1911 Pages 12-14"},
        {"B", 1911, 3, {}, "Births 1911 Qtr 3"},
        {"B", 1911, 3, {123}, "Births 1911 Qtr 3 Page 123"},
        {"B", 1911, 3, {12, 13, 14}, "Births 1911 Qtr 3 Pages 12-14"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Describe(c.event, c.year, c.quarter, c.pages), c.expected);
}

} // namespace tv
