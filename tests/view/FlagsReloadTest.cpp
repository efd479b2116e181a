#include "PageSessionTesting.h"

#include <chrono>
#include <filesystem>

namespace tv::test {

namespace {

const char* const FlagWarning = "All the flagged records will lose their flag";
const char* const FlaggedNote = "  **FLAGGED**  Press M to clear flag";
const char* const ReloadedNote = " *** Transcription file reloaded ***";
const char* const Recalibrate = "The transcription file has changed - need to recalibrate";

class FlagsReload : public PageSessionTest {
  protected:
    void SetUp() override { LoadCalibrated1878(); }

    void GoToRecord(int record) {
        S.Table.CurrentLine = static_cast<int16_t>(LineOf1878Record(record));
        S.ShowRecord(0);
    }

    int FlagCount() const {
        int flags = 0;
        for (int line = 1; line <= S.Table.LineCount; ++line)
            flags += S.Table.LineFlagged[line] ? 1 : 0;
        return flags;
    }

    // The 1878 page with lines put in just above the top of column 2 (record 31).
    static std::vector<std::string> WithLinesAboveColumnTwo(int count) {
        std::vector<std::string> lines = BirthsPage1878();
        auto at = lines.begin() + (LineOf1878Record(31) - 1);
        for (int i = 0; i < count; ++i)
            at = lines.insert(at, "#ADDED,a line typed in by the corrections") + 1;
        return lines;
    }

