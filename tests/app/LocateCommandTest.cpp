#include "support/Process.h"
#include "support/SamplePages.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace tv::test {

namespace {

struct Located {
    int Placed = 0; // records within a quarter pitch of their baseline and a pitch of the edge
    int Records = 0;
    int Lines = 0; // output lines
};

Located Locate(const TruePage& page) {
    const ProcessResult run =
        RunTallyview({"--locate", page.Scan.string(), page.Transcription.string()});
    EXPECT_EQ(run.Status, 0) << run.Err;
    Located result;
    std::istringstream out(run.Out);
    std::string line;
    while (std::getline(out, line)) {
        ++result.Lines;
        std::istringstream fields(line);
        int tableLine = 0;
        std::string x;
        std::string y;
        fields >> tableLine >> x >> y;
        const auto place = page.Places.find(tableLine);
        if (place == page.Places.end() || x == "-") continue;
        if (std::abs(std::stod(y) - place->second.Baseline) <= page.Pitch / 4 &&
            std::abs(std::stod(x) - place->second.X) <= page.Pitch)
            ++result.Placed;
    }
    result.Records = static_cast<int>(page.Places.size());
    return result;
}

// A --locate run that placed no record: status 0 and a dash for every record of the page.
void ExpectNothingPlaced(const ProcessResult& run, const TruePage& page) {
    EXPECT_EQ(run.Status, 0) << run.Err;
    std::istringstream out(run.Out);
    std::string line;
    int lines = 0;
    while (std::getline(out, line)) {
        ++lines;
        EXPECT_EQ(line.substr(line.find('\t')), "\t-") << line;
    }
    EXPECT_EQ(lines, static_cast<int>(page.Places.size()));
}

class LocateEveryKind : public ::testing::TestWithParam<const char*> {};

TEST_P(LocateEveryKind, PlacesAtLeast98PercentOfTheRecordsOnTheirBaseline) {
    const TruePage& page = SamplePage(GetParam());
    const Located located = Locate(page);
    EXPECT_EQ(located.Lines, located.Records);
    EXPECT_GE(located.Placed, std::ceil(0.98 * located.Records))
        << located.Placed << " of " << located.Records;
}

INSTANTIATE_TEST_SUITE_P(LocateCommand, LocateEveryKind,
                         ::testing::Values("births1843", "births1872", "births1872double",
                                           "births1911", "births1965", "births1988", "births1995"));

// A generated page with the generator's options: the page turned further, curved towards the
// binding, keystoned, or drawn at 40 megapixels.
struct ShapedPage {
    const char* Kind;
    const char* Options;
    double Share; // of the records placed within a quarter pitch and a pitch
};

// The page's kind and options in the test's name when it fails.
void PrintTo(const ShapedPage& page, std::ostream* out) {
    *out << page.Kind << ' ' << page.Options;
}

class LocateShapedPage : public ::testing::TestWithParam<ShapedPage> {};

TEST_P(LocateShapedPage, PlacesItsShareOfTheRecordsOnTheirBaseline) {
    const TruePage& page = SamplePage(GetParam().Kind, GetParam().Options);
    const Located located = Locate(page);
    EXPECT_EQ(located.Lines, located.Records);
    EXPECT_GE(located.Placed, std::ceil(GetParam().Share * located.Records))
        << located.Placed << " of " << located.Records;
}

INSTANTIATE_TEST_SUITE_P(
    LocateCommand, LocateShapedPage,
    ::testing::Values(ShapedPage{"births1911", "--rotation 1.0", 0.98},
                      ShapedPage{"births1872double", "--rotation -1.0", 0.98},
                      ShapedPage{"births1965", "--rotation 1.0", 0.98},
                      ShapedPage{"births1843", "--shape curved", 0.95},
                      ShapedPage{"births1843", "--shape keystoned", 0.95},
                      ShapedPage{"births1872", "--shape curved", 0.95},
                      ShapedPage{"births1872", "--shape keystoned", 0.95},
                      ShapedPage{"births1872double", "--shape curved", 0.95},
                      ShapedPage{"births1872double", "--rotation -1.0 --shape curved", 0.95},
                      ShapedPage{"births1872double", "--rotation 1.0 --shape keystoned", 0.95},
                      ShapedPage{"births1872double", "--shape keystoned", 0.95},
                      ShapedPage{"births1911", "--shape curved", 0.95},
                      ShapedPage{"births1965", "--shape curved", 0.95},
                      ShapedPage{"births1911", "--shape keystoned", 0.95},
                      ShapedPage{"births1965", "--shape keystoned", 0.95},
                      ShapedPage{"births1988", "--rotation -1.0", 0.98},
                      ShapedPage{"births1988", "--shape curved", 0.95},
                      ShapedPage{"births1988", "--shape keystoned", 0.95},
                      ShapedPage{"births1995", "--shape curved", 0.95},
                      ShapedPage{"births1995", "--shape keystoned", 0.95},
                      ShapedPage{"births1911", "--scale 2.2", 0.98}));

TEST(LocateCommand, WritesADashForEveryRecordOfABlankScan) {
    const TruePage& page = SamplePage("births1911");
    TempDir dir;
    const int width = 1200;
    const int height = 1700;
    const std::string blank = dir.Write(
        "blank.pgm", "P5\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n" +
                         std::string(static_cast<size_t>(width) * height, static_cast<char>(235)));
    ExpectNothingPlaced(RunTallyview({"--locate", blank, page.Transcription.string()}), page);
}

TEST(LocateCommand, AScanThatCannotBeReadIsStatus3) {
    const TruePage& page = SamplePage("births1911");
    EXPECT_EQ(RunTallyview({"--locate", "/nonexistent.png", page.Transcription.string()}).Status,
              3);
}

TEST(LocateCommand, AWrongCommandLineIsStatus64) {
    EXPECT_EQ(RunTallyview({"--locate", "only-one"}).Status, 64);
    EXPECT_EQ(RunTallyview({"--locate"}).Status, 64);
}

TEST(LocateCommand, AMissingTranscriptionIsStatus3) {
    const TruePage& page = SamplePage("births1911");
    EXPECT_EQ(RunTallyview({"--locate", page.Scan.string(), "/nonexistent/x.QRL"}).Status, 3);
}

// The finder and the reader live in a module the program opens beside itself or where the install
// puts it. A copy of the program alone, without its module, places no record and reads nothing,
// as on a page without lines; given the module beside it, the same copy finds the lines again.
TEST(LocateCommand, WithoutItsScanModuleTheProgramPlacesNothingAndReadsNothing) {
    const TruePage& page = SamplePage("births1911");
    TempDir dir;
    const std::filesystem::path program = dir.Path() / "tallyview";
    std::filesystem::copy_file(TALLYVIEW_BINARY, program);
    // The prefix is given the program and its arguments; it drops the program and runs the copy.
    const std::vector<std::string> copy = {
        "sh", "-c", "shift; exec \"" + program.string() + "\" \"$@\"", "tallyview"};
    ExpectNothingPlaced(
        RunTallyviewThrough(copy, {"--locate", page.Scan.string(), page.Transcription.string()}),
        page);
    const ProcessResult compared =
        RunTallyviewThrough(copy, {"--compare", page.Scan.string(), page.Transcription.string()});
    EXPECT_EQ(compared.Status, 0) << compared.Err;
    EXPECT_EQ(compared.Out, "");

    std::filesystem::copy_file(std::filesystem::path(TALLYVIEW_BINARY).parent_path() /
                                   "tallyview-scan.so",
                               dir.Path() / "tallyview-scan.so");
    const ProcessResult found =
        RunTallyviewThrough(copy, {"--locate", page.Scan.string(), page.Transcription.string()});
    EXPECT_EQ(found.Status, 0) << found.Err;
    EXPECT_EQ(found.Out.find("\t-"), std::string::npos) << found.Out;
}

TEST(LocateCommand, IsListedInTheHelp) {
    const ProcessResult help = RunTallyview({"--help"});
    EXPECT_EQ(help.Status, 0);
    EXPECT_NE(help.Out.find("--locate"), std::string::npos);
}

} // namespace

} // namespace tv::test
