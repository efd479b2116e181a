// Bad and unusual scans opened through the start window's step 1, as the user opens them: each
// either shows, in its upright size, or gives the documented message and ends the program; none
// crashes, and none takes the process far beyond the scan view's allocation limit. The files
// are written by scripts/make-bad-images.sh, one per test.
#include "SessionFormsTesting.h"

#include "view/ImageView.h"

#include <QProcess>
#include <QPushButton>
#include <QTest>

#include <sys/resource.h>

namespace tv::test {
namespace {

// What opening the file must give: the picture's size, or the error code of the message.
struct BadScan {
    const char* Name;
    int Width = 0;
    int Height = 0;
    int ErrorCode = 0; // -2 "... is not a valid picture file", n > 0 "Error n opening ..."
    // What standard error says after "tallyview: PATH: "; any reason will do when null.
    const char* Reason = nullptr;
};

std::ostream& operator<<(std::ostream& out, const BadScan& scan) {
    return out << scan.Name;
}

const BadScan BadScans[] = {
    {"zero-bytes.jpg", 0, 0, -2},
    {"text.jpg", 0, 0, -2},
    {"truncated-2.jpg", 0, 0, -2},
    {"truncated-20.jpg", 0, 0, -2},
    {"truncated-200.jpg", 600, 400, 0},
    {"truncated-400.jpg", 600, 400, 0},
    {"truncated-1200.jpg", 600, 400, 0},
    {"truncated-3000.jpg", 600, 400, 0},
    {"truncated-4.tif", 0, 0, -2},
    {"truncated-8.tif", 0, 0, -2},
    {"truncated-100.tif", 0, 0, -2},
    {"truncated-30000.tif", 0, 0, 3},
    {"truncated-120000.tif", 0, 0, 3},
    {"truncated-239990.tif", 0, 0, 3},
    {"huge-header.jpg", 0, 0, -2},
    {"huge-header.tif", 0, 0, 4},
    {"bomb.png", 0, 0, 4},
    {"no-frames.gif", 0, 0, -2},
    {"grey16.tif", 600, 400, 0},
    {"cmyk.jpg", 600, 400, 0},
    {"palette.gif", 600, 400, 0},
    {"multipage.tif", 600, 400, 0},
    {"exif-rotated.jpg", 200, 300, 0},
    {"huge-screen.gif", 0, 0, 4,
     "a picture of 65535 x 65535 pixels is larger than the 1024 MB allowed"},
    {"folder.jpg", 0, 0, -2, "not a regular file"},
    {"loop.jpg", 0, 0, 2, "Too many levels of symbolic links"},
    {"dangling.jpg", 0, 0, 1, "No such file or directory"},
};

// The process's peak resident size so far, in megabytes.
long PeakResidentMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

// The scan view's own limit on one decoded picture: far below what the bomb or a huge header
// would take, and the whole process may not grow past it while a bad file is opened.
constexpr long GrowthLimitMegabytes = AllocationLimitMegabytes;

class BadScansTest : public FormsTest, public ::testing::WithParamInterface<BadScan> {
  protected:
    std::string Make(const std::string& name) {
        const QString script =
            QStringLiteral(TALLYVIEW_TEST_DATA "/../../scripts/make-bad-images.sh");
        const int status =
            QProcess::execute(script, {PathToQString(Dir.Path().string()), QString(name.c_str())});
        if (status != 0) throw std::runtime_error("make-bad-images.sh failed for " + name);
        return (Dir.Path() / name).string();
    }
};

TEST_P(BadScansTest, ShowsOrGivesTheDocumentedMessageWithinTheAllocationLimit) {
    const BadScan& bad = GetParam();
    const std::string scan = Make(bad.Name);
    Files = {scan, DataFile("eras/1911B30123.QRL")};
    const long before = PeakResidentMegabytes();
    StartForm& start = OpenStartForm(true);
    testing::internal::CaptureStderr();
    start.Stage1->click();
    const std::string told = testing::internal::GetCapturedStderr();
    ASSERT_NE(Window, nullptr);
    // The reduced copies of a shown scan are made after it is shown: their memory counts too.
    if (bad.ErrorCode == 0) {
        EXPECT_TRUE(QTest::qWaitFor([this] { return Window->View().ReducedCopiesReady(); }, 60000));
    }
    const long growth = PeakResidentMegabytes() - before;
    RecordProperty("PeakGrowthMegabytes", std::to_string(growth));
    EXPECT_LT(growth, GrowthLimitMegabytes);
    if (bad.ErrorCode == 0) {
        EXPECT_TRUE(Prompts.Shown.empty()) << Prompts.Shown[0].Text;
        EXPECT_EQ(Window->View().ErrorCode(), 0);
        EXPECT_EQ(Window->View().Metrics().ImagePixelWidth, bad.Width);
        EXPECT_EQ(Window->View().Metrics().ImagePixelHeight, bad.Height);
        // The four steps ran: the scan is shown and waits for the first calibration stage.
        EXPECT_TRUE(Window->isVisible());
        EXPECT_EQ(S().Calib.CalibrationStage, 1);
        EXPECT_FALSE(Window->grab().isNull());
        return;
    }
    ASSERT_EQ(Prompts.Shown.size(), 1U);
    const std::string expected =
        bad.ErrorCode == -2 ? scan + " is not a valid picture file"
                            : "Error " + std::to_string(bad.ErrorCode) + " opening " + scan;
    EXPECT_EQ(Prompts.Shown[0].Text, expected);
    // Standard error says why, in a line of its own.
    const std::string why = "tallyview: " + scan + ": ";
    if (bad.Reason != nullptr)
        EXPECT_NE(told.find(why + bad.Reason + "\n"), std::string::npos) << told;
    else
        EXPECT_NE(told.find(why), std::string::npos) << told;
    EXPECT_EQ(Prompts.Shown[0].Title, "Tallyview");
    EXPECT_EQ(Prompts.Shown[0].Choice, Buttons::Ok);
    EXPECT_TRUE(Window->Ended());
    EXPECT_FALSE(start.isVisible());
}

std::string TestName(const ::testing::TestParamInfo<BadScan>& info) {
    std::string name;
    for (const char* c = info.param.Name; *c != '\0'; ++c)
        if (std::isalnum(static_cast<unsigned char>(*c)) != 0) name += *c;
    return name;
}

INSTANTIATE_TEST_SUITE_P(Corpus, BadScansTest, ::testing::ValuesIn(BadScans), TestName);

} // namespace
} // namespace tv::test