    bool HasNote(const std::string& note) const {
        return S.Content.NotesText.find(note) != std::string::npos;
    }
};

TEST_F(FlagsReload, MFlagsTheCurrentRecordAndShowsTheNote) {
    GoToRecord(7);
    CommandOutcome outcome = Press(KeyM);
    EXPECT_TRUE(outcome.StatisticsChanged);
    EXPECT_TRUE(S.Table.LineFlagged[LineOf1878Record(7)]);
    EXPECT_TRUE(HasNote(FlaggedNote));
    EXPECT_EQ(FlagCount(), 1);
}

TEST_F(FlagsReload, MTwiceOnTheSameRecordClearsTheFlagAndRemovesTheNote) {
    GoToRecord(7);
    Press(KeyM);
    ASSERT_TRUE(HasNote(FlaggedNote));
    EXPECT_TRUE(Press(KeyM).StatisticsChanged);
    EXPECT_FALSE(S.Table.LineFlagged[LineOf1878Record(7)]);
    EXPECT_FALSE(HasNote(FlaggedNote));
    EXPECT_EQ(FlagCount(), 0);
}

TEST_F(FlagsReload, MWhileCalibratingDoesNothing) {
    GoToRecord(7);
    S.Calib.CalibrationStage = 2;
    const std::string notes = S.Content.NotesText;
    CommandOutcome outcome = Press(KeyM);
    EXPECT_FALSE(outcome.StatisticsChanged);
    EXPECT_EQ(FlagCount(), 0);
    EXPECT_EQ(S.Content.NotesText, notes);
    EXPECT_FALSE(S.ToggleFlag().StatisticsChanged);
    EXPECT_EQ(FlagCount(), 0);
}

TEST_F(FlagsReload, TheFlaggedNoteFollowsTheFlaggedRecord) {
    GoToRecord(7);
    Press(KeyM);
    Press(KeyEnter);
    EXPECT_FALSE(HasNote(FlaggedNote));
    Press(KeyBackspace);
    EXPECT_TRUE(HasNote(FlaggedNote));
}

TEST_F(FlagsReload, WithNoFlaggedRecordTheReloadAsksNothing) {
    GoToRecord(12);
    CommandOutcome outcome = Press(KeyR);
    EXPECT_TRUE(F.Prompts.Shown.empty());
    EXPECT_TRUE(outcome.StatisticsChanged);
    EXPECT_FALSE(outcome.ExitProgram);
    EXPECT_TRUE(HasNote(ReloadedNote));
    EXPECT_EQ(S.Table.CurrentLine, LineOf1878Record(12));
    EXPECT_EQ(S.Calib.CalibrationStage, 0);
}

TEST_F(FlagsReload, TheBoxHeightAfterAReloadCountsTheReloadNote) {
    GoToRecord(12);
    // The change watch's notice stands in the box, so the reload's note is a line more.
    ASSERT_TRUE(S.TranscriptionFileTime.has_value());
    S.ChangeWatch(*S.TranscriptionFileTime + std::chrono::seconds(1));
    ASSERT_TRUE(HasNote("Your transcription file has changed - press R to reload it"));
    S.ResizeFrame();
    const int32_t before = S.Box.BoxHeight;
    Press(KeyR);
    ASSERT_TRUE(HasNote(ReloadedNote));
    const int32_t height = S.Box.BoxHeight;
    S.ResizeFrame(); // a later layout finds nothing left to change
    EXPECT_EQ(S.Box.BoxHeight, height);
    EXPECT_EQ(S.Box.BoxHeight, S.Content.NameBoxHeight + S.Content.NotesBoxHeight);
    EXPECT_GT(S.Box.BoxHeight, before);
}

TEST_F(FlagsReload, FiveFlaggedRecordsGiveOneWarningNotFive) {
    for (int record : {3, 8, 20, 44, 90}) {
        GoToRecord(record);
        Press(KeyM);
    }
    ASSERT_EQ(FlagCount(), 5);
    Press(KeyR);
    ASSERT_EQ(F.Prompts.Shown.size(), 1U);
    EXPECT_EQ(F.Prompts.Shown[0].Text, FlagWarning);
    EXPECT_EQ(F.Prompts.Shown[0].Title, "Tallyview");
    EXPECT_EQ(F.Prompts.Shown[0].Choice, Buttons::OkCancel);
    EXPECT_EQ(FlagCount(), 0);
    EXPECT_TRUE(HasNote(ReloadedNote));
    EXPECT_FALSE(HasNote(FlaggedNote));
}

TEST_F(FlagsReload, CancelAtTheFlagWarningChangesNothing) {
    GoToRecord(20);
    Press(KeyM);
    std::vector<std::string> lines = BirthsPage1878();
    lines[LineOf1878Record(20) - 1] = "BARKER,John Henry,Dewsbury,9b,157";
    Save(lines);
    F.Prompts.Script = {Answer::Cancel};
    CommandOutcome outcome = Press(KeyR);
    EXPECT_EQ(F.Prompts.Texts(), std::vector<std::string>{FlagWarning});
    EXPECT_FALSE(outcome.StatisticsChanged);
    EXPECT_TRUE(S.Table.LineFlagged[LineOf1878Record(20)]);
    EXPECT_EQ(S.Table.Forenames[LineOf1878Record(20)], "John");
    EXPECT_FALSE(HasNote(ReloadedNote));
}

TEST_F(FlagsReload, ReloadWhileCalibratingOnlySaysSo) {
    GoToRecord(20);
    Press(KeyM);
    S.Calib.CalibrationStage = 3;
    Save(WithLinesAboveColumnTwo(1));
    CommandOutcome outcome = Press(KeyR);
    ASSERT_EQ(F.Prompts.Shown.size(), 1U);
    EXPECT_EQ(F.Prompts.Shown[0].Text, "Cannot reload while you are calibrating");
    EXPECT_EQ(F.Prompts.Shown[0].Choice, Buttons::Ok);
    EXPECT_EQ(F.Prompts.Shown[0].Title, "Tallyview");
    EXPECT_FALSE(outcome.StatisticsChanged);
    EXPECT_EQ(S.Table.LineCount, 95);
    EXPECT_EQ(FlagCount(), 1);
    EXPECT_EQ(S.Calib.CalibrationStage, 3);
}

TEST_F(FlagsReload, TheReloadShowsTheCorrectedRecordAndTakesTheNewFileTime) {
    GoToRecord(21);
    std::vector<std::string> lines = BirthsPage1878();
    lines[LineOf1878Record(21) - 1] = "BARKER,Anne,Keighley,9c,160";
    Save(lines);
    const std::optional<FileTime> saved = ModificationTime(Path);
    ASSERT_NE(saved, S.TranscriptionFileTime);
    Press(KeyR);
    EXPECT_EQ(S.Table.Forenames[LineOf1878Record(21)], "Anne");
    EXPECT_EQ(S.Content.NameLine, "  ------ Anne");
    EXPECT_EQ(S.TranscriptionFileTime, saved);
    EXPECT_EQ(S.Caption, "Tallyview - " + ScanDescription(S.Table));
}

TEST_F(FlagsReload, ALineInsertedAboveTheTopOfColumnTwoKeepsTheCalibration) {
    GoToRecord(40);
    Save(WithLinesAboveColumnTwo(1));
    Press(KeyR);
    EXPECT_TRUE(F.Prompts.Shown.empty());
    EXPECT_EQ(S.Calib.CalibrationStage, 0);
    EXPECT_EQ(S.Calib.ColumnTopLine[1], 4);
    EXPECT_EQ(S.Calib.ColumnTopLine[2], 36);
    EXPECT_EQ(S.Calib.ColumnTopLine[3], 66);
    EXPECT_EQ(S.Calib.ColumnTopY[2], 3572);
    EXPECT_FLOAT_EQ(S.Calib.LineIncrTop, 1224.0F);
    EXPECT_TRUE(HasNote(ReloadedNote));
    // The current line is still line 44, which now holds record 39: the box is placed for it.
    EXPECT_EQ(S.Table.CurrentLine, LineOf1878Record(40));
    EXPECT_EQ(S.Table.LineRecNo[S.Table.CurrentLine], 39);
    EXPECT_EQ(S.Box.BoxTop, 3572 + 8 * 1224);
    EXPECT_EQ(S.Box.BoxLeft, 12305 + 8 * 68);
}

TEST_F(FlagsReload, ThreeLinesInsertedAboveColumnTwoStillFindItsTop) {
    Save(WithLinesAboveColumnTwo(3));
    Press(KeyR);
    EXPECT_TRUE(F.Prompts.Shown.empty());
    EXPECT_EQ(S.Calib.ColumnTopLine[2], 38);
    EXPECT_EQ(S.Calib.ColumnTopLine[3], 68);
}

TEST_F(FlagsReload, FourLinesInsertedAboveTheTopOfColumnTwoForceRecalibration) {
    Save(WithLinesAboveColumnTwo(4));
    CommandOutcome outcome = Press(KeyR);
    ASSERT_EQ(F.Prompts.Shown.size(), 1U);
    EXPECT_EQ(F.Prompts.Shown[0].Text, Recalibrate);
    EXPECT_EQ(F.Prompts.Shown[0].Choice, Buttons::Ok);
    EXPECT_EQ(F.Prompts.Shown[0].Title, "Tallyview");
    EXPECT_TRUE(outcome.StatisticsChanged);
    EXPECT_EQ(S.Table.LineCount, 99);
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
    EXPECT_NE(S.Content.NotesText.find("is just below the 1st record in column 1"),
              std::string::npos);
    EXPECT_FALSE(HasNote(ReloadedNote));
}

TEST_F(FlagsReload, RecordsRemovedAboveColumnTwoAreFollowedUpToThreeLines) {
    std::vector<std::string> lines = BirthsPage1878();
    lines.erase(lines.begin() + 20, lines.begin() + 23); // records 17 to 19
    Save(lines);
    Press(KeyR);
    EXPECT_TRUE(F.Prompts.Shown.empty());
    EXPECT_EQ(S.Calib.ColumnTopLine[2], 32);
    EXPECT_EQ(S.Calib.ColumnTopLine[3], 62);
}

TEST_F(FlagsReload, AColumnTopWhoseSurnameAndForenamesBothChangedForcesRecalibration) {
    std::vector<std::string> lines = BirthsPage1878();
    lines[LineOf1878Record(61) - 1] = "FORREST,Eliza,Keighley,9a,280";
    Save(lines);
    Press(KeyR);
    EXPECT_EQ(F.Prompts.Texts(), std::vector<std::string>{Recalibrate});
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
}

TEST_F(FlagsReload, AColumnTopWithOnlyItsForenamesCorrectedIsStillLost) {
    // The key is the surname and forenames together: correcting either loses the top.
    std::vector<std::string> lines = BirthsPage1878();
    lines[LineOf1878Record(31) - 1] = "BRADLEY,Willam,Halifax,9a,190";
    Save(lines);
    Press(KeyR);
    EXPECT_EQ(F.Prompts.Texts(), std::vector<std::string>{Recalibrate});
}

TEST_F(FlagsReload, AReloadOfAVanishedFileSaysSoAndKeepsTableFlagsAndCalibration) {
    GoToRecord(20);
    Press(KeyM);
    std::filesystem::remove(Path);
    const std::optional<FileTime> time = S.TranscriptionFileTime;
    CommandOutcome outcome = Press(KeyR);
    ASSERT_EQ(F.Prompts.Shown.size(), 2U);
    EXPECT_EQ(F.Prompts.Shown[0].Text, FlagWarning);
    EXPECT_EQ(F.Prompts.Shown[1].Text, "Cannot reload " + Path + CR + "No such file or directory" +
                                           CR + "The records shown are those read before.");
    EXPECT_EQ(F.Prompts.Shown[1].Choice, Buttons::Ok);
    EXPECT_EQ(F.Prompts.Shown[1].Title, "Tallyview");
    EXPECT_FALSE(outcome.StatisticsChanged);
    EXPECT_FALSE(outcome.ExitProgram);
    EXPECT_EQ(S.Table.LineCount, 95);
    EXPECT_EQ(S.Table.Surname[LineOf1878Record(20)], "BARKER");
    EXPECT_TRUE(S.Table.LineFlagged[LineOf1878Record(20)]);
    EXPECT_EQ(S.Calib.CalibrationStage, 0);
    EXPECT_EQ(S.Calib.ColumnTopLine[2], 35);
    EXPECT_FLOAT_EQ(S.Calib.LineIncrTop, 1224.0F);
    EXPECT_EQ(S.TranscriptionFileTime, time);
    EXPECT_FALSE(HasNote(ReloadedNote));
}

TEST_F(FlagsReload, AFileThatCannotBeReadIsReportedAndTheTableKept) {
    std::filesystem::remove(Path);
    std::filesystem::create_directory(Path); // a folder where the file was
    Press(KeyR);
    ASSERT_EQ(F.Prompts.Shown.size(), 1U);
    EXPECT_EQ(F.Prompts.Shown[0].Text.rfind("Cannot reload " + Path + CR, 0), 0U);
    EXPECT_EQ(S.Table.LineCount, 95);
    EXPECT_EQ(S.Calib.CalibrationStage, 0);
}

TEST_F(FlagsReload, GivingUpAtASuspectFileWarningEndsTheProgram) {
    GoToRecord(20);
    Save({"+INFO,verifier@example.org,,SEQUENCED,BIRTHS", "+S,1878,Mar,,", "#nothing yet"});
    F.Prompts.Script = {Answer::Cancel};
    CommandOutcome outcome = Press(KeyR);
    ASSERT_EQ(F.Prompts.Shown.size(), 1U);
    EXPECT_EQ(F.Prompts.Shown[0].Text.rfind("Suspect file ", 0), 0U);
    EXPECT_TRUE(outcome.ExitProgram);
    EXPECT_EQ(S.Table.LineCount, 95);
    EXPECT_EQ(S.Table.CurrentLine, LineOf1878Record(20));
}

TEST_F(FlagsReload, ACurrentRecordThatBecameACommentStepsOnToTheNextRecord) {
    GoToRecord(20);
    std::vector<std::string> lines = BirthsPage1878();
    lines[LineOf1878Record(20) - 1] = "#BARKER,John,Dewsbury,9b,157 is on the next page";
    Save(lines);
    Press(KeyR);
    EXPECT_EQ(S.Table.CurrentLine, LineOf1878Record(21));
    EXPECT_EQ(S.Table.LineRecNo[S.Table.CurrentLine], 20);
    EXPECT_EQ(S.Content.FootLabel,
              std::string(" Line 25 of 95,  QRL entry 20 of 89") + CR + "  BARKER, Ann");
}

TEST_F(FlagsReload, ACurrentLinePastTheShortenedFileGoesBackToTheLastRecord) {
    GoToRecord(90);
    Press(KeyEnter); // past the last record
    ASSERT_EQ(S.Table.CurrentLine, 96);
    std::vector<std::string> lines = BirthsPage1878();
    lines.resize(LineOf1878Record(75));
    Save(lines);
    Press(KeyR);
    EXPECT_EQ(S.Table.LineCount, 79);
    EXPECT_EQ(S.Table.CurrentLine, 79);
    EXPECT_EQ(S.Table.LineRecNo[79], 75);
    EXPECT_TRUE(HasNote(ReloadedNote));
    EXPECT_EQ(S.Box.BoxTop, 3572 + 14 * 1224);
    EXPECT_EQ(S.Box.BoxLeft, 23865 + 14 * 68);
}

TEST_F(FlagsReload, ACurrentLineOnTheCommentAtTheEndGoesBackToTheLastRecord) {
    std::vector<std::string> lines = BirthsPage1878();
    S.Table.CurrentLine = 95; // "#END of page 57"
    lines.push_back("#two more comment lines");
    lines.push_back("#after the records");
    Save(lines);
    Press(KeyR);
    EXPECT_EQ(S.Table.CurrentLine, 94);
}

} // namespace

} // namespace tv::test
