// Calibration: the dialogue, driven by ENTER, in which the user puts the box under the first
// and tenth entries of column 1 and the first entry of every further column. Each call does
// the next stage. The instruction of each stage is the only note shown while it waits.
#include "core/Text.h"
#include "session/Session.h"

#include <string>

namespace tv {

namespace {

const std::string MoveTheBox = "Move this box using the mouse or the arrow keys until it ";

std::string FirstEntryInstruction(int columns) {
    return MoveTheBox + "is just below the 1st record in column 1, then press the ENTER key. " +
           CR + "If this is not a " + std::to_string(columns) + " column scan then press the " +
           "C key to specify how many there are.";
}

std::string TenthEntryInstruction() {
    return MoveTheBox + "is just below the 10th record in column 1," + CR +
           "then press the ENTER key.";
}

std::string ColumnTopInstruction(int column) {
    return MoveTheBox + "is just below the 1st record in column " + std::to_string(column) + ", " +
           CR + "then use the + and - keys to select the correct " +
           "QRL entry, then press the ENTER key.";
}

// The instruction replaces whatever the notes held, so it stands alone in the notes area.
void ShowInstruction(RecordBoxContent& box, const std::string& text) {
    SetNote(box, NoteKind::ClearAll, "", false);
    SetNote(box, NoteKind::AddStatus, text, true);
}

// Stage 0 -> 1: the box goes to the first entry of the scan.
void StartCalibration(Session& s) {
    s.Calib.CalibrationStage = 1;
    s.Calib.CalibratingFlag = true;
    for (int c = 1; c <= 6; ++c)
        s.Commands.TopCol[c] = false;
    s.Commands.MenuCalibrate = false;
    s.Commands.MenuShowRptSurnames = false;
    if (s.Scan.AskScanType) {
        const ScanLayoutChoice choice = s.P.LayoutChooser.Choose(PreselectScanLayout(s.Scan));
        ApplyScanLayout(choice, s.Scan, s.Table, s.Calib.ColumnTopLine);
        s.Scan.AskScanType = false;
    }
    s.CalcFramePosn();
    s.ShowRecord(0);
    // Deliberately 6 for any double-page scan: the user counts the columns across both pages.
    const int columns = s.Scan.DoublePage() ? 6 : s.Scan.NumColumns;
    s.ResizeFrame();
    ShowInstruction(s.Content, FirstEntryInstruction(columns));
    s.EnsureFrameVisible();
    s.Lines.StageOneBox = LineFinding::BoxAt{s.Box.BoxTop, s.Box.BoxLeft};
}

// Nine records on from the current one, or the last record when the column is shorter.
void AdvanceNineRecords(RecordTable& table) {
    for (int k = 0; k < 9; ++k) {
        const int16_t before = table.CurrentLine;
        NextRecordLine(table);
        if (table.CurrentLine > table.LineCount) {
            table.CurrentLine = before;
            return;
        }
    }
}

// Stage 1 -> 2: column 1's top is taken; the box goes to the tenth entry.
void ConfirmFirstEntry(Session& s) {
    s.GetFramePosn();
    s.Calib.ColumnTopY[1] = s.Box.BoxTop;
    s.Calib.ColumnTopX[1] = s.Box.BoxLeft;
    s.Calib.ColumnTopLine[1] = s.Table.CurrentLine;
    AdvanceNineRecords(s.Table);
    s.Calib.CalibrationStage = 2;
    s.CalcFramePosn();
    s.ShowRecord(0);
    ShowInstruction(s.Content, TenthEntryInstruction());
    s.EnsureFrameVisible();
}

// The spacing per printed line, from the lines CalcFramePosn counted when it placed the box.
// The box left on the first record's line (a page with one record so far, or none) divides by
// zero: a run-time error, as every one is.
void MeasureSpacing(Session& s) {
    const int16_t lines = s.Box.LinesFromTop;
    if (lines == 0) throw RunTimeError::DivisionByZero();
    const int32_t down = To32(static_cast<long long>(s.Box.BoxTop) - s.Calib.ColumnTopY[1]);
    const int32_t across = To32(static_cast<long long>(s.Box.BoxLeft) - s.Calib.ColumnTopX[1]);
    s.Calib.LineIncrTop = static_cast<float>(static_cast<double>(down) / lines);
    s.Calib.LineIncrLeft = static_cast<float>(static_cast<double>(across) / lines);
}

void TakeColumnTop(Session& s, int column) {
    s.Calib.ColumnTopY[column] = s.Box.BoxTop;
    s.Calib.ColumnTopX[column] = s.Box.BoxLeft;
    s.Calib.ColumnTopLine[column] = s.Table.CurrentLine;
    // The ten-line gap count restarts at every column top.
    CalcLineJump(s.Table, s.Scan, s.Calib.ColumnTopLine);
}

void PrepareColumn(Session& s, int column) {
    s.Calib.CalibrationStage = To16(column + 1);
    s.CalcFramePosn();
    s.ShowRecord(0);
    ShowInstruction(s.Content, ColumnTopInstruction(column));
    s.EnsureFrameVisible();
}

void CompleteCalibration(Session& s) {
    s.Calib.CalibrationStage = 0;
    s.Calib.CalibratingFlag = false;
    s.Calib.BoxLinedUp = true;
    s.Commands.MenuCalibrate = true;
    s.ResizeFrame();
    s.UpdateStats();
    s.Commands.ShowStats = true;
    s.Commands.MenuShowRptSurnames = true;
    SetNote(s.Content, NoteKind::ClearAll, "", true);
    s.Table.CurrentLine = s.Calib.ColumnTopLine[1];
    s.ShowRecord(0);
    s.Box.BoxTop = s.Calib.ColumnTopY[1];
    s.Box.BoxLeft = s.Calib.ColumnTopX[1];
    for (int c = 1; c <= s.Scan.NumColumns; ++c)
        s.Commands.TopCol[c] = true;
    s.EnsureFrameVisible();
}

// Stage s >= 2: the entry under the box is confirmed; column s-1 is then finished.
void ConfirmStage(Session& s, int16_t stage) {
    if (stage > s.Scan.NumColumns + 1 || stage < 2) return;
    s.GetFramePosn();
    const int finished = stage - 1;
    if (stage == 2)
        MeasureSpacing(s);
    else
        TakeColumnTop(s, finished);
    if (finished >= s.Scan.NumColumns)
        CompleteCalibration(s);
    else
        PrepareColumn(s, finished + 1);
}

} // namespace

void Session::CalibrateTextbox() {
    switch (Calib.CalibrationStage) {
    case 0:
        StartCalibration(*this);
        break;
    case 1:
        ConfirmFirstEntry(*this);
        break;
    default:
        ConfirmStage(*this, Calib.CalibrationStage);
        break;
    }
}

} // namespace tv
