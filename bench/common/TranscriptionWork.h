#pragma once
// Reading a transcription, running every check and building the report: the work of loading and
// reloading a file, measured by the model's benchmarks and against opening a scan by the
// desktop's.
#include <cstddef>
#include <string>

namespace bench {

// Writes a births transcription of the given number of lines into the temporary folder, every
// tenth record out of order and every fiftieth queried; returns its path.
std::string WriteTranscription(int lines);

// Reads the file as the program does when it is chosen, runs every check and builds the report;
// returns the number of report lines.
std::size_t ReadCheckAndReport(const std::string& path);

} // namespace bench
