#pragma once
// The one numeric-text test of the program: optional spaces, an optional sign, digits with at
// most one decimal point (at least one digit), an optional exponent, optional spaces.
#include <optional>
#include <string_view>

namespace tv {

bool IsNumeric(std::string_view text);

// The value of numeric text, or nothing when the text is not numeric.
std::optional<double> NumericValue(std::string_view text);

} // namespace tv
