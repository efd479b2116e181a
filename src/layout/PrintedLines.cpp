#include "layout/PrintedLines.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tv {

namespace {

// Lines further apart than three printed lines, or not a whole number of lines apart, are not
// lines of one run of entries (the headings stand a little more than a line above the first).
constexpr double OffLine = 0.22;
constexpr int MostLinesApart = 3;

// The whole number of printed lines between two found lines, 0 when they are not.
int LinesApart(double distance, double pitch) {
    const double lines = distance / pitch;
    const double whole = std::round(lines);
    if (whole < 1.0 || whole > MostLinesApart || std::abs(lines - whole) > OffLine) return 0;
    return static_cast<int>(whole);
}

// The run of lines from start that keep to the spacing, which may drift slowly down a page
// photographed at a slant; the numbers of its lines from 0, the rest -1.
std::vector<int> RunFrom(const FoundColumn& column, double pitch, size_t start) {
    std::vector<int> numbers(column.Lines.size(), -1);
    numbers[start] = 0;
    double local = pitch;
    size_t last = start;
    for (size_t i = start + 1; i < column.Lines.size(); ++i) {
        const double distance = column.Lines[i].Y - column.Lines[last].Y;
        const int apart = LinesApart(distance, local);
        // A line found within a line of the last one is a part of it (a dash, a descender): it
        // is passed over. The entries of a column start on two lines in a row, so the run
        // cannot start with a gap (a title a line or two above the first entry).
        if (apart == 0 && distance < (1.0 - OffLine) * local) {
            continue;
        }
        if (apart == 0 || (last == start && apart != 1)) break;
        numbers[i] = numbers[last] + apart;
        // The spacing follows a slow drift (a page photographed at a slant), not the
        // unevenness of single lines.
        local = std::clamp(0.95 * local + 0.05 * distance / apart, 0.9 * pitch, 1.1 * pitch);
        last = i;
    }
    return numbers;
}

size_t RunLength(const std::vector<int>& numbers) {
    size_t length = 0;
    for (int n : numbers)
        if (n >= 0) ++length;
    return length;
}

} // namespace

int ColumnsToFind(const ScanType& scan, int width, int height) {
    return width > height ? scan.ColumnsAcross() : scan.NumColumns;
}

std::vector<int> PrintedLineNumbers(const FoundColumn& column, double pitch) {
    std::vector<int> best;
    if (pitch <= 0.0) return std::vector<int>(column.Lines.size(), -1);
    for (size_t start = 0; start < column.Lines.size(); ++start) {
        std::vector<int> run = RunFrom(column, pitch, start);
        if (RunLength(run) > RunLength(best)) best = std::move(run);
    }
    return best;
}

std::optional<FoundLine> LineNumbered(const FoundColumn& column, double pitch, int number) {
    const std::vector<int> numbers = PrintedLineNumbers(column, pitch);
    for (size_t i = 0; i < numbers.size(); ++i)
        if (numbers[i] == number) return column.Lines[i];
    return std::nullopt;
}

int ColumnAt(const PrintedLines& lines, double x) {
    // A box stands at its column's left edge, and may stand a little left of it on a turned
    // page: the last column that starts no more than a line's pitch right of x.
    int column = lines.Columns.empty() ? -1 : 0;
    for (size_t c = 0; c < lines.Columns.size(); ++c)
        if (lines.Columns[c].Left <= x + lines.Pitch) column = static_cast<int>(c);
    return column;
}

std::optional<int> NearestLine(const FoundColumn& column, double y, double maxDistance) {
    std::optional<int> nearest;
    double nearestDistance = maxDistance;
    for (size_t i = 0; i < column.Lines.size(); ++i) {
        const double distance = std::abs(column.Lines[i].Y - y);
        if (distance < nearestDistance) {
            nearest = static_cast<int>(i);
            nearestDistance = distance;
        }
    }
    return nearest;
}

} // namespace tv
