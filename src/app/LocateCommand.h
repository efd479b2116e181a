#pragma once
// tallyview --locate IMAGE TRANSCRIPTION: reads both as the program does (no window, no
// settings), finds the printed lines of the scan, lines the box up by ENTER alone and writes,
// for every record line of the record table in table order, the table line number, a tab and
// either "X<tab>Y" (whole pixels of the scan as stored: the left end of the baseline of the
// record's entry line, where the box is lined up on it) or "-" when it cannot place the record.
#include <ostream>
#include <string>
#include <vector>

namespace tv {

inline constexpr const char* LocateUsageText = "Usage: tallyview --locate IMAGE TRANSCRIPTION\n";

// Exit status 0; 3 when a file cannot be read; 64 for a wrong command line.
int RunLocate(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace tv
