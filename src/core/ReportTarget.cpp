#include "core/ReportTarget.h"

#include <filesystem>
#include <system_error>

namespace tv {

namespace {

std::filesystem::path NativePath(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

} // namespace

std::string ReportTargetRefusal(const std::string& target) {
    std::error_code error;
    // Follows links: a link to a device is the device.
    const std::filesystem::file_status status = std::filesystem::status(NativePath(target), error);
    if (status.type() == std::filesystem::file_type::not_found) return "";
    if (error) return error.message();
    if (status.type() == std::filesystem::file_type::directory) return "Is a directory";
    if (status.type() != std::filesystem::file_type::regular) return "Not a regular file";
    return "";
}

std::optional<std::string> InputAtTarget(const std::string& target,
                                         const std::vector<std::string>& inputs) {
    for (const std::string& input : inputs) {
        if (input.empty()) continue;
        std::error_code error;
        if (std::filesystem::equivalent(NativePath(target), NativePath(input), error)) return input;
    }
    return std::nullopt;
}

} // namespace tv
