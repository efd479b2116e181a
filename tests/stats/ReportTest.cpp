#include "stats/Statistics.h"

#include "StatsTable.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tv {

using test::StatsTable;
using Lines = std::vector<ReportLine>;

namespace {

const DateTime Now{2024, 3, 5, 14, 7, 9};

ReportLine B(const std::string& text) {
    return {text, true};
}
ReportLine R(const std::string& text) {
    return {text, false};
}

void ExpectLines(const Lines& actual, const Lines& expected) {
    for (std::size_t i = 0; i < std::min(actual.size(), expected.size()); ++i) {
        EXPECT_EQ(actual[i].Text, expected[i].Text) << "line " << i;
        EXPECT_EQ(actual[i].Bold, expected[i].Bold) << "line " << i << ": " << actual[i].Text;
    }
    EXPECT_EQ(actual.size(), expected.size());
}

// A births page: a header, a query, an out-of-order pair whose second line is flagged, a
// comment, a missing surname; the scan's name gives the wrong quarter.
StatsTable SmallPage() {
    StatsTable t;
    t.HeaderOf("B", 1911, 3, {12});
    t.Header("+S,B,1911,SEP");
    t.Record("ADAMS", "John");
    int query = t.Record("BROWN", "Mary?");
    int flagged = t.Record("ABBOT", "Ann");
    t.Header("# end of page");
    t.Record("", "Peter");
    t.Table.LineQuery[query] = true;
    t.Table.LineFlagged[flagged] = true;
    return t;
}

Lines Head() {
    return {R(""),
            B("Tallyview Report for Births 1911 Qtr 3 Page 12"),
            R(""),
            R("    Graphics file: 1911B2012.jpg"),
            R("    Transcription file: 1911B3012.QRL"),
            R(""),
            R("4 QRL entries in file, total of 6 lines in file"),
            R(""),
            B("Flagged QRL Records"),
            R("      4 ABBOT,Ann"),
            R("")};
}

Lines QueriesAndWarnings() {
    return {B("Queries"),
            R("      3 BROWN,Mary?"),
            R(""),
            B("Warnings"),
            R(""),
            R("  Quarter in graphics file name inconsistent with details in file header"),
            R(""),
            R("  Names out of sequence ..."),
            R("      3 BROWN,Mary?"),
            R("      4 ABBOT,Ann"),
            R(""),
            R("  Missing surnames ..."),
            R("      6 ,Peter"),
            R("")};
}

Lines Join(std::initializer_list<Lines> parts) {
    Lines all;
    for (const Lines& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

Lines SmallPageReport(bool allRecords) {
    StatsTable t = SmallPage();
    CheckIterator it;
    return ReportLines(allRecords, "Births 1911 Qtr 3 Page 12", it,
                       t.Inputs("1911B2012.jpg", "1911B3012.QRL"), Now);
}

// The lines that follow the first line reading text.
Lines After(const Lines& lines, const std::string& text, std::size_t count) {
    auto at = std::find_if(lines.begin(), lines.end(),
                           [&](const ReportLine& line) { return line.Text == text; });
    EXPECT_NE(at, lines.end()) << text;
    if (at == lines.end()) return {};
    ++at;
    return Lines(at, at + static_cast<long>(std::min<std::size_t>(count, lines.end() - at)));
}

} // namespace

TEST(ReportLines, AnswerNoPrintsTheFileHeaderSectionAndNoListing) {
    Lines fileHeader = {B("File Header"),
                        R("      1  +S,B,1911,SEP"),
                        R("     .. QRL records .."),
                        R("      5  # end of page"),
                        R("     .. QRL records .."),
                        R("")};
    ExpectLines(
        SmallPageReport(false),
        Join({Head(), fileHeader, QueriesAndWarnings(), {R("Printed 05/03/2024 14:07:09")}}));
}

TEST(ReportLines, AnswerYesPrintsEveryLineInsteadOfTheFileHeader) {
    Lines listing = {B("QRL Records"),         R("      1  +S,B,1911,SEP"),
                     R("      2  ADAMS,John"), R("      3  BROWN,Mary?"),
                     R("      4  ABBOT,Ann"),  R("      5  # end of page"),
                     R("      6  ,Peter"),     R("")};
    ExpectLines(SmallPageReport(true),
                Join({Head(), QueriesAndWarnings(), listing, {R("Printed 05/03/2024 14:07:09")}}));
}

TEST(ReportLines, TranscriptionWithoutHeaderLinesPrintsNoHeaderLinesFound) {
    StatsTable t;
    t.Record("Ash", "Ann");
    CheckIterator it;
    Lines report = ReportLines(false, "", it, t.Inputs("", "mine.QRL"), Now);
    ExpectLines(After(report, "File Header", 2), {R("    No header lines found"), R("")});
}

TEST(ReportLines, EmptySectionsPrintNoneAndEmptyWarningCategoriesKeepTheirTitles) {
    StatsTable t;
    t.Table.HasExtraField = true;
    t.Record("Ash", "Ann", "80");
    CheckIterator it;
    Lines report = ReportLines(false, "", it, t.Inputs("", "mine.QRL"), Now);
    ExpectLines(After(report, "Flagged QRL Records", 2), {R("        None"), R("")});
    ExpectLines(After(report, "Queries", 2), {R("    None"), R("")});
    ExpectLines(After(report, "Warnings", 10),
                {R(""), R("  Names out of sequence ..."), R("        None"), R(""),
                 R("  Missing surnames ..."), R("        None"), R(""),
                 R("  Suspect age at death ..."), R("        None"), R("")});
}

TEST(ReportLines, WithoutDescriptionOrScanTheHeadIsShorter) {
    StatsTable t;
    CheckIterator it;
    Lines report = ReportLines(true, "", it, t.Inputs("", "mine.QRL"), Now);
    ExpectLines(Lines(report.begin(), report.begin() + 7),
                {R(""), B("Tallyview Report"), R(""), R("    Transcription file: mine.QRL"), R(""),
                 R("0 QRL entries in file, total of 0 lines in file"), R("")});
}

TEST(ReportLines, SuspectAgesArePrintedOnlyWithTheThirdField) {
    StatsTable t;
    t.Record("Ash", "Ann", "110");
    CheckIterator it;
    t.Table.HasExtraField = true;
    Lines withAges = ReportLines(false, "", it, t.Inputs("", "mine.QRL"), Now);
    ExpectLines(After(withAges, "  Suspect age at death ...", 2),
                {R("      1 Ash,Ann,110"), R("")});
    t.Table.HasExtraField = false;
    Lines without = ReportLines(false, "", it, t.Inputs("", "mine.QRL"), Now);
    EXPECT_TRUE(std::none_of(without.begin(), without.end(), [](const ReportLine& line) {
        return line.Text == "  Suspect age at death ...";
    }));
}

TEST(ReportHasFindings, CleanTranscriptionHasNone) {
    StatsTable t;
    t.HeaderOf("B", 1911, 3, {12});
    t.Header("+S,B,1911,SEP");
    t.Record("Ash", "Ann", "120"); // an age is not a finding without the third field
    t.Record("Bell", "Bob");
    CheckIterator it;
    EXPECT_FALSE(ReportHasFindings(it, t.Inputs("1911B3012.jpg", "1911B3012.QRL")));
    EXPECT_EQ(it.CheckCategory, -1);
}

TEST(ReportHasFindings, EachKindOfFindingCounts) {
    CheckIterator it;
    {
        StatsTable t;
        t.Table.LineQuery[t.Record("Ash", "A?")] = true;
        EXPECT_TRUE(ReportHasFindings(it, t.Inputs()));
    }
    {
        StatsTable t;
        t.Table.LineFlagged[t.Header("#")] = true;
        EXPECT_TRUE(ReportHasFindings(it, t.Inputs()));
    }
    {
        StatsTable t;
        t.HeaderOf("B", 1911, 3, {12});
        EXPECT_TRUE(ReportHasFindings(it, t.Inputs("", "1912B3012.QRL")));
    }
    {
        StatsTable t;
        t.Record("Bell", "Ann");
        t.Record("Ash", "Ann");
        EXPECT_TRUE(ReportHasFindings(it, t.Inputs()));
    }
    {
        StatsTable t;
        t.Record("", "Ann");
        EXPECT_TRUE(ReportHasFindings(it, t.Inputs()));
    }
    {
        StatsTable t;
        t.Table.HasExtraField = true;
        t.Record("Ash", "Ann", "106");
        EXPECT_TRUE(ReportHasFindings(it, t.Inputs()));
    }
}

} // namespace tv
