#include "PageSessionTesting.h"

#include <algorithm>

namespace tv::test {

namespace {

// What a key may change, to show that a key changed nothing.
struct Snapshot {
    int16_t Stage, CurrentLine, Colour, FontSize, ExtraPad, DistrictPad;
    int32_t Top, Left, Width;
    std::string NameLine, SecondLine, Notes, Foot;
    bool Diag;
    float Zoom;
    std::size_t Prompts;
    int Scrolls, Flags, Layouts;
    bool operator==(const Snapshot&) const = default;
};

class KeyTable : public PageSessionTest {
  protected:
    void SetUp() override { LoadCalibrated1878(); }

    Snapshot Take() const {
        int flags = 0;
        for (int line = 1; line <= S.Table.LineCount; ++line)
            flags += S.Table.LineFlagged[line] ? 1 : 0;
        return {S.Calib.CalibrationStage,
                S.Table.CurrentLine,
                S.Content.BoxColourIndex,
                S.Content.BoxFontSize,
                S.Scan.ExtraPad,
                S.Scan.DistrictPad,
                S.Box.BoxTop,
                S.Box.BoxLeft,
                S.Box.BoxWidth,
                S.Content.NameLine,
                S.Content.SecondLine,
                S.Content.NotesText,
                S.Content.FootLabel,
                S.DiagVisible,
                S.Box.CurrentZoom,
                F.Prompts.Shown.size(),
                F.View.ScrollCalls,
                flags,
                static_cast<int>(F.Chooser.Preselections.size())};
    }

    static bool NothingAsked(const CommandOutcome& o) {
        return !o.OpenHelp && !o.ShowStatistics && !o.StatisticsChanged && !o.ExitProgram;
    }

