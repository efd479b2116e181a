// Calibration: the stages driven by ENTER, their instructions, the column tops and spacings
// they measure, and the first placing of the box for the tenth entry.
#include "LayoutSessionTesting.h"

#include <limits>

namespace tv::test {
namespace {

const std::string FirstInstruction3 =
    "Move this box using the mouse or the arrow keys until it is just below the 1st record in "
    "column 1, then press the ENTER key. \rIf this is not a 3 column scan then press the C key "
    "to specify how many there are.";
const std::string TenthInstruction =
    "Move this box using the mouse or the arrow keys until it is just below the 10th record in "
    "column 1,\rthen press the ENTER key.";

std::string ColumnInstruction(int column) {
    return "Move this box using the mouse or the arrow keys until it is just below the 1st "
           "record in column " +
           std::to_string(column) +
           ", \rthen use the + and - keys to select the correct QRL entry, then press the ENTER "
           "key.";
}

int ErrorNumberOf(Session& s) {
    try {
        s.CalibrateTextbox();
    } catch (const RunTimeError& e) {
        return e.Number;
    }
    return 0;
}

class Calibration : public LayoutSessionTest {
  protected:
    Calibration() { AddRecords(60); }

    // Columns 1 and 2 at the given places, through the first two stages.
    void CalibrateColumnOne(int32_t left, int32_t top, int32_t tenthLeft, int32_t tenthTop) {
        Enter();
        MoveBoxTo(left, top);
        Enter();
        MoveBoxTo(tenthLeft, tenthTop);
        Enter();
    }
};

TEST_F(Calibration, StartShowsTheFirstInstructionExactly) {
    Enter();
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
    EXPECT_EQ(S.Content.NotesText, FirstInstruction3);
    EXPECT_TRUE(S.Calib.CalibratingFlag);
}

TEST_F(Calibration, StartDisablesTheColumnButtonsCalibrateAndRepeatedSurnames) {
    for (int c = 1; c <= 6; ++c)
        S.Commands.TopCol[c] = true;
    Enter();
    for (int c = 1; c <= 6; ++c)
        EXPECT_FALSE(S.Commands.TopCol[c]) << c;
    EXPECT_FALSE(S.Commands.MenuCalibrate);
    EXPECT_FALSE(S.Commands.MenuShowRptSurnames);
}

TEST_F(Calibration, StartPutsTheBoxAtTheFirstRecordOnTheFirstEntryLine) {
    S.Table.CurrentLine = 30;
    Enter();
    EXPECT_EQ(S.Table.CurrentLine, 1);
    EXPECT_EQ(S.Box.BoxTop, 3570); // 0.07 of 51000
}

TEST_F(Calibration, FirstEnterTakesColumnOneAndShowsTheTenthRecordInstructionExactly) {
    Enter();
    MoveBoxTo(1500, 3000);
    Enter();
    EXPECT_EQ(S.Calib.CalibrationStage, 2);
    EXPECT_EQ(S.Calib.ColumnTopY[1], 3000);
    EXPECT_EQ(S.Calib.ColumnTopX[1], 1500);
    EXPECT_EQ(S.Calib.ColumnTopLine[1], 1);
    EXPECT_EQ(S.Table.CurrentLine, 10);
    EXPECT_EQ(S.Box.LinesFromTop, 9);
    EXPECT_EQ(S.Content.NotesText, TenthInstruction);
}

TEST_F(Calibration, TenthRecordIsCountedOverCommentLines) {
    S.Table.LineCount = 0;
    S.Table.RecordCount = 0;
    AddRecords(5);
    AddComment("#a comment");
    AddRecords(20);
    Enter();
    MoveBoxTo(1500, 3000);
    Enter();
    EXPECT_EQ(S.Table.CurrentLine, 11);
    EXPECT_EQ(S.Table.LineRecNo[S.Table.CurrentLine], 10);
    EXPECT_EQ(S.Box.LinesFromTop, 9);
}

TEST_F(Calibration, EachFurtherColumnShowsItsInstructionExactly) {
    CalibrateColumnOne(1500, 3000, 1530, 4800);
    EXPECT_EQ(S.Calib.CalibrationStage, 3);
    EXPECT_EQ(S.Content.NotesText, ColumnInstruction(2));
    MoveBoxTo(13400, 3100);
    Enter();
    EXPECT_EQ(S.Calib.CalibrationStage, 4);
    EXPECT_EQ(S.Content.NotesText, ColumnInstruction(3));
}

TEST_F(Calibration, ThreeColumnCalibrationStoresColumnTopsAndSpacings) {
    CalibrateColumnOne(1500, 3000, 1500, 4800);
    MoveBoxTo(13400, 3100);
    S.ShowRecord(1); // the + key: the column starts one record later
    Enter();
    MoveBoxTo(25200, 3050);
    Enter();
    EXPECT_EQ(S.Calib.CalibrationStage, 0);
    EXPECT_FLOAT_EQ(S.Calib.LineIncrTop, 200.0F);
    EXPECT_FLOAT_EQ(S.Calib.LineIncrLeft, 0.0F);
    EXPECT_EQ(S.Calib.ColumnTopLine[1], 1);
    EXPECT_EQ(S.Calib.ColumnTopLine[2], 22);
    EXPECT_EQ(S.Calib.ColumnTopLine[3], 42);
    EXPECT_EQ(S.Calib.ColumnTopY[2], 3100);
    EXPECT_EQ(S.Calib.ColumnTopX[2], 13400);
    EXPECT_EQ(S.Calib.ColumnTopY[3], 3050);
    EXPECT_EQ(S.Calib.ColumnTopX[3], 25200);
}

TEST_F(Calibration, SkewedScanGivesAHorizontalDriftPerLine) {
    CalibrateColumnOne(1500, 3000, 1530, 4800);
    EXPECT_FLOAT_EQ(S.Calib.LineIncrTop, 200.0F);
    EXPECT_FLOAT_EQ(S.Calib.LineIncrLeft, static_cast<float>(30.0 / 9.0));
}

TEST_F(Calibration, SurnameLinesAreCountedInTheSpacing) {
    S.Scan.SurnameOwnLine = true;
    CalcLineJump(S.Table, S.Scan, S.Calib.ColumnTopLine);
    Enter();
    MoveBoxTo(1500, 3000);
    Enter();
    EXPECT_EQ(S.Box.LinesFromTop, 18);
    MoveBoxTo(1500, 6600);
    Enter();
    EXPECT_FLOAT_EQ(S.Calib.LineIncrTop, 200.0F);
}

TEST_F(Calibration, NextColumnIsEstimatedAColumnOfRecordsOnAndOnePitchAcross) {
    CalibrateColumnOne(1500, 3000, 1500, 4800);
    EXPECT_EQ(S.Table.CurrentLine, 21); // record 1 + 60 / 3
    EXPECT_EQ(S.Box.BoxTop, 3000);
    EXPECT_EQ(S.Box.BoxLeft, 13500); // a third of the image width on
    MoveBoxTo(13400, 3100);
    Enter();
    EXPECT_EQ(S.Table.CurrentLine, 41);
    EXPECT_EQ(S.Box.BoxTop, 3100);
    EXPECT_EQ(S.Box.BoxLeft, 25300); // the pitch of columns 1 and 2
}

TEST_F(Calibration, CompletionEnablesTheCommandsAndReturnsToTheTopOfColumnOne) {
    CalibrateColumnOne(1500, 3000, 1500, 4800);
    MoveBoxTo(13400, 3100);
    Enter();
    MoveBoxTo(25200, 3050);
    Enter();
    EXPECT_FALSE(S.Calib.CalibratingFlag);
    EXPECT_TRUE(S.Calib.BoxLinedUp);
    EXPECT_TRUE(S.Commands.MenuCalibrate);
    EXPECT_TRUE(S.Commands.MenuShowRptSurnames);
    EXPECT_TRUE(S.Commands.ShowStats);
    for (int c = 1; c <= 3; ++c)
        EXPECT_TRUE(S.Commands.TopCol[c]) << c;
    for (int c = 4; c <= 6; ++c)
        EXPECT_FALSE(S.Commands.TopCol[c]) << c;
    EXPECT_EQ(S.Table.CurrentLine, 1);
    EXPECT_EQ(S.Box.BoxTop, 3000);
    EXPECT_EQ(S.Box.BoxLeft, 1500);
    EXPECT_EQ(S.Content.NotesText, "");
    EXPECT_FALSE(S.StatsSummaryText.empty()); // the statistics were brought up to date
}

TEST_F(Calibration, OneColumnCalibrationCompletesAfterTheTenthEntry) {
    S.Scan.NumColumns = 1;
    CalibrateColumnOne(1500, 3000, 1500, 4800);
    EXPECT_EQ(S.Calib.CalibrationStage, 0);
    EXPECT_TRUE(S.Calib.BoxLinedUp);
    EXPECT_FLOAT_EQ(S.Calib.LineIncrTop, 200.0F);
    EXPECT_TRUE(S.Commands.TopCol[1]);
    EXPECT_FALSE(S.Commands.TopCol[2]);
}

TEST_F(Calibration, DoublePageScanNamesSixColumnsInTheFirstInstruction) {
    const std::string sixColumns =
        "Move this box using the mouse or the arrow keys until it is just below the 1st record "
        "in column 1, then press the ENTER key. \rIf this is not a 6 column scan then press the C "
        "key to specify how many there are.";
    for (int16_t code : {40, 41, 42}) {
        S.Scan.ScanTypeCode = code;
        S.Scan.NumColumns = code == 40 ? 4 : 3;
        S.Calib.CalibrationStage = 0;
        Enter();
        EXPECT_EQ(S.Content.NotesText, sixColumns) << code;
    }
}

// A page with one record so far: the tenth entry is the first, and the spacing divides by zero.
TEST_F(Calibration, TenthEntryOnTheSameLineAsTheFirstIsADivisionByZero) {
    S.Table.LineCount = 0;
    S.Table.RecordCount = 0;
    AddRecord();
    Enter();
    MoveBoxTo(1500, 3000);
    Enter();
    EXPECT_EQ(S.Box.LinesFromTop, 0);
    MoveBoxTo(1500, 4800);
    EXPECT_EQ(ErrorNumberOf(S), 11);
}

// A table without a record starts on line 0, never on a line past its end that still holds a
// table read before; its tenth entry is the first too.
TEST_F(Calibration, NoRecordStartsBeforeTheFirstLineAndItsSpacingDividesByZero) {
    S.Table.LineCount = 0;
    S.Table.RecordCount = 0;
    S.Table.CurrentLine = 40; // a line of a table read before
    Enter();
    EXPECT_EQ(S.Table.CurrentLine, 0);
    EXPECT_EQ(ErrorNumberOf(S), 0);
    ASSERT_EQ(S.Calib.CalibrationStage, 2);
    EXPECT_EQ(S.Box.LinesFromTop, 0);
    EXPECT_EQ(S.Table.CurrentLine, 0);
    EXPECT_EQ(ErrorNumberOf(S), 11);
}

TEST_F(Calibration, SpacingDifferenceBeyondALongIsAnOverflow) {
    Enter();
    MoveBoxTo(1500, 3000);
    Enter();
    S.Calib.ColumnTopY[1] = std::numeric_limits<int32_t>::min() + 1000;
    MoveBoxTo(1500, 4800);
    EXPECT_EQ(ErrorNumberOf(S), 6);
}

TEST_F(Calibration, AskScanTypeShowsTheOptionsFormOnlyAtTheStartOfTheFirstStageAndOnlyOnce) {
    S.Scan.AskScanType = true;
    F.Chooser.Script.push_back(ScanLayoutChoice{2, 1, false});
    Enter();
    ASSERT_EQ(F.Chooser.Preselections.size(), 1U);
    EXPECT_EQ(F.Chooser.Preselections[0], (ScanLayoutChoice{3, 1, false}));
    EXPECT_FALSE(S.Scan.AskScanType);
    EXPECT_EQ(S.Scan.NumColumns, 2);
    EXPECT_NE(S.Content.NotesText.find("not a 2 column scan"), std::string::npos);
    MoveBoxTo(1500, 3000);
    Enter();
    MoveBoxTo(1500, 4800);
    Enter();
    S.Calib.CalibrationStage = 0; // the C key starts again
    Enter();
    EXPECT_EQ(F.Chooser.Preselections.size(), 1U);
}

TEST_F(Calibration, EnterBeyondTheLastStageDoesNothing) {
    S.Scan.NumColumns = 2;
    S.Calib.CalibrationStage = 4;
    S.Box.BoxTop = 5000;
    S.Box.FormTop = 9999;
    Enter();
    EXPECT_EQ(S.Calib.CalibrationStage, 4);
    EXPECT_EQ(S.Box.BoxTop, 5000);
    EXPECT_EQ(S.Calib.ColumnTopLine[3], 0);
}

TEST_F(Calibration, RememberedSpacingIsRescaledToThePresentZoom) {
    ScanHistoryEntry& entry = S.History.Entries[1];
    entry.ImgFile = "1911B3-0123.jpg";
    entry.LineIncrTop = 200.0F;
    entry.LineIncrLeft = 8.0F;
    entry.Scale = 80.0F;
    S.History.ScanHistoryMatch = 1;
    S.Zoom(1); // 125 %
    Enter();
    MoveBoxTo(1500, 3000);
    Enter();
    // 9 lines of 200 x 125 / 80 = 312.5 twips: 5812.5, rounded to even.
    EXPECT_EQ(S.Box.BoxTop, 5812);
    EXPECT_EQ(S.Box.BoxLeft, 1612); // 9 x 12.5 = 112.5 on from 1500
}

TEST_F(Calibration, SpacingOfAScanOfTheSameYearAndEventIsUsedWhenThisOneIsNotRemembered) {
    ScanHistoryEntry& entry = S.History.Entries[2];
    entry.ImgFile = "1911B3-0100.jpg";
    entry.LineIncrTop = 150.0F;
    entry.LineIncrLeft = 2.0F;
    entry.Scale = 100.0F;
    S.History.ScanHistoryNear = 2;
    Enter();
    MoveBoxTo(1500, 3000);
    Enter();
    EXPECT_EQ(S.Box.BoxTop, 4350);
    EXPECT_EQ(S.Box.BoxLeft, 1518);
}

TEST_F(Calibration, WithoutAnySpacingTheTenthEntryIsEstimatedFromTheImageHeight) {
    Enter();
    MoveBoxTo(1500, 3000);
    Enter();
    // The image height less twice column 1's top, 45000 twips, for the 2 tens of records of a
    // column: 22500 twips for ten lines, 9 lines down.
    EXPECT_EQ(S.Box.BoxTop, 3000 + 20250);
    EXPECT_EQ(S.Box.BoxLeft, 1500);
}

TEST_F(Calibration, EstimateOfATwoPageTranscriptionInOneColumnIsTakenOncePerPage) {
    S.Scan.NumColumns = 1;
    S.Table.HeaderPageCount = 2;
    Enter();
    MoveBoxTo(1500, 3000);
    Enter();
    // 45000 twips for the 6 tens of records, times the 2 pages: 15000 twips for ten lines.
    EXPECT_EQ(S.Box.BoxTop, 3000 + 13500);
}

TEST_F(Calibration, EstimateOfATwoPageTranscriptionInThreeColumnsIsNotMultiplied) {
    S.Table.HeaderPageCount = 2;
    Enter();
    MoveBoxTo(1500, 3000);
    Enter();
    EXPECT_EQ(S.Box.BoxTop, 3000 + 20250);
}

} // namespace
} // namespace tv::test
