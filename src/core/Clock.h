#pragma once
// The present date and time, and the two date formats the system prints.
#include <string>

namespace tv {

struct DateTime {
    int Year = 2000;
    int Month = 1; // 1..12
    int Day = 1;
    int Hour = 0;
    int Minute = 0;
    int Second = 0;
};

class Clock {
  public:
    virtual ~Clock() = default;
    virtual DateTime Now() const = 0;
};

// The machine's local time.
class SystemClock : public Clock {
  public:
    DateTime Now() const override;
};

// "dd mmm yyyy Hh:Nn": day, abbreviated English month name, year, hours and minutes.
std::string FormatLastChecked(const DateTime& when);
// The "General Date" of the report: day/month/year and the time to the second.
std::string FormatGeneralDate(const DateTime& when);

} // namespace tv