    void GoToLine(int line) {
        S.Table.CurrentLine = static_cast<int16_t>(line);
        S.ShowRecord(0);
    }
};

TEST_F(KeyTable, EveryKeyIsConsumedEvenWhenItDoesNothingInTheState) {
    GoToLine(LineOf1878Record(40));
    const Snapshot before = Take();
    int unknownKeys = 0;
    for (int code = 0; code <= 255; ++code) {
        if (std::count(TableKeys().begin(), TableKeys().end(), code) != 0) continue;
        ++unknownKeys;
        for (int modifiers = 0; modifiers < 4; ++modifiers) {
            CommandOutcome outcome = Press(code, (modifiers & 1) != 0, (modifiers & 2) != 0);
            EXPECT_TRUE(NothingAsked(outcome)) << "key " << code;
        }
    }
    EXPECT_EQ(unknownKeys, 256 - 32);
    EXPECT_EQ(Take(), before);
    // Keys of the table that have no row for their modifiers are swallowed the same way.
    Press(KeyF, false, true);
    Press(KeyA, true, true);
    Press(KeyS, false, true);
    Press(KeyD);
    Press(KeyD, true, true);
    EXPECT_EQ(Take(), before);
}

TEST_F(KeyTable, MHomeEndPageUpAndPageDownDoNothingWhileCalibrating) {
    GoToLine(LineOf1878Record(40));
    S.Calib.CalibrationStage = 3;
    const Snapshot before = Take();
    for (int code : {KeyM, KeyHome, KeyEnd, KeyPageUp, KeyPageDown})
        EXPECT_TRUE(NothingAsked(Press(code))) << "key " << code;
    EXPECT_EQ(Take(), before);
    EXPECT_FALSE(S.Table.LineFlagged[LineOf1878Record(40)]);
}

TEST_F(KeyTable, PageUpAtTheTopOfColumnOneDoesNothing) {
    SetNote(S.Content, NoteKind::AddStatus, "a note that a column jump would clear", true);
    const Snapshot before = Take();
    ASSERT_EQ(S.Table.CurrentLine, 4);
    Press(KeyPageUp);
    EXPECT_EQ(Take(), before);
}

TEST_F(KeyTable, PageUpGoesToTheTopOfTheColumnThenToTheColumnBefore) {
    GoToLine(LineOf1878Record(45));
    Press(KeyPageUp);
    EXPECT_EQ(S.Table.CurrentLine, 35);
    EXPECT_EQ(S.Box.BoxTop, 3572);
    EXPECT_EQ(S.Box.BoxLeft, 12305);
    EXPECT_EQ(S.Content.FootLabel,
              std::string(" Line 35 of 95,  QRL entry 31 of 90") + CR + "  BRADLEY, William");
    Press(KeyPageUp);
    EXPECT_EQ(S.Table.CurrentLine, 4);
    EXPECT_EQ(S.Box.BoxLeft, 745);
}

TEST_F(KeyTable, PageDownGoesToTheNextColumnTopAndDoesNothingInTheLastColumn) {
    GoToLine(LineOf1878Record(12));
    Press(KeyPageDown);
    EXPECT_EQ(S.Table.CurrentLine, 35);
    Press(KeyPageDown);
    EXPECT_EQ(S.Table.CurrentLine, 65);
    EXPECT_EQ(S.Box.BoxTop, 3572);
    EXPECT_EQ(S.Box.BoxLeft, 23865);
    GoToLine(LineOf1878Record(80));
    const Snapshot before = Take();
    Press(KeyPageDown);
    EXPECT_EQ(Take(), before);
}

TEST_F(KeyTable, PageDownFromTheHeaderLinesGoesToColumnOne) {
    GoToLine(LineOf1878Record(50));
    S.Table.CurrentLine = 2; // the "+S" line, above column 1's top
    S.Box.BoxTop = 9000;
    Press(KeyPageDown);
    EXPECT_EQ(S.Table.CurrentLine, 4);
    EXPECT_EQ(S.Box.BoxTop, 3572);
}

TEST_F(KeyTable, HomeAndEndGoToTheFirstAndLastColumnTopsAndClearTheNotes) {
    GoToLine(LineOf1878Record(50));
    SetNote(S.Content, NoteKind::AddStatus,
            "Your transcription file has changed - press R to "
            "reload it",
            true);
    Press(KeyEnd);
    EXPECT_EQ(S.Table.CurrentLine, 65);
    EXPECT_EQ(S.Box.BoxLeft, 23865);
    EXPECT_EQ(S.Content.NotesText, "");
    EXPECT_EQ(S.Content.NameLine, "  FOSTER, Elizabeth");
    Press(KeyHome);
    EXPECT_EQ(S.Table.CurrentLine, 4);
    EXPECT_EQ(S.Box.BoxTop, 3572);
    EXPECT_EQ(S.Box.BoxLeft, 745);
}

TEST_F(KeyTable, AColumnBeyondTheSixColumnArraysIsAnError) {
    S.Scan.NumColumns = 7;
    try {
        Press(KeyEnd);
        FAIL() << "End went to a seventh column";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number, 9);
    }
}

TEST_F(KeyTable, ShiftDownWhenCalibratedMovesTheBoxByOneLineSpacing) {
    GoToLine(LineOf1878Record(3));
    S.Box.BoxTop = 6020;
    Press(KeyDown, true);
    EXPECT_EQ(S.Box.BoxTop, 6020 + 1224);
    S.Calib.LineIncrTop = 1224.5F; // rounded to even
    Press(KeyNum2, true);
    EXPECT_EQ(S.Box.BoxTop, 6020 + 1224 + 1224);
    Press(KeyDown);
    EXPECT_EQ(S.Box.BoxTop, 6020 + 2 * 1224 + 68);
}

TEST_F(KeyTable, ShiftDownWhileCalibratingMovesEightHalfSteps) {
    S.Calib.CalibrationStage = 2;
    S.Box.BoxTop = 6020;
    Press(KeyDown, true);
    EXPECT_EQ(S.Box.BoxTop, 6020 + 8 * 34);
    Press(KeyUp);
    EXPECT_EQ(S.Box.BoxTop, 6020 + 7 * 34);
}

TEST_F(KeyTable, TheStepIsFourFifthsOfAHundredthOfTheDisplayedHeightOverSix) {
    EXPECT_EQ(S.MovementStep(false), 68); // 51000 twips x 0.8 / 600
    EXPECT_EQ(S.MovementStep(true), 1224);
    F.View.State.Zoom = 2.0;
    EXPECT_EQ(S.MovementStep(false), 136);
    S.Calib.CalibrationStage = 1;
    EXPECT_EQ(S.MovementStep(false), 68);
    EXPECT_EQ(S.MovementStep(true), 544);
}

TEST_F(KeyTable, TheHalvedStepRoundsHalvesToEven) {
    S.Calib.CalibrationStage = 1;
    F.View.State.ImageHeight = 3350 * 15.0; // base step 67
    EXPECT_EQ(S.MovementStep(false), 34);   // 33.5
    F.View.State.ImageHeight = 3450 * 15.0; // base step 69
    EXPECT_EQ(S.MovementStep(false), 34);   // 34.5
}

TEST_F(KeyTable, WithoutAMeasuredSpacingShiftMovesEightSteps) {
    S.Calib.LineIncrTop = -1.0F;
    EXPECT_EQ(S.MovementStep(true), 544);
}

TEST_F(KeyTable, AShiftStepBeyondAnIntegerIsAnOverflow) {
    F.View.State.Zoom = 100.0; // base step 6800, eight of them 54400
    try {
        Press(KeyDown, true);
        FAIL() << "no overflow";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number, 6);
    }
}

