#pragma once
// Where a report may be written. The program only ever reads transcriptions and scans, and a
// report is written only where an ordinary file can stand: never into a pipe that may have no
// reader, a device or a folder.
#include <optional>
#include <string>
#include <vector>

namespace tv {

// Why no report can be written at target (a path in the platform's UTF-8); "" when it can: it
// does not exist yet or is a regular file. Looks at the place without opening it, so a pipe
// with no reader is refused at once.
std::string ReportTargetRefusal(const std::string& target);

// The first of inputs that is the same file as target, by the file's identity (device and
// file number), so that neither a link nor ".." can make the report overwrite it; nothing
// when there is none or target does not exist.
std::optional<std::string> InputAtTarget(const std::string& target,
                                         const std::vector<std::string>& inputs);

} // namespace tv
