// A remembered layout that no scan can have, more than six columns across it, is not taken:
// each of its values lies within its own range, so only a settings file edited by hand holds
// one. Found by fuzzing the scan type for any header (fuzz/corpus/ScanTypeTable keeps the input).
#include "ScanTypeTesting.h"

#include <string>

namespace tv {

class ImpossibleRememberedLayout : public test::ScanTypeTest {
  protected:
    ScanHistory history;

    void RememberAndChoose(int16_t columns, int16_t code) {
        history.Entries[1].ImgFile = "1870B10012.jpg";
        history.Entries[1].NumColumns = columns;
        history.Entries[1].ScanType = code;
        history.ScanHistoryMatch = 1;
        ChooseScanType(table, scanType, columnTops, "/scans/1870B10012.jpg", history);
    }
};

TEST_F(ImpossibleRememberedLayout, ALeftPageOfSixColumnsGivesWayToTheTwoPageRules) {
    SetHeader("B", 1870, 1);
    SetPages({12});
    RememberAndChoose(6, 41);
    // As for a scan never seen: the header's one page 12 is the left page of three columns.
    EXPECT_EQ(scanType.NumColumns, 3);
    EXPECT_EQ(scanType.ScanTypeCode, 41);
    EXPECT_EQ(scanType.ColumnsAcross(), 6);
    EXPECT_EQ(history.ScanHistoryMatch, 1);
}

TEST_F(ImpossibleRememberedLayout, ALeftPageOfFourColumnsNowCoveringBothPagesIsNotDoubled) {
    SetHeader("B", 1870, 1);
    SetPages({12, 13});
    RememberAndChoose(4, 41);
    EXPECT_EQ(scanType.NumColumns, 6);
    EXPECT_EQ(scanType.ScanTypeCode, 40);
    EXPECT_EQ(history.ScanHistoryMatch, 1);
}

TEST_F(ImpossibleRememberedLayout, ARightPageOfFourColumnsOutsideTheTwoPageYearsKeepsTheTable) {
    SetHeader("D", 1950, 2);
    RememberAndChoose(4, 42);
    EXPECT_EQ(scanType.NumColumns, 2); // the deaths table of 1950
    EXPECT_EQ(scanType.ScanTypeCode, 1);
}

TEST_F(ImpossibleRememberedLayout, RememberedLayoutsThatFitAreTakenAsBefore) {
    SetHeader("B", 1870, 1);
    SetPages({12, 13});
    RememberAndChoose(3, 41); // the left page of three becomes both pages of six
    EXPECT_EQ(scanType.NumColumns, 6);
    EXPECT_EQ(scanType.ScanTypeCode, 40);
    EXPECT_EQ(history.ScanHistoryMatch, 0);
    RememberAndChoose(6, 40);
    EXPECT_EQ(scanType.NumColumns, 6);
    RememberAndChoose(3, 42);
    EXPECT_EQ(scanType.ColumnsAcross(), 6);
}

} // namespace tv
