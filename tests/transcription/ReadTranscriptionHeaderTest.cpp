#include "ReaderFixture.h"

namespace tv::test {

namespace {

class ReadHeaderTest : public ReaderTest {};

// A record without and one with a third column.
const std::string OneRecord = "SMITH,John,Leeds,9b,1\r\n";
const std::string ExtraRecord = "SMITH,John,JONES,Leeds,9b,1\r\n";

} // namespace

TEST_F(ReadHeaderTest, InfoEventWordGivesTheEventLetter) {
    Read("+INFO,a,b,c,Births\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderEvent, "B");
    Read("+INFO,a,b,c,marriages\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderEvent, "M");
    Read("+info,a,b,c,DEATHS\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderEvent, "D");
    Read("+INFO,a,b,c,BIR\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderEvent, "?");
}

TEST_F(ReadHeaderTest, EveryReadStartsFromAnUnknownHeader) {
    Read(BirthsHeader1911() + "+PAGE,123\r\n" + ExtraRecord);
    Read(OneRecord);
    EXPECT_EQ(Table.HeaderEvent, "?");
    EXPECT_EQ(Table.HeaderYear, -1);
    EXPECT_EQ(Table.HeaderQuarter, -1);
    EXPECT_EQ(Table.HeaderPageCount, 0);
    EXPECT_EQ(Table.TranscriptionCodePage, 0);
}

TEST_F(ReadHeaderTest, Cp1250ConvertsOnlyTheLinesAfterTheInfoLine) {
    Read("\xB9\xE9,x\r\n+INFO,a,b,c,BIRTHS,cp1250\r\n\xB9\xE9,y\r\n");
    EXPECT_EQ(Table.TranscriptionCodePage, 1250);
    EXPECT_EQ(Table.LineText[1], "\xB9\xE9,x");
    EXPECT_EQ(Table.Surname[1], "\xB9\xE9");
    EXPECT_EQ(Table.LineText[3], "\x95\xE9,y");
    EXPECT_EQ(Table.Surname[3], "\x95\xE9");
}

TEST_F(ReadHeaderTest, CodePageWithoutWindows1252FormsShowsTheBullet) {
    Read("+INFO,a,b,c,BIRTHS,CP437\r\n\xC9\xCD\xBB,x\r\n");
    EXPECT_EQ(Table.TranscriptionCodePage, 437);
    EXPECT_EQ(Table.Surname[2], "\x95\x95\x95");
}

TEST_F(ReadHeaderTest, CodePageThePlatformDoesNotKnowIsIgnored) {
    Read("+INFO,a,b,c,BIRTHS,cp99999\r\n\xB9,x\r\n");
    EXPECT_EQ(Table.TranscriptionCodePage, 0);
    EXPECT_EQ(Table.Surname[2], "\xB9");
}

TEST_F(ReadHeaderTest, CpFollowedByLettersIsIgnored) {
    Read("+INFO,a,b,c,BIRTHS,cpabc\r\n\xB9,x\r\n");
    EXPECT_EQ(Table.TranscriptionCodePage, 0);
    EXPECT_EQ(Table.Surname[2], "\xB9");
}

TEST_F(ReadHeaderTest, CpAloneIsIgnored) {
    Read("+INFO,a,b,c,BIRTHS,cp\r\n\xB9,x\r\n");
    EXPECT_EQ(Table.TranscriptionCodePage, 0);
}

TEST_F(ReadHeaderTest, CodePageThatIsNotAWhole32BitNumberIsIgnored) {
    Read("+INFO,a,b,c,BIRTHS,cp1250.5\r\n" + OneRecord);
    EXPECT_EQ(Table.TranscriptionCodePage, 0);
    Read("+INFO,a,b,c,BIRTHS,cp99999999999\r\n" + OneRecord);
    EXPECT_EQ(Table.TranscriptionCodePage, 0);
}

TEST_F(ReadHeaderTest, LaterInvalidCodePageKeepsTheEarlierOne) {
    Read("+INFO,a,b,c,BIRTHS,cp1250\r\n+INFO,a,b,c,BIRTHS,cpabc\r\n\xB9,x\r\n");
    EXPECT_EQ(Table.TranscriptionCodePage, 1250);
    EXPECT_EQ(Table.Surname[3], "\x95");
}

TEST_F(ReadHeaderTest, YearAndQuarterFromTheFirstYearGroupLine) {
    const char* quarters[] = {"Mar", "JUNE", "sep", "Dec", "", "Spring", " Mar"};
    const int16_t expected[] = {1, 2, 3, 4, 0, -1, -1};
    for (int i = 0; i < 7; ++i) {
        Read("+F,1911," + std::string(quarters[i]) + "\r\n" + OneRecord);
        EXPECT_EQ(Table.HeaderYear, 1911);
        EXPECT_EQ(Table.HeaderQuarter, expected[i]) << quarters[i];
    }
}

TEST_F(ReadHeaderTest, YearOutside1837To2000IsUnknown) {
    Read("+S,1836,Mar\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderYear, -1);
    Read("+S,2001,Mar\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderYear, -1);
    Read("+S,19x1,Mar\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderYear, -1);
    Read("+S,2000,Mar\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderYear, 2000);
    Read("+S,1837,Mar\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderYear, 1837);
}

TEST_F(ReadHeaderTest, TwoBHeadersMakeYearAndQuarterUnknownWithNoMismatchReported) {
    GraphicsFile = "/scans/1912B40001.jpg";
    Read("+INFO,a,b,c,BIRTHS\r\n+B,1911,Sep\r\n+B,1911,Sep\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderYear, -1);
    EXPECT_EQ(Table.HeaderQuarter, -1);
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(ReadHeaderTest, AnyTwoLinesOfTheYearGroupMakeTheFileAmbiguous) {
    Read("+S,1911,Sep\r\n+u,1911,Sep\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderYear, -1);
    EXPECT_EQ(Table.HeaderQuarter, -1);
}

TEST_F(ReadHeaderTest, AnnualIndexFromYear1984WithAnEmptyQuarter) {
    Read("+S,1984,\r\n" + OneRecord);
    EXPECT_TRUE(Table.AnnualIndex);
    Read("+S,1983,\r\n" + OneRecord);
    EXPECT_FALSE(Table.AnnualIndex);
    Read("+S,1990,Mar\r\n" + OneRecord);
    EXPECT_FALSE(Table.AnnualIndex);
}

TEST_F(ReadHeaderTest, AnnualIndexKeepsItsValueWithoutAYearGroupLine) {
    Read("+S,1990,\r\n" + OneRecord);
    Read("+INFO,a,b,c,BIRTHS\r\n" + OneRecord);
    EXPECT_TRUE(Table.AnnualIndex);
}

TEST_F(ReadHeaderTest, PageLinesBeforeTheLastRecordGiveThePageNumbers) {
    Read("+PAGE,123\r\n" + OneRecord + "+PAGE,124.0\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderPageCount, 2);
    EXPECT_EQ(Table.HeaderPages[1], 123);
    EXPECT_EQ(Table.HeaderPageLines[1], 1);
    EXPECT_EQ(Table.HeaderPages[2], 124);
    EXPECT_EQ(Table.HeaderPageLines[2], 3);
}

TEST_F(ReadHeaderTest, PageLineAfterTheLastRecordGivesNoPageNumber) {
    Read("+PAGE,11\r\n" + OneRecord + "+PAGE,12\r\n");
    EXPECT_EQ(Table.HeaderPageCount, 1);
    EXPECT_EQ(Table.HeaderPages[1], 11);
}

TEST_F(ReadHeaderTest, Page9999IsNotTaken) {
    Read("+PAGE,9999\r\n+PAGE,9998\r\n+PAGE,\r\n+PAGE,x\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderPageCount, 1);
    EXPECT_EQ(Table.HeaderPages[1], 9998);
    EXPECT_EQ(Table.HeaderPageLines[1], 2);
}

TEST_F(ReadHeaderTest, The31stPageLineIsIgnored) {
    std::string bytes;
    for (int page = 1; page <= 31; ++page)
        bytes += "+PAGE," + std::to_string(page) + "\r\n";
    Read(bytes + OneRecord);
    EXPECT_EQ(Table.HeaderPageCount, 30);
    EXPECT_EQ(Table.HeaderPages[30], 30);
}

TEST_F(ReadHeaderTest, LowerCasePageLineCountsAsAHeaderButGivesNoPage) {
    std::string path = Read("+page,12\r\n" + OneRecord);
    EXPECT_EQ(Table.HeaderPageCount, 0);
    EXPECT_TRUE(Ask.Shown.empty());
    EXPECT_EQ(path, PathOf("1911B30123.SCA"));
}

TEST_F(ReadHeaderTest, PageTooLargeForA16BitNumberIsARunTimeErrorNamingItsLine) {
    try {
        Read("+INFO,a\r\n+S,1911,Sep\r\n+PAGE,-99999\r\n" + OneRecord);
        FAIL() << "no run-time error";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.Number, 6);
        EXPECT_EQ(error.Line, 3);
        EXPECT_EQ(RefusalReason(error), "Run-time error 6: Overflow in line 3");
    }
}

TEST_F(ReadHeaderTest, HeaderLinesAreNotRecords) {
    Read("+INFO,a\r\n+XYZ,1\r\n+S,1911,Sep\r\n" + OneRecord);
    for (int line = 1; line <= 3; ++line) {
        EXPECT_EQ(Table.LineRecNo[line], -1);
        EXPECT_EQ(Table.LineJump[line], 0);
    }
    EXPECT_EQ(Table.Surname[2], "+XYZ");
    EXPECT_EQ(Table.RecordCount, 1);
}

TEST_F(ReadHeaderTest, CaptionCarriesTheScanDescription) {
    Read(BirthsHeader1911() + "+PAGE,123\r\n" + ExtraRecord);
    ASSERT_FALSE(ScanDescription(Table).empty());
    EXPECT_EQ(Caption, "Tallyview - " + ScanDescription(Table));
}

TEST_F(ReadHeaderTest, CaptionWithoutADescriptionIsTheProgramsName) {
    Read(OneRecord);
    ASSERT_TRUE(ScanDescription(Table).empty());
    EXPECT_EQ(Caption, "Tallyview");
}

} // namespace tv::test
