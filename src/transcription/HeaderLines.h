#pragma once
// The header lines of a transcription file: "+INFO" (event and code page), the year and quarter
// group ("+S", "+F", "+M", "+B", "+U") and "+PAGE".
#include "core/Prompts.h"
#include "transcription/RecordTable.h"

namespace tv {

// Which header lines one read has met so far.
struct HeaderSeen {
    bool Info = false;
    bool Page = false;
    bool YearGroup = false;

    bool Any() const { return Info || Page || YearGroup; }
};

// Takes what a header line (field 1 begins with "+") tells into the table.
void ApplyHeaderLine(RecordTable& table, const Fields& fields, HeaderSeen& seen);

// After the read: the page numbers of the "+PAGE" lines up to the last record line.
void CollectHeaderPages(RecordTable& table, int lastRecordLine, Prompts& prompts);

} // namespace tv
