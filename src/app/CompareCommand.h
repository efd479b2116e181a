#pragma once
// tallyview --compare IMAGE TRANSCRIPTION: reads both as the program does (no window, no
// settings), finds the printed lines of the scan, reads them and writes one line for each field
// where the transcription and the scan disagree, in table order: the table line number, a tab,
// the 1-based field number, a tab, the transcribed text, a tab, the scan's reading (UTF-8).
#include <ostream>
#include <string>
#include <vector>

namespace tv {

inline constexpr const char* CompareUsageText = "Usage: tallyview --compare IMAGE TRANSCRIPTION\n";

// Exit status 0 when nothing disagrees, 1 when something does; 3 when a file cannot be read;
// 64 for a wrong command line.
int RunCompare(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace tv
