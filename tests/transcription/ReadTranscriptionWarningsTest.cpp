#include "ReaderFixture.h"

namespace tv::test {

namespace {

class ReadWarningsTest : public ReaderTest {};

const std::string Births1911Sep = BirthsHeader1911() + "SMITH,John,JONES,Leeds,9b,1\r\n";

} // namespace

TEST_F(ReadWarningsTest, FileNameMismatchNamesYearQuarterAndEvent) {
    GraphicsFile = "/scans/1912M20045.jpg";
    std::string path = Read(Births1911Sep);
    ASSERT_EQ(Ask.Shown.size(), 1U);
    EXPECT_EQ(Ask.Shown[0].Text,
              "Year, Quarter, BMorD in graphics file name appears to be inconsistent with details "
              "in file header\n"
              "File name     Year:1912  Qtr:2  B,M or D:M\n"
              "File header  Year:1911  Qtr:3  B,M or D:B");
    EXPECT_EQ(Ask.Shown[0].Title, "Tallyview");
    EXPECT_EQ(Ask.Shown[0].Choice, Buttons::Ok);
    EXPECT_EQ(path, PathOf("1911B30123.SCA"));
}

TEST_F(ReadWarningsTest, FileNameMismatchShowsUnknownNumbersAsMinusOne) {
    GraphicsFile = "C:\\scans\\1912B5.jpg";
    Read(Births1911Sep);
    EXPECT_EQ(Ask.Texts(),
              std::vector<std::string>{
                  "Year in graphics file name appears to be inconsistent with details in file "
                  "header\n"
                  "File name     Year:1912  Qtr:-1  B,M or D:B\n"
                  "File header  Year:1911  Qtr:3  B,M or D:B"});
}

TEST_F(ReadWarningsTest, OnlyTheEventDiffersWhenTheHeaderYearIsAmbiguous) {
    GraphicsFile = "/scans/1912D40001.jpg";
    Read("+INFO,a,b,c,BIRTHS\r\n+S,1911,Sep\r\n+S,1911,Sep\r\nSMITH,John,Leeds,9b,1\r\n");
    EXPECT_EQ(Ask.Texts(),
              std::vector<std::string>{
                  "BMorD in graphics file name appears to be inconsistent with details in file "
                  "header\n"
                  "File name     Year:1912  Qtr:4  B,M or D:D\n"
                  "File header  Year:-1  Qtr:-1  B,M or D:B"});
}

TEST_F(ReadWarningsTest, MatchingFileNameGivesNoMessage) {
    GraphicsFile = "/scans/1911b30123.jpg";
    Read(Births1911Sep);
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(ReadWarningsTest, UnknownEventLetterInTheFileNameReportsNoMismatch) {
    GraphicsFile = "/scans/1912X30123.jpg";
    Read(Births1911Sep);
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(ReadWarningsTest, FileNameWithoutAQuarterIsNotComparedOnTheQuarter) {
    GraphicsFile = "/scans/1990B12.jpg";
    Read("+INFO,a,b,c,BIRTHS\r\n+S,1990,Jun\r\nSMITH,John,JONES,Leeds,9b,1\r\n");
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(ReadWarningsTest, FileWithoutRecordsIsSuspect) {
    std::string path = Read(BirthsHeader1911() + "# nothing yet\r\n");
    ASSERT_EQ(Ask.Shown.size(), 1U);
    EXPECT_EQ(Ask.Shown[0].Text, SuspectText(path, NoRecordsReason));
    EXPECT_EQ(Ask.Shown[0].Choice, Buttons::OkCancel);
    EXPECT_EQ(Ask.Shown[0].Default, Answer::Cancel);
    EXPECT_EQ(Ask.Shown[0].Title, "Tallyview");
}

TEST_F(ReadWarningsTest, FileWithoutHeaderLinesIsSuspect) {
    std::string path = Read("SMITH,John,Leeds,9b,1\r\n");
    EXPECT_EQ(Ask.Texts(), std::vector<std::string>{SuspectText(path, NoHeaderReason)});
}

TEST_F(ReadWarningsTest, AnyHeaderLineOfTheThreeKindsCounts) {
    for (const char* header : {"+INFO,a", "+PAGE,", "+U,1900,Mar"}) {
        Ask.Shown.clear();
        Read(std::string(header) + "\r\nSMITH,John,Leeds,9b,1\r\n");
        EXPECT_TRUE(Ask.Shown.empty()) << header;
    }
    Read("+XYZ\r\nSMITH,John,Leeds,9b,1\r\n");
    EXPECT_EQ(Ask.Shown.size(), 1U);
}

TEST_F(ReadWarningsTest, OkAtEveryWarningCarriesOnThroughAllThree) {
    std::string path = Read(std::string(150, 'x') + "\r\n");
    EXPECT_EQ(path, PathOf("1911B30123.SCA"));
    EXPECT_EQ(Ask.Texts(), (std::vector<std::string>{SuspectText(path, NoRecordsReason),
                                                     SuspectText(path, NoHeaderReason),
                                                     SuspectText(path, LongLinesReason)}));
}

TEST_F(ReadWarningsTest, CancelAtTheSecondWarningQuitsAtOnce) {
    std::string path = PathOf("1911B30123.SCA");
    Ask.Script = {Answer::Ok, Answer::Cancel};
    EXPECT_EQ(Read(std::string(150, 'x') + "\r\n"), "**QUIT**");
    EXPECT_EQ(Ask.Texts(), (std::vector<std::string>{SuspectText(path, NoRecordsReason),
                                                     SuspectText(path, NoHeaderReason)}));
}

TEST_F(ReadWarningsTest, CancelAtTheLongLinesWarningQuits) {
    Ask.Script = {Answer::Cancel};
    EXPECT_EQ(Read(Births1911Sep + std::string(101, 'x') + "\r\n"), "**QUIT**");
    EXPECT_EQ(Ask.Shown.size(), 1U);
}

TEST_F(ReadWarningsTest, FileNameMessageComesBeforeTheSuspectWarnings) {
    GraphicsFile = "/scans/1912B30001.jpg";
    std::string path = Read(BirthsHeader1911());
    ASSERT_EQ(Ask.Shown.size(), 2U);
    EXPECT_EQ(Ask.Shown[0].Choice, Buttons::Ok);
    EXPECT_EQ(Ask.Shown[1].Text, SuspectText(path, NoRecordsReason));
}

} // namespace tv::test
