// The check command as a volunteer runs it from a terminal: standard output, standard error
// and exit status.
#include "support/Process.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

namespace tv::test {

namespace {

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> out;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line))
        out.push_back(line);
    return out;
}

// The report's lines with the "Printed " line's date checked for its form and then dropped.
std::vector<std::string> ReportWithoutDate(const std::string& out) {
    std::vector<std::string> lines = Lines(out);
    EXPECT_FALSE(lines.empty());
    if (lines.empty()) return lines;
    EXPECT_TRUE(std::regex_match(lines.back(), std::regex("Printed \\d\\d/\\d\\d/\\d{4} "
                                                          "\\d\\d:\\d\\d:\\d\\d")))
        << lines.back();
    lines.back() = "Printed";
    return lines;
}

std::vector<std::string> CleanReport(const std::string& path, const std::string& scanLine) {
    std::vector<std::string> r = {"", "Tallyview Report for Births 1911 Qtr 3 Page 123", ""};
    if (!scanLine.empty()) r.push_back(scanLine);
    std::vector<std::string> rest = {
        "    Transcription file: " + path,
        "",
        "3 QRL entries in file, total of 6 lines in file",
        "",
        "Flagged QRL Records",
        "        None",
        "",
        "File Header",
        "      1  +INFO,someone@example.org,password,SEQUENCED,BIRTHS,cp1252",
        "      2  +S,1911,Sep,BX1911C3,12/03/2024",
        "      3  +PAGE,0123",
        "     .. QRL records ..",
        "",
        "Queries",
        "    None",
        "",
        "Warnings",
        "",
        "  Names out of sequence ...",
        "        None",
        "",
        "  Missing surnames ...",
        "        None",
        "",
        "  Suspect age at death ...",
        "        None",
        "",
        "Printed"};
    r.insert(r.end(), rest.begin(), rest.end());
    return r;
}

} // namespace

TEST(CheckCommand, CleanFileWritesTheReportAndExitsZero) {
    std::string path = DataFile("check/clean.QRL");
    ProcessResult r = RunTallyview({"--check", path});
    EXPECT_EQ(r.Status, 0);
    EXPECT_EQ(r.Err, "");
    EXPECT_EQ(ReportWithoutDate(r.Out), CleanReport(path, ""));
}

TEST(CheckCommand, ScanNameAddsTheGraphicsFileLine) {
    std::string path = DataFile("check/clean.QRL");
    ProcessResult r = RunTallyview({"--check", "--scan", "/no/such/dir/1911B30123.jpg", path});
    EXPECT_EQ(r.Status, 0);
    EXPECT_EQ(r.Err, "");
    EXPECT_EQ(ReportWithoutDate(r.Out),
              CleanReport(path, "    Graphics file: /no/such/dir/1911B30123.jpg"));
}

TEST(CheckCommand, FileNameMismatchIsShownAndListedAsAWarning) {
    std::string path = DataFile("check/clean.QRL");
    ProcessResult r = RunTallyview({"--check", "--scan", "1911B20123.jpg", path});
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "Quarter in graphics file name appears to be inconsistent with details in "
                     "file header\n"
                     "File name     Year:1911  Qtr:2  B,M or D:B\n"
                     "File header  Year:1911  Qtr:3  B,M or D:B\n");
    std::vector<std::string> lines = ReportWithoutDate(r.Out);
    auto warnings = std::find(lines.begin(), lines.end(), "Warnings");
    ASSERT_NE(warnings, lines.end());
    ASSERT_GT(lines.end() - warnings, 4);
    EXPECT_EQ(warnings[1], "");
    EXPECT_EQ(warnings[2],
              "  Quarter in graphics file name inconsistent with details in file header");
    EXPECT_EQ(warnings[3], "");
    EXPECT_EQ(warnings[4], "  Names out of sequence ...");
}

