#include "ScanTypeTesting.h"

#include <set>
#include <string>

namespace tv {

class ChooseScanTypeTest : public test::ScanTypeTest {
  protected:
    ScanHistory history;

    void Choose(const std::string& graphicsFile) {
        ChooseScanType(table, scanType, columnTops, graphicsFile, history);
    }

    void Remember(int entry, const std::string& imgFile, int16_t columns, int16_t code) {
        history.Entries[entry].ImgFile = imgFile;
        history.Entries[entry].NumColumns = columns;
        history.Entries[entry].ScanType = code;
    }

    void ExpectColumnsAndCode(int columns, int code, bool ask) {
        EXPECT_EQ(scanType.NumColumns, columns);
        EXPECT_EQ(scanType.ScanTypeCode, code);
        EXPECT_EQ(scanType.AskScanType, ask);
    }
};

// Births 1870 Q1, named for page 12.
constexpr const char* Births1870Page12 = "C:\\Scans\\1870B10012.jpg";

TEST_F(ChooseScanTypeTest, Births1870DoublePageScanFollowsTheHeaderPages) {
    SetHeader("B", 1870, 1);
    SetPages({12, 13});
    Choose(Births1870Page12);
    ExpectColumnsAndCode(6, 40, false);

    SetPages({12});
    Choose(Births1870Page12);
    ExpectColumnsAndCode(3, 41, false);

    SetPages({13});
    Choose(Births1870Page12);
    ExpectColumnsAndCode(3, 42, false);

    SetPages({20});
    Choose(Births1870Page12);
    ExpectColumnsAndCode(3, 1, true);
}

TEST_F(ChooseScanTypeTest, FacingPageMayBeNumberedUpToSevenOn) {
    SetHeader("B", 1870, 1);
    SetPages({19});
    Choose(Births1870Page12);
    ExpectColumnsAndCode(3, 42, false);
    SetPages({12, 19});
    Choose(Births1870Page12);
    ExpectColumnsAndCode(6, 40, false);
    SetPages({12, 20});
    Choose(Births1870Page12);
    ExpectColumnsAndCode(3, 1, true);
    SetPages({12, 13, 14});
    Choose(Births1870Page12);
    ExpectColumnsAndCode(3, 1, true);
}

TEST_F(ChooseScanTypeTest, DoublePageScanWithoutAPageInItsNameAsksTheUser) {
    SetHeader("B", 1870, 1);
    SetPages({12, 13});
    Choose("C:\\Scans\\1870B1.jpg");
    ExpectColumnsAndCode(3, 1, true);
}

TEST_F(ChooseScanTypeTest, MarriagesDoublePageScanHasOneColumnAPage) {
    const std::string file = "C:\\Scans\\1850M20045.jpg";
    SetHeader("M", 1850, 2);
    SetPages({45, 46});
    Choose(file);
    ExpectColumnsAndCode(2, 40, false);
    SetPages({45});
    Choose(file);
    ExpectColumnsAndCode(1, 41, false);
    SetPages({46});
    Choose(file);
    ExpectColumnsAndCode(1, 42, false);
    SetPages({60});
    Choose(file);
    ExpectColumnsAndCode(1, 1, true);
}

TEST_F(ChooseScanTypeTest, BirthsDoublePageYearsAreExactlyTheListedOnes) {
    const std::set<int> listed = {1866, 1867, 1870, 1871, 1872, 1873, 1874, 1875, 1876, 1877,
                                  1882, 1884, 1885, 1886, 1887, 1888, 1889, 1890, 1891};
    SetPages({12, 13});
    for (int year = 1860; year <= 1900; ++year) {
        SetHeader("B", static_cast<int16_t>(year), 2);
        Choose(std::to_string(year) + "B20012.jpg");
        EXPECT_EQ(scanType.ScanTypeCode == 40, listed.count(year) == 1) << year;
    }
}

TEST_F(ChooseScanTypeTest, MarriagesDoublePageYearsAreExactlyTheListedOnes) {
    const std::set<int> listed = {1843, 1845, 1846, 1847, 1848, 1849, 1850, 1851, 1852, 1853,
                                  1857, 1858, 1859, 1860, 1861, 1862, 1863, 1864, 1865};
    SetPages({12, 13});
    for (int year = 1838; year <= 1870; ++year) {
        SetHeader("M", static_cast<int16_t>(year), 2);
        Choose(std::to_string(year) + "M20012.jpg");
        EXPECT_EQ(scanType.ScanTypeCode == 40, listed.count(year) == 1) << year;
    }
    // Deaths have no double-page years.
    SetHeader("D", 1870, 2);
    Choose("1870D20012.jpg");
    ExpectColumnsAndCode(3, 1, false);
}

TEST_F(ChooseScanTypeTest, OtherScansOfOver400RecordsAreTakenAsTwoPagesAndAsk) {
    SetHeader("D", 1900, 3);
    table.RecordCount = 400;
    Choose("1900D30007.jpg");
    ExpectColumnsAndCode(3, 1, false);
    table.RecordCount = 401;
    Choose("1900D30007.jpg");
    ExpectColumnsAndCode(6, 40, true);
}

TEST_F(ChooseScanTypeTest, RememberedLeftPageBecomesTwoPagesWhenBothAreTranscribed) {
    Remember(4, "1870B10012.jpg", 3, 41);
    history.ScanHistoryMatch = 4;
    history.ScanHistoryNear = 2;
    SetHeader("B", 1870, 1);
    SetPages({12, 13});
    Choose(Births1870Page12);
    ExpectColumnsAndCode(6, 40, false);
    EXPECT_EQ(history.ScanHistoryMatch, 0);
    EXPECT_EQ(history.ScanHistoryNear, 0);
}

TEST_F(ChooseScanTypeTest, RememberedLeftPageStaysWhenOnlyThatPageIsTranscribed) {
    Remember(1, "1870B10012.jpg", 3, 41);
    history.ScanHistoryMatch = 1;
    SetHeader("B", 1870, 1);
    SetPages({12});
    Choose(Births1870Page12);
    ExpectColumnsAndCode(3, 41, false);
    EXPECT_EQ(history.ScanHistoryMatch, 1);
}

TEST_F(ChooseScanTypeTest, RememberedMatchOverridesTheAutomaticRules) {
    Remember(2, "1870B10012.jpg", 2, 22);
    Remember(3, "1870B10020.jpg", 1, 33);
    history.ScanHistoryMatch = 2;
    history.ScanHistoryNear = 3;
    SetHeader("B", 1870, 1);
    SetPages({12, 13});
    Choose(Births1870Page12);
    ExpectColumnsAndCode(2, 22, false);
    EXPECT_EQ(history.ScanHistoryMatch, 2);
    EXPECT_EQ(history.ScanHistoryNear, 3);
}

TEST_F(ChooseScanTypeTest, NearEntryIsUsedWhenThereIsNoMatch) {
    Remember(3, "1870B10020.jpg", 1, 33);
    history.ScanHistoryNear = 3;
    SetHeader("B", 1870, 1);
    SetPages({12, 13});
    Choose(Births1870Page12);
    ExpectColumnsAndCode(1, 33, false);
}

TEST_F(ChooseScanTypeTest, RememberedEntryAbove10IsARunTimeError) {
    history.ScanHistoryMatch = 11;
    SetHeader("B", 1900, 1);
    EXPECT_THROW(Choose("1900B10001.jpg"), RunTimeError);
}

TEST_F(ChooseScanTypeTest, FontNameFollowsTheIndexFont) {
    SetHeader("B", 1837, 3);
    Choose("1837B30001.jpg");
    EXPECT_EQ(scanType.FontName, "Courier New");
    SetHeader("B", 1866, 1);
    Choose("1866B10001.jpg");
    EXPECT_EQ(scanType.FontName, "Times New Roman");
}

TEST_F(ChooseScanTypeTest, StartsAgainFromTheDefaultRow) {
    scanType.NumColumns = 6;
    scanType.ScanTypeCode = 40;
    scanType.SurnameOwnLine = true;
    SetHeader("?", -1, -1);
    Choose("");
    ExpectColumnsAndCode(3, 1, true);
    EXPECT_FALSE(scanType.SurnameOwnLine);
}

} // namespace tv
