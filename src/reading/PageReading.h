#pragma once
// What the session knows of the reading of the scan: the reading itself once complete, how far
// a reading under way has got, the records where the transcription and the print disagree, and
// the marks the box shows for its record. The rules are Session members in
// reading/SessionReading.cpp; the desktop runs the reader and hands its results here.
#include "layout/PrintedLines.h"
#include "layout/ScanType.h"
#include "reading/ScanReading.h"
#include "transcription/RecordTable.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tv {

struct PageReading {
    // Counts the readings started on this session's scans: a result or a progress report of a
    // reading that is no longer the latest is not taken.
    int Run = 0;
    bool Running = false;
    // The share of the lines read (0..100), once the reader has reported any; nothing before,
    // so that a reader that cannot start (no OCR data) never shows on the screen.
    std::optional<int> Percent;
    // The lines the latest complete reading was read on, and the reading: a reload of the
    // transcription is compared with them again without reading the page again.
    std::optional<PrintedLines> Lines;
    std::optional<ScanReading> Done;
    // The lines the reading under way reads, until it completes.
    std::optional<PrintedLines> Reading;
    // Every field, in table order, where the transcription and the complete reading disagree.
    std::vector<Disagreement> Disagreements;
    // The comparison of the record table with the complete reading is wanted (after the reading
    // completed, after a reload); it runs off the user-interface thread, and its result is
    // taken only when it is of the latest comparison asked for.
    bool Comparing = false;
    int Comparison = 0;
};

// What a comparison compares: copies, so that it can run on any thread while the session goes
// on.
struct ReadingComparison {
    int Id = 0;
    RecordTable Table;
    ScanType Scan;
    PrintedLines Lines;
    ScanReading Reading;
};

// Compares the records with the reading (FindDisagreements); any thread.
std::vector<Disagreement> Compare(const ReadingComparison& comparison);

// The label of the box that shows a field.
enum class BoxLine { Name, Second };

// One field of the record in the box where the scan reads something else: where the field
// stands in the box's text (a field the box does not show whole has no place) and what the
// scan reads there.
struct FieldMark {
    int Field = 0;
    std::string Read; // Windows-1252
    std::optional<BoxLine> Line;
    std::size_t Start = 0; // characters into the label's text
    std::size_t Length = 0;
};

} // namespace tv