TEST(CheckCommand, FindingsAreListedAndExitOne) {
    std::string path = DataFile("check/findings.QRL");
    ProcessResult r = RunTallyview({"--check", path});
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "");
    std::vector<std::string> expected = {
        "",
        "Tallyview Report for Deaths 1872 Qtr 1 Page 42",
        "",
        "    Transcription file: " + path,
        "",
        "5 QRL entries in file, total of 9 lines in file",
        "",
        "Flagged QRL Records",
        "        None",
        "",
        "File Header",
        "      1  +INFO,someone@example.org,password,SEQUENCED,DEATHS,cp1252",
        "      2  +S,1872,Mar,DX1872C1,01/02/2025",
        "      3  +PAGE,0042",
        "     .. QRL records ..",
        "      6  #COMMENT(5) reads ABBOT or ABBOTT",
        "     .. QRL records ..",
        "",
        "Queries",
        "      7 ACKROYD,Jo?n,2,Halifax,9a,300",
        "",
        "Warnings",
        "",
        "  Names out of sequence ...",
        "      4 ABBOTT,William,34,Leeds,9b,101",
        "      5 ABBOTT,Sarah,107,Leeds,9b,99",
        "      8 ,Thomas,60,Bradford,9b,12",
        "      9 ADAMS,Ann,105,York,9d,7",
        "",
        "  Missing surnames ...",
        "      8 ,Thomas,60,Bradford,9b,12",
        "",
        "  Suspect age at death ...",
        "      5 ABBOTT,Sarah,107,Leeds,9b,99",
        "",
        "Printed"};
    EXPECT_EQ(ReportWithoutDate(r.Out), expected);
}

TEST(CheckCommand, NoHeaderLinesWarnsAndReportsNoHeaderLinesFound) {
    std::string path = DataFile("check/noheaders.QRL");
    ProcessResult r = RunTallyview({"--check", path});
    EXPECT_EQ(r.Status, 0);
    EXPECT_EQ(r.Err, "Suspect file " + path +
                         "\nCould not find any +INFO/S/F/M/B/U/PAGE header lines in the file"
                         "\n\nClick OK to carry on or CANCEL to quit\n");
    std::vector<std::string> expected = {"",
                                         "Tallyview Report",
                                         "",
                                         "    Transcription file: " + path,
                                         "",
                                         "2 QRL entries in file, total of 2 lines in file",
                                         "",
                                         "Flagged QRL Records",
                                         "        None",
                                         "",
                                         "File Header",
                                         "    No header lines found",
                                         "",
                                         "Queries",
                                         "    None",
                                         "",
                                         "Warnings",
                                         "",
                                         "  Names out of sequence ...",
                                         "        None",
                                         "",
                                         "  Missing surnames ...",
                                         "        None",
                                         "",
                                         "Printed"};
    EXPECT_EQ(ReportWithoutDate(r.Out), expected);
}

TEST(CheckCommand, AnswerNoRefusesASuspectFileWithStatusTwo) {
    std::string path = DataFile("check/noheaders.QRL");
    ProcessResult r = RunTallyview({"--check", "--answer", "no", path});
    EXPECT_EQ(r.Status, 2);
    EXPECT_EQ(r.Out, "");
    EXPECT_NE(r.Err.find("Suspect file "), std::string::npos);
}

TEST(CheckCommand, AllRecordsReplacesTheFileHeaderWithTheFullListingInUtf8) {
    std::string path = DataFile("check/accents.QRL");
    ProcessResult r = RunTallyview({"--check", "--all-records", path});
    EXPECT_EQ(r.Status, 0);
    std::vector<std::string> lines = ReportWithoutDate(r.Out);
    EXPECT_EQ(std::find(lines.begin(), lines.end(), "File Header"), lines.end());
    auto listing = std::find(lines.begin(), lines.end(), "QRL Records");
    ASSERT_NE(listing, lines.end());
    ASSERT_GT(lines.end() - listing, 6);
    EXPECT_EQ(listing[1], "      1  +INFO,someone@example.org,password,SEQUENCED,BIRTHS,cp1252");
    EXPECT_EQ(listing[2], "      2  +S,1870,Jun,BX1870C2,01/02/2025");
    EXPECT_EQ(listing[3], "      3  ANDR\xC3\x89,Ren\xC3\xA9"
                          "e,Lyon,9a,12");
    // An undefined Windows-1252 byte is written as the Unicode character of the same number.
    EXPECT_EQ(listing[4], "      4  ANDR\xC3\x89,Zo\xC2\x81,Lyon,9a,13");
    EXPECT_EQ(listing[5], "");
    EXPECT_EQ(lines[1], "Tallyview Report for Births 1870 Qtr 2");
}

TEST(CheckCommand, SeveralFilesFollowEachOtherAndARefusedOnePrintsNothing) {
    TempDir dir;
    std::string empty = dir.Write("empty.QRL", "");
    std::string clean = DataFile("check/clean.QRL");
    ProcessResult r = RunTallyview({"--check", "--answer", "no", clean, empty, clean});
    EXPECT_EQ(r.Status, 2);
    std::vector<std::string> lines = Lines(r.Out);
    std::size_t reports =
        std::count(lines.begin(), lines.end(), "Tallyview Report for Births 1911 Qtr 3 Page 123");
    EXPECT_EQ(reports, 2U);
    EXPECT_EQ(r.Err, "Suspect file " + empty +
                         "\nCould not find any transcribed birth, marriage or death entries in "
                         "the file\n\nClick OK to carry on or CANCEL to quit\n");
}

