#include "core/Clock.h"

#include <array>
#include <cstdio>
#include <ctime>

namespace tv {

namespace {

// The machine's local time of a moment; each platform has its own thread-safe call.
std::tm LocalTime(std::time_t moment) {
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &moment);
#else
    localtime_r(&moment, &local);
#endif
    return local;
}

} // namespace

DateTime SystemClock::Now() const {
    const std::tm local = LocalTime(std::time(nullptr));
    return DateTime{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                    local.tm_hour,        local.tm_min,     local.tm_sec};
}

std::string FormatLastChecked(const DateTime& when) {
    static constexpr std::array<const char*, 12> kMonths = {
        "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const char* month = when.Month >= 1 && when.Month <= 12 ? kMonths[when.Month - 1] : "???";
    std::array<char, 48> buf{};
    std::snprintf(buf.data(), buf.size(), "%02d %s %04d %02d:%02d", when.Day, month, when.Year,
                  when.Hour, when.Minute);
    return buf.data();
}

std::string FormatGeneralDate(const DateTime& when) {
    std::array<char, 48> buf{};
    std::snprintf(buf.data(), buf.size(), "%02d/%02d/%04d %02d:%02d:%02d", when.Day, when.Month,
                  when.Year, when.Hour, when.Minute, when.Second);
    return buf.data();
}

} // namespace tv
