#pragma once
// The summary of the statistics screen, its lists, and the printed report as lines.
#include "core/Clock.h"
#include "stats/Checks.h"

#include <string>
#include <vector>

namespace tv {

// The summary text of UpdateStats, lines broken with CR LF.
std::string StatsSummary(const std::string& scanDescription, const CheckInputs& in);

// The lists of the statistics screen, options 0 to 3, rows joined with CR LF.
std::string FileHeaderList(const RecordTable& table);
std::string QueriesList(CheckIterator& it, const CheckInputs& in);
std::string WarningsList(CheckIterator& it, const CheckInputs& in);
std::string FlaggedList(CheckIterator& it, const CheckInputs& in);

struct ReportLine {
    std::string Text;
    bool Bold = false;
    bool operator==(const ReportLine&) const = default;
};

// Every line the printed report prints, from its first empty line to the "Printed " line.
// allRecords is the answer Yes to "Do you want a print of all the QRL records ?".
std::vector<ReportLine> ReportLines(bool allRecords, const std::string& scanDescription,
                                    CheckIterator& it, const CheckInputs& in, const DateTime& now);

// Report lists or warns: what decides the check command's exit status 1.
bool ReportHasFindings(CheckIterator& it, const CheckInputs& in);

} // namespace tv
