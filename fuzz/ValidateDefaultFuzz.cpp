// ValidateDefault on any text and range: the value is the default or numeric text within the
// range, and every number the store writes is read back as itself.
#include "FuzzSupport.h"
#include "core/Numeric.h"
#include "core/Text.h"
#include "session/Settings.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>
#include <limits>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider input(data, size);
    const float minimum = input.ConsumeFloatingPoint<float>();
    const float maximum = input.ConsumeFloatingPoint<float>();
    const float deflt = input.ConsumeFloatingPoint<float>();
    const float written = input.ConsumeFloatingPoint<float>();
    const std::string text = input.ConsumeRemainingBytesAsString();
    using tv::fuzz::Require;

    const float value = tv::ValidateDefault(text, minimum, maximum, deflt);
    const bool isDefault = value == deflt || (std::isnan(value) && std::isnan(deflt));
    if (!isDefault) {
        Require(value >= minimum && value <= maximum, "a value other than the default is in range");
        Require(tv::IsNumeric(tv::Trim(text)), "a value other than the default is numeric text");
    }
    if (std::isfinite(written)) {
        const std::string decimal = tv::DecimalText(written);
        Require(decimal.find_first_of("eE") == std::string::npos, "decimal text has no exponent");
        const float lowest = std::numeric_limits<float>::lowest();
        const float highest = std::numeric_limits<float>::max();
        Require(tv::ValidateDefault(decimal, lowest, highest, std::nanf("")) == written,
                "a written number reads back as itself");
    }
    return 0;
}
