// ParseFileName on any path: every result lies in its documented range, and a name without a
// year gives nothing else.
#include "FuzzSupport.h"
#include "transcription/FileNames.h"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string path(reinterpret_cast<const char*>(data), size);
    const tv::ParsedFileName name = tv::ParseFileName(path);
    using tv::fuzz::Require;
    Require(name.Year == -1 || (name.Year >= 1837 && name.Year <= 2000), "year -1 or 1837..2000");
    Require(name.Quarter >= -1 && name.Quarter <= 4, "quarter -1..4");
    Require(name.Letter.empty() || name.Letter == "B" || name.Letter == "M" || name.Letter == "D",
            "letter B, M, D or none");
    Require(name.Page >= -1 && name.Page < 9999, "page -1 or below 9999");
    if (name.Year == -1)
        Require(name.Letter.empty() && name.Quarter == -1 && name.Page == -1,
                "no year, nothing else");
    if (name.Year >= 1984) Require(name.Quarter == 0, "an annual index has quarter 0");
    if (name.Quarter == -1) Require(name.Page == -1, "no quarter, no page");
    return 0;
}
