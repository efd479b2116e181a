#pragma once
// The printed lines a line finder found on a scan, in pixels of the image as stored in the file
// (before any zoom or turn by the user), and the rules that tie them to the records: which found
// line carries which printed line of a column, the first entry of a column, and the found line
// nearest a position.
#include "layout/ScanType.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tv {

// The left end of one printed line's baseline, at its column's left edge.
struct FoundLine {
    double X = 0.0;
    double Y = 0.0;
};

// One column of entries, its lines from the top down.
struct FoundColumn {
    double Left = 0.0; // image pixels, at the column's first line
    double Right = 0.0;
    // How far a line's right end stands below its left end (image pixels; negative: above): a
    // line of a page curved towards the binding, or turned, is level with the next column's
    // line where the two columns meet, not at their left edges.
    double Rise = 0.0;
    std::vector<FoundLine> Lines;
};

struct PrintedLines {
    int ImageWidth = 0; // pixels of the image the lines were found on
    int ImageHeight = 0;
    double Pitch = 0.0; // pixels from one printed line to the next
    std::vector<FoundColumn> Columns;

    bool Empty() const { return Columns.empty() || Pitch <= 0.0; }
};

// The columns of entries to look for on a scan of this size: a single page of a double-page
// layout shows both pages only when the scan is wider than it is high.
int ColumnsToFind(const ScanType& scan, int width, int height);

// A box that stands just below a line stands this far below its baseline (pixels): about the
// depth of the letters that hang below it.
inline double JustBelowLine(const PrintedLines& lines) {
    return 0.12 * lines.Pitch;
}

// The printed line number of each found line of a column: the lines of the column's entries,
// 0 the first of them, counting the blank lines between (a ten-line gap is one number skipped).
// Lines above the entries (a title, the column headings, a rule) that do not keep to the
// entries' spacing get -1.
std::vector<int> PrintedLineNumbers(const FoundColumn& column, double pitch);

// The found line of a column with this printed line number, if any.
std::optional<FoundLine> LineNumbered(const FoundColumn& column, double pitch, int number);

// The column a box whose left edge is at x (image pixels) stands in; -1 when there is none.
int ColumnAt(const PrintedLines& lines, double x);

// The found line of that column nearest y whose distance is below maxDistance; its index.
std::optional<int> NearestLine(const FoundColumn& column, double y, double maxDistance);

} // namespace tv
