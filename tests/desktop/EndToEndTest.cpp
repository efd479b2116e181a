// Generated pages through the four steps, calibrated with the keys at the entries' known places,
// then every record stepped through with ENTER: the box must stand on the printed line of each.
// Also zoom, flags and reload after the file is edited on disk, the command line's two files,
// New Scan through the app's wiring, and screenshots of the forms at work.
#include "DesktopTesting.h"

#include "app/QtApplication.h"
#include "core/Text.h"
#include "help/AboutTallyview.h"
#include "help/HelpForm.h"
#include "stats/Form3.h"
#include "view/ImageView.h"
#include "view/RecordBoxWidget.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <chrono>

namespace tv::test {
namespace {

class EndToEnd : public DesktopTest {
  protected:
    QString Notes() const { return Find<QLabel>("NotesBox")->text(); }

    // The box stands just below the printed entry of the table line (scan line number
    // pageLine of the page's positions).
    void ExpectOnLine(const SamplePage& page, int pageLine) {
        const SamplePage::Place& place = page.Places.at(pageLine);
        const QPointF box = BoxOnScan();
        EXPECT_NEAR(box.y(), place.Y, page.Pitch / 4.0) << "record line " << pageLine;
        EXPECT_NEAR(box.x(), place.X, page.Pitch / 2.0) << "record line " << pageLine;
    }

    // From the top of column 1, ENTER through every record to the end.
    void VerifyEveryRecord(const SamplePage& page) {
        Press(Qt::Key_Home);
        std::size_t checked = 0;
        while (S().Table.CurrentLine <= S().Table.LineCount) {
            ExpectOnLine(page, S().Table.CurrentLine);
            ++checked;
            Press(Qt::Key_Return);
        }
        EXPECT_EQ(checked, page.Places.size());
        EXPECT_TRUE(Notes().contains(".... Reached end of records ...."));
    }

    // The transcription program saved the file with lines inserted before a table line.
    void InsertLines(const SamplePage& page, int beforeLine, int count) {
        const std::string text = ReadBytes(page.Transcription);
        std::size_t at = 0;
        for (int line = 1; line < beforeLine; ++line)
            at = text.find("\r\n", at) + 2;
        std::string inserted;
        for (int k = 0; k < count; ++k)
            inserted += "#NOTE entry " + std::to_string(k + 1) + " checked against the scan\r\n";
        const auto time = std::filesystem::last_write_time(page.Transcription);
        Dir.Write(std::filesystem::path(page.Transcription).filename().string(),
                  text.substr(0, at) + inserted + text.substr(at));
        std::filesystem::last_write_time(page.Transcription, time + std::chrono::seconds(5));
    }

    // The transcription program saved the file with one forename changed.
    void ReplaceInFile(const SamplePage& page, const std::string& from, const std::string& to) {
        std::string text = ReadBytes(page.Transcription);
        text.replace(text.find(from), from.size(), to);
        Dir.Write(std::filesystem::path(page.Transcription).filename().string(), text);
    }

