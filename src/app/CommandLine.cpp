#include "app/CommandLine.h"

#include "app/CheckCommand.h"

#include <iostream>
#include <string>
#include <vector>

namespace tv {

int RunCommandLine(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty() || args[0] != "--check") {
        std::cerr << CheckUsageText;
        return CheckUsage;
    }
    CheckOptions options;
    std::string error;
    if (!ParseCheckArguments({args.begin() + 1, args.end()}, options, error)) {
        std::cerr << "tallyview: " << error << '\n' << CheckUsageText;
        return CheckUsage;
    }
    return RunCheck(options, std::cout, std::cerr);
}

} // namespace tv
