#include "ReaderFixture.h"

namespace tv::test {

namespace {

class ReadRecordsTest : public ReaderTest {};

const std::string ExtraFieldQuestion = "Is this a Death index or ...\r"
                                       "... a Birth index with mother's surname or ...\r"
                                       "... a Marriage index with wife's surname";

std::string Header(const std::string& eventWord, const std::string& year,
                   const std::string& quarter) {
    return "+INFO,a,b,c," + eventWord + "\r\n+S," + year + "," + quarter + "\r\n";
}

} // namespace

TEST_F(ReadRecordsTest, RecordsAreNumberedInFileOrder) {
    Read(Header("BIRTHS", "1900", "Mar") +
         "SMITH,John,Leeds,9b,1\r\n# c\r\nSMITH,Ann,York,9c,2\r\n");
    EXPECT_EQ(Table.RecordCount, 2);
    EXPECT_EQ(Table.LineRecNo[3], 1);
    EXPECT_EQ(Table.LineRecNo[4], -1);
    EXPECT_EQ(Table.LineRecNo[5], 2);
    EXPECT_GE(Table.LineJump[3], 1);
    EXPECT_EQ(Table.LineJump[4], 0);
}

TEST_F(ReadRecordsTest, LowerCaseBirthsHeaderOf1911SepGivesAnExtraFieldWithoutAQuestion) {
    Read("+info,a,b,c,births\r\n+s,1911,sep\r\nSMITH,John,JONES,Leeds,9b,1\r\n");
    EXPECT_EQ(Table.HeaderYear, 1911);
    EXPECT_EQ(Table.HeaderQuarter, 3);
    EXPECT_TRUE(Table.HasExtraField);
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(ReadRecordsTest, BirthsOf1911SepAskWhenTheFirstRecordHasNoSixthField) {
    Ask.Script = {Answer::No};
    Read("+info,a,b,c,births\r\n+s,1911,sep\r\nSMITH,John,Leeds,9b,1\r\n");
    ASSERT_EQ(Ask.Shown.size(), 1U);
    EXPECT_EQ(Ask.Shown[0].Text, ExtraFieldQuestion);
    EXPECT_EQ(Ask.Shown[0].Title, "Tallyview");
    EXPECT_EQ(Ask.Shown[0].Choice, Buttons::YesNo);
    EXPECT_FALSE(Table.HasExtraField);
    EXPECT_EQ(Table.District[3], "Leeds");
    EXPECT_EQ(Table.ExtraField[3], "");
}

TEST_F(ReadRecordsTest, ExtraFieldQuestionAnsweredYes) {
    Ask.Script = {Answer::Yes};
    Read(Header("BIRTHS", "1900", "Mar") + "SMITH,John,JONES,Leeds,9b,1\r\n");
    EXPECT_EQ(Ask.Texts(), std::vector<std::string>{ExtraFieldQuestion});
    EXPECT_TRUE(Table.HasExtraField);
    EXPECT_EQ(Table.ExtraField[3], "JONES");
    EXPECT_EQ(Table.Page[3], "1");
}

TEST_F(ReadRecordsTest, ExtraFieldQuestionAnsweredNo) {
    Ask.Script = {Answer::No};
    Read(Header("BIRTHS", "1900", "Mar") + "SMITH,John,JONES,Leeds,9b,1\r\n");
    EXPECT_FALSE(Table.HasExtraField);
    EXPECT_EQ(Table.ExtraField[3], "");
    EXPECT_EQ(Table.District[3], "JONES");
    EXPECT_EQ(Table.Volume[3], "Leeds");
    EXPECT_EQ(Table.Page[3], "9b");
}

TEST_F(ReadRecordsTest, ExtraFieldIsDecidedOnTheFirstRecordOnly) {
    Read(Header("BIRTHS", "1900", "Mar") +
         "SMITH,John,Leeds,9b,1\r\nSMITH,Ann,JONES,York,9c,2\r\n");
    EXPECT_TRUE(Ask.Shown.empty());
    EXPECT_FALSE(Table.HasExtraField);
}

TEST_F(ReadRecordsTest, ExtraFieldByEventYearAndQuarter) {
    struct Case {
        const char* Event;
        const char* Year;
        const char* Quarter;
        bool Extra;
    };
    const Case cases[] = {{"DEATHS", "1850", "Mar", true},     {"BIRTHS", "1911", "Jun", false},
                          {"BIRTHS", "1911", "Dec", true},     {"BIRTHS", "1912", "Mar", true},
                          {"MARRIAGES", "1911", "Dec", false}, {"MARRIAGES", "1912", "Mar", true}};
    for (const Case& c : cases) {
        Ask.Script = {Answer::No};
        Ask.Shown.clear();
        Read(Header(c.Event, c.Year, c.Quarter) + "SMITH,John,Leeds,9b,1\r\n");
        // The record has no sixth field: the question comes exactly when the header says True.
        EXPECT_EQ(Ask.Shown.size(), c.Extra ? 1U : 0U) << c.Event << c.Year << c.Quarter;
    }
}

TEST_F(ReadRecordsTest, UnknownEventTakesTheExtraFieldFromTheSixthField) {
    Read("+S,1900,Mar\r\nSMITH,John,JONES,Leeds,9b,1\r\n");
    EXPECT_EQ(Table.HeaderEvent, "?");
    EXPECT_TRUE(Table.HasExtraField);
    Read("+S,1900,Mar\r\nSMITH,John,Leeds,9b,1\r\n");
    EXPECT_FALSE(Table.HasExtraField);
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(ReadRecordsTest, HasExtraFieldKeepsItsValueWhenTheFileHasNoRecord) {
    Read("SMITH,John,JONES,Leeds,9b,1\r\n");
    Read("+S,1900,Mar\r\n# nothing\r\n");
    EXPECT_TRUE(Table.HasExtraField);
}

TEST_F(ReadRecordsTest, RecordWithEmptyFieldOneShowsBlankAsSurname) {
    Read(Header("BIRTHS", "1900", "Mar") + ",John,Leeds,9b,1\r\n");
    EXPECT_EQ(Table.Surname[3], "(blank)");
    EXPECT_EQ(Table.Forenames[3], "John");
    EXPECT_EQ(Table.LineRecNo[3], 1);
}

TEST_F(ReadRecordsTest, QueryMarksOfAnUncertainReading) {
    Read("A*,x\r\nB_,x\r\nC?,x\r\nD{,x\r\nE[,x\r\nF],x\r\n# ?\r\n");
    for (int line = 1; line <= 5; ++line)
        EXPECT_TRUE(Table.LineQuery[line]) << line;
    EXPECT_FALSE(Table.LineQuery[6]);
    EXPECT_TRUE(Table.LineQuery[7]);
}

TEST_F(ReadRecordsTest, RecordsAreUnflaggedOnEveryRead) {
    Read("SMITH,John,Leeds,9b,1\r\n");
    Table.LineFlagged[1] = true;
    Read("SMITH,John,Leeds,9b,1\r\n");
    EXPECT_FALSE(Table.LineFlagged[1]);
}

TEST_F(ReadRecordsTest, LayoutWithoutExtraField) {
    Read(Header("BIRTHS", "1900", "Mar") + "SMITH,John,Leeds,9b,123\r\n");
    EXPECT_EQ(Table.ExtraField[3], "");
    EXPECT_EQ(Table.District[3], "Leeds");
    EXPECT_EQ(Table.Volume[3], "9b");
    EXPECT_EQ(Table.Page[3], "123");
}

TEST_F(ReadRecordsTest, LayoutWithExtraField) {
    Read(Header("BIRTHS", "1911", "Sep") + "SMITH,John,JONES,Leeds,9b,123\r\n");
    EXPECT_EQ(Table.ExtraField[3], "JONES");
    EXPECT_EQ(Table.District[3], "Leeds");
    EXPECT_EQ(Table.Volume[3], "9b");
    EXPECT_EQ(Table.Page[3], "123");
}

TEST_F(ReadRecordsTest, AnnualIndexLayout) {
    Read(Header("BIRTHS", "1985", "") + "SMITH,John,JONES,Leeds,ALT,12,345\r\n");
    EXPECT_TRUE(Table.AnnualIndex);
    EXPECT_EQ(Table.ExtraField[3], "JONES");
    EXPECT_EQ(Table.District[3], "Leeds");
    EXPECT_EQ(Table.AltSecondLine[3], "ALT");
    EXPECT_EQ(Table.Volume[3], "12");
    EXPECT_EQ(Table.Page[3], "345");
}

TEST_F(ReadRecordsTest, BirthsAndDeathsFrom1993Layout) {
    Read(Header("DEATHS", "1993", "") + "SMITH,John,45,Leeds,ab,cdefghi,ij,klmnop\r\n");
    EXPECT_TRUE(Table.LayoutBD1993);
    EXPECT_EQ(Table.ExtraField[3], "45");
    EXPECT_EQ(Table.District[3], "Leeds");
    EXPECT_EQ(Table.AltSecondLine[3], "ab    cdefghij  klmno");
    Read(Header("BIRTHS", "1995", "") + "SMITH,John,JONES,Leeds,1,2,3,4\r\n");
    EXPECT_TRUE(Table.LayoutBD1993);
    EXPECT_EQ(Table.AltSecondLine[3], "1     2     3   4    ");
}

TEST_F(ReadRecordsTest, Marriages1993LayoutRightAlignsItsThirdColumn) {
    Read(Header("MARRIAGES", "1993", "") + "SMITH,John,JONES,Leeds,abcdefg,hi,jk\r\n");
    EXPECT_TRUE(Table.LayoutM1993);
    EXPECT_FALSE(Table.LayoutM1994);
    EXPECT_EQ(Table.ExtraField[3], "JONES");
    EXPECT_EQ(Table.District[3], "Leeds");
    EXPECT_EQ(Table.AltSecondLine[3], "abcdehi     jk");
    Read(Header("MARRIAGES", "1993", "") + "SMITH,John,JONES,Leeds,a,b,123456\r\n");
    EXPECT_EQ(Table.AltSecondLine[3], "a    b    3456");
}

TEST_F(ReadRecordsTest, MarriagesFrom1994Layout) {
    Read(Header("MARRIAGES", "1994", "") + "SMITH,John,JONES,Leeds,abcdef,g,hijklm,n,opqrstu\r\n");
    EXPECT_TRUE(Table.LayoutM1994);
    EXPECT_FALSE(Table.LayoutM1993);
    EXPECT_EQ(Table.AltSecondLine[3], "abcdg   hijkln   opqrs");
}

TEST_F(ReadRecordsTest, LayoutFlagsAreResetOnEveryRead) {
    Read(Header("MARRIAGES", "1994", "") + "SMITH,John,JONES,Leeds,a,b,c,d,e\r\n");
    Read(Header("MARRIAGES", "1990", "Mar") + "SMITH,John,JONES,Leeds,9b,1\r\n");
    EXPECT_FALSE(Table.LayoutM1994);
    EXPECT_EQ(Table.Volume[3], "9b");
}

TEST_F(ReadRecordsTest, NinetiesLayoutsKeepVolumeAndPageOfTheLastRead) {
    Read(Header("BIRTHS", "1911", "Sep") + "SMITH,John,JONES,Leeds,9b,123\r\n");
    Read(Header("DEATHS", "1993", "") + "BROWN,Ann,45,York,a,b,c,d\r\n");
    EXPECT_EQ(Table.Surname[3], "BROWN");
    EXPECT_EQ(Table.District[3], "York");
    EXPECT_EQ(Table.Volume[3], "9b");
    EXPECT_EQ(Table.Page[3], "123");
}

TEST_F(ReadRecordsTest, QuarterlyLayoutsKeepTheSecondLineOfTheLastRead) {
    Read(Header("DEATHS", "1993", "") + "BROWN,Ann,45,York,a,b,c,d\r\n");
    Read(Header("BIRTHS", "1911", "Sep") + "SMITH,John,JONES,Leeds,9b,123\r\n");
    EXPECT_EQ(Table.AltSecondLine[3], "a     b     c   d    ");
    EXPECT_EQ(Table.Volume[3], "9b");
}

TEST_F(ReadRecordsTest, UnclosedQuoteIsReportedWithItsLineNumber) {
    Read(Header("BIRTHS", "1900", "Mar") + "# c\r\n\"abc\r\n");
    ASSERT_EQ(Ask.Shown.size(), 1U);
    EXPECT_EQ(Ask.Shown[0].Text,
              "Opening  \"  without a matching closing  \"  in line \r4 - \"abc");
    EXPECT_EQ(Table.Surname[4], "\"abc");
    EXPECT_EQ(Table.LineRecNo[4], 1);
}

TEST_F(ReadRecordsTest, QuotedSurnameWithACommaIsOneField) {
    Read("\"Smith, John\",x\r\n");
    EXPECT_EQ(Table.Surname[1], "Smith, John");
    EXPECT_EQ(Table.Forenames[1], "x");
}

} // namespace tv::test
