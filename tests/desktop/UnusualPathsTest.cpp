// Files in folders whose names have spaces, accented letters, letters Windows-1252 lacks and a
// length of over a thousand characters: chosen through the file dialog (scripted and real), given
// on the command line, remembered in the settings and printed in the report.
#include "DesktopTesting.h"

#include "core/Text.h"
#include "stats/Form3.h"
#include "stats/Form3Print.h"

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace tv::test {
namespace {

namespace fs = std::filesystem;

// A folder of 1100 or more characters: each part a long name with spaces and letters from
// Danish, French, German, Greek and Japanese.
fs::path UnusualFolder(const fs::path& root) {
    const char* const parts[] = {
        "\xC3\x86r\xC3\xB8sk\xC3\xB8\x62ing parish registers, 1837 to 1911",
        "\xC3\x87\xC3\xA0 et l\xC3\xA0 - copies de l'index", "Z\xC3\xBCrich Stra\xC3\x9F\x65 ",
        "\xCE\x95\xCE\xBB\xCE\xBB\xCE\xAC\xCE\xB4\xCE\xB1 \xE5\x90\x8D\xE5\x89\x8D scans"};
    fs::path folder = root;
    for (int round = 0; folder.string().size() < 1100; ++round)
        folder /= std::string(parts[round % 4]) + " " + std::string(40, 'x') + " " +
                  std::to_string(round);
    fs::create_directories(folder);
    return folder;
}

class UnusualPaths : public DesktopTest {
  protected:
    fs::path Folder = UnusualFolder(Dir.Path());
    SamplePage Page = GeneratePage("births1872", Folder);

    // The path as the program shows it: Windows-1252, a letter it lacks as the bullet.
    static std::string Shown(const std::string& path) { return Utf8ToCp1252(path); }
};

TEST_F(UnusualPaths, TheFolderIsAsUnusualAsMeant) {
    const std::string folder = Folder.string();
    EXPECT_GT(folder.size(), 1100U);
    EXPECT_NE(folder.find(' '), std::string::npos);
    EXPECT_NE(Shown(folder).find('\xC6'), std::string::npos); // a letter Windows-1252 has
    EXPECT_NE(Shown(folder).find(Bullet), std::string::npos); // and letters it lacks
}

TEST_F(UnusualPaths, CommandLineFilesOpenAndTheSummaryAndReportNameThem) {
    Run(Page.Scan, Page.Transcription);
    WaitForMainWindow();
    EXPECT_EQ(S().GraphicsFile, Page.Scan);
    EXPECT_EQ(S().Table.RecordCount, static_cast<int16_t>(Page.Places.size()));
    Calibrate(Page);
    EXPECT_NE(S().StatsSummaryText.find("Graphics file: " + Shown(Page.Scan)), std::string::npos);
    EXPECT_NE(S().StatsSummaryText.find("Transcription file: " + Shown(Page.Transcription)),
              std::string::npos);
    const std::vector<ReportLine> report = S().Report(false);
    EXPECT_EQ(report[3].Text, "    Graphics file: " + Shown(Page.Scan));
    EXPECT_EQ(report[4].Text, "    Transcription file: " + Shown(Page.Transcription));

    // The report printed to a PDF file in the same folder, read back with the paths whole.
    const QString pdf = PathToQString((Folder / "r\xC3\xA9sum\xC3\xA9 report.pdf").string());
    QTest::mouseClick(Find<QToolButton>("ShowStats"), Qt::LeftButton);
    Form3& stats = Forms->Statistics();
    stats.SetPrinterSource([pdf] { return PdfPrinter(pdf); });
    Prompts.Script = {Answer::No};
    stats.PrintB()->click();
    ASSERT_TRUE(QFileInfo::exists(pdf));
    QProcess text;
    text.start("pdftotext", {"-layout", pdf, "-"});
    ASSERT_TRUE(text.waitForFinished(30000));
    QString printed = QString::fromUtf8(text.readAllStandardOutput());
    printed.remove(QRegularExpression(QStringLiteral("\\s")));
    const auto whole = [](const std::string& path) {
        return ToQString(Shown(path)).remove(QRegularExpression(QStringLiteral("\\s")));
    };
    EXPECT_TRUE(printed.contains(whole(Page.Scan))) << printed.toStdString();
    EXPECT_TRUE(printed.contains(whole(Page.Transcription)));
}

TEST_F(UnusualPaths, TheSettingsRememberTheFoldersAndTheDialogStartsThere) {
    Run(Page.Scan, Page.Transcription);
    WaitForMainWindow();
    Calibrate(Page);
    Find<QAction>("MenuExit")->trigger();
    EndRun();

    Run();
    Files = {Page.Scan, Page.Transcription};
    StartForm& start = *Forms->StartWindow();
    start.Stage1->click();
    start.Stage2->click();
    start.Stage3->click();
    Window = Forms->MainForm();
    ASSERT_EQ(Requests.size(), 2U);
    EXPECT_EQ(Requests[0].Folder, Folder.string() + "/");
    EXPECT_EQ(Requests[0].Name, fs::path(Page.Scan).filename().string());
    EXPECT_EQ(Requests[1].Folder, Folder.string() + "/");
    EXPECT_EQ(Requests[1].Name, fs::path(Page.Transcription).filename().string());
    // Matched by its name in the settings, the scan opens calibrated.
    EXPECT_EQ(S().History.ScanHistoryMatch, 1);
    EXPECT_EQ(S().Calib.CalibrationStage, 0);
}

TEST_F(UnusualPaths, TheRealFileDialogTakesTheWholePathTyped) {
    DesktopServices services;
    services.SettingsPath = PathToQString(SettingsFile().string());
    services.Main.Ask = &Prompts;
    services.Main.LayoutChooser = &Chooser;
    Forms = std::make_unique<DesktopForms>("", "", services);
    Forms->Start();
    StartForm& start = *Forms->StartWindow();
    AnswerFileDialog(Page.Scan);
    start.Stage1->click();
    AnswerFileDialog(Page.Transcription);
    start.Stage2->click();
    start.Stage3->click();
    Window = Forms->MainForm();
    EXPECT_EQ(S().GraphicsFile, Page.Scan);
    EXPECT_EQ(S().TranscriptionFile, Page.Transcription);
    EXPECT_EQ(S().Calib.CalibrationStage, 1);
    EXPECT_TRUE(Prompts.Shown.empty());
}

TEST(WrapReportLines, ALineWiderThanThePageGoesOnIndentedInTheLinesBelow) {
    const std::string path = "/home/" + std::string(40, 'a') + "/" + std::string(20, 'b');
    const std::vector<ReportLine> wrapped =
        WrapReportLines({{"Flagged QRL Records", true}, {"    Graphics file: " + path, false}}, 40);
    const std::vector<ReportLine> expected = {{"Flagged QRL Records", true},
                                              {"    Graphics file: /home/aaaaaaaaaaaaaaa", false},
                                              {"        aaaaaaaaaaaaaaaaaaaaaaaaa/bbbbbb", false},
                                              {"        bbbbbbbbbbbbbb", false}};
    EXPECT_EQ(wrapped, expected);
}

TEST(WrapReportLines, TheReportsOwnLinesFitAPageAsTheyAre) {
    // Eighty columns at the least: the report's lines of 100 characters and more are the only
    // ones wrapped, besides long file names.
    EXPECT_GE(CharactersPerLine(*PdfPrinter("columns.pdf")), 80);
    const std::vector<ReportLine> lines = {{"Queries", true}, {"    None", false}};
    EXPECT_EQ(WrapReportLines(lines, 80), lines);
}

} // namespace
} // namespace tv::test
