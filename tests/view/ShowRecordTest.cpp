#include "RecordBoxTesting.h"

#include <string>

namespace tv {

using test::RecordFields;

namespace {
const std::string EndNote = ".... Reached end of records ....";
const std::string StartNote = ".... Reached start of records ....";
const std::string FlagNote = "  **FLAGGED**  Press M to clear flag";
const std::string MoreComments =
    "... use Show Statistics to see all comment lines after this entry";
} // namespace

class ShowRecordTest : public test::RecordBoxTest {
  protected:
    // A header, two records with a comment between them, a record two printed lines on.
    void AddSmallFile() {
        AddOther("+S,1870,Mar");
        AddRecord("SMITH");
        AddOther("# torn corner");
        AddRecord("TAYLOR", "Ann");
        t.LineJump[2] = 3;
        t.LineJump[4] = 2;
    }
};

// --- Moving along the table

TEST_F(ShowRecordTest, NextRecordSkipsNonRecordLinesAndReturnsTheJumpOfTheLineReached) {
    AddSmallFile();
    EXPECT_EQ(s.ShowRecord(+1), 3);
    EXPECT_EQ(t.CurrentLine, 2);
    EXPECT_EQ(s.ShowRecord(+1), 2);
    EXPECT_EQ(t.CurrentLine, 4);
    EXPECT_EQ(s.Content.NameLine, "  TAYLOR, Ann");
}

TEST_F(ShowRecordTest, PreviousRecordReturnsTheJumpOfTheLineLeft) {
    AddSmallFile();
    t.CurrentLine = 4;
    EXPECT_EQ(s.ShowRecord(-1), 2);
    EXPECT_EQ(t.CurrentLine, 2);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John");
}

TEST_F(ShowRecordTest, RedisplayDoesNotMoveAndReturnsNoStep) {
    AddSmallFile();
    t.CurrentLine = 4;
    EXPECT_EQ(s.ShowRecord(0), 0);
    EXPECT_EQ(t.CurrentLine, 4);
    EXPECT_EQ(s.Content.NameLine, "  TAYLOR, Ann");
}

TEST_F(ShowRecordTest, RunningPastTheLastRecordEmptiesTheBoxAndShowsTheEndNote) {
    AddSmallFile();
    t.CurrentLine = 4;
    s.ShowRecord(0);
    ASSERT_FALSE(s.Content.NameLine.empty());
    EXPECT_EQ(s.ShowRecord(+1), 0);
    EXPECT_EQ(t.CurrentLine, 5);
    EXPECT_EQ(s.Content.NameLine, "");
    EXPECT_EQ(s.Content.SecondLine, "");
    EXPECT_EQ(s.Content.FootLabel, "");
    EXPECT_EQ(s.Content.StatusNotes[1], EndNote);
    EXPECT_EQ(s.Content.NotesText, EndNote);
}

TEST_F(ShowRecordTest, RunningPastTheEndWhileCalibratingKeepsTheNameLine) {
    AddSmallFile();
    s.Calib.CalibrationStage = 1;
    t.CurrentLine = 4;
    s.ShowRecord(0);
    EXPECT_EQ(s.ShowRecord(+1), 0);
    EXPECT_EQ(s.Content.NameLine, "  TAYLOR, Ann");
    EXPECT_EQ(s.Content.SecondLine, "");
    EXPECT_EQ(s.Content.FootLabel, "");
    EXPECT_EQ(s.Content.NotesText, " Reached end of records");
}

TEST_F(ShowRecordTest, StepsBackFromPastTheEndWithoutAStep) {
    AddSmallFile();
    t.CurrentLine = 5;
    EXPECT_EQ(s.ShowRecord(-1), 0);
    EXPECT_EQ(t.CurrentLine, 4);
}

TEST_F(ShowRecordTest, GoingBeforeTheFirstRecordShowsTheStartNote) {
    AddSmallFile();
    t.CurrentLine = 2;
    s.ShowRecord(0);
    EXPECT_EQ(s.ShowRecord(-1), 3);
    EXPECT_EQ(t.CurrentLine, 0);
    EXPECT_EQ(s.Content.NameLine, "");
    EXPECT_EQ(s.Content.SecondLine, "");
    EXPECT_EQ(s.Content.FootLabel, "");
    EXPECT_EQ(s.Content.NotesText, StartNote + "\r  Following line: # torn corner");
}

TEST_F(ShowRecordTest, GoingBeforeTheFirstRecordWhileCalibratingKeepsTheNameLine) {
    AddSmallFile();
    s.Calib.CalibrationStage = 2;
    t.CurrentLine = 2;
    s.ShowRecord(0);
    s.ShowRecord(-1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John");
    EXPECT_EQ(s.Content.NotesText, " Reached start of records");
}

TEST_F(ShowRecordTest, ATableOfAThousandLinesRunsOffItsEndWithoutReadingLine1001) {
    for (int k = 0; k < MaxLines; ++k)
        AddRecord("SMITH");
    t.CurrentLine = 1000;
    EXPECT_EQ(s.ShowRecord(+1), 0);
    EXPECT_EQ(t.CurrentLine, 1001);
    EXPECT_EQ(s.ShowRecord(0), 0);
    EXPECT_EQ(s.ShowRecord(-1), 0);
    EXPECT_EQ(t.CurrentLine, 1000);
}

// --- Repeated surnames

TEST_F(ShowRecordTest, RepeatedSurnameShowsDashesButNotAtAColumnTopForBlankOrWhileCalibrating) {
    AddRecord("SMITH");
    AddRecord("SMITH", "Mary");
    AddRecord("(blank)", "Ann");
    AddRecord("(blank)", "Jane");
    Show(2);
    EXPECT_EQ(s.Content.NameLine, "  ------ Mary");
    Show(4);
    EXPECT_EQ(s.Content.NameLine, "  (blank), Jane");
    s.Calib.ColumnTopLine[2] = 2;
    Show(2);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, Mary");
    s.Calib.ColumnTopLine[2] = 0;
    s.Calib.CalibrationStage = 1;
    Show(2);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, Mary");
}

TEST_F(ShowRecordTest, RepeatedSurnameInTheCourierFontShowsTwoDashes) {
    UseCourier(23, 36, 1);
    t.HasExtraField = false;
    s.Scan.DistrictPad = 99;
    AddRecord("SMITH");
    AddRecord("SMITH", "Mary");
    Show(2);
    EXPECT_EQ(s.Content.NameLine, "  -- Mary");
}

TEST_F(ShowRecordTest, RepeatedSurnameIsShownInFullWhenShowRepeatedSurnamesIsTicked) {
    s.Prefs.ShowRptSurnames = true;
    AddRecord("SMITH");
    AddRecord("SMITH", "Mary");
    Show(2);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, Mary");
}

TEST_F(ShowRecordTest, ColumnTopsBeyondTheNumberOfColumnsDoNotStopTheDashes) {
    s.Scan.NumColumns = 2;
    s.Calib.ColumnTopLine[3] = 2;
    AddRecord("SMITH");
    AddRecord("SMITH", "Mary");
    Show(2);
    EXPECT_EQ(s.Content.NameLine, "  ------ Mary");
}

TEST_F(ShowRecordTest, ThePreviousRecordIsFoundOverCommentLines) {
    AddRecord("SMITH");
    AddOther("# page 2");
    AddOther("");
    AddRecord("SMITH", "Mary");
    Show(4);
    EXPECT_EQ(s.Content.NameLine, "  ------ Mary");
}

TEST_F(ShowRecordTest, TheFirstRecordAfterTheHeaderHasNoPreviousRecord) {
    AddOther("SMITH");
    AddRecord("SMITH");
    Show(2);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John");
}

TEST_F(ShowRecordTest, ADifferentSurnameIsShownInFull) {
    AddRecord("SMITH");
    AddRecord("SMYTH", "Mary");
    Show(2);
    EXPECT_EQ(s.Content.NameLine, "  SMYTH, Mary");
}

// --- Notes and footer

TEST_F(ShowRecordTest, TheFooterGivesLineRecordNumberAndName) {
    AddSmallFile();
    Show(4);
    EXPECT_EQ(s.Content.FootLabel, " Line 4 of 4,  QRL entry 2 of 2\r  TAYLOR, Ann");
}

TEST_F(ShowRecordTest, TheFooterShowsTheSurnameEvenWhenTheBoxShowsDashes) {
    AddRecord("SMITH");
    AddRecord("SMITH", "Mary");
    Show(2);
    EXPECT_EQ(s.Content.FootLabel, " Line 2 of 2,  QRL entry 2 of 2\r  SMITH, Mary");
}

TEST_F(ShowRecordTest, AFlaggedRecordShowsTheFlagNoteUntilTheFlagIsCleared) {
    AddRecord("SMITH");
    t.LineFlagged[1] = true;
    Show(1);
    EXPECT_EQ(s.Content.NotesText, FlagNote);
    t.LineFlagged[1] = false;
    Show(1);
    EXPECT_EQ(s.Content.NotesText, "");
    EXPECT_EQ(s.Content.StatusNotes[1], "");
}

TEST_F(ShowRecordTest, TheFlagNoteIsLeftAloneWhileCalibrating) {
    AddRecord("SMITH");
    t.LineFlagged[1] = true;
    s.Calib.CalibrationStage = 1;
    Show(1);
    EXPECT_EQ(s.Content.NotesText, "");
}

TEST_F(ShowRecordTest, FollowingCommentLinesAreShownUpToTheNextRecord) {
    AddRecord("SMITH");
    AddOther("# ink blot");
    AddOther("");
    AddRecord("TAYLOR");
    AddOther("# after Taylor");
    Show(1);
    EXPECT_EQ(s.Content.NotesText, "  Following line: # ink blot\r  Following line: ");
}

TEST_F(ShowRecordTest, FollowingCommentLinesAreNotShownWhileCalibrating) {
    AddRecord("SMITH");
    AddOther("# ink blot");
    s.Calib.CalibrationStage = 3;
    Show(1);
    EXPECT_EQ(s.Content.NotesText, "");
}

TEST_F(ShowRecordTest, FiveFollowingCommentLinesShowTwoAndTheOverflowNote) {
    AddRecord("SMITH");
    for (const char* text : {"# one", "# two", "# three", "# four", "# five"})
        AddOther(text);
    Show(1);
    EXPECT_EQ(s.Content.CommentNotes[1], "  Following line: # one");
    EXPECT_EQ(s.Content.CommentNotes[2], "  Following line: # two");
    EXPECT_EQ(s.Content.CommentNotes[3], MoreComments);
    EXPECT_EQ(s.Content.NotesText,
              "  Following line: # one\r  Following line: # two\r" + MoreComments);
}

TEST_F(ShowRecordTest, OnlyTheFourLinesAfterTheRecordAreLookedAt) {
    AddRecord("SMITH");
    for (int k = 0; k < 4; ++k)
        AddOther("# same");
    AddOther("# fifth");
    Show(1);
    EXPECT_EQ(s.Content.NotesText, "  Following line: # same");
}

TEST_F(ShowRecordTest, StatusNotesComeBeforeCommentNotes) {
    AddRecord("SMITH");
    AddOther("# ink blot");
    t.LineFlagged[1] = true;
    Show(1);
    EXPECT_EQ(s.Content.NotesText, FlagNote + "\r  Following line: # ink blot");
}

TEST_F(ShowRecordTest, TheEndNoteStaysWhenSteppingBackOntoARecord) {
    AddRecord("SMITH");
    Show(1);
    s.ShowRecord(+1);
    s.ShowRecord(-1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John");
    EXPECT_EQ(s.Content.NotesText, EndNote);
}

// --- The box text of each layout

TEST_F(ShowRecordTest, TimesBirthsOfThe1870sPutTheDistrictOnTheSecondLine) {
    AddRecord();
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John");
    EXPECT_EQ(s.Content.SecondLine, "  Bolton   8c    123");
    EXPECT_EQ(s.Content.FootLabel, " Line 1 of 1,  QRL entry 1 of 1\r  SMITH, John");
}

TEST_F(ShowRecordTest, TimesWithALongPageSeparatesVolumeAndPageByTwoSpaces) {
    RecordFields f;
    f.Page = "123456";
    AddRecord(f);
    Show(1);
    EXPECT_EQ(s.Content.SecondLine, "  Bolton   8c  123456");
}

TEST_F(ShowRecordTest, TimesWithALongVolumeSeparatesVolumeAndPageByTwoSpaces) {
    RecordFields f;
    f.Volume = "10ab";
    AddRecord(f);
    Show(1);
    EXPECT_EQ(s.Content.SecondLine, "  Bolton   10ab  123");
}

TEST_F(ShowRecordTest, TimesWithAnUnpaddedDistrictKeepsItOnTheNameLineAfterThreeSpaces) {
    s.Scan.DistrictPad = 0; // births 1866 and 1867
    AddRecord();
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John    Bolton");
    EXPECT_EQ(s.Content.SecondLine, "  8c    123");
}

TEST_F(ShowRecordTest, TimesDeathsOf1866SetTheAgeAfterThreeSpaces) {
    s.Scan.DistrictPad = 0;
    t.HasExtraField = true;
    RecordFields f;
    f.Extra = "45";
    AddRecord(f);
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John    45    Bolton");
}

TEST_F(ShowRecordTest, CourierBirthsOfThe1840sPadSurnameAndForenamesToTheirColumns) {
    s.Scan.NumColumns = 1;
    s.Scan.IndexFont = 'C';
    s.Scan.FontName = "Courier New";
    s.Scan.SurnamePad = 17;
    s.Scan.DistrictPad = 35;
    RecordFields f;
    f.Volume = "21";
    AddRecord(f);
    AddRecord("SMITH", "Mary");
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH" + Spaces(10) + "John" + Spaces(14) + "Bolton");
    EXPECT_EQ(s.Content.SecondLine, "  21   123");
    Show(2);
    EXPECT_EQ(s.Content.NameLine, "  --" + Spaces(13) + "Mary" + Spaces(14) + "Bolton");
    EXPECT_EQ(s.Content.FootLabel, " Line 2 of 2,  QRL entry 2 of 2\r  SMITH, Mary");
}

TEST_F(ShowRecordTest, AWidthAlreadyReachedIsNotPadded) {
    s.Scan.IndexFont = 'C';
    s.Scan.SurnamePad = 7;
    s.Scan.DistrictPad = 12;
    AddRecord();
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH John Bolton");
}

TEST_F(ShowRecordTest, Births1911Q3CarryTheMothersSurnamePaddedTo25) {
    UseCourier(25, 36, 2);
    RecordFields f;
    f.Extra = "JONES";
    AddRecord(f);
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John" + Spaces(12) + "JONES" + Spaces(6) + "Bolton");
    EXPECT_EQ(s.Content.SecondLine, "  8 c   123");
    EXPECT_EQ(s.Content.FootLabel, " Line 1 of 1,  QRL entry 1 of 1\r  SMITH, John");
}

class VolPageStyleTest : public ShowRecordTest {
  protected:
    std::string SecondLineFor(int16_t style, const std::string& volume, const std::string& page,
                              const std::string& alt = "") {
        UseCourier(23, 36, style);
        RecordFields f;
        f.Extra = "JONES";
        f.Volume = volume;
        f.Page = page;
        f.Alt = alt;
        Show(AddRecord(f));
        return s.Content.SecondLine;
    }
};

TEST_F(VolPageStyleTest, Style1SetsThePageRightAlignedInFour) {
    EXPECT_EQ(SecondLineFor(1, "10a", "123"), "  10a 123");
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John" + Spaces(10) + "JONES" + Spaces(8) + "Bolton");
    EXPECT_EQ(s.Content.FootLabel, " Line 1 of 1,  QRL entry 1 of 1\r  SMITH, John");
}

TEST_F(VolPageStyleTest, Style1WithAFiveCharacterPageFallsBackToVolumeSpacePage) {
    EXPECT_EQ(SecondLineFor(1, "10a", "12345"), "  10a 12345");
}

TEST_F(VolPageStyleTest, Style2SplitsTheLastCharacterOfTheVolume) {
    EXPECT_EQ(SecondLineFor(2, "10a", "1234"), "  10 a  1234");
    EXPECT_EQ(s.Content.FootLabel, " Line 1 of 1,  QRL entry 1 of 1\r  SMITH, John");
}

TEST_F(VolPageStyleTest, Style2WithASixCharacterPageFallsBack) {
    EXPECT_EQ(SecondLineFor(2, "10a", "123456"), "  10a 123456");
}

TEST_F(VolPageStyleTest, Style3SetsThePageRightAlignedInFive) {
    EXPECT_EQ(SecondLineFor(3, "10a", "123"), "  10a  123");
}

TEST_F(VolPageStyleTest, Style3WithAFiveCharacterPageFallsBack) {
    EXPECT_EQ(SecondLineFor(3, "10a", "12345"), "  10a 12345");
}

TEST_F(VolPageStyleTest, Style4PutsASpaceAfterAOneCharacterVolume) {
    EXPECT_EQ(SecondLineFor(4, "6", "123"), "  6   123");
    EXPECT_EQ(SecondLineFor(4, "10a", "123"), "  10a  123");
}

TEST_F(VolPageStyleTest, Style0SetsTheVolumeInFiveAndThePageInFive) {
    EXPECT_EQ(SecondLineFor(0, "8c", "123"), "  8c   123");
}

TEST_F(VolPageStyleTest, ThePageIsTrimmedBeforeTheStyleIsApplied) {
    EXPECT_EQ(SecondLineFor(1, "10a", " 123 "), "  10a 123");
}

TEST_F(VolPageStyleTest, AnnualIndexOf1984IsStyle5WithTheReferenceBeforeTheVolume) {
    UseCourier(33, 46, 5);
    t.AnnualIndex = true;
    RecordFields f;
    f.Extra = "JONES";
    f.Volume = "2";
    f.Page = "1234";
    f.Alt = "18";
    AddRecord(f);
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John" + Spaces(20) + "JONES" + Spaces(8) + "Bolton");
    EXPECT_EQ(s.Content.SecondLine, "  18  2   1234");
    EXPECT_EQ(s.Content.FootLabel, " Line 1 of 1,  QRL entry 1 of 1\r  SMITH, John");
}

TEST_F(VolPageStyleTest, Style5WithALongVolumeFallsBackToVolumeSpacePage) {
    EXPECT_EQ(SecondLineFor(5, "1234", "56", "18"), "  1234 56");
}

TEST_F(VolPageStyleTest, ADistrictOnTheSecondLineIsFollowedByVolumeAndPage) {
    UseCourier(23, 99, 1);
    RecordFields f;
    f.Volume = "10a";
    AddRecord(f);
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John");
    EXPECT_EQ(s.Content.SecondLine, "  Bolton  10a  123");
}

TEST_F(VolPageStyleTest, Style5ReplacesADistrictOnTheSecondLine) {
    UseCourier(23, 99, 5);
    RecordFields f;
    f.Volume = "2";
    f.Page = "1234";
    f.Alt = "18";
    AddRecord(f);
    Show(1);
    EXPECT_EQ(s.Content.SecondLine, "  18  2   1234");
}

TEST_F(ShowRecordTest, Births1993ShowTheAlternativeLineUntrimmed) {
    UseCourier(23, 34, 5);
    t.LayoutBD1993 = true;
    RecordFields f;
    f.Extra = "JONES";
    f.Alt = "      2     1234A12  ";
    AddRecord(f);
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John" + Spaces(10) + "JONES" + Spaces(6) + "Bolton");
    EXPECT_EQ(s.Content.SecondLine, "        2     1234A12  ");
    EXPECT_EQ(s.Content.FootLabel, " Line 1 of 1,  QRL entry 1 of 1\r  SMITH, John");
}

TEST_F(ShowRecordTest, Marriages1993ShowTheAlternativeLineTrimmed) {
    UseCourier(33, 46, 5);
    t.LayoutM1993 = true;
    RecordFields f;
    f.Extra = "BROWN";
    f.Alt = "     2     123";
    AddRecord(f);
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John" + Spaces(20) + "BROWN" + Spaces(8) + "Bolton");
    EXPECT_EQ(s.Content.SecondLine, "  2     123");
}

TEST_F(ShowRecordTest, Marriages1994ShowTheAlternativeLineUntrimmed) {
    UseCourier(18, 29, 5);
    t.LayoutM1994 = true;
    RecordFields f;
    f.Extra = "BROWN";
    f.Alt = "    2   1234 A       ";
    AddRecord(f);
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John" + Spaces(5) + "BROWN" + Spaces(6) + "Bolton");
    EXPECT_EQ(s.Content.SecondLine, "      2   1234 A       ");
    EXPECT_EQ(s.Content.FootLabel, " Line 1 of 1,  QRL entry 1 of 1\r  SMITH, John");
}

TEST_F(ShowRecordTest, TheTimesLineKeepsItsSpacesInThe1993Layouts) {
    s.Scan.DistrictPad = 0;
    t.LayoutBD1993 = true;
    AddRecord();
    Show(1);
    EXPECT_EQ(s.Content.SecondLine, "     8c    123");
}

} // namespace tv
