#pragma once
// Matches each record of the record table to the printed line it stands for and compares its
// fields with the words read there. The index's own conventions (the dashes of a repeated
// surname, surnames on lines of their own, entries carried over two printed lines, the ten-line
// gaps, the order of the columns) are understood, never reported.
#include "reading/ScanReading.h"

#include <vector>

namespace tv {

// Every field, in table order, where the transcription and the scan disagree. A field whose
// reading the OCR doubts, or a record that could not be matched to a read line, is never
// reported. lines and reading are of the same scan (reading may be partial: only the records
// matched to lines read so far are compared).
std::vector<Disagreement> FindDisagreements(const RecordTable& table, const ScanType& scan,
                                            const PrintedLines& lines, const ScanReading& reading);

} // namespace tv
