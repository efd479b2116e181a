#pragma once
// Which entries go on the page and on which printed line of which column, by the rules the
// index was printed to: a line per entry, surnames on a line of their own, a blank line after
// ten lines of one surname, a second line for a long entry, and columns filled in turn.
#include "SampleKinds.h"

#include <vector>

namespace samplegen {

enum class LineKind { Gap, Heading, Entry, Continuation };

struct PrintedLine {
    int Column = 1; // 1..Columns() across the whole scan
    int Line = 0;   // printed lines from the column's first line
    LineKind Kind = LineKind::Entry;
    int Record = 0;          // index into PageLayout::Records
    bool FullSurname = true; // entry lines: the surname printed rather than repeated
};

// A record's last printed line: the line a box "just below" the entry sits under.
struct Placement {
    int Column = 1;
    int Line = 0;
};

struct PageLayout {
    std::vector<Entry> Records;
    std::vector<Placement> Places; // one per record
    std::vector<PrintedLine> Lines;
    std::vector<int> ColumnTops; // the first record of each column
};

// An entry the index prints on two lines.
bool IsLongEntry(const KindSpec& kind, const Entry& entry);

// As many entries of the stream as fill every column of the page; throws when the stream runs
// out first or when an entry would stand where no printed page could put it.
PageLayout LayOutPage(const KindSpec& kind, const std::vector<Entry>& stream);

} // namespace samplegen
