#include "core/Numeric.h"

#include <charconv>

namespace tv {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Returns the end of the numeric body starting at pos, or npos when it is not one.
std::size_t ScanBody(std::string_view t, std::size_t pos) {
    if (pos < t.size() && (t[pos] == '+' || t[pos] == '-')) ++pos;
    std::size_t digits = 0;
    bool point = false;
    while (pos < t.size()) {
        if (IsDigit(t[pos])) {
            ++digits;
        } else if (t[pos] == '.' && !point) {
            point = true;
        } else {
            break;
        }
        ++pos;
    }
    if (digits == 0) return std::string_view::npos;
    if (pos < t.size() && (t[pos] == 'E' || t[pos] == 'e')) {
        std::size_t p = pos + 1;
        if (p < t.size() && (t[p] == '+' || t[p] == '-')) ++p;
        std::size_t expDigits = 0;
        while (p < t.size() && IsDigit(t[p])) {
            ++p;
            ++expDigits;
        }
        if (expDigits == 0) return std::string_view::npos;
        pos = p;
    }
    return pos;
}

} // namespace

std::optional<double> NumericValue(std::string_view text) {
    std::size_t begin = 0;
    while (begin < text.size() && text[begin] == ' ')
        ++begin;
    std::size_t end = ScanBody(text, begin);
    if (end == std::string_view::npos) return std::nullopt;
    std::size_t rest = end;
    while (rest < text.size() && text[rest] == ' ')
        ++rest;
    if (rest != text.size()) return std::nullopt;
    // from_chars ignores the locale, so a German desktop still reads "1.5" as one and a half.
    const char* first = text.data() + begin;
    if (*first == '+') ++first;
    double value = 0.0;
    auto result = std::from_chars(first, text.data() + end, value);
    if (result.ec == std::errc::result_out_of_range) return std::nullopt;
    return value;
}

bool IsNumeric(std::string_view text) {
    return NumericValue(text).has_value();
}

} // namespace tv