    // Answers the open-file dialog with the file once it is shown; the dialog's request.
    static void AnswerFileDialog(const std::string& file, QString& title, QStringList& filters) {
        test::AnswerFileDialog(file, [&title, &filters](const QFileDialog& dialog) {
            title = dialog.windowTitle();
            filters = dialog.nameFilters();
        });
    }
};

TEST_F(EndToEnd, Births1872EveryRecordStandsOnItsPrintedLine) {
    const SamplePage page = GeneratePage("births1872", Dir.Path());
    OpenPage(page);
    Calibrate(page);
    VerifyEveryRecord(page);
}

TEST_F(EndToEnd, Births1965ByTheFourStepsEveryRecordStandsOnItsPrintedLine) {
    const SamplePage page = GeneratePage("births1965", Dir.Path());
    Files = {page.Scan, page.Transcription};
    StartForm& start = OpenStartForm();
    for (QPushButton* step : {start.Stage1, start.Stage2, start.Stage3, start.Stage4})
        QTest::mouseClick(step, Qt::LeftButton);
    EXPECT_FALSE(start.isVisible());
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
    Calibrate(page);
    EXPECT_EQ(S().Scan.NumColumns, 2);
    EXPECT_TRUE(S().Scan.SurnameOwnLine);
    VerifyEveryRecord(page);
}

TEST_F(EndToEnd, ZoomingInAndOutKeepsTheBoxOnItsLine) {
    const SamplePage page = GeneratePage("births1872", Dir.Path());
    OpenPage(page);
    Calibrate(page);
    QTest::mouseClick(Find<QToolButton>("TopCol2"), Qt::LeftButton);
    for (int k = 0; k < 12; ++k)
        Press(Qt::Key_Return);
    const int line = S().Table.CurrentLine;
    for (Qt::Key zoom : {Qt::Key_F11, Qt::Key_F11, Qt::Key_F12, Qt::Key_F12, Qt::Key_F12}) {
        Press(zoom);
        ExpectOnLine(page, line);
    }
    EXPECT_EQ(S().Box.CurrentZoom, 90.0F);
    for (int k = 1; k <= 5; ++k) {
        Press(Qt::Key_Return);
        ExpectOnLine(page, line + k);
    }
}

TEST_F(EndToEnd, LineInsertedAboveAColumnTopKeepsTheCalibrationOnReload) {
    const SamplePage page = GeneratePage("births1872", Dir.Path());
    OpenPage(page);
    Calibrate(page);
    Press(Qt::Key_M);
    Press(Qt::Key_Return);
    Press(Qt::Key_M);
    const int top2 = S().Calib.ColumnTopLine[2];
    const int top3 = S().Calib.ColumnTopLine[3];
    InsertLines(page, top3, 1);
    Window->View().viewport()->repaint();
    EXPECT_EQ(Notes().count("Your transcription file has changed - press R to reload it"), 1);
    Press(Qt::Key_R);
    ASSERT_EQ(Prompts.Texts(),
              std::vector<std::string>{"All the flagged records will lose their flag"});
    EXPECT_EQ(S().Calib.CalibrationStage, 0);
    EXPECT_EQ(S().Calib.ColumnTopLine[2], top2);
    EXPECT_EQ(S().Calib.ColumnTopLine[3], top3 + 1);
    EXPECT_TRUE(Notes().contains(" *** Transcription file reloaded ***"));
    EXPECT_FALSE(Notes().contains("**FLAGGED**"));
    // The records of column 3 stand one table line further on, on the same printed lines.
    QTest::mouseClick(Find<QToolButton>("TopCol3"), Qt::LeftButton);
    for (int k = 0; k < 10; ++k) {
        ExpectOnLine(page, S().Table.CurrentLine - 1);
        Press(Qt::Key_Return);
    }
}

TEST_F(EndToEnd, FourLinesInsertedAboveAColumnTopForceRecalibration) {
    const SamplePage page = GeneratePage("births1872", Dir.Path());
    OpenPage(page);
    Calibrate(page);
    InsertLines(page, S().Calib.ColumnTopLine[3], 4);
    Press(Qt::Key_R);
    EXPECT_EQ(Prompts.Texts(),
              std::vector<std::string>{"The transcription file has changed - need to recalibrate"});
    EXPECT_EQ(S().Calib.CalibrationStage, 1);
    EXPECT_TRUE(Notes().contains("1st record in column 1"));
}

TEST_F(EndToEnd, CommandLineFilesRunTheStepsAndNewScanComesBackToTheStartWindow) {
    const SamplePage page = GeneratePage("births1872", Dir.Path());
    DesktopServices services;
    services.SettingsPath = PathToQString(SettingsFile().string());
    DesktopForms forms(page.Scan, page.Transcription, services);
    forms.Start();
    ASSERT_TRUE(QTest::qWaitFor([&forms] { return forms.MainForm()->isVisible(); }, 5000));
    Window = forms.MainForm();
    EXPECT_FALSE(forms.StartWindow()->isVisible());
    EXPECT_FALSE(forms.StartWindow()->SkipSteps->isChecked());
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
    Calibrate(page);
    // The window's own message boxes would wait for a user: stop at a failed calibration.
    ASSERT_EQ(S().Calib.CalibrationStage, 0);

    Find<QAction>("MenuNewScan")->trigger();
    StartForm* start = forms.StartWindow();
    EXPECT_TRUE(start->isVisible());
    EXPECT_FALSE(start->FirstScan);
    EXPECT_FALSE(Window->isVisible());
    QString title;
    QStringList filters;
    AnswerFileDialog(page.Scan, title, filters);
    start->Stage1->click();
    EXPECT_EQ(title, "Select the file containing the scanned image of the index page");
    EXPECT_EQ(filters.value(0), "Graphics Files (*.JPG *.JPE *.JPEG *.GIF *.TIF *.TIFF *.jpg "
                                "*.jpe *.jpeg *.gif *.tif *.tiff *.png *.bmp)");
    EXPECT_EQ(filters.value(1), "All Files (*)");
    AnswerFileDialog(page.Transcription, title, filters);
    start->Stage2->click();
    EXPECT_EQ(title, "Select the file containing your transcription");
    EXPECT_EQ(filters.value(0), "QRL and SCA Files (*.SCA *.QRL *.sca *.qrl)");
    start->Stage3->click();
    EXPECT_EQ(forms.MainForm(), Window);
    EXPECT_TRUE(Window->isVisible());
    // Saved by New Scan, the scan is remembered: it opens calibrated.
    EXPECT_EQ(S().Calib.CalibrationStage, 0);
    EXPECT_EQ(S().Calib.ColumnTopLine[2], page.FirstLineOfColumn(2));
}

// The forms at work, written as pictures: into TALLYVIEW_SHOTS_DIR when it is set (make
// screenshots runs this under Xvfb), else into a temporary folder. The report is printed there
// as report.pdf.
TEST_F(EndToEnd, ScreenshotsOfTheFormsAtWork) {
    const QString wanted = qEnvironmentVariable("TALLYVIEW_SHOTS_DIR");
    const QString shots = wanted.isEmpty() ? PathToQString(Dir.Path().string()) : wanted;
    ASSERT_TRUE(QDir().mkpath(shots));
    auto shoot = [&shots](QWidget& window, const QString& name) {
        QApplication::processEvents();
        const QPixmap picture = window.grab();
        EXPECT_GT(picture.width(), 200) << name.toStdString();
        EXPECT_TRUE(picture.save(shots + "/" + name + ".png")) << name.toStdString();
    };
    const SamplePage page = GeneratePage("births1872", Dir.Path());
    RealScanTypes = true;
    Run();
    StartForm& start = *Forms->StartWindow();
    shoot(start, "1-start-window");

    Files = {page.Scan, page.Transcription};
    start.SkipSteps->setChecked(true);
    start.Stage1->click();
    Window = Forms->MainForm();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
    WhenScanTypesShown([&shoot](ScanTypesForm& form) {
        shoot(form, "4-scan-layout-form");
        form.CloseButton->click();
    });
    Press(Qt::Key_C);
    MoveBoxTo(page.Places.at(S().Table.CurrentLine));
    shoot(*Window, "2-calibrating");
    Calibrate(page);
    // A query typed in the transcription program and reloaded, so that the lists show it.
    ReplaceInFile(page, "HARRIS,Ann,Hull,", "HARRIS,A?n,Hull,");
    Press(Qt::Key_R);
    EXPECT_EQ(S().Calib.CalibrationStage, 0);
    for (int k = 0; k < 7; ++k)
        Press(Qt::Key_Return);
    Press(Qt::Key_M);
    ExpectOnLine(page, S().Table.CurrentLine);
    EXPECT_TRUE(Notes().contains("**FLAGGED**"));
    shoot(*Window, "3-verifying");

    QTest::mouseClick(Find<QToolButton>("ShowStats"), Qt::LeftButton);
    Form3& stats = Forms->Statistics();
    const char* lists[] = {"file-header", "queries", "warnings", "flagged", "history"};
    for (int option = 0; option < StatsOptionCount; ++option) {
        stats.Options(option)->click();
        shoot(stats, QString("5-statistics-%1-%2").arg(option).arg(lists[option]));
    }
    EXPECT_TRUE(stats.ListBox()->toPlainText().contains("Births 1872 Qtr 2 Page 234"));
    const QString report = shots + "/report.pdf";
    stats.SetPrinterSource([report] { return PdfPrinter(report); });
    Prompts.Script = {Answer::No};
    stats.PrintB()->click();
    EXPECT_TRUE(QFileInfo::exists(report));
    stats.Command1()->click();

    Press(Qt::Key_F1);
    HelpForm& help = Forms->Help();
    help.Next()->click();
    shoot(help, "6-help-form");
    help.Hide()->click();

    bool aboutShown = false;
    QTimer::singleShot(0, [&] {
        auto* about = qobject_cast<AboutTallyview*>(QApplication::activeModalWidget());
        if (about == nullptr) return;
        shoot(*about, "7-about-box");
        aboutShown = true;
        about->OK()->click();
    });
    Find<QAction>("MenuAbout")->trigger();
    EXPECT_TRUE(aboutShown);

    Press(Qt::Key_D, Qt::AltModifier);
    shoot(*Window, "8-diagnostics-panel");
    Press(Qt::Key_D, Qt::AltModifier);
}

TEST(RunTimeError, ReportedAsTheProgramAlwaysDid) {
    EXPECT_EQ(RunTimeErrorText(RunTimeError::Overflow()), "Run-time error '6':\n\nOverflow");
    EXPECT_EQ(RunTimeErrorText(RunTimeError::SubscriptOutOfRange()),
              "Run-time error '9':\n\nSubscript out of range");
    EXPECT_EQ(AsRunTimeError(std::runtime_error("bad")).Number, 51);
    EXPECT_EQ(AsRunTimeError(RunTimeError::DivisionByZero()).Number, 11);
}

} // namespace
} // namespace tv::test
