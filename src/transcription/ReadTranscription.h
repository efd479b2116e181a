#pragma once
#include "core/Prompts.h"
#include "layout/ScanType.h"
#include "transcription/RecordTable.h"

#include <string>

namespace tv {

inline constexpr const char* QuitToken = "**QUIT**";

// What the reader needs besides the table it fills.
struct ReaderContext {
    RecordTable& Table;
    ScanType& Scan;
    const ColumnTopLines& ColumnTops;
    const std::string& GraphicsFile; // scan image path ("" when none): its name is checked
    Prompts& Ask;
};

// Reads the transcription fileName (opened read-only) into the record table with every step,
// limit, message and question. On a refusal fileName becomes "**QUIT**". Returns the main
// window's caption: "Tallyview - " + the scan description, or "Tallyview".
// Throws FileError when the file cannot be opened or read.
std::string ReadTranscription(std::string& fileName, ReaderContext& context);

} // namespace tv
