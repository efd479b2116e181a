// The check command's --print-to: the report on standard output also goes to a PDF file, read
// back here with pdftotext and compared line by line with standard output.
#include "support/Process.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <sstream>

namespace tv::test {

namespace {

// The lines without page breaks, trailing spaces, the empty lines at both ends and the left
// margin they all share.
std::vector<std::string> Trimmed(std::string text) {
    std::erase(text, '\f');
    std::vector<std::string> lines;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line, '\n')) {
        line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(line);
    }
    while (!lines.empty() && lines.back().empty())
        lines.pop_back();
    while (!lines.empty() && lines.front().empty())
        lines.erase(lines.begin());
    std::size_t margin = std::string::npos;
    for (const std::string& l : lines)
        if (!l.empty()) margin = std::min(margin, l.find_first_not_of(' '));
    for (std::string& l : lines)
        if (!l.empty()) l = l.substr(margin);
    return lines;
}

// The PDF's text as pdftotext lays it out; Courier New 10 is six points wide, so the columns
// come back exactly, spaces included.
std::string PdfText(const std::string& pdf) {
    const std::string command = "pdftotext -layout -fixed 6 '" + pdf + "' -";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    EXPECT_NE(pipe, nullptr);
    std::string text;
    char buffer[4096];
    std::size_t read = 0;
    while (pipe && (read = std::fread(buffer, 1, sizeof buffer, pipe.get())) > 0)
        text.append(buffer, read);
    return text;
}

} // namespace

TEST(CheckPrintTo, PdfHoldsTheSameReportAsStandardOutput) {
    TempDir dir;
    const std::string pdf = (dir.Path() / "report.pdf").string();
    for (bool allRecords : {false, true}) {
        std::vector<std::string> args = {"--check", "--print-to", pdf};
        if (allRecords) args.push_back("--all-records");
        args.push_back(DataFile("check/findings.QRL"));
        ProcessResult r = RunTallyview(args);
        EXPECT_EQ(r.Status, 1);
        EXPECT_EQ(r.Err, "");
        const std::vector<std::string> report = Trimmed(r.Out);
        ASSERT_GT(report.size(), 20U);
        EXPECT_EQ(report.front(), "Tallyview Report for Deaths 1872 Qtr 1 Page 42");
        EXPECT_EQ(Trimmed(PdfText(pdf)), report) << allRecords;
    }
}

TEST(CheckPrintTo, ReportsOfSeveralFilesFollowEachOtherInThePdf) {
    TempDir dir;
    const std::string pdf = (dir.Path() / "both.pdf").string();
    ProcessResult r = RunTallyview({"--check", "--print-to", pdf, DataFile("check/clean.QRL"),
                                    DataFile("check/findings.QRL")});
    EXPECT_EQ(r.Status, 1);
    // Two reports fill more than a page, and a page's last empty line is not in the PDF's text:
    // the lines are compared without the empty ones.
    const auto printed = [](std::vector<std::string> text) {
        std::erase(text, std::string());
        return text;
    };
    const std::vector<std::string> lines = printed(Trimmed(PdfText(pdf)));
    EXPECT_EQ(lines, printed(Trimmed(r.Out)));
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](const std::string& l) { return l.starts_with("Tallyview Report"); }),
              2);
}

TEST(CheckPrintTo, PdfThatCannotBeWrittenIsToldAndGivesStatusThree) {
    TempDir dir;
    const std::string file = dir.Write("plain", "x");
    ProcessResult r =
        RunTallyview({"--check", "--print-to", file + "/r.pdf", DataFile("check/clean.QRL")});
    EXPECT_EQ(r.Status, 3);
    EXPECT_EQ(r.Err, "tallyview: cannot write the report to " + file + "/r.pdf: Not a directory\n");
    EXPECT_NE(r.Out.find("Tallyview Report for Births 1911 Qtr 3 Page 123"), std::string::npos);
}

TEST(CheckPrintTo, NoReportNoFile) {
    TempDir dir;
    const std::string pdf = (dir.Path() / "none.pdf").string();
    ProcessResult r = RunTallyview({"--check", "--print-to", pdf, "/no/such/file.QRL"});
    EXPECT_EQ(r.Status, 3);
    EXPECT_FALSE(std::filesystem::exists(pdf));
}

TEST(CheckPrintTo, WithoutAFileNameItGivesTheUsage) {
    ProcessResult r = RunTallyview({"--check", "--print-to"});
    EXPECT_EQ(r.Status, 64);
    EXPECT_EQ(r.Err, "tallyview: option '--print-to' requires an argument\n"
                     "Usage: tallyview --check [--scan IMAGE] [--all-records] [--answer yes|no] "
                     "[--print-to FILE.pdf] FILE...\n"
                     "Try 'tallyview --help' for more information.\n");
}

} // namespace tv::test
