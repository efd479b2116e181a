#include "transcription/TextConversion.h"
#include "core/Text.h"

#include <gtest/gtest.h>

namespace tv {

TEST(ConvTo7BitASCII, ApostropheAndHyphenBecomeSpaces) {
    EXPECT_EQ(ConvTo7BitASCII("O'Brien-Smith"), "O Brien Smith");
}

TEST(ConvTo7BitASCII, AGraveAndCCedillaFoldToTheirBaseLetters) {
    EXPECT_EQ(ConvTo7BitASCII("Fran\xE7oise Adl\xE0"), "Francoise Adla");
    EXPECT_EQ(ConvTo7BitASCII("\xC0\xC7"), "AC");
}

TEST(ConvTo7BitASCII, AtSignBecomesASpaceAndDigitsStay) {
    EXPECT_EQ(ConvTo7BitASCII("a@b"), "a b");
    EXPECT_EQ(ConvTo7BitASCII("0123456789"), "0123456789");
}

TEST(ConvTo7BitASCII, KeepsTheTablesAsymmetries) {
    EXPECT_EQ(ConvTo7BitASCII("\xD0"), "D");           // capital eth
    EXPECT_EQ(ConvTo7BitASCII("\xF0"), "o");           // small eth
    EXPECT_EQ(ConvTo7BitASCII("\xFF"), "y");           // small y with diaeresis
    EXPECT_EQ(ConvTo7BitASCII("\xD7\xF7"), "  ");      // multiplication and division signs
    EXPECT_EQ(ConvTo7BitASCII("\xDE\xFE\xDF"), "   "); // thorns and sharp s
    EXPECT_EQ(ConvTo7BitASCII("\x8A\x9F\xA9"), "   "); // S caron, Y diaeresis, copyright
}

TEST(ConvTo7BitASCII, MapsEveryCodeThroughTheFoldingTable) {
    std::string all;
    for (int c = 0; c < 256; ++c)
        all += static_cast<char>(c);
    std::string expected = std::string(48, ' ') + "0123456789      " +
                           " ABCDEFGHIJKLMNOPQRSTUVWXYZ     " + " abcdefghijklmnopqrstuvwxyz     " +
                           std::string(64, ' ') + "AAAAAAACEEEEIIIIDNOOOOO OUUUUY  " +
                           "aaaaaaaceeeeiiiionooooo ouuuuy y";
    EXPECT_EQ(ConvTo7BitASCII(all), expected);
}

TEST(ConvToAnsi, EmptyLinePassesUnchanged) {
    EXPECT_EQ(ConvToAnsi("", 1250), "");
    EXPECT_EQ(ConvToAnsi("", 0), "");
}

TEST(ConvToAnsi, CodePageZeroAndWindows1252LeaveTheLineAsItIs) {
    std::string line = "Andr\xE9\x81\x8D\x95";
    EXPECT_EQ(ConvToAnsi(line, 0), line);
    EXPECT_EQ(ConvToAnsi(line, 1252), line);
}

TEST(ConvToAnsi, Cp1250LetterThatWindows1252LacksBecomesTheBullet) {
    // 0xB9 is a with ogonek in cp1250; 0xE9 is e acute in both code pages.
    EXPECT_EQ(ConvToAnsi("\xB9\xE9", 1250), "\x95\xE9");
    // 0x8A is S caron in both.
    EXPECT_EQ(ConvToAnsi("\x8A", 1250), "\x8A");
}

TEST(ConvToAnsi, Cp437BoxDrawingCharacterBecomesTheBullet) {
    EXPECT_EQ(ConvToAnsi("\xC9\xCD", 437), "\x95\x95");
    EXPECT_EQ(ConvToAnsi("Andr\x82", 437), "Andr\xE9");
}

TEST(ConvToAnsi, MultiByteCharacterBecomesOneCharacter) {
    // Hiragana a in Shift-JIS is two bytes and has no Windows-1252 form.
    EXPECT_EQ(ConvToAnsi("a\x82\xA0"
                         "b",
                         932),
              "a\x95"
              "b");
}

TEST(ConvToAnsi, InvalidInputBytesBecomeTheBullet) {
    // A Shift-JIS lead byte cut off by the end of the line.
    EXPECT_EQ(ConvToAnsi("ab\x82", 932), "ab\x95");
}

TEST(ConvToAnsi, UnknownCodePageLeavesTheLineUnchanged) {
    EXPECT_EQ(ConvToAnsi("Andr\xE9", 99999), "Andr\xE9");
}

TEST(IsValidCodePage, KnowsTheCodePagesThePlatformCanConvert) {
    EXPECT_TRUE(IsValidCodePage(1250));
    EXPECT_TRUE(IsValidCodePage(437));
    EXPECT_TRUE(IsValidCodePage(1252));
    EXPECT_FALSE(IsValidCodePage(99999));
    EXPECT_FALSE(IsValidCodePage(0));
    EXPECT_FALSE(IsValidCodePage(-1250));
}

} // namespace tv
