#pragma once
// The record lines of a transcription file: one transcribed index entry each.
#include "core/Prompts.h"
#include "transcription/RecordTable.h"

namespace tv {

// On the file's first record: whether the records carry a third column, from the header, and
// the question to the user when the record disagrees.
void DecideExtraField(RecordTable& table, const Fields& fields, Prompts& prompts);

// Stores the record on line into the table's columns by the layout in force and counts it.
void StoreRecord(RecordTable& table, int line, const Fields& fields);

} // namespace tv
