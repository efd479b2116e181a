#pragma once
#include "core/Prompts.h"
#include "transcription/RecordTable.h"

#include <string>

namespace tv {

// Fills entries 1..20 of fields from one comma-separated line with optional double quotes.
// lineCount only numbers the line in the unclosed-quote message.
void SplitFields(const std::string& line, Fields& fields, int16_t lineCount, Prompts& prompts);

} // namespace tv
