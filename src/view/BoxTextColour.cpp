#include "view/BoxTextColour.h"

#include "core/RunTimeError.h"

#include <algorithm>
#include <cmath>

namespace tv {

namespace {

constexpr Rgb Black{0, 0, 0};
constexpr Rgb White{255, 255, 255};

// One sRGB channel (0..255) as linear light (0..1).
double Linear(int channel) {
    const double c = channel / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double RelativeLuminance(const Rgb& colour) {
    return 0.2126 * Linear(colour.Red) + 0.7152 * Linear(colour.Green) +
           0.0722 * Linear(colour.Blue);
}

} // namespace

double ContrastRatio(const Rgb& a, const Rgb& b) {
    const double la = RelativeLuminance(a);
    const double lb = RelativeLuminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

Rgb BoxTextColour(int16_t colourIndex) {
    if (colourIndex < 0 || colourIndex >= static_cast<int16_t>(BoxColours.size()))
        throw RunTimeError::SubscriptOutOfRange();
    const Rgb& box = BoxColours[static_cast<std::size_t>(colourIndex)];
    return ContrastRatio(Black, box) >= ContrastRatio(White, box) ? Black : White;
}

} // namespace tv
