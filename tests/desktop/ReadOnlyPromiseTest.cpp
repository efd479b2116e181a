// The promise that Tallyview never writes to a transcription or a scan: a whole session through
// the windowed program (load, calibrate, flag, reload, zoom and rotate, every statistics list,
// both reports printed to PDF, closing) leaves both files byte for byte and time for time as
// they were, and their folder holds nothing new.
#include "DesktopTesting.h"

#include "stats/Form3.h"
#include "view/ImageView.h"

#include <QFileInfo>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>

#include <sys/stat.h>

#include <set>

namespace tv::test {
namespace {

namespace fs = std::filesystem;

// What a file is on disk: its bytes and its modification and status-change times to the
// nanosecond.
struct FileState {
    std::string Bytes;
    timespec Modified{};
    timespec Changed{};
};

FileState StateOf(const std::string& path) {
    struct stat info {};
    EXPECT_EQ(stat(path.c_str(), &info), 0) << path;
    return {ReadBytes(path), info.st_mtim, info.st_ctim};
}

void ExpectUntouched(const FileState& before, const std::string& path) {
    const FileState after = StateOf(path);
    EXPECT_EQ(after.Bytes, before.Bytes) << path;
    EXPECT_EQ(after.Modified.tv_sec, before.Modified.tv_sec) << path;
    EXPECT_EQ(after.Modified.tv_nsec, before.Modified.tv_nsec) << path;
    EXPECT_EQ(after.Changed.tv_sec, before.Changed.tv_sec) << path;
    EXPECT_EQ(after.Changed.tv_nsec, before.Changed.tv_nsec) << path;
}

std::set<std::string> Listing(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

class ReadOnlyPromise : public DesktopTest {};

TEST_F(ReadOnlyPromise, AWholeSessionLeavesTheScanAndTheTranscriptionUntouched) {
    const fs::path folder = Dir.Path() / "page";
    fs::create_directory(folder);
    const SamplePage page = GeneratePage("births1872", folder);
    const FileState scan = StateOf(page.Scan);
    const FileState transcription = StateOf(page.Transcription);
    const std::set<std::string> listing = Listing(folder);

    Run(page.Scan, page.Transcription);
    WaitForMainWindow();
    Calibrate(page);
    Press(Qt::Key_M);
    for (int k = 0; k < 5; ++k)
        Press(Qt::Key_Return);
    Press(Qt::Key_M);
    Window->View().viewport()->repaint(); // the change watch looks at the file
    Press(Qt::Key_R);                     // OK to "All the flagged records will lose their flag"
    EXPECT_EQ(S().Calib.CalibrationStage, 0);
    Press(Qt::Key_M);
    Press(Qt::Key_F11);
    Press(Qt::Key_F12);
    QTest::mouseClick(Find<QToolButton>("RotateLeft"), Qt::LeftButton);
    QTest::mouseClick(Find<QToolButton>("RotateRight"), Qt::LeftButton);

    QTest::mouseClick(Find<QToolButton>("ShowStats"), Qt::LeftButton);
    Form3& stats = Forms->Statistics();
    for (int option = 0; option < StatsOptionCount; ++option) {
        stats.Options(option)->click();
        EXPECT_FALSE(stats.ListBox()->toPlainText().isEmpty()) << option;
    }
    const fs::path reports = Dir.Path() / "reports";
    fs::create_directory(reports);
    for (Answer allRecords : {Answer::No, Answer::Yes}) {
        const QString pdf = PathToQString(
            (reports / (allRecords == Answer::Yes ? "all.pdf" : "report.pdf")).string());
        stats.SetPrinterSource([pdf] { return PdfPrinter(pdf); });
        Prompts.Script = {allRecords};
        stats.PrintB()->click();
        EXPECT_TRUE(QFileInfo::exists(pdf));
    }
    stats.Command1()->click();
    Window->close(); // saves the settings and ends the run
    EndRun();

    ExpectUntouched(scan, page.Scan);
    ExpectUntouched(transcription, page.Transcription);
    EXPECT_EQ(Listing(folder), listing);
    EXPECT_NE(SettingsText().find("LineIncrTop="), std::string::npos);
}

} // namespace
} // namespace tv::test
