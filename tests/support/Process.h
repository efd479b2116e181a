#pragma once
// Runs the tallyview program as a user would from a terminal and captures what it writes.
#include <string>
#include <vector>

namespace tv::test {

struct ProcessResult {
    int Status = -1;
    std::string Out;
    std::string Err;
};

ProcessResult RunTallyview(const std::vector<std::string>& args);
// The same, started by the command prefix (a program on PATH and its arguments), which is
// given the program and args as its last arguments: a shell that sets limits, a new namespace.
ProcessResult RunTallyviewThrough(const std::vector<std::string>& prefix,
                                  const std::vector<std::string>& args);

} // namespace tv::test
