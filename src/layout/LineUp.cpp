// The box on the printed lines the finder found: at each calibration stage the line the stage
// asks for, and once calibrated the found line nearest the place the calibration computes.
// Without lines, with both options off, or on a scan turned since the lines were found, the box
// stays where the calibration puts it.
#include "session/Session.h"

#include <algorithm>
#include <cmath>

namespace tv {

namespace {

// Twips of the displayed image per pixel of the scan as loaded.
struct PixelScale {
    double X = 0.0;
    double Y = 0.0;
};

std::optional<PixelScale> ScaleOf(const Session& s) {
    if (!s.Lines.Found || s.Lines.Found->Empty()) return std::nullopt;
    if (s.Lines.FoundAtRotation != s.Box.ScanRotation) return std::nullopt;
    const PrintedLines& found = *s.Lines.Found;
    const ViewMetrics view = s.P.View.Metrics();
    if (found.ImageWidth <= 0 || found.ImageHeight <= 0) return std::nullopt;
    // The lines were found on the scan as the view shows it, turned by the same angle.
    return PixelScale{view.DisplayedWidth() / found.ImageWidth,
                      view.DisplayedHeight() / found.ImageHeight};
}

// The first found column of the transcription's pages: the right page of a double-page scan
// transcribed alone starts half-way across.
size_t FirstColumn(const Session& s) {
    const size_t found = s.Lines.Found->Columns.size();
    const auto columns = static_cast<size_t>(s.Scan.NumColumns);
    if (s.Scan.ScanTypeCode == 42 && found >= 2 * columns) return found - columns;
    return 0;
}

// The found column of the transcription's column c (1..), or nothing.
const FoundColumn* ColumnNumbered(const Session& s, int c) {
    const size_t index = FirstColumn(s) + static_cast<size_t>(c - 1);
    if (c < 1 || index >= s.Lines.Found->Columns.size()) return nullptr;
    return &s.Lines.Found->Columns[index];
}

// The printed line number of the found line nearest the box's top; nothing when no found line
// lies within half a line of it.
std::optional<int> NumberNear(const FoundColumn& column, double pitch, double top) {
    const std::optional<int> near = NearestLine(column, top, 0.5 * pitch);
    if (!near) return std::nullopt;
    const int number = PrintedLineNumbers(column, pitch)[static_cast<size_t>(*near)];
    if (number < 0) return std::nullopt;
    return number;
}

std::optional<FoundLine> PutBoxOn(Session& s, const PixelScale& scale,
                                  std::optional<FoundLine> line) {
    if (!line) return std::nullopt;
    s.Box.BoxTop = CLng((line->Y + JustBelowLine(*s.Lines.Found)) * scale.Y);
    s.Box.BoxLeft = CLng(line->X * scale.X);
    return line;
}

// The first entry of a column is its first printed line, or the line under its surname where
// surnames stand on lines of their own (a surname running on from the column before is printed
// again at the top); the record's own extra lines come before the line that carries it.
int FirstEntryNumber(const Session& s, int16_t line) {
    const int16_t jump = line >= 1 && line <= s.Table.LineCount ? s.Table.LineJump[line] : 1;
    const int surname = s.Scan.SurnameOwnLine ? 1 : 0;
    return std::max<int>(surname, jump - 1);
}

// Stage 3 and on: the record that starts the column after column before, the first that does
// not fit on the printed lines found in that column.
int16_t FirstRecordAfterColumn(const Session& s, int before, const FoundColumn& column) {
    const double pitch = s.Lines.Found->Pitch;
    const std::vector<int> numbers = PrintedLineNumbers(column, pitch);
    const int last = *std::max_element(numbers.begin(), numbers.end());
    const int16_t top = s.Calib.ColumnTopLine[before];
    const int first = FirstEntryNumber(s, top);
    int lines = first;
    for (int16_t line = To16(top + 1); line <= s.Table.LineCount; line = To16(line + 1)) {
        lines += s.Table.LineJump[line];
        if (s.Table.IsRecord(line) && lines > last) return line;
    }
    return s.Table.CurrentLine;
}

std::optional<FoundLine> LineUpStage(Session& s, const PixelScale& scale) {
    const double pitch = s.Lines.Found->Pitch;
    const int16_t stage = s.Calib.CalibrationStage;
    if (stage == 1) {
        const FoundColumn* column = ColumnNumbered(s, 1);
        if (column == nullptr) return std::nullopt;
        return PutBoxOn(s, scale,
                        LineNumbered(*column, pitch, FirstEntryNumber(s, s.Table.CurrentLine)));
    }
    if (stage == 2) {
        // Counted from the line the user confirmed the first entry on.
        const int c = ColumnAt(*s.Lines.Found, s.Calib.ColumnTopX[1] / scale.X);
        if (c < 0) return std::nullopt;
        const FoundColumn& column = s.Lines.Found->Columns[static_cast<size_t>(c)];
        const double top = s.Calib.ColumnTopY[1] / scale.Y - JustBelowLine(*s.Lines.Found);
        const std::optional<int> first = NumberNear(column, pitch, top);
        if (!first) return std::nullopt;
        return PutBoxOn(s, scale, LineNumbered(column, pitch, *first + s.Box.LinesFromTop));
    }
    const int c = stage - 1;
    const FoundColumn* before = ColumnNumbered(s, c - 1);
    const FoundColumn* column = ColumnNumbered(s, c);
    if (before == nullptr || column == nullptr) return std::nullopt;
    s.Table.CurrentLine = FirstRecordAfterColumn(s, c - 1, *before);
    // The columns of a page start level with each other (a heading bent with the page can pass
    // for a line of entries): the entry line level with the top of the column before where the
    // two columns meet, at its right end, or else the first entry of the column's own lines.
    const double level =
        s.Calib.ColumnTopY[c - 1] / scale.Y - JustBelowLine(*s.Lines.Found) + before->Rise;
    const std::optional<int> near = NearestLine(*column, level, 0.5 * pitch);
    if (near && PrintedLineNumbers(*column, pitch)[static_cast<size_t>(*near)] >= 0)
        return PutBoxOn(s, scale, column->Lines[static_cast<size_t>(*near)]);
    return PutBoxOn(s, scale,
                    LineNumbered(*column, pitch, FirstEntryNumber(s, s.Table.CurrentLine)));
}

// The line of an entry (one that keeps to the column's spacing: not a heading, nor a mark
// between two lines) nearest y within maxDistance.
std::optional<int> NearestEntryLine(const FoundColumn& column, double pitch, double y,
                                    double maxDistance) {
    const std::vector<int> numbers = PrintedLineNumbers(column, pitch);
    std::optional<int> nearest;
    double nearestDistance = maxDistance;
    for (size_t i = 0; i < column.Lines.size(); ++i) {
        const double distance = std::abs(column.Lines[i].Y - y);
        if (numbers[i] >= 0 && distance < nearestDistance) {
            nearest = static_cast<int>(i);
            nearestDistance = distance;
        }
    }
    return nearest;
}

// The found line nearest a box top (twips) within half a line spacing, with the box's distance
// below it; the box is put that far below the line nearest target.
std::optional<FoundLine> SnapNear(Session& s, const PixelScale& scale, double standTop,
                                  double target) {
    const PrintedLines& found = *s.Lines.Found;
    const int c = ColumnAt(found, s.Box.BoxLeft / scale.X);
    if (c < 0) return std::nullopt;
    const FoundColumn& column = found.Columns[static_cast<size_t>(c)];
    const double spacing = s.Calib.LineIncrTop > 0.0F ? s.Calib.LineIncrTop / scale.Y : found.Pitch;
    const std::optional<int> stood =
        NearestEntryLine(column, found.Pitch, standTop / scale.Y, 0.5 * spacing);
    const double below = stood ? standTop / scale.Y - column.Lines[static_cast<size_t>(*stood)].Y
                               : JustBelowLine(found);
    const std::optional<int> near =
        NearestEntryLine(column, found.Pitch, target / scale.Y - below, 0.5 * spacing);
    if (!near) return std::nullopt;
    const FoundLine line = column.Lines[static_cast<size_t>(*near)];
    s.Box.BoxTop = CLng((line.Y + below) * scale.Y);
    return line;
}

// The found line LinesFromTop printed lines below the line of column c's top, the box as far
// below it as the top stands below its own: on a page photographed at a slant the spacing
// changes down the column, and the place computed with one spacing drifts off the lines.
std::optional<FoundLine> CountedLine(Session& s, const PixelScale& scale, int c) {
    const PrintedLines& found = *s.Lines.Found;
    const int index = ColumnAt(found, s.Calib.ColumnTopX[c] / scale.X);
    if (index < 0) return std::nullopt;
    const FoundColumn& column = found.Columns[static_cast<size_t>(index)];
    const double top = s.Calib.ColumnTopY[c] / scale.Y;
    const std::optional<int> stood = NearestEntryLine(column, found.Pitch, top, 0.5 * found.Pitch);
    if (!stood) return std::nullopt;
    const int first = PrintedLineNumbers(column, found.Pitch)[static_cast<size_t>(*stood)];
    const std::optional<FoundLine> line =
        LineNumbered(column, found.Pitch, first + s.Box.LinesFromTop);
    if (!line) return std::nullopt;
    const double below = top - column.Lines[static_cast<size_t>(*stood)].Y;
    s.Box.BoxTop = CLng((line->Y + below) * scale.Y);
    return line;
}

// The rule of LineUpWithPrintedLines.
std::optional<FoundLine> LineUpNow(Session& s) {
    const std::optional<PixelScale> scale = ScaleOf(s);
    if (!scale) return std::nullopt;
    if (s.Calib.CalibrationStage >= 1)
        return s.Lines.LineUpAutomatically ? LineUpStage(s, *scale) : std::nullopt;
    if (!s.Lines.FollowPrintedLines) return std::nullopt;
    // Calibrated: the box keeps the distance below its line that the column's top was given.
    const int c = [&s] {
        for (int k = s.Scan.NumColumns; k >= 1; --k)
            if (s.Calib.ColumnTopLine[k] >= 1 && s.Calib.ColumnTopLine[k] <= s.Table.CurrentLine)
                return k;
        return 0;
    }();
    if (c == 0) return std::nullopt;
    if (std::optional<FoundLine> counted = CountedLine(s, *scale, c)) return counted;
    return SnapNear(s, *scale, s.Calib.ColumnTopY[c], s.Box.BoxTop);
}

} // namespace

void Session::PrintedLinesFound(PrintedLines lines, float rotation) {
    Lines.Found = std::move(lines);
    Lines.FoundAtRotation = rotation;
    // Lines that come while the first entry is sought place the box only when it still stands
    // where the stage put it: a box the user has moved is never moved under them.
    if (Calib.CalibrationStage != 1 || !Lines.StageOneBox) return;
    if (Lines.StageOneBox->Top != Box.BoxTop || Lines.StageOneBox->Left != Box.BoxLeft) return;
    CalcFramePosn();
    ShowRecord(0);
    EnsureFrameVisible();
    Lines.StageOneBox = LineFinding::BoxAt{Box.BoxTop, Box.BoxLeft};
}

std::optional<FoundLine> Session::LineUpWithPrintedLines() {
    Lines.LinedUp = LineUpNow(*this);
    return Lines.LinedUp;
}

std::optional<FoundLine> Session::FollowPrintedLine(int32_t topBefore) {
    const std::optional<PixelScale> scale = ScaleOf(*this);
    if (!scale || Calib.CalibrationStage != 0 || !Lines.FollowPrintedLines) return std::nullopt;
    return SnapNear(*this, *scale, topBefore, Box.BoxTop);
}

} // namespace tv
