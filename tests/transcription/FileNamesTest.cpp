#include "transcription/FileNames.h"

#include <gtest/gtest.h>

namespace tv {

namespace {

void ExpectParsed(const std::string& path, int year, int quarter, const std::string& letter,
                  int page) {
    ParsedFileName p = ParseFileName(path);
    EXPECT_EQ(p.Year, year) << path;
    EXPECT_EQ(p.Quarter, quarter) << path;
    EXPECT_EQ(p.Letter, letter) << path;
    EXPECT_EQ(p.Page, page) << path;
}

} // namespace

TEST(ParseFileName, PathWithoutSeparatorUsesTheWholeName) {
    ExpectParsed("1911B30123.jpg", 1911, 3, "B", 123);
}

TEST(ParseFileName, NameAfterTheLastSeparatorOfEitherKind) {
    ExpectParsed("C:\\scans\\1911B30123.jpg", 1911, 3, "B", 123);
    ExpectParsed("/home/me/1850M2/1911B30123.jpg", 1911, 3, "B", 123);
    ExpectParsed("/home/me\\1911D40007.jpg", 1911, 4, "D", 7);
}

TEST(ParseFileName, Name1911B30123GivesYearLetterQuarterAndPage) {
    ExpectParsed("/scans/1911B30123.jpg", 1911, 3, "B", 123);
}

TEST(ParseFileName, Name1990D12GivesQuarterZeroAndPage12) {
    ExpectParsed("1990D12.jpg", 1990, 0, "D", 12);
}

TEST(ParseFileName, TwoDigitYears) {
    ExpectParsed("11B3.jpg", 1911, 3, "B", -1);
    ExpectParsed("36M1.jpg", 1936, 1, "M", -1);
    ExpectParsed("37D2.jpg", 1837, 2, "D", -1);
    ExpectParsed("99B4.jpg", 1899, 4, "B", -1);
    ExpectParsed("0B1.jpg", 1900, 1, "B", -1);
}

TEST(ParseFileName, YearAfter2000IsUnknown) {
    ExpectParsed("2001B1.jpg", -1, -1, "", -1);
    ExpectParsed("1836B1.jpg", -1, -1, "", -1);
}

TEST(ParseFileName, UnknownEventLetterGivesNoYearAndNoLetter) {
    ExpectParsed("1911X3.jpg", -1, -1, "", -1);
}

TEST(ParseFileName, QuarterOutsideOneToFourKeepsYearAndLetter) {
    ExpectParsed("1911B5.jpg", 1911, -1, "B", -1);
}

TEST(ParseFileName, LetterIsUpperCased) {
    ExpectParsed("1911m2_45.jpg", 1911, 2, "M", 45);
}

TEST(ParseFileName, NoLeadingDigitsGivesNothing) {
    ExpectParsed("scan1911B3.jpg", -1, -1, "", -1);
    ExpectParsed("", -1, -1, "", -1);
}

TEST(ParseFileName, DigitRunReachesFiveDigits) {
    // 19113 is read as one number and is no year.
    ExpectParsed("19113B.jpg", -1, -1, "", -1);
    // The page is read the same way: its run stops at 12345, which is no page.
    ExpectParsed("1990B123456.jpg", 1990, 0, "B", -1);
}

TEST(ParseFileName, PageBelow9999IsTakenAnd9999IsNot) {
    ExpectParsed("1911B39998.jpg", 1911, 3, "B", 9998);
    ExpectParsed("1911B39999.jpg", 1911, 3, "B", -1);
}

TEST(ParseFileName, NonDigitsBeforeThePageAreSkipped) {
    ExpectParsed("1911B3-p0123.jpg", 1911, 3, "B", 123);
    ExpectParsed("1911B3.jpg", 1911, 3, "B", -1);
    ExpectParsed("1911B3", 1911, 3, "B", -1);
    ExpectParsed("1990D", 1990, 0, "D", -1);
}

} // namespace tv