TEST_F(KeyTable, ArrowsAndTheNumericPadMoveTheBoxByTheStep) {
    GoToLine(LineOf1878Record(3));
    S.Box.BoxTop = 6020;
    S.Box.BoxLeft = 3000;
    Press(KeyDown);
    Press(KeyNum2);
    EXPECT_EQ(S.Box.BoxTop, 6020 + 136);
    Press(KeyUp);
    EXPECT_EQ(S.Box.BoxTop, 6020 + 68);
    Press(KeyNum8, true);
    EXPECT_EQ(S.Box.BoxTop, 6020 + 68 - 1224);
    Press(KeyRight);
    Press(KeyNum6);
    EXPECT_EQ(S.Box.BoxLeft, 3136);
    Press(KeyLeft);
    Press(KeyNum4, true);
    EXPECT_EQ(S.Box.BoxLeft, 3136 - 68 - 1224);
}

TEST_F(KeyTable, AltUpAndAltDownDoNothing) {
    GoToLine(LineOf1878Record(3));
    const Snapshot before = Take();
    for (int code : {KeyUp, KeyDown, KeyNum8, KeyNum2}) {
        Press(code, false, true);
        Press(code, true, true);
    }
    EXPECT_EQ(Take(), before);
}

TEST_F(KeyTable, AltRightWidensAndAltLeftNarrowsTheBox) {
    Press(KeyRight, false, true);
    EXPECT_EQ(S.Box.BoxWidth, 7068);
    Press(KeyNum6, true, true);
    EXPECT_EQ(S.Box.BoxWidth, 7068 + 1224);
    Press(KeyLeft, false, true);
    Press(KeyNum4, false, true);
    EXPECT_EQ(S.Box.BoxWidth, 7068 + 1224 - 136);
    EXPECT_EQ(S.Box.BoxLeft, 745);
}

TEST_F(KeyTable, EnterAndLMoveToTheNextRecordAndTheBoxFollowsByItsPrintedLines) {
    Press(KeyEnter);
    EXPECT_EQ(S.Table.CurrentLine, 5);
    EXPECT_EQ(S.Box.BoxTop, 3572 + 1224);
    EXPECT_EQ(S.Box.BoxLeft, 745 + 68);
    GoToLine(LineOf1878Record(15));
    S.Box.BoxTop = 3572 + 14 * 1224;
    S.Box.BoxLeft = 745 + 14 * 68;
    Press(KeyL); // over the comment line: still one printed line
    EXPECT_EQ(S.Table.CurrentLine, LineOf1878Record(16));
    EXPECT_EQ(S.Box.BoxTop, 3572 + 15 * 1224);
    EXPECT_EQ(S.Content.NameLine, "  BAILEY, Elizabeth");
}

TEST_F(KeyTable, BackspaceAndOGoBackAndTheBoxFollows) {
    GoToLine(LineOf1878Record(16));
    S.Box.BoxTop = 3572 + 15 * 1224;
    S.Box.BoxLeft = 745 + 15 * 68;
    Press(KeyBackspace);
    EXPECT_EQ(S.Table.CurrentLine, LineOf1878Record(15));
    EXPECT_EQ(S.Box.BoxTop, 3572 + 14 * 1224);
    EXPECT_EQ(S.Box.BoxLeft, 745 + 14 * 68);
    Press(KeyO);
    EXPECT_EQ(S.Table.CurrentLine, LineOf1878Record(14));
    EXPECT_EQ(S.Box.BoxTop, 3572 + 13 * 1224);
}

TEST_F(KeyTable, BackspaceDoesNothingWhileCalibrating) {
    GoToLine(LineOf1878Record(16));
    S.Calib.CalibrationStage = 2;
    const Snapshot before = Take();
    Press(KeyBackspace);
    Press(KeyO);
    EXPECT_EQ(Take(), before);
}

