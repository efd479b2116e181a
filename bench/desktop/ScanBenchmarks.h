#pragma once
// The benchmarks of every scan form and size, in the order they run: the baselines of a scan
// next to the figures measured against them, one main window open at a time.
#include "BenchScans.h"

#include <vector>

namespace bench {

// The files must outlive the run. Briefly: every benchmark once, as CI runs them.
void RegisterScanBenchmarks(const std::vector<ScanFile>& files, bool briefly);
// Closes the main window the last benchmarks left open.
void CloseScanWindow();

} // namespace bench
