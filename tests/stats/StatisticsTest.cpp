#include "stats/Statistics.h"

#include "StatsTable.h"

#include <gtest/gtest.h>

namespace tv {

using test::StatsTable;

TEST(StatsSummary, GivesDescriptionFilesAndCountsWithCrLf) {
    StatsTable t;
    t.Header("+S,B,1911,SEP");
    t.Record("Ash", "Ann");
    t.Record("Bell", "Bob");
    EXPECT_EQ(StatsSummary("Births 1911 Qtr 3 Page 12", t.Inputs("1911B3012.jpg", "1911B3012.QRL")),
              "Births 1911 Qtr 3 Page 12\r\n"
              "Graphics file: 1911B3012.jpg\r\n"
              "Transcription file: 1911B3012.QRL\r\n"
              "\r\n"
              "2 QRL entries in file, total of 3 lines in file");
}

TEST(StatsSummary, LeavesOutTheGraphicsLineWithoutAScan) {
    StatsTable t;
    EXPECT_EQ(
        StatsSummary("", t.Inputs("", "mine.QRL")),
        "\r\nTranscription file: mine.QRL\r\n\r\n0 QRL entries in file, total of 0 lines in file");
}

TEST(FileHeaderList, TranscriptionWithoutHeaderLinesReadsNoHeaderLinesFound) {
    StatsTable t;
    t.Record("Ash", "Ann");
    t.Record("Bell", "Bob");
    EXPECT_EQ(FileHeaderList(t.Table), "No header lines found");
}

TEST(FileHeaderList, RecordsBetweenTwoHeaderLinesGiveOneRowAndRecordsBeforeTheFirstNone) {
    StatsTable t;
    t.Record("Ash", "Ann");
    t.Header("+S,B,1911,SEP");
    t.Record("Bell", "Bob");
    t.Record("Cole", "Cy");
    t.Header("+PAGE,12");
    EXPECT_EQ(FileHeaderList(t.Table), "  2  +S,B,1911,SEP\r\n"
                                       " .. QRL records ..\r\n"
                                       "  5  +PAGE,12");
}

TEST(FileHeaderList, ShowsCommentsAndBlankLinesAsHeaderLines) {
    StatsTable t;
    t.Header("+S,B,1911,SEP");
    t.Header("");
    t.Header("#checked twice");
    t.Record("Ash", "Ann");
    EXPECT_EQ(FileHeaderList(t.Table), "  1  +S,B,1911,SEP\r\n"
                                       "  2  \r\n"
                                       "  3  #checked twice\r\n"
                                       " .. QRL records ..");
}

TEST(QueriesList, EmptyListShowsNone) {
    StatsTable t;
    t.Record("Ash", "Ann");
    CheckIterator it;
    EXPECT_EQ(QueriesList(it, t.Inputs()), "None");
}

TEST(QueriesList, ListsEachQueryOnItsOwnRow) {
    StatsTable t;
    int first = t.Record("Ash", "A*n");
    t.Record("Bell", "Bob");
    int second = t.Record("Cole", "C[y]");
    t.Table.LineQuery[first] = true;
    t.Table.LineQuery[second] = true;
    CheckIterator it;
    EXPECT_EQ(QueriesList(it, t.Inputs()), "  1 Ash,A*n\r\n  3 Cole,C[y]");
}

TEST(FlaggedList, ListsFlaggedLinesOrNone) {
    StatsTable t;
    t.Header("+S,B,1911,SEP");
    t.Record("Ash", "Ann");
    CheckIterator it;
    EXPECT_EQ(FlaggedList(it, t.Inputs()), "None");
    t.Table.LineFlagged[1] = true;
    t.Table.LineFlagged[2] = true;
    EXPECT_EQ(FlaggedList(it, t.Inputs()), "  1 +S,B,1911,SEP\r\n  2 Ash,Ann");
}

TEST(WarningsList, EmptyListShowsNone) {
    StatsTable t;
    t.Table.HasExtraField = true;
    t.Record("Ash", "Ann", "105");
    CheckIterator it;
    EXPECT_EQ(WarningsList(it, t.Inputs()), "None");
}

TEST(WarningsList, OnlyAMissingSurnameStartsWithAnEmptyRow) {
    StatsTable t;
    t.Record("Ash", "Ann");
    t.Record("", "Bob");
    CheckIterator it;
    EXPECT_EQ(WarningsList(it, t.Inputs()), "\r\nMissing surnames ...\r\n  2 ,Bob");
}

TEST(WarningsList, GivesFileNamesThenNamesMissingSurnamesAndAges) {
    StatsTable t;
    t.HeaderOf("D", 1950, 1, {12});
    t.Table.HasExtraField = true;
    t.Record("Cole", "Ann", "70");
    t.Record("Bell", "Bob", "107");
    t.Record("", "Cy", "5");
    CheckIterator it;
    EXPECT_EQ(WarningsList(it, t.Inputs("1950D2012.jpg", "1950D1012.QRL")),
              "Quarter in graphics file name inconsistent with details in file header\r\n"
              "\r\n"
              "Names out of sequence ...\r\n"
              "  1 Cole,Ann,70\r\n"
              "  2 Bell,Bob,107\r\n"
              "\r\n"
              "Missing surnames ...\r\n"
              "  3 ,Cy,5\r\n"
              "\r\n"
              "Suspect age at death ...\r\n"
              "  2 Bell,Bob,107");
}

TEST(WarningsList, NamesOutOfSequenceTitleHasNoEmptyRowBeforeIt) {
    StatsTable t;
    t.Record("Cole", "Ann");
    t.Record("Bell", "Bob");
    CheckIterator it;
    EXPECT_EQ(WarningsList(it, t.Inputs()),
              "Names out of sequence ...\r\n  1 Cole,Ann\r\n  2 Bell,Bob");
}

TEST(WarningsList, FileNameLinesAloneAreFollowedByOneEmptyRow) {
    StatsTable t;
    t.HeaderOf("B", 1911, 3, {12});
    CheckIterator it;
    EXPECT_EQ(WarningsList(it, t.Inputs("1911B3012.jpg", "1911M3012.QRL")),
              "BMorD in transcription file name inconsistent with details in file header\r\n");
}

TEST(WarningsList, LeavesOutAgesWithoutTheThirdField) {
    StatsTable t;
    t.Table.HasExtraField = false;
    t.Record("Ash", "Ann", "120");
    CheckIterator it;
    EXPECT_EQ(WarningsList(it, t.Inputs()), "None");
}

} // namespace tv
