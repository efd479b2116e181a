#include "transcription/SplitFields.h"
#include "support/FakePrompts.h"

#include <gtest/gtest.h>

namespace tv {

namespace {

struct Split {
    Fields Out;
    test::FakePrompts Ask;

    explicit Split(const std::string& line, int16_t lineCount = 1) {
        SplitFields(line, Out, lineCount, Ask);
    }
};

std::string Chars(std::size_t n, char c = 'x') {
    return std::string(n, c);
}

} // namespace

TEST(SplitFields, SplitsAtCommas) {
    Split s("Smith,John,Leeds,9b,123");
    EXPECT_EQ(s.Out[1], "Smith");
    EXPECT_EQ(s.Out[2], "John");
    EXPECT_EQ(s.Out[3], "Leeds");
    EXPECT_EQ(s.Out[4], "9b");
    EXPECT_EQ(s.Out[5], "123");
    EXPECT_EQ(s.Out[6], "");
    EXPECT_TRUE(s.Ask.Shown.empty());
}

TEST(SplitFields, QuotedSmithCommaJohnThenXGivesFieldOneSmithJohnAndFieldTwoX) {
    Split s("\"Smith, John\",x");
    EXPECT_EQ(s.Out[1], "Smith, John");
    EXPECT_EQ(s.Out[2], "x");
    EXPECT_EQ(s.Out[3], "");
}

TEST(SplitFields, TheCharacterAfterAClosingQuoteIsSkippedWhateverItIs) {
    Split skipped("\"ab\"Xcd,e");
    EXPECT_EQ(skipped.Out[1], "ab");
    EXPECT_EQ(skipped.Out[2], "cd");
    EXPECT_EQ(skipped.Out[3], "e");
}

TEST(SplitFields, UnclosedQuoteGivesTheMessageWithItsLineNumberAndKeepsTheRest) {
    Split s("Brown,\"abc", 17);
    ASSERT_EQ(s.Ask.Shown.size(), 1U);
    const Prompt& p = s.Ask.Shown[0];
    EXPECT_EQ(p.Text, "Opening  \"  without a matching closing  \"  in line \r17 - Brown,\"abc");
    EXPECT_EQ(p.Title, "Tallyview");
    EXPECT_EQ(p.Choice, Buttons::Ok);
    EXPECT_EQ(s.Out[1], "Brown");
    EXPECT_EQ(s.Out[2], "\"abc");
    EXPECT_EQ(s.Out[3], "");
}

TEST(SplitFields, LineOfAQuoteThenAbcGivesTheUnclosedQuoteMessage) {
    Split s("\"abc", 3);
    ASSERT_EQ(s.Ask.Texts().size(), 1U);
    EXPECT_EQ(s.Ask.Texts()[0], "Opening  \"  without a matching closing  \"  in line \r3 - \"abc");
    EXPECT_EQ(s.Out[1], "\"abc");
}

TEST(SplitFields, QuotedFieldIsCutAtFiftyCharactersOfContent) {
    EXPECT_EQ(Split("\"" + Chars(49) + "\",y").Out[1], Chars(49));
    EXPECT_EQ(Split("\"" + Chars(50) + "\",y").Out[1], Chars(48) + "...");
    EXPECT_EQ(Split("\"" + Chars(51) + "\",y").Out[1], Chars(48) + "...");
    EXPECT_EQ(Split("\"" + Chars(51) + "\",y").Out[2], "y");
}

TEST(SplitFields, QuotedLastFieldIsCutTheSameWay) {
    EXPECT_EQ(Split("a,\"" + Chars(49) + "\"").Out[2], Chars(49));
    EXPECT_EQ(Split("a,\"" + Chars(50) + "\"").Out[2], Chars(48) + "...");
}

TEST(SplitFields, UnquotedFieldBeforeACommaIsCutFromFiftyCharacters) {
    EXPECT_EQ(Split(Chars(49) + ",y").Out[1], Chars(49));
    EXPECT_EQ(Split(Chars(50) + ",y").Out[1], Chars(47) + "...");
    EXPECT_EQ(Split(Chars(51) + ",y").Out[1], Chars(47) + "...");
    EXPECT_EQ(Split(Chars(51) + ",y").Out[2], "y");
}

TEST(SplitFields, LastUnquotedFieldIsCutOnlyAboveFiftyCharacters) {
    EXPECT_EQ(Split("a," + Chars(49)).Out[2], Chars(49));
    EXPECT_EQ(Split("a," + Chars(50)).Out[2], Chars(50));
    EXPECT_EQ(Split("a," + Chars(51)).Out[2], Chars(47) + "...");
}

TEST(SplitFields, FieldsBeyondTwentyAreDropped) {
    std::string line;
    for (int k = 1; k <= 25; ++k)
        line += "f" + std::to_string(k) + ",";
    Split s(line);
    EXPECT_EQ(s.Out[20], "f20");
    EXPECT_THROW((void)s.Out[21], RunTimeError);
}

TEST(SplitFields, QuotesInsideAnUnquotedFieldAreOrdinaryCharacters) {
    Split s("O\"Brien,Jo\"hn\"");
    EXPECT_EQ(s.Out[1], "O\"Brien");
    EXPECT_EQ(s.Out[2], "Jo\"hn\"");
    EXPECT_TRUE(s.Ask.Shown.empty());
}

TEST(SplitFields, ClearsTheFieldsOfThePreviousLineButNotEntryZero) {
    Fields out;
    test::FakePrompts ask;
    out[0] = "untouched";
    SplitFields("a,b,c,d", out, 1, ask);
    SplitFields("e", out, 2, ask);
    EXPECT_EQ(out[0], "untouched");
    EXPECT_EQ(out[1], "e");
    EXPECT_EQ(out[2], "");
    EXPECT_EQ(out[4], "");
}

TEST(SplitFields, EmptyFieldsBetweenCommasStayEmptyAndATrailingCommaAddsNone) {
    Split s(",,x,");
    EXPECT_EQ(s.Out[1], "");
    EXPECT_EQ(s.Out[2], "");
    EXPECT_EQ(s.Out[3], "x");
    EXPECT_EQ(s.Out[4], "");
}

} // namespace tv