TEST_F(KeyTable, EnterAtTheLastRecordMovesTheBoxOnlyWhenShowRecordReturnsAStepAboveZero) {
    GoToLine(LineOf1878Record(89));
    S.Box.BoxTop = 3572 + 28 * 1224;
    S.Box.BoxLeft = 23865 + 28 * 68;
    Press(KeyEnter);
    EXPECT_EQ(S.Table.CurrentLine, 94);
    EXPECT_EQ(S.Box.BoxTop, 3572 + 29 * 1224);
    const int32_t top = S.Box.BoxTop;
    const int32_t left = S.Box.BoxLeft;
    Press(KeyEnter); // past the last record: a step of 0
    EXPECT_EQ(S.Table.CurrentLine, 96);
    EXPECT_EQ(S.Box.BoxTop, top);
    EXPECT_EQ(S.Box.BoxLeft, left);
    EXPECT_EQ(S.Content.NameLine, "");
    EXPECT_NE(S.Content.NotesText.find(".... Reached end of records ...."), std::string::npos);
    Press(KeyEnter);
    EXPECT_EQ(S.Box.BoxTop, top);
    Press(KeyBackspace); // the line left lies past the end: a step of 0 again
    EXPECT_EQ(S.Table.CurrentLine, 94);
    EXPECT_EQ(S.Box.BoxTop, top);
}

TEST_F(KeyTable, EnterWhileCalibratingConfirmsTheStage) {
    S.Calib.CalibrationStage = 0;
    S.CalibrateTextbox();
    ASSERT_EQ(S.Calib.CalibrationStage, 1);
    Press(KeyEnter);
    EXPECT_EQ(S.Calib.CalibrationStage, 2);
    Press(KeyL);
    EXPECT_EQ(S.Calib.CalibrationStage, 3);
}

TEST_F(KeyTable, PlusAndMinusStepTheRecordWithoutMovingTheBox) {
    const int32_t top = S.Box.BoxTop;
    Press(KeyNumPlus);
    Press(KeyPlus);
    EXPECT_EQ(S.Table.CurrentLine, 6);
    Press(KeyMinus);
    EXPECT_EQ(S.Table.CurrentLine, 5);
    Press(KeyNumMinus, true, true);
    EXPECT_EQ(S.Table.CurrentLine, 4);
    EXPECT_EQ(S.Box.BoxTop, top);
    EXPECT_EQ(S.Box.BoxLeft, 745);
}

TEST_F(KeyTable, CInTheFirstStageOpensTheLayoutChoiceAndStartsTheStageAgain) {
    S.CalibrateTextbox();
    ASSERT_EQ(S.Calib.CalibrationStage, 1);
    ASSERT_TRUE(F.Chooser.Preselections.empty());
    Press(KeyC);
    EXPECT_EQ(F.Chooser.Preselections.size(), 1U);
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
    EXPECT_FALSE(S.Scan.AskScanType);
    EXPECT_TRUE(F.Prompts.Shown.empty());
}

TEST_F(KeyTable, CWhenCalibratedAsksBeforeGoingBackToTheFirstStage) {
    F.Prompts.Script = {Answer::No};
    Press(KeyC);
    ASSERT_EQ(F.Prompts.Shown.size(), 1U);
    const Prompt& asked = F.Prompts.Shown[0];
    EXPECT_EQ(asked.Text, std::string("You can only change the number of columns during the "
                                      "first stage of calibration") +
                              CR + "Do you want to recalibrate now ?");
    EXPECT_EQ(asked.Title, "Tallyview");
    EXPECT_EQ(asked.Choice, Buttons::YesNo);
    EXPECT_EQ(S.Calib.CalibrationStage, 0);
    EXPECT_TRUE(F.Chooser.Preselections.empty());

    F.Prompts.Script = {Answer::Yes};
    Press(KeyC, true, true);
    EXPECT_EQ(F.Prompts.Shown.size(), 2U);
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
    EXPECT_EQ(F.Chooser.Preselections.size(), 1U);
}

TEST_F(KeyTable, CInALaterStageDoesNothingWhileTheCalibrateMenuIsDisabled) {
    S.CalibrateTextbox();
    Press(KeyEnter);
    ASSERT_EQ(S.Calib.CalibrationStage, 2);
    ASSERT_FALSE(S.Commands.MenuCalibrate);
    Press(KeyC);
    EXPECT_TRUE(F.Prompts.Shown.empty());
    EXPECT_EQ(S.Calib.CalibrationStage, 2);
}

