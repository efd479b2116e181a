#pragma once
// The line finder on each scan, timed against decoding the same scan.
#include "BenchScans.h"

#include <vector>

namespace bench {

void RegisterLineFindBenchmarks(const std::vector<ScanFile>& files);

} // namespace bench
