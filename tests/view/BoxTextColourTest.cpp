// The box text stays readable on every colour of the Box Colour menu: a contrast of at least
// 4.5 to 1, the guidelines' level for normal text.
#include "view/BoxTextColour.h"
#include "core/RunTimeError.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

constexpr Rgb Black{0, 0, 0};
constexpr Rgb White{255, 255, 255};

TEST(ContrastRatio, RunsFromOneForEqualColoursToTwentyOneForBlackOnWhite) {
    EXPECT_DOUBLE_EQ(ContrastRatio(Black, White), 21.0);
    EXPECT_DOUBLE_EQ(ContrastRatio(White, Black), 21.0);
    EXPECT_DOUBLE_EQ(ContrastRatio(Black, Black), 1.0);
    EXPECT_DOUBLE_EQ(ContrastRatio(Rgb{192, 192, 192}, Rgb{192, 192, 192}), 1.0);
    // The guidelines' own example: mid grey #777777 on white is just below 4.5.
    EXPECT_NEAR(ContrastRatio(Rgb{0x77, 0x77, 0x77}, White), 4.48, 0.01);
}

TEST(ContrastRatio, BlackTextOnTheBlackBoxColourCannotBeRead) {
    EXPECT_DOUBLE_EQ(ContrastRatio(Black, BoxColours[0]), 1.0);
}

TEST(BoxTextColour, WhiteOnColourZeroAndBlackOnTheSixLightColours) {
    EXPECT_EQ(BoxTextColour(0), White);
    for (int16_t i = 1; i <= 6; ++i)
        EXPECT_EQ(BoxTextColour(i), Black) << i;
}

TEST(BoxTextColour, EveryBoxColourKeepsAContrastOfAtLeastFourAndAHalf) {
    for (int16_t i = 0; i < static_cast<int16_t>(BoxColours.size()); ++i) {
        const double ratio = ContrastRatio(BoxTextColour(i), BoxColours[static_cast<size_t>(i)]);
        EXPECT_GE(ratio, 4.5) << "box colour " << i;
    }
}

TEST(BoxTextColour, AColourBeyondTheMenuIsSubscriptOutOfRange) {
    EXPECT_THROW(BoxTextColour(7), RunTimeError);
    EXPECT_THROW(BoxTextColour(-1), RunTimeError);
}

} // namespace
} // namespace tv