TEST(CheckCommand, ZeroByteFileAnsweredYesShowsBothWarningsAndReports) {
    TempDir dir;
    std::string empty = dir.Write("empty.QRL", "");
    ProcessResult r = RunTallyview({"--check", empty});
    EXPECT_EQ(r.Status, 0);
    EXPECT_NE(r.Err.find("Could not find any transcribed birth"), std::string::npos);
    EXPECT_NE(r.Err.find("Could not find any +INFO/S/F/M/B/U/PAGE"), std::string::npos);
    EXPECT_NE(r.Out.find("0 QRL entries in file, total of 0 lines in file"), std::string::npos);
}

TEST(CheckCommand, MissingFileGivesStatusThreeNamingFileAndReason) {
    ProcessResult r = RunTallyview({"--check", "/no/such/file.QRL"});
    EXPECT_EQ(r.Status, 3);
    EXPECT_EQ(r.Out, "");
    EXPECT_EQ(r.Err, "tallyview: cannot read /no/such/file.QRL: No such file or directory\n");
}

TEST(CheckCommand, FolderGivenAsFileGivesStatusThree) {
    TempDir dir;
    ProcessResult r = RunTallyview({"--check", dir.Path().string()});
    EXPECT_EQ(r.Status, 3);
    EXPECT_NE(r.Err.find(dir.Path().string()), std::string::npos);
}

TEST(CheckCommand, FileOf1001LinesIsRefusedWithStatusTwo) {
    TempDir dir;
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += "SMITH,John,Bolton,8c,1\r\n";
    text += "#the last line is a comment\r\n";
    std::string path = dir.Write("long.QRL", text);
    ProcessResult r = RunTallyview({"--check", path});
    EXPECT_EQ(r.Status, 2);
    EXPECT_EQ(r.Out, "");
    EXPECT_EQ(r.Err, "You've exceeded the limit of 1000 records in the file " + path + "\n");
}

TEST(CheckCommand, SingleTenMegabyteLineIsAVeryLongLine) {
    TempDir dir;
    std::string path = dir.Write("huge.QRL", std::string(10 * 1024 * 1024, 'A'));
    ProcessResult r = RunTallyview({"--check", path});
    EXPECT_EQ(r.Status, 0);
    EXPECT_NE(r.Err.find("One or more very long lines in the file"), std::string::npos);
    EXPECT_NE(r.Out.find("      1  " + std::string(100, 'A') + " ... ..."), std::string::npos);
}

TEST(CheckCommand, QuestionsTakeTheAnswerGiven) {
    TempDir dir;
    // A births file of 1911 Q3 whose first record has no sixth field asks about the third column.
    std::string path =
        dir.Write("q.QRL", "+INFO,a,b,c,BIRTHS\r\n+S,1911,Sep\r\nADAMS,John,SMITH,Bolton,8c\r\n");
    std::string question = "Is this a Death index or ...\n... a Birth index with mother's surname "
                           "or ...\n... a Marriage index with wife's surname\n";
    ProcessResult yes = RunTallyview({"--check", path});
    EXPECT_EQ(yes.Err, question);
    EXPECT_NE(yes.Out.find("  Suspect age at death ..."), std::string::npos);
    ProcessResult no = RunTallyview({"--check", "--answer", "no", path});
    EXPECT_EQ(no.Err, question);
    EXPECT_EQ(no.Out.find("  Suspect age at death ..."), std::string::npos);
}

TEST(CheckCommand, WrongCommandLinesGiveTheUsageAndStatus64) {
    for (const std::vector<std::string>& args :
         std::vector<std::vector<std::string>>{{"--check"},
                                               {"--check", "--answer", "maybe", "a.QRL"},
                                               {"--check", "--scan"},
                                               {"--check", "--bogus", "a.QRL"},
                                               {"--nonsense"}}) {
        ProcessResult r = RunTallyview(args);
        EXPECT_EQ(r.Status, 64);
        EXPECT_EQ(r.Out, "");
        EXPECT_NE(r.Err.find("Usage: tallyview --check"), std::string::npos);
    }
}

} // namespace tv::test
