// From a line of the record table to a box position, from the box on the form back to image
// space, and the one operation that keeps the box inside the image and the view.
#include "layout/FrameArithmetic.h"
#include "session/Session.h"

#include <algorithm>

namespace tv {

namespace {

constexpr double LinesPerTen = 10.0;

// Printed index lines per entry, down and across.
struct LineSpacing {
    double Top = 0.0;
    double Left = 0.0;
};

// The first table line holding record recNo, 0 when there is none.
int16_t LineOfRecord(const RecordTable& table, int recNo) {
    for (int16_t line = 1; line <= table.LineCount; ++line)
        if (table.LineRecNo[line] == recNo) return line;
    return 0;
}

// The record at which the scan's first column begins: a lower part of a page starts part-way
// down the column, the division rounded as everywhere (to nearest, halves to even).
int RecordAtTopOfScan(const ScanType& scan, int16_t recordCount) {
    const double perColumn = static_cast<double>(recordCount) / scan.NumColumns;
    switch (scan.ScanTypeCode) {
    case 22:
        return CInt(perColumn / 2);
    case 32:
        return CInt(perColumn / 3);
    case 33:
        return CInt(2 * perColumn / 3);
    default:
        return 1;
    }
}

int32_t FirstEntryTop(const ScanType& scan, const ViewMetrics& view) {
    return CLng(static_cast<double>(scan.FirstLineFraction) * view.DisplayedHeight());
}

// The last of columns 1..known whose calibrated top line is at or before the line; 0 if none.
int LastColumnAtOrBefore(const ColumnTopLines& tops, int known, int line) {
    for (int c = known; c >= 1; --c)
        if (tops[c] >= 1 && tops[c] <= line) return c;
    return 0;
}

// Printed lines after the column's top line up to and including the line.
int16_t LinesBetween(const RecordTable& table, int topLine, int line) {
    int16_t lines = 0;
    const int last = std::min<int>(line, table.LineCount);
    for (int i = topLine + 1; i <= last; ++i)
        lines = To16(lines + table.LineJump[i]);
    return lines;
}

// The remembered spacing of this scan (or of one of the same year and event), rescaled from
// the zoom at which it was measured; an entry without a usable zoom carries no spacing.
bool RememberedSpacing(const ScanHistory& history, float currentZoom, LineSpacing& spacing) {
    const int16_t h =
        history.ScanHistoryMatch != 0 ? history.ScanHistoryMatch : history.ScanHistoryNear;
    if (h < 1) return false;
    const ScanHistoryEntry& entry = history.Entries[h];
    if (entry.LineIncrTop == -1.0F || entry.Scale <= 0.0F) return false;
    const double ratio = static_cast<double>(currentZoom) / entry.Scale;
    spacing = {entry.LineIncrTop * ratio, entry.LineIncrLeft * ratio};
    return true;
}

// Nothing measured or remembered: the image height at the present magnification less twice the
// first column's top, divided by the records expected in a column counted in tens, is the
// height of ten printed lines; a transcription of two or more pages in one column counts every
// page's records in that column, so the height is taken once per page. The user corrects the
// box before confirming it.
LineSpacing EstimatedSpacing(const Session& s, const ViewMetrics& view) {
    const double usable = view.DisplayedHeight() - 2.0 * s.Calib.ColumnTopY[1];
    const double tens =
        std::max(0.1, static_cast<double>(s.Table.RecordCount) / (s.Scan.NumColumns * LinesPerTen));
    double tenLines = usable / tens;
    if (s.Table.HeaderPageCount >= 2 && s.Scan.NumColumns == 1) tenLines *= s.Table.HeaderPageCount;
    return {tenLines / LinesPerTen, 0.0};
}

LineSpacing SpacingForPlacing(const Session& s, const ViewMetrics& view) {
    if (s.Calib.LineIncrTop != -1.0F) return {s.Calib.LineIncrTop, s.Calib.LineIncrLeft};
    LineSpacing spacing;
    if (RememberedSpacing(s.History, s.Box.CurrentZoom, spacing)) return spacing;
    return EstimatedSpacing(s, view);
}

// The start of calibration: the first entry of the scan, at the first entry line of the page.
void PlaceAtFirstEntry(Session& s, const ViewMetrics& view) {
    const int16_t line =
        LineOfRecord(s.Table, std::max(1, RecordAtTopOfScan(s.Scan, s.Table.RecordCount)));
    // A table without a record leaves the box before the first line, never on a line past the
    // end, which still holds the table read before.
    s.Table.CurrentLine = line;
    s.Box.LinesFromTop = 0;
    s.Box.BoxTop = FirstEntryTop(s.Scan, view);
}

// The record expected first in a column: a column's worth of records after the top of the one
// before it. The user picks the right one with + and - before confirming.
int16_t ExpectedColumnTopLine(const Session& s, int before) {
    const RecordTable& table = s.Table;
    const int16_t top = s.Calib.ColumnTopLine[before];
    if (top < 1 || top > table.LineCount || !table.IsRecord(top)) return table.CurrentLine;
    const int recNo = std::min<int>(table.RecordCount,
                                    table.LineRecNo[top] + table.RecordCount / s.Scan.NumColumns);
    const int16_t line = LineOfRecord(table, recNo);
    return line != 0 ? line : table.CurrentLine;
}

// A column whose top is still to be shown: its expected first record, level with the column
// before, one column pitch to its right (the pitch of the two columns before, or the image
// width shared out).
void PlaceAtEstimatedColumnTop(Session& s, int column, const ViewMetrics& view) {
    const int before = column - 1;
    s.Table.CurrentLine = ExpectedColumnTopLine(s, before);
    const double pitch = before >= 2 ? static_cast<double>(s.Calib.ColumnTopX[before]) -
                                           s.Calib.ColumnTopX[before - 1]
                                     : view.DisplayedWidth() / s.Scan.ColumnsAcross();
    s.Box.LinesFromTop = 0;
    s.Box.BoxTop = s.Calib.ColumnTopY[before];
    s.Box.BoxLeft = CLng(s.Calib.ColumnTopX[before] + pitch);
}

// The place the calibration gives the current line, before the printed lines are looked at.
void PlaceByCalibration(Session& s) {
    const ViewMetrics view = s.P.View.Metrics();
    const int16_t stage = s.Calib.CalibrationStage;
    if (stage == 1) {
        PlaceAtFirstEntry(s, view);
        return;
    }
    if (stage >= 3) {
        PlaceAtEstimatedColumnTop(s, stage - 1, view);
        return;
    }

    // While the tenth entry is sought the box belongs to column 1, whose top was just confirmed:
    // even on line 0, before the first record, where the user may have stepped with the - key.
    const int c = stage == 2 ? 1
                             : LastColumnAtOrBefore(s.Calib.ColumnTopLine, s.Scan.NumColumns,
                                                    s.Table.CurrentLine);
    if (c == 0) {
        s.Box.LinesFromTop = 0;
        s.Box.BoxTop = FirstEntryTop(s.Scan, view);
        return;
    }
    s.Box.LinesFromTop = LinesBetween(s.Table, s.Calib.ColumnTopLine[c], s.Table.CurrentLine);
    const LineSpacing spacing = SpacingForPlacing(s, view);
    s.Box.BoxTop = CLng(s.Calib.ColumnTopY[c] + s.Box.LinesFromTop * spacing.Top);
    s.Box.BoxLeft = CLng(s.Calib.ColumnTopX[c] + s.Box.LinesFromTop * spacing.Left);
}

} // namespace

void Session::CalcFramePosn() {
    PlaceByCalibration(*this);
    LineUpWithPrintedLines();
}

void Session::GetFramePosn() {
    const TwipsPoint inImage = BoxInImage(Box.FormLeft, Box.FormTop, P.View.Metrics());
    Box.BoxLeft = inImage.Left;
    Box.BoxTop = inImage.Top;
}

void Session::EnsureFrameVisible() {
    const FramePlacement placed = PlaceFrame(Box, P.View.Metrics());
    Box.BoxTop = placed.BoxTop;
    Box.BoxLeft = placed.BoxLeft;
    if (placed.Scrolled) P.View.SetScroll(placed.ScrollX, placed.ScrollY);
    Box.ViewScrolled = placed.Scrolled;
    // Read the offsets back: the view may have refused part of the scroll.
    const TwipsPoint onForm = BoxOnForm(Box.BoxLeft, Box.BoxTop, P.View.Metrics());
    Box.FormLeft = onForm.Left;
    Box.FormTop = onForm.Top;
    Box.BoxHidePending = false;
    // The box stands where it belongs again: a scroll's pending placement is done.
    Box.BoxPlacementPending = false;
}

void Session::DropBox(int32_t formLeft, int32_t formTop) {
    Box.FormLeft = formLeft;
    Box.FormTop = formTop;
    GetFramePosn();
    EnsureFrameVisible();
}

void Session::SetBoxWidth(int32_t width) {
    Box.BoxWidth = width;
    ResizeFrame();
    EnsureFrameVisible();
}

void Session::TopCol_Click(int16_t index) {
    Table.CurrentLine = Calib.ColumnTopLine[index];
    Box.BoxTop = Calib.ColumnTopY[index];
    Box.BoxLeft = Calib.ColumnTopX[index];
    ShowRecord(0);
    EnsureFrameVisible();
}

} // namespace tv
