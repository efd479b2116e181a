// The scan layout options form's rules: preselection, what each option stands for, which page
// options a column choice allows, and the choice applied on closing.
#include "layout/ScanLayoutOptions.h"
#include "ScanTypeTesting.h"

namespace tv::test {
namespace {

class ScanLayoutOptions : public ScanTypeTest {
  protected:
    void Apply(int16_t optCol, int16_t optPage, bool surnames) {
        ApplyScanLayout(ScanLayoutChoice{optCol, optPage, surnames}, scanType, table, columnTops);
    }

    ScanLayoutChoice Preselect(int16_t code, int16_t columns) {
        scanType.ScanTypeCode = code;
        scanType.NumColumns = columns;
        return PreselectScanLayout(scanType);
    }
};

TEST_F(ScanLayoutOptions, FourColumnsWithTheLeftHandPageGivesTwoColumnsAndCode41) {
    Apply(5, 8, false);
    EXPECT_EQ(scanType.NumColumns, 2);
    EXPECT_EQ(scanType.ScanTypeCode, 41);
}

TEST_F(ScanLayoutOptions, ThreeColumnsWithTheBottomThirdGivesThreeColumnsAndCode33) {
    Apply(3, 6, false);
    EXPECT_EQ(scanType.NumColumns, 3);
    EXPECT_EQ(scanType.ScanTypeCode, 33);
}

TEST_F(ScanLayoutOptions, ClosingWithoutTouchingAnOptionAppliesThePreselectionUnchanged) {
    const std::pair<int16_t, int16_t> states[] = {{1, 1},  {1, 2},  {1, 3},  {21, 3}, {22, 2},
                                                  {31, 1}, {32, 3}, {33, 2}, {40, 2}, {40, 4},
                                                  {40, 6}, {41, 1}, {41, 3}, {42, 2}, {1, 6}};
    for (auto [code, columns] : states) {
        scanType.ScanTypeCode = code;
        scanType.NumColumns = columns;
        ApplyScanLayout(PreselectScanLayout(scanType), scanType, table, columnTops);
        EXPECT_EQ(scanType.ScanTypeCode, code) << code << " " << columns;
        EXPECT_EQ(scanType.NumColumns, columns) << code << " " << columns;
    }
}

TEST_F(ScanLayoutOptions, UntickingSurnameLinesFor1963Q2SwitchesThemOffAndRecomputesTheJumps) {
    AddRecord("ADAMS");
    AddRecord("BAKER");
    AddRecord("BAKER");
    Read("D", 1963, 2);
    ASSERT_TRUE(scanType.SurnameOwnLine);
    ASSERT_EQ(table.LineJump[1], 2);
    ASSERT_EQ(table.LineJump[2], 2);
    ScanLayoutChoice choice = PreselectScanLayout(scanType);
    EXPECT_TRUE(choice.SurnamesOnOwnLine);
    choice.SurnamesOnOwnLine = false;
    ApplyScanLayout(choice, scanType, table, columnTops);
    EXPECT_FALSE(scanType.SurnameOwnLine);
    EXPECT_EQ(table.LineJump[1], 1);
    EXPECT_EQ(table.LineJump[2], 1);
    EXPECT_EQ(table.LineJump[3], 1);
}

TEST_F(ScanLayoutOptions, PreselectionTakesThePageOptionFromTheScanTypeCode) {
    const std::pair<int16_t, int16_t> pages[] = {{1, 1},  {21, 2}, {22, 3}, {31, 4}, {32, 5},
                                                 {33, 6}, {40, 7}, {41, 8}, {42, 9}};
    for (auto [code, page] : pages)
        EXPECT_EQ(Preselect(code, 2).OptPage, page) << code;
}

TEST_F(ScanLayoutOptions, PreselectionTakesTheColumnOptionOfTheColumnCount) {
    EXPECT_EQ(Preselect(1, 1).OptCol, 1);
    EXPECT_EQ(Preselect(22, 2).OptCol, 2);
    EXPECT_EQ(Preselect(31, 3).OptCol, 3);
    EXPECT_EQ(Preselect(40, 2).OptCol, 4);
    EXPECT_EQ(Preselect(40, 4).OptCol, 5);
    EXPECT_EQ(Preselect(40, 6).OptCol, 6);
    EXPECT_EQ(Preselect(41, 1).OptCol, 4); // one page of a double page: both pages count
    EXPECT_EQ(Preselect(42, 3).OptCol, 6);
}

TEST_F(ScanLayoutOptions, PreselectionTicksCheck1FromSurnameOwnLine) {
    scanType.SurnameOwnLine = true;
    EXPECT_TRUE(PreselectScanLayout(scanType).SurnamesOnOwnLine);
    scanType.SurnameOwnLine = false;
    EXPECT_FALSE(PreselectScanLayout(scanType).SurnamesOnOwnLine);
}

TEST_F(ScanLayoutOptions, ColumnOptionsStandForOneToThreeAndTwoFourSixColumns) {
    const int16_t columns[] = {1, 2, 3, 2, 4, 6};
    for (int16_t optCol = 1; optCol <= 6; ++optCol)
        EXPECT_EQ(ColumnsOfOptCol(optCol), columns[optCol - 1]) << optCol;
    EXPECT_THROW(ColumnsOfOptCol(0), RunTimeError);
    EXPECT_THROW(ColumnsOfOptCol(7), RunTimeError);
}

TEST_F(ScanLayoutOptions, SinglePageAllowsWholeHalfAndThirdPagesAndDoublePageTheOtherThree) {
    for (int16_t optPage = 1; optPage <= 9; ++optPage) {
        EXPECT_EQ(PageOptionEnabled(optPage, false), optPage <= 6) << optPage;
        EXPECT_EQ(PageOptionEnabled(optPage, true), optPage >= 7) << optPage;
    }
}

} // namespace
} // namespace tv::test
