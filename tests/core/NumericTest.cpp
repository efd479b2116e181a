#include "core/Numeric.h"
#include "core/Checked.h"

#include <gtest/gtest.h>

namespace tv {

TEST(Numeric, AcceptsSpacesSignDecimalPointAndExponent) {
    EXPECT_TRUE(IsNumeric("12"));
    EXPECT_TRUE(IsNumeric("  12  "));
    EXPECT_TRUE(IsNumeric("-3"));
    EXPECT_TRUE(IsNumeric("+3"));
    EXPECT_TRUE(IsNumeric("1.5"));
    EXPECT_TRUE(IsNumeric(".5"));
    EXPECT_TRUE(IsNumeric("5."));
    EXPECT_TRUE(IsNumeric("1e3"));
    EXPECT_TRUE(IsNumeric("1E-3"));
    EXPECT_TRUE(IsNumeric("106 "));
    EXPECT_DOUBLE_EQ(*NumericValue(" 1.5e2 "), 150.0);
    EXPECT_DOUBLE_EQ(*NumericValue("+7"), 7.0);
    EXPECT_DOUBLE_EQ(*NumericValue("-0.25"), -0.25);
}

TEST(Numeric, RefusesEverythingElse) {
    for (const char* bad : {"", " ", ".", "1.2.3", "1y", "1,000", "$5", "0x10", "1e", "e5", "- 5",
                            "1 2", "++1", "1e+"})
        EXPECT_FALSE(IsNumeric(bad)) << bad;
}

TEST(Numeric, RoundsHalvesToEven) {
    EXPECT_EQ(CInt(2.5), 2);
    EXPECT_EQ(CInt(3.5), 4);
    EXPECT_EQ(CInt(-2.5), -2);
    EXPECT_EQ(CInt(6.4), 6);
    EXPECT_EQ(CLng(1234567.5), 1234568);
}

TEST(Checked, OverflowIsARunTimeError) {
    EXPECT_THROW(To16(32768), RunTimeError);
    EXPECT_THROW(To16(-32769), RunTimeError);
    EXPECT_EQ(To16(-32768), -32768);
    EXPECT_THROW(CInt(32767.5), RunTimeError);
    EXPECT_THROW(To32(2147483648LL), RunTimeError);
}

TEST(Checked, IndexOutOfRangeIsARunTimeError) {
    BoundedArray<int, 1, 6> a;
    a[1] = 1;
    a[6] = 6;
    EXPECT_EQ(a[6], 6);
    EXPECT_THROW(a[0], RunTimeError);
    EXPECT_THROW(a[7], RunTimeError);
    try {
        a[7] = 0;
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number, 9);
    }
}

} // namespace tv
