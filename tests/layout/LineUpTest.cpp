// The box on the printed lines found on the scan: each calibration stage puts it on the line it
// asks for, and once calibrated it goes to the found line nearest the computed place.
#include "LayoutSessionTesting.h"

#include "view/KeyCodes.h"

namespace tv::test {
namespace {

constexpr double Pitch = 40.0;
constexpr double FirstBaseline = 320.0;
constexpr double Left = 150.0;
constexpr double Below = 0.12 * Pitch; // how far below its line the box is lined up

// One column of 60 entries below a heading, at 15 twips a pixel; bend pixels added from entry
// bendFrom on, as a page curved towards the binding lifts its lower lines.
PrintedLines OneColumn(int bendFrom = 999, double bend = 0.0) {
    PrintedLines lines;
    lines.ImageWidth = 2400;
    lines.ImageHeight = 3400;
    lines.Pitch = Pitch;
    FoundColumn column;
    column.Left = Left;
    column.Right = 2250;
    column.Lines.push_back({Left, 250.0}); // the headings: off the entries' spacing
    for (int k = 0; k < 60; ++k)
        column.Lines.push_back({Left, FirstBaseline + Pitch * k + (k >= bendFrom ? bend : 0.0)});
    lines.Columns.push_back(column);
    return lines;
}

int32_t Twips(double pixels) {
    return CLng(pixels * 15.0);
}

class LineUp : public LayoutSessionTest {
  protected:
    LineUp() {
        S.Scan.NumColumns = 1;
        AddRecords(60);
    }
};

TEST_F(LineUp, TheHeadingsAboveTheEntriesAreNotNumberedAndAGapSkipsANumber) {
    PrintedLines lines = OneColumn();
    FoundColumn& column = lines.Columns[0];
    column.Lines.erase(column.Lines.begin() + 11); // entry 10 is a blank line
    const std::vector<int> numbers = PrintedLineNumbers(column, Pitch);
    EXPECT_EQ(numbers[0], -1);
    EXPECT_EQ(numbers[1], 0);
    EXPECT_EQ(numbers[10], 9);
    EXPECT_EQ(numbers[11], 11);
}

TEST_F(LineUp, TheFirstStagePutsTheBoxJustBelowTheFirstEntry) {
    S.PrintedLinesFound(OneColumn(), 0.0F);
    Enter();
    EXPECT_EQ(S.Box.BoxTop, Twips(FirstBaseline + Below));
    EXPECT_EQ(S.Box.BoxLeft, Twips(Left));
}

TEST_F(LineUp, TheSecondStagePutsTheBoxJustBelowTheTenthEntryAndEnterMeasuresItsSpacing) {
    S.PrintedLinesFound(OneColumn(), 0.0F);
    Enter();
    Enter();
    EXPECT_EQ(S.Table.CurrentLine, 10);
    EXPECT_EQ(S.Box.BoxTop, Twips(FirstBaseline + 9 * Pitch + Below));
    Enter();
    EXPECT_EQ(S.Calib.CalibrationStage, 0);
    EXPECT_NEAR(S.Calib.LineIncrTop, Pitch * 15, 1.0);
}

TEST_F(LineUp, TheTenthEntryIsCountedFromWhereTheUserPutTheFirst) {
    S.PrintedLinesFound(OneColumn(), 0.0F);
    Enter();
    // The user takes the third line for the first entry (the scan starts part-way down).
    MoveBoxTo(Twips(Left), Twips(FirstBaseline + 2 * Pitch + Below + 2));
    Enter();
    EXPECT_EQ(S.Box.BoxTop, Twips(FirstBaseline + 11 * Pitch + Below));
}

TEST_F(LineUp, LinesFoundLateLineUpABoxTheUserHasNotMoved) {
    Enter();
    const int32_t placed = S.Box.BoxTop;
    ASSERT_NE(placed, Twips(FirstBaseline + Below));
    S.PrintedLinesFound(OneColumn(), 0.0F);
    EXPECT_EQ(S.Box.BoxTop, Twips(FirstBaseline + Below));
}

TEST_F(LineUp, LinesFoundLateNeverMoveABoxTheUserHasMoved) {
    Enter();
    MoveBoxTo(Twips(400), Twips(900));
    const int32_t top = S.Box.BoxTop;
    const int32_t left = S.Box.BoxLeft;
    S.PrintedLinesFound(OneColumn(), 0.0F);
    EXPECT_EQ(S.Box.BoxTop, top);
    EXPECT_EQ(S.Box.BoxLeft, left);
}

TEST_F(LineUp, CalibratedTheBoxGoesToTheFoundLineNearestTheComputedPlace) {
    S.PrintedLinesFound(OneColumn(30, 8.0), 0.0F);
    Calibrated(Twips(Left), Twips(FirstBaseline + Below), static_cast<float>(Pitch * 15), 0.0F);
    S.Table.CurrentLine = 41;
    S.CalcFramePosn();
    EXPECT_EQ(S.Box.BoxTop, Twips(FirstBaseline + 40 * Pitch + 8.0 + Below));
}

TEST_F(LineUp, WithNoFoundLineWithinHalfASpacingTheBoxStaysWhereTheCalibrationPutsIt) {
    PrintedLines lines = OneColumn();
    auto& found = lines.Columns[0].Lines;
    // Entries 38 to 42 (records 39 to 43) printed faintly: no line found for them.
    found.erase(found.begin() + 1 + 38, found.begin() + 1 + 43);
    S.PrintedLinesFound(lines, 0.0F);
    Calibrated(Twips(Left), Twips(FirstBaseline + Below), static_cast<float>(Pitch * 15), 0.0F);
    S.Table.CurrentLine = 41;
    S.CalcFramePosn();
    EXPECT_FALSE(S.Lines.LinedUp.has_value());
    EXPECT_EQ(S.Box.BoxTop, CLng(Twips(FirstBaseline + Below) + 40 * Pitch * 15));
}

TEST_F(LineUp, EnterKeepsTheUsersNudgeOnTheNextLine) {
    S.PrintedLinesFound(OneColumn(10, 6.0), 0.0F);
    Calibrated(Twips(Left), Twips(FirstBaseline + Below), static_cast<float>(Pitch * 15), 0.0F);
    S.Table.CurrentLine = 10;
    S.CalcFramePosn();
    S.Box.BoxTop += 45; // the user nudged the box three pixels down
    S.Form_KeyDown(KeyEnter, false, false);
    EXPECT_EQ(S.Table.CurrentLine, 11);
    EXPECT_EQ(S.Box.BoxTop, Twips(FirstBaseline + 10 * Pitch + 6.0 + Below) + 45);
}

TEST_F(LineUp, WithBothOptionsOffTheBoxGoesWhereTheCalibrationPutsIt) {
    FakeSession plain;
    Session& P = plain.S;
    P.Scan = S.Scan;
    P.Table = S.Table;
    P.Box = S.Box;
    S.PrintedLinesFound(OneColumn(11, 6.0), 0.0F);
    S.Lines.LineUpAutomatically = false;
    S.Lines.FollowPrintedLines = false;
    for (int step = 0; step < 3; ++step) {
        S.CalibrateTextbox();
        P.CalibrateTextbox();
        EXPECT_EQ(S.Box.BoxTop, P.Box.BoxTop) << step;
        EXPECT_EQ(S.Box.BoxLeft, P.Box.BoxLeft) << step;
    }
    for (int press = 0; press < 20; ++press) {
        S.Form_KeyDown(KeyEnter, false, false);
        P.Form_KeyDown(KeyEnter, false, false);
        EXPECT_EQ(S.Box.BoxTop, P.Box.BoxTop) << press;
        EXPECT_EQ(S.Box.BoxLeft, P.Box.BoxLeft) << press;
    }
}

TEST_F(LineUp, LinesOfTheScanBeforeItWasTurnedAreNotFollowed) {
    S.PrintedLinesFound(OneColumn(30, 8.0), 0.0F);
    Calibrated(Twips(Left), Twips(FirstBaseline + Below), static_cast<float>(Pitch * 15), 0.0F);
    S.Box.ScanRotation = 0.4F;
    S.Table.CurrentLine = 41;
    S.CalcFramePosn();
    EXPECT_EQ(S.Box.BoxTop, CLng(Twips(FirstBaseline + Below) + 40 * Pitch * 15));
}

TEST_F(LineUp, ANewScanForgetsTheLinesOfTheOneBefore) {
    S.PrintedLinesFound(OneColumn(), 0.0F);
    S.Form_Load2();
    EXPECT_FALSE(S.Lines.Found.has_value());
}

} // namespace
} // namespace tv::test
