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

} // namespace tv::test
