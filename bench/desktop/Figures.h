#pragma once
// The figures the desktop benchmarks report: each a time measured against a baseline timed in
// the same run, with the budget the ratio must keep, and how the time grows from a 10 to a 40
// megapixel scan.
#include "BenchScans.h"

#include <benchmark/benchmark.h>

#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace bench {

struct Figure {
    std::string Title;    // what is timed, against what
    std::string Measured; // benchmark name, or its stem for a figure of every scan
    std::string Baseline;
    double Budget = 0.0; // the largest ratio that holds
    bool PerScan = true; // one figure per form and size of scan
};

// The benchmark of a figure's stem on one scan: "Enter@100/GreyJpeg/10MP".
std::string NameOn(const std::string& stem, ScanForm form, int megapixels);

const std::vector<Figure>& Figures();

// Google Benchmark's console output, keeping each benchmark's median iteration time (its
// "MedianMs" counter, or else its real time per iteration), the median of the repetitions when
// repeated.
class FigureReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override;
    std::map<std::string, double> Milliseconds;
    std::set<std::string> Failed;
};

// The table of every figure in Markdown; returns how many budgets do not hold (a missing
// figure counts as one).
int PrintTable(const FigureReporter& results, std::ostream& out);

} // namespace bench
