#pragma once
// Reading the printed text of a scan as the window does (the line finder, then Tesseract on the
// found lines on two threads), against Tesseract reading the same page on its own.
#include "BenchScans.h"

#include <vector>

namespace bench {

void RegisterReadingBenchmarks(const std::vector<ScanFile>& files);

} // namespace bench
