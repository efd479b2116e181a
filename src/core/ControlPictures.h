#pragma once
// Text from a file shown on a terminal: its control characters must show, not act.
#include <string>
#include <string_view>

namespace tv {

// The control characters of UTF-8 text (codes 0 to 31 and 127) as their pictures (U+2400 to
// U+241F, U+2421), so that a NUL or an escape copied from a file shows on a terminal instead of
// acting on it; line feeds are kept when keepLineFeeds is set.
std::string ShowControlCharacters(std::string_view utf8, bool keepLineFeeds = false);

} // namespace tv
