#pragma once
// The resumable check iterator: one result line per call for one of six categories, the one
// source of the query, warning, flagged-record and file-name lists.
#include "transcription/RecordTable.h"

#include <cstdint>
#include <string>

namespace tv {

enum CheckCategoryCode : int16_t {
    CheckQueries = 1,
    CheckNamesOutOfSequence = 2,
    CheckSuspectAge = 3,
    CheckFlagged = 4,
    CheckMissingSurnames = 5,
    CheckFileNames = 6,
};

struct CheckIterator {
    int16_t CheckCategory = -1;
    int16_t CheckIndex = 0;
    bool CheckPairPending = false;
};

// What the checks read besides the record table.
struct CheckInputs {
    const RecordTable& Table;
    int16_t ScanTypeCode;
    std::string GraphicsFile;      // as shown (Windows-1252); "" when no scan is open
    std::string TranscriptionFile; // as shown (Windows-1252)
};

// Hands out the next line of category; title is the category's title on the first call of an
// iteration and "" after. Returns false (line "") when the category is exhausted.
bool GetNextCheckLine(CheckIterator& it, int16_t& category, std::string& title, std::string& line,
                      const CheckInputs& in);

} // namespace tv