TEST_F(KeyTable, BPressedSevenTimesFromColourSixGoesRoundOneToSix) {
    S.SetBoxColour(6);
    std::vector<int16_t> seen;
    for (int i = 0; i < 7; ++i) {
        Press(KeyB, i % 2 == 1, i % 3 == 2);
        seen.push_back(S.Content.BoxColourIndex);
    }
    EXPECT_EQ(seen, (std::vector<int16_t>{1, 2, 3, 4, 5, 6, 1}));
}

TEST_F(KeyTable, BFromColourZeroGoesToOne) {
    S.SetBoxColour(0);
    Press(KeyB);
    EXPECT_EQ(S.Content.BoxColourIndex, 1);
}

TEST_F(KeyTable, FAndShiftFChangeTheFontSizeWithinItsLimits) {
    S.Content.BoxFontSize = 39;
    Press(KeyF);
    Press(KeyF);
    EXPECT_EQ(S.Content.BoxFontSize, 40);
    Press(KeyF, true);
    EXPECT_EQ(S.Content.BoxFontSize, 39);
    Press(KeyF, false, true);
    EXPECT_EQ(S.Content.BoxFontSize, 39);
}

TEST_F(KeyTable, F1AsksForTheCommandsHelp) {
    EXPECT_TRUE(Press(KeyF1).OpenHelp);
    EXPECT_FALSE(Press(KeyF11).OpenHelp);
}

TEST_F(KeyTable, F11ZoomsInAndF12ZoomsOut) {
    Press(KeyF11);
    EXPECT_FLOAT_EQ(S.Box.CurrentZoom, 125.0F);
    EXPECT_DOUBLE_EQ(F.View.State.Zoom, 1.25);
    Press(KeyF12);
    Press(KeyF12);
    EXPECT_FLOAT_EQ(S.Box.CurrentZoom, 90.0F);
}

TEST_F(KeyTable, AAndSWidenAndShiftNarrowsTheColumnsOfTheBox) {
    for (int i = 0; i <= 3; ++i)
        S.Commands.AdjCol[i] = true;
    S.Scan.ExtraPad = 20;
    S.Scan.DistrictPad = 40;
    Press(KeyA);
    EXPECT_EQ(S.Scan.ExtraPad, 21);
    Press(KeyA, true);
    Press(KeyA, true);
    EXPECT_EQ(S.Scan.ExtraPad, 19);
    Press(KeyS);
    EXPECT_EQ(S.Scan.DistrictPad, 41);
    Press(KeyS, true);
    Press(KeyS, true);
    EXPECT_EQ(S.Scan.DistrictPad, 39);
    Press(KeyS, true, true);
    Press(KeyA, false, true);
    EXPECT_EQ(S.Scan.ExtraPad, 19);
    EXPECT_EQ(S.Scan.DistrictPad, 39);
}

TEST_F(KeyTable, AltDShowsAndHidesTheDiagnosticsPanel) {
    Press(KeyD, false, true);
    EXPECT_TRUE(S.DiagVisible);
    Press(KeyD);
    EXPECT_TRUE(S.DiagVisible);
    Press(KeyD, false, true);
    EXPECT_FALSE(S.DiagVisible);
}

TEST_F(KeyTable, AKeyWhileAPlacementIsPendingOnlyPlacesTheBox) {
    S.Box.BoxTop = 10; // above the image
    S.Box.BoxPlacementPending = true;
    Press(KeyEnter);
    EXPECT_FALSE(S.Box.BoxPlacementPending);
    EXPECT_EQ(S.Box.BoxTop, 70);
    EXPECT_EQ(S.Table.CurrentLine, 4);
    Press(KeyDown);
    EXPECT_EQ(S.Box.BoxTop, 70 + 68);
}

TEST_F(KeyTable, MAndRAreTheFlagAndReloadCommands) {
    EXPECT_TRUE(Press(KeyM).StatisticsChanged);
    EXPECT_TRUE(S.Table.LineFlagged[4]);
    F.Prompts.Script = {Answer::Cancel};
    Press(KeyR);
    ASSERT_EQ(F.Prompts.Texts(),
              std::vector<std::string>{"All the flagged records will lose their flag"});
    EXPECT_TRUE(S.Table.LineFlagged[4]);
}

} // namespace

} // namespace tv::test
