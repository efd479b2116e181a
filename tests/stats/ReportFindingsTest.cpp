#include "stats/Statistics.h"

#include "StatsTable.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace tv {

using test::StatsTable;

namespace {

// A table with something in every category: a query, a flagged line, two falling pairs of
// surnames (a blank one sorts as "blank"), a blank surname and an age above 105.
StatsTable EveryKindOfFinding(bool extraField) {
    StatsTable t;
    t.HeaderOf("B", 1911, 3, {12});
    t.Header("+S,B,1911,SEP");
    t.Table.LineQuery[t.Record("Ash", "A?")] = true;
    t.Record("Cole", "Ann", "106");
    t.Record("Bell", "Bob");
    t.Table.LineFlagged[t.Record("Dale", "Dan")] = true;
    t.Record("", "Eve");
    t.Table.HasExtraField = extraField;
    return t;
}

// The iterator as it stands after every list ReportHasFindings looks at has been run to its end.
CheckIterator AfterFullRuns(const CheckInputs& in) {
    CheckIterator it;
    for (int16_t category : {CheckQueries, CheckFlagged, CheckFileNames, CheckNamesOutOfSequence,
                             CheckMissingSurnames, CheckSuspectAge}) {
        if (category == CheckSuspectAge && !in.Table.HasExtraField) continue;
        test::Drain(it, category, in);
    }
    return it;
}

void ExpectSameIterator(const CheckIterator& actual, const CheckIterator& expected) {
    EXPECT_EQ(actual.CheckCategory, expected.CheckCategory);
    EXPECT_EQ(actual.CheckIndex, expected.CheckIndex);
    EXPECT_EQ(actual.CheckPairPending, expected.CheckPairPending);
}

} // namespace

TEST(ReportHasFindings, LeavesTheIteratorAsFullRunsOfEveryListDoWithAndWithoutTheThirdField) {
    for (bool thirdField : {true, false}) {
        SCOPED_TRACE(thirdField ? "with the third field" : "without the third field");
        StatsTable t = EveryKindOfFinding(thirdField);
        CheckInputs in = t.Inputs("1912B3012.jpg", "1911B3012.QRL");
        CheckIterator it;
        EXPECT_TRUE(ReportHasFindings(it, in));
        ExpectSameIterator(it, AfterFullRuns(in));
    }
}

TEST(ReportHasFindings, ListsAskedForAfterwardsAreWhole) {
    StatsTable t = EveryKindOfFinding(true);
    CheckInputs in = t.Inputs("1912B3012.jpg", "1911B3012.QRL");
    CheckIterator used;
    ASSERT_TRUE(ReportHasFindings(used, in));
    CheckIterator fresh;
    EXPECT_EQ(QueriesList(used, in), QueriesList(fresh, in));
    EXPECT_EQ(WarningsList(used, in), WarningsList(fresh, in));
    EXPECT_EQ(FlaggedList(used, in), FlaggedList(fresh, in));
    EXPECT_EQ(WarningsList(used, in),
              "Year in graphics file name inconsistent with details in file header\r\n\r\n"
              "Names out of sequence ...\r\n  3 Cole,Ann,106\r\n  4 Bell,Bob\r\n"
              "  5 Dale,Dan\r\n  6 ,Eve\r\n\r\n"
              "Missing surnames ...\r\n  6 ,Eve\r\n\r\n"
              "Suspect age at death ...\r\n  3 Cole,Ann,106");
}

TEST(ReportHasFindings, AFindingOnlyInAnEarlierListCounts) {
    StatsTable t;
    t.Record("Bell", "Ann");
    t.Record("Ash", "Ann");
    t.Record("Cole", "Cy");
    t.Table.HasExtraField = true;
    CheckIterator it;
    EXPECT_TRUE(ReportHasFindings(it, t.Inputs()));
    EXPECT_EQ(it.CheckCategory, -1);
}

} // namespace tv
