#include "stats/Checks.h"

#include "StatsTable.h"

#include <gtest/gtest.h>

namespace tv {

using test::Drain;
using test::StatsTable;
using Rows = std::vector<std::string>;

namespace {

const char* const FileNameTail = " file name inconsistent with details in file header";

Rows NamesOutOfSequence(const StatsTable& t) {
    CheckIterator it;
    return Drain(it, CheckNamesOutOfSequence, t.Inputs()).Lines;
}

} // namespace

TEST(GetNextCheckLine, FileOfOnlyHeaderLinesGivesTitlesAndEndsOnTheFirstCall) {
    StatsTable t;
    t.Header("+INFO,Quillpad,1.0");
    t.Header("+S,B,1911,SEP");
    int query = t.Header("#Is this a query?");
    t.Table.LineQuery[query] = true; // header lines never count as queries
    t.Table.HasExtraField = true;
    const std::pair<int16_t, const char*> cases[] = {
        {CheckQueries, "Queries"},
        {CheckNamesOutOfSequence, "Names out of sequence ..."},
        {CheckSuspectAge, "Suspect age at death ..."},
        {CheckMissingSurnames, "Missing surnames ..."}};
    for (auto [code, expectedTitle] : cases) {
        CheckIterator it;
        int16_t category = code;
        std::string title;
        std::string line = "stale";
        EXPECT_FALSE(GetNextCheckLine(it, category, title, line, t.Inputs()));
        EXPECT_EQ(title, expectedTitle);
        EXPECT_EQ(line, "");
        EXPECT_EQ(it.CheckCategory, -1);
    }
}

TEST(GetNextCheckLine, FlaggedAndFileNamesCategoriesHaveTheirTitles) {
    StatsTable t;
    CheckIterator it;
    EXPECT_EQ(Drain(it, CheckFlagged, t.Inputs()).Title, "Flagged records");
    EXPECT_EQ(Drain(it, CheckFileNames, t.Inputs()).Title, "File names ...");
}

TEST(GetNextCheckLine, CategoryOutsideOneToSixHasNoTitleAndFindsNothing) {
    StatsTable t;
    t.Record("", "John");
    CheckIterator it;
    int16_t category = 7;
    std::string title = "stale";
    std::string line;
    EXPECT_FALSE(GetNextCheckLine(it, category, title, line, t.Inputs()));
    EXPECT_EQ(title, "");
    EXPECT_EQ(it.CheckCategory, -1);
}

TEST(GetNextCheckLine, QueriesListOnlyRecordsWithTheQueryFlag) {
    StatsTable t;
    t.Header("+S,B,1911,SEP");
    t.Record("ADAMS", "John");
    int query = t.Record("BROWN", "Mary?");
    t.Table.LineQuery[query] = true;
    CheckIterator it;
    EXPECT_EQ(Drain(it, CheckQueries, t.Inputs()).Lines, Rows{"  3 BROWN,Mary?"});
}

TEST(GetNextCheckLine, TwoIdenticalConsecutiveEntriesGiveNoWarning) {
    StatsTable t;
    t.Record("Smith", "John");
    t.Record("Smith", "John");
    EXPECT_TRUE(NamesOutOfSequence(t).empty());
}

TEST(GetNextCheckLine, SurnamesDifferingOnlyInLetterCaseAreEqual) {
    StatsTable t;
    t.Record("smith", "Mary");
    t.Record("SMITH", "mary"); // by character codes alone SMITH sorts before smith
    EXPECT_TRUE(NamesOutOfSequence(t).empty());
}

TEST(GetNextCheckLine, OBrienOBrienAndOSpaceBrienGiveEqualKeys) {
    StatsTable t;
    t.Record("O'Brien", "John");
    t.Record("OBrien", "John");
    t.Record("O Brien", "John");
    t.Record("O'Brien", "John");
    EXPECT_TRUE(NamesOutOfSequence(t).empty());
}

TEST(GetNextCheckLine, SmithJonesSortsAsSmithjones) {
    StatsTable t;
    t.Record("Smith-Jones", "Ann");
    t.Record("Smithe", "Ann"); // "smithe" is below "smithjones", though above "smith jones"
    t.Record("Smith-Jones", "Ann");
    t.Record("Smithk", "Ann");
    EXPECT_EQ(NamesOutOfSequence(t), (Rows{"  1 Smith-Jones,Ann", "  2 Smithe,Ann"}));
}

TEST(GetNextCheckLine, AccentedSurnamesCompareAsTheirPlainLetters) {
    StatsTable t;
    t.Record("Andr\xE9", "Paul");
    t.Record("Andre", "Paul");
    t.Record("Andrews", "Paul");
    EXPECT_TRUE(NamesOutOfSequence(t).empty());
}

TEST(GetNextCheckLine, MaleAfterAnyForenameGivesNoWarning) {
    StatsTable t;
    t.Record("Brown", "mary");
    t.Record("Brown", "male");
    t.Record("Brown", "Female ");
    EXPECT_TRUE(NamesOutOfSequence(t).empty());
}

TEST(GetNextCheckLine, MaleFollowedByALowerForenameWarnsWithBothLines) {
    StatsTable t;
    t.Record("Brown", "male");
    t.Record("Brown", "albert");
    EXPECT_EQ(NamesOutOfSequence(t), (Rows{"  1 Brown,male", "  2 Brown,albert"}));
}

TEST(GetNextCheckLine, DescendingForenamesUnderOneSurnameWarn) {
    StatsTable t;
    t.Record("Brown", "Mary");
    t.Record("Brown", "Albert");
    EXPECT_EQ(NamesOutOfSequence(t), (Rows{"  1 Brown,Mary", "  2 Brown,Albert"}));
}

TEST(GetNextCheckLine, OutOfOrderPairStraddlingAHeaderLineIsNotReported) {
    StatsTable straddling;
    straddling.Record("Young", "Ann");
    straddling.Header("+PAGE,13");
    straddling.Record("Adams", "Bob");
    EXPECT_TRUE(NamesOutOfSequence(straddling).empty());

    StatsTable adjacent;
    adjacent.Record("Young", "Ann");
    adjacent.Record("Adams", "Bob");
    EXPECT_EQ(NamesOutOfSequence(adjacent), (Rows{"  1 Young,Ann", "  2 Adams,Bob"}));
}

TEST(GetNextCheckLine, FallingRunOfThreeRecordsListsLineTwoTwice) {
    StatsTable t;
    t.Record("Cole", "Ann");
    t.Record("Bell", "Ann");
    t.Record("Abel", "Ann");
    EXPECT_EQ(NamesOutOfSequence(t),
              (Rows{"  1 Cole,Ann", "  2 Bell,Ann", "  2 Bell,Ann", "  3 Abel,Ann"}));
}

TEST(GetNextCheckLine, AgesAbove105WarnAndNonNumericAgesAreSkipped) {
    StatsTable t;
    t.Table.HasExtraField = true;
    t.Record("Ash", "Ann", "105");
    t.Record("Ash", "Bob", "105.5");
    t.Record("Ash", "Cy", "106 ");
    t.Record("Ash", "Di", "1y");
    t.Record("Ash", "Ed", "");
    CheckIterator it;
    EXPECT_EQ(Drain(it, CheckSuspectAge, t.Inputs()).Lines,
              (Rows{"  2 Ash,Bob,105.5", "  3 Ash,Cy,106 "}));
}

TEST(GetNextCheckLine, SuspectAgesNeedTheThirdField) {
    StatsTable t;
    t.Record("Ash", "Ann", "120");
    t.Table.HasExtraField = false;
    CheckIterator it;
    EXPECT_TRUE(Drain(it, CheckSuspectAge, t.Inputs()).Lines.empty());
}

TEST(GetNextCheckLine, MissingSurnamesListBlankSurnames) {
    StatsTable t;
    t.Record("Ash", "Ann");
    t.Record("", "Bob");
    CheckIterator it;
    EXPECT_EQ(Drain(it, CheckMissingSurnames, t.Inputs()).Lines, Rows{"  2 ,Bob"});
}

TEST(GetNextCheckLine, LineIndex1000ShowsAs000AndIndex7AsTwoSpacesAnd7) {
    StatsTable t;
    for (int i = 1; i < 1000; ++i)
        t.Header("#");
    t.Record("Last", "Line");
    t.Table.LineFlagged[7] = true;
    t.Table.LineFlagged[1000] = true;
    CheckIterator it;
    EXPECT_EQ(Drain(it, CheckFlagged, t.Inputs()).Lines, (Rows{"  7 #", "000 Last,Line"}));
}

TEST(GetNextCheckLine, GraphicsFileWithWrongQuarterGivesTheQuarterLine) {
    StatsTable t;
    t.HeaderOf("B", 1911, 3, {12});
    CheckIterator it;
    EXPECT_EQ(Drain(it, CheckFileNames, t.Inputs("1911B2012.jpg", "1911B3012.QRL")).Lines,
              Rows{std::string("Quarter in graphics") + FileNameTail});
}

TEST(GetNextCheckLine, PageBetweenTheFirstAndLastHeaderPagesPasses) {
    StatsTable t;
    t.HeaderOf("B", 1911, 3, {12, 14});
    CheckIterator it;
    EXPECT_TRUE(Drain(it, CheckFileNames, t.Inputs("1911B3013.jpg")).Lines.empty());
    EXPECT_EQ(Drain(it, CheckFileNames, t.Inputs("1911B3015.jpg")).Lines,
              Rows{std::string("Page in graphics") + FileNameTail});
}

TEST(GetNextCheckLine, FileNameMismatchesComeInOrderForEachFile) {
    StatsTable t;
    t.HeaderOf("B", 1911, 3, {12});
    CheckIterator it;
    EXPECT_EQ(Drain(it, CheckFileNames, t.Inputs("1912B3012.jpg", "1912M2099.QRL")).Lines,
              (Rows{std::string("Year in graphics") + FileNameTail,
                    std::string("Year, Quarter, BMorD, Page in transcription") + FileNameTail}));
}

TEST(GetNextCheckLine, ScanType42GraphicsPagesAreOneBelowTheHeaderPages) {
    StatsTable t;
    t.HeaderOf("D", 1950, 1, {12});
    CheckIterator it;
    EXPECT_TRUE(Drain(it, CheckFileNames, t.Inputs("1950D1011.jpg", "", 42)).Lines.empty());
    EXPECT_EQ(Drain(it, CheckFileNames, t.Inputs("1950D1011.jpg", "", 41)).Lines,
              Rows{std::string("Page in graphics") + FileNameTail});
    // The transcription's name is never adjusted.
    EXPECT_EQ(Drain(it, CheckFileNames, t.Inputs("", "1950D1011.QRL", 42)).Lines,
              Rows{std::string("Page in transcription") + FileNameTail});
}

TEST(GetNextCheckLine, UnknownHeaderValuesAndUnreadableNamesGiveNoMismatch) {
    StatsTable unknownHeader;
    CheckIterator it;
    EXPECT_TRUE(Drain(it, CheckFileNames, unknownHeader.Inputs("1912M2099.jpg", "1850D4001.QRL"))
                    .Lines.empty());
    StatsTable t;
    t.HeaderOf("B", 1911, 3, {12});
    EXPECT_TRUE(Drain(it, CheckFileNames, t.Inputs("scan.jpg", "mine.QRL")).Lines.empty());
}

TEST(GetNextCheckLine, AbandonedIterationContinuesWhereItStood) {
    StatsTable t;
    for (int i = 0; i < 6; ++i)
        t.Record("Ash", "Ann");
    t.Table.LineFlagged[2] = true;
    t.Table.LineFlagged[4] = true;
    t.Table.LineFlagged[6] = true;
    CheckIterator it;
    int16_t category = CheckFlagged;
    std::string title;
    std::string line;
    ASSERT_TRUE(GetNextCheckLine(it, category, title, line, t.Inputs()));
    EXPECT_EQ(line, "  2 Ash,Ann");
    EXPECT_EQ(title, "Flagged records");
    // Asked again for the same category, it continues instead of starting over.
    ASSERT_TRUE(GetNextCheckLine(it, category, title, line, t.Inputs()));
    EXPECT_EQ(line, "  4 Ash,Ann");
    EXPECT_EQ(title, "");
    EXPECT_EQ(it.CheckIndex, 4);
    // Another category starts afresh; coming back to this one starts over too.
    EXPECT_TRUE(Drain(it, CheckQueries, t.Inputs()).Lines.empty());
    EXPECT_EQ(Drain(it, CheckFlagged, t.Inputs()).Lines,
              (Rows{"  2 Ash,Ann", "  4 Ash,Ann", "  6 Ash,Ann"}));
}

TEST(GetNextCheckLine, AbandonedPairHandsOutItsSecondLineWhenAskedAgain) {
    StatsTable t;
    t.Record("Cole", "Ann");
    t.Record("Bell", "Ann");
    CheckIterator it;
    int16_t category = CheckNamesOutOfSequence;
    std::string title;
    std::string line;
    ASSERT_TRUE(GetNextCheckLine(it, category, title, line, t.Inputs()));
    EXPECT_EQ(line, "  1 Cole,Ann");
    EXPECT_TRUE(it.CheckPairPending);
    EXPECT_EQ(it.CheckIndex, 2);
    ASSERT_TRUE(GetNextCheckLine(it, category, title, line, t.Inputs()));
    EXPECT_EQ(line, "  2 Bell,Ann");
    EXPECT_FALSE(it.CheckPairPending);
    EXPECT_EQ(it.CheckIndex, 2);
    EXPECT_FALSE(GetNextCheckLine(it, category, title, line, t.Inputs()));
    EXPECT_EQ(it.CheckCategory, -1);
}

} // namespace tv
