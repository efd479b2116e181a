#pragma once
// Checked arithmetic for the documented 16-bit counters and 32-bit positions, and bounded
// arrays whose indexes are checked on every access.
#include "core/RunTimeError.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace tv {

// A whole number that must fit a 16-bit signed counter; anything else is an overflow.
inline int16_t To16(long long value) {
    if (value < std::numeric_limits<int16_t>::min() || value > std::numeric_limits<int16_t>::max())
        throw RunTimeError::Overflow();
    return static_cast<int16_t>(value);
}

inline int32_t To32(long long value) {
    if (value < std::numeric_limits<int32_t>::min() || value > std::numeric_limits<int32_t>::max())
        throw RunTimeError::Overflow();
    return static_cast<int32_t>(value);
}

// To nearest, halves to even: the one rounding rule of the whole program.
inline double RoundHalfEven(double value) {
    return std::nearbyint(value);
}

// Numeric value to a 16-bit or 32-bit whole number, rounding halves to even.
inline int16_t CInt(double value) {
    if (!std::isfinite(value)) throw RunTimeError::Overflow();
    double r = RoundHalfEven(value);
    if (r < -32768.0 || r > 32767.0) throw RunTimeError::Overflow();
    return static_cast<int16_t>(r);
}

inline int32_t CLng(double value) {
    if (!std::isfinite(value)) throw RunTimeError::Overflow();
    double r = RoundHalfEven(value);
    if (r < -2147483648.0 || r > 2147483647.0) throw RunTimeError::Overflow();
    return static_cast<int32_t>(r);
}

// A fixed-size array indexed Lo..Hi inclusive, as the documented tables are.
template <typename T, int Lo, int Hi> class BoundedArray {
  public:
    static constexpr int Low = Lo;
    static constexpr int High = Hi;

    T& operator[](int index) { return data_[Offset(index)]; }
    const T& operator[](int index) const { return data_[Offset(index)]; }

    void Fill(const T& value) { data_.fill(value); }

  private:
    static std::size_t Offset(int index) {
        if (index < Lo || index > Hi) throw RunTimeError::SubscriptOutOfRange();
        return static_cast<std::size_t>(index - Lo);
    }
    std::array<T, static_cast<std::size_t>(Hi - Lo + 1)> data_{};
};

} // namespace tv
