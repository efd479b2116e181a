// The main window's one key-down handler: it reads the key and the SHIFT and ALT state, does
// one command and consumes the key, so that no control of the window ever sees it.
#include "core/Checked.h"
#include "core/Text.h"
#include "session/Session.h"
#include "view/KeyCodes.h"

#include <optional>

namespace tv {

namespace {

constexpr int NumColours = 6;

struct KeyPress {
    int Code;
    bool Shift;
    bool Alt;
    bool None() const { return !Shift && !Alt; }
    bool ShiftOnly() const { return Shift && !Alt; }
    bool AltOnly() const { return Alt && !Shift; }
};

bool Calibrating(const Session& s) {
    return s.Calib.CalibrationStage > 0;
}

void MoveBoxBy(Session& s, long long down, long long across) {
    s.Box.BoxTop = To32(s.Box.BoxTop + down);
    s.Box.BoxLeft = To32(s.Box.BoxLeft + across);
    s.EnsureFrameVisible();
}

// The arrow keys: up and down without ALT; right and left move without ALT and change the
// box's width with it. ALT with up or down matches no row of the table and does nothing.
void ArrowKey(Session& s, const KeyPress& key, int16_t step) {
    bool vertical =
        key.Code == KeyUp || key.Code == KeyNum8 || key.Code == KeyDown || key.Code == KeyNum2;
    bool forward =
        key.Code == KeyDown || key.Code == KeyNum2 || key.Code == KeyRight || key.Code == KeyNum6;
    long long signedStep = forward ? step : -static_cast<long long>(step);
    if (vertical) {
        if (!key.Alt) MoveBoxBy(s, signedStep, 0);
    } else if (!key.Alt) {
        MoveBoxBy(s, 0, signedStep);
    } else if (forward) {
        s.WidenBox(step);
    } else {
        s.NarrowBox(step);
    }
}

// ShowRecord moved by n printed lines (n above 0): the box follows by n line spacings, each
// rounded to a whole twip.
void FollowRecord(Session& s, int16_t n, int sign) {
    if (n > 0) {
        float lines = static_cast<float>(sign * n);
        const int32_t before = s.Box.BoxTop;
        s.Box.BoxTop =
            To32(s.Box.BoxTop + static_cast<long long>(CLng(lines * s.Calib.LineIncrTop)));
        s.Box.BoxLeft =
            To32(s.Box.BoxLeft + static_cast<long long>(CLng(lines * s.Calib.LineIncrLeft)));
        // On a found printed line, the box keeps its distance below the line it left.
        s.FollowPrintedLine(before);
        s.EnsureFrameVisible();
    } else {
        s.EnsureFrameVisible();
    }
}

// The calibrated column that holds a line: the last one whose top is at or before it.
int ColumnOf(const Session& s, int line) {
    for (int c = s.Scan.NumColumns; c >= 1; --c)
        if (s.Calib.ColumnTopLine[c] >= 1 && s.Calib.ColumnTopLine[c] <= line) return c;
    return 0;
}

// Steps one record and moves the box with it. Within a column the box follows by line
// spacings, so a nudge the volunteer gave it is kept; when the record is in another column the
// box goes to that column's calibrated place, as a volunteer stepping over the foot of a column
// expects.
void StepRecord(Session& s, int direction) {
    const int before = ColumnOf(s, s.Table.CurrentLine);
    const int16_t n = s.ShowRecord(direction);
    const int after = ColumnOf(s, s.Table.CurrentLine);
    const bool onTable = s.Table.CurrentLine >= 1 && s.Table.CurrentLine <= s.Table.LineCount;
    if (onTable && after >= 1 && after != before) {
        s.CalcFramePosn();
        s.EnsureFrameVisible();
        return;
    }
    FollowRecord(s, n, direction);
}

// Enter and L (the NextRec button): the next calibration stage, or the next record.
void NextRec(Session& s) {
    if (Calibrating(s)) {
        s.CalibrateTextbox();
        return;
    }
    StepRecord(s, +1);
}

// Backspace and O (the PrevRec button): nothing while calibrating.
void PrevRec(Session& s) {
    if (Calibrating(s)) return;
    StepRecord(s, -1);
}

// The column a column-jump key goes to; nothing for Page Up at or before column 1's top and
// for Page Down in the last column. Column numbers above 6 fail on the column arrays.
std::optional<int16_t> JumpColumn(const Session& s, int code) {
    int16_t columns = s.Scan.NumColumns;
    int16_t line = s.Table.CurrentLine;
    const ColumnTopLines& tops = s.Calib.ColumnTopLine;
    int16_t c = columns;
    switch (code) {
    case KeyHome:
        return 1;
    case KeyEnd:
        return columns;
    case KeyPageUp:
        while (c >= 1 && !(line > tops[c]))
            --c;
        if (c < 1) return std::nullopt;
        return c;
    default: // Page Down; a line before column 1's top counts as column 0, so it goes to 1
        while (c >= 1 && !(line >= tops[c]))
            --c;
        if (c >= columns) return std::nullopt;
        return To16(c + 1);
    }
}

// Home, End, Page Up and Page Down, when calibrated.
void ColumnJump(Session& s, int code) {
    if (Calibrating(s)) return;
    std::optional<int16_t> column = JumpColumn(s, code);
    if (!column) return;
    int16_t c = *column;
    s.Table.CurrentLine = s.Calib.ColumnTopLine[c];
    s.Box.BoxTop = s.Calib.ColumnTopY[c];
    s.Box.BoxLeft = s.Calib.ColumnTopX[c];
    SetNote(s.Content, NoteKind::ClearAll, "", true);
    s.ShowRecord(0);
    s.EnsureFrameVisible();
}

// Back to the first calibration stage with the scan layout form shown first.
void RecalibrateWithLayoutChoice(Session& s) {
    s.Calib.CalibrationStage = 0;
    s.Scan.AskScanType = true;
    s.CalibrateTextbox();
}

// C: the number of columns can be changed only in the first stage of calibration; elsewhere
// the user may choose to go back to it, while the Calibrate menu entry is enabled.
void ChangeColumns(Session& s) {
    if (s.Calib.CalibrationStage == 1) {
        RecalibrateWithLayoutChoice(s);
        return;
    }
    if (!s.Commands.MenuCalibrate) return;
    Prompt question{std::string("You can only change the number of columns during the ") +
                        "first stage of calibration" + CR + "Do you want " + "to recalibrate now ?",
                    AppTitle, Buttons::YesNo, PromptIcon::None, Answer::Yes};
    if (s.P.Ask.Ask(question) == Answer::Yes) RecalibrateWithLayoutChoice(s);
}

// B: the colours run 1..6 and round again; colour 0 is only chosen from the menu, on purpose.
void NextColour(Session& s) {
    int16_t next = To16(s.Content.BoxColourIndex + 1);
    s.SetBoxColour(next > NumColours ? 1 : next);
}

// The letter keys that change the box: font size, column adjustment, diagnostics.
void BoxLetterKey(Session& s, const KeyPress& key) {
    switch (key.Code) {
    case KeyF:
        if (key.None()) s.ChangeFontSize(+1);
        if (key.ShiftOnly()) s.ChangeFontSize(-1);
        break;
    case KeyA:
        if (key.None()) s.AdjCol_Click(1);
        if (key.ShiftOnly()) s.AdjCol_Click(0);
        break;
    case KeyS:
        if (key.None()) s.AdjCol_Click(3);
        if (key.ShiftOnly()) s.AdjCol_Click(2);
        break;
    case KeyD:
        if (key.AltOnly()) s.DiagVisible = !s.DiagVisible;
        break;
    default:
        break;
    }
}

CommandOutcome Dispatch(Session& s, const KeyPress& key, int16_t step) {
    CommandOutcome outcome;
    switch (key.Code) {
    case KeyUp:
    case KeyNum8:
    case KeyDown:
    case KeyNum2:
    case KeyRight:
    case KeyNum6:
    case KeyLeft:
    case KeyNum4:
        ArrowKey(s, key, step);
        break;
    case KeyEnter:
    case KeyL:
        NextRec(s);
        break;
    case KeyBackspace:
    case KeyO:
        PrevRec(s);
        break;
    case KeyM:
        return s.ToggleFlag();
    case KeyR:
        return s.ReloadTranscription();
    case KeyNumPlus:
    case KeyPlus:
        s.ShowRecord(+1); // the box stays where it is
        break;
    case KeyNumMinus:
    case KeyMinus:
        s.ShowRecord(-1);
        break;
    case KeyHome:
    case KeyEnd:
    case KeyPageUp:
    case KeyPageDown:
        ColumnJump(s, key.Code);
        break;
    case KeyC:
        ChangeColumns(s);
        break;
    case KeyB:
        NextColour(s);
        break;
    case KeyF1:
        outcome.OpenHelp = true;
        break;
    case KeyF3:
        s.NextDisagreement();
        break;
    case KeyF11:
        s.Zoom(+1);
        break;
    case KeyF12:
        s.Zoom(-1);
        break;
    default:
        BoxLetterKey(s, key);
        break;
    }
    return outcome;
}

} // namespace

int16_t Session::MovementStep(bool shift) const {
    int16_t step = CInt(P.View.Metrics().DisplayedHeight() * 0.8 / 600);
    if (Calib.CalibrationStage > 0) step = CInt(step / 2.0);
    if (shift) step = To16(step * 8);
    // Calibrated, SHIFT with an arrow moves the box exactly one index line.
    if (shift && Calib.CalibrationStage == 0 && Calib.LineIncrTop != -1.0F)
        step = CInt(Calib.LineIncrTop);
    return step;
}

// Every key is consumed, whether or not it does anything in the present state: the desktop
// sets the key code to 0 when this returns, so no control of the window sees the key.
CommandOutcome Session::Form_KeyDown(int keyCode, bool shift, bool alt) {
    int16_t step = MovementStep(shift);
    if (Box.BoxPlacementPending) {
        // The key only completes the pending placement (EnsureFrameVisible clears it).
        EnsureFrameVisible();
        return {};
    }
    return Dispatch(*this, KeyPress{keyCode, shift, alt}, step);
}

// A button is no key: the pending placement is the key-down handler's own check, so a click is
// never spent on it. The command's own EnsureFrameVisible places the box.
CommandOutcome Session::ButtonCommand(int keyCode) {
    return Dispatch(*this, KeyPress{keyCode, false, false}, MovementStep(false));
}

} // namespace tv
