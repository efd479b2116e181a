#include "app/CommandLine.h"

#include "app/CheckCommand.h"
#include "app/DesktopApp.h"

#include <iostream>
#include <string>
#include <vector>

namespace tv {

namespace {

constexpr const char* DesktopUsageText = "Usage: tallyview [SCAN TRANSCRIPTION]\n";

bool IsOption(const std::string& arg) {
    return !arg.empty() && arg[0] == '-';
}

// The headless check needs no display, so it never starts the windowed program.
int RunCheckCommand(const std::vector<std::string>& args) {
    CheckOptions options;
    std::string error;
    if (!ParseCheckArguments({args.begin() + 1, args.end()}, options, error)) {
        std::cerr << "tallyview: " << error << '\n' << CheckUsageText;
        return CheckUsage;
    }
    return RunCheck(options, std::cout, std::cerr);
}

} // namespace

int RunCommandLine(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (!args.empty() && args[0] == "--check") return RunCheckCommand(args);
    if (args.empty()) return RunDesktop(argc, argv, "", "");
    if (args.size() == 2 && !IsOption(args[0]) && !IsOption(args[1]))
        return RunDesktop(argc, argv, args[0], args[1]);
    std::cerr << DesktopUsageText << CheckUsageText;
    return CheckUsage;
}

} // namespace tv
