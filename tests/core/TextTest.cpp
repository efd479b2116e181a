#include "core/Text.h"
#include "core/Clock.h"

#include <gtest/gtest.h>

namespace tv {

TEST(Text, Cp1252ToUtf8WritesEachByteAsItsCharacter) {
    EXPECT_EQ(Cp1252ToUtf8("Andr\xE9"), "Andr\xC3\xA9");
    EXPECT_EQ(Cp1252ToUtf8("\x80"), "\xE2\x82\xAC");
    EXPECT_EQ(Cp1252ToUtf8("\x95"), "\xE2\x80\xA2");
    // The five undefined bytes become the control characters of the same number.
    EXPECT_EQ(Cp1252ToUtf8("\x81\x8D\x8F\x90\x9D"), "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D");
}

TEST(Text, Utf8ToCp1252UsesTheBulletForMissingCharacters) {
    EXPECT_EQ(Utf8ToCp1252("Andr\xC3\xA9"), "Andr\xE9");
    EXPECT_EQ(Utf8ToCp1252("\xE2\x82\xAC"), "\x80");
    EXPECT_EQ(Utf8ToCp1252("\xC5\x81"), "\x95"); // L with stroke is not in Windows-1252
    EXPECT_EQ(Utf8ToCp1252("a\xFF"
                           "b"),
              "a\xFF"
              "b");
}

TEST(Text, AlignRightKeepsTheRightmostCharacters) {
    EXPECT_EQ(AlignRight(7, 3), "  7");
    EXPECT_EQ(AlignRight(1000, 3), "000");
    EXPECT_EQ(AlignRight("ab", 5), "   ab");
}

TEST(Text, UnixLineEndsFoldsEveryLineEnd) {
    EXPECT_EQ(UnixLineEnds("a\r\nb\rc\nd"), "a\nb\nc\nd");
}

TEST(Text, BareFileNameTakesThePartAfterTheLastSeparator) {
    EXPECT_EQ(BareFileName("/scans/1911B30123.jpg"), "1911B30123.jpg");
    EXPECT_EQ(BareFileName("C:\\scans\\1911B3.jpg"), "1911B3.jpg");
    EXPECT_EQ(BareFileName("1911B3.jpg"), "1911B3.jpg");
}

TEST(Clock, FormatsTheTwoDateForms) {
    DateTime t{2026, 11, 5, 9, 7, 3};
    EXPECT_EQ(FormatLastChecked(t), "05 Nov 2026 09:07");
    EXPECT_EQ(FormatGeneralDate(t), "05/11/2026 09:07:03");
}

} // namespace tv
