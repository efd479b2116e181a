#pragma once
// The headless check command: reads transcriptions as step 2 of the start window does and
// writes the printed report to standard output and, when asked, to a PDF file.
#include <ostream>
#include <string>
#include <vector>

namespace tv {

struct CheckOptions {
    std::string Scan; // the scan image's name; "" when not given
    bool AllRecords = false;
    bool AnswerYes = true;
    std::string PrintTo; // a PDF file that receives the same report; "" for none
    std::vector<std::string> Files;
};

enum CheckStatus : int {
    CheckClean = 0,
    CheckFindings = 1,
    CheckRefused = 2,
    CheckUnreadable = 3,
    CheckUsage = 64,
};

// Parses the arguments besides "--check" (a value may follow its option or be joined to it by
// "="); returns false when the command line is wrong.
bool ParseCheckArguments(const std::vector<std::string>& args, CheckOptions& options,
                         std::string& error);

// Checks every file in turn; returns the highest status of all files. With PrintTo, the reports
// of all the files go to that PDF file too, one after another (a QGuiApplication must exist);
// a PDF that cannot be written is told on err with the reason and gives CheckUnreadable. A
// PrintTo that is one of the files or the scan is refused before anything is read (CheckUsage).
int RunCheck(const CheckOptions& options, std::ostream& out, std::ostream& err);

// The command line's error messages, one wording for the check and the windowed program.
std::string UnrecognizedOption(const std::string& arg);
std::string RequiresAnArgument(const std::string& option);

// The last line of every message about a wrong command line.
inline constexpr const char* TryHelpText = "Try 'tallyview --help' for more information.\n";

inline constexpr const char* CheckUsageText =
    "Usage: tallyview --check [--scan IMAGE] [--all-records] [--answer yes|no] "
    "[--print-to FILE.pdf] FILE...\n";

} // namespace tv
