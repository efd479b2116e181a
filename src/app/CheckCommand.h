#pragma once
// The headless check command: reads transcriptions as step 2 of the start window does and
// writes the printed report to standard output.
#include <ostream>
#include <string>
#include <vector>

namespace tv {

struct CheckOptions {
    std::string Scan; // the scan image's name; "" when not given
    bool AllRecords = false;
    bool AnswerYes = true;
    std::vector<std::string> Files;
};

enum CheckStatus : int {
    CheckClean = 0,
    CheckFindings = 1,
    CheckRefused = 2,
    CheckUnreadable = 3,
    CheckUsage = 64,
};

// Parses the arguments after "--check"; returns false when the command line is wrong.
bool ParseCheckArguments(const std::vector<std::string>& args, CheckOptions& options,
                         std::string& error);

// Checks every file in turn; returns the highest status of all files.
int RunCheck(const CheckOptions& options, std::ostream& out, std::ostream& err);

inline constexpr const char* CheckUsageText =
    "Usage: tallyview --check [--scan IMAGE] [--all-records] [--answer yes|no] FILE...\n";

} // namespace tv
