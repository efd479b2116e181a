#pragma once
// Year, event letter, quarter and page from a scan's file name, and the scan history match.
#include "core/Checked.h"

#include <cstdint>
#include <string>

namespace tv {

struct ParsedFileName {
    int16_t Year = -1;
    int16_t Quarter = -1;
    std::string Letter; // "B", "M", "D" or ""
    int16_t Page = -1;
};

ParsedFileName ParseFileName(const std::string& path);

} // namespace tv
