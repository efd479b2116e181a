// The forms wired as the program runs them: the settings kept between two runs in a temporary
// configuration folder, the statistics screen on both of its paths, the help form, the About box
// and the diagnostics panel.
#include "DesktopTesting.h"
#include "ScriptedUser.h"

#include "core/Text.h"
#include "help/AboutTallyview.h"
#include "help/HelpForm.h"
#include "stats/Form3.h"
#include "stats/Form3Print.h"
#include "view/RecordBoxWidget.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QFrame>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

namespace tv::test {
namespace {

class Wiring : public DesktopTest {
  protected:
    SamplePage Page = GeneratePage("births1872", Dir.Path());

    // The page through the four steps and calibrated.
    void OpenCalibrated() {
        Run(Page.Scan, Page.Transcription);
        WaitForMainWindow();
        Calibrate(Page);
    }
    Form3& Stats() { return Forms->Statistics(); }
    QString List() { return Stats().ListBox()->toPlainText(); }
    QString LineShown(int line) { return ToQString(S().Table.LineText[line]); }
    // The box stands just below the printed entry of the table line.
    void ExpectOnLine(int line) {
        const SamplePage::Place& place = Page.Places.at(line);
        EXPECT_NEAR(BoxOnScan().y(), place.Y, Page.Pitch / 4.0) << "line " << line;
        EXPECT_NEAR(BoxOnScan().x(), place.X, Page.Pitch / 2.0) << "line " << line;
    }
};

TEST_F(Wiring, SecondRunOfTheSameScanOpensCalibratedOnTheRememberedRecord) {
    OpenCalibrated();
    for (int k = 0; k < 50; ++k)
        Press(Qt::Key_Return);
    const int line = S().Table.CurrentLine;
    const int recNo = S().Table.LineRecNo[line];
    ASSERT_EQ(S().Calib.ColumnTopLine[2], Page.FirstLineOfColumn(2));
    ASSERT_GT(Page.Places.at(line).Column, 1);
    Find<QAction>("MenuExit")->trigger();
    EXPECT_TRUE(Window->Ended());
    EndRun();
    const std::string saved = SettingsText();
    EXPECT_NE(saved.find("[Scan0]"), std::string::npos);
    EXPECT_NE(saved.find("ImgFile=1872B20234.jpg"), std::string::npos);
    EXPECT_NE(saved.find("RecNo=" + std::to_string(recNo) + "\n"), std::string::npos);

    Run(Page.Scan, Page.Transcription);
    WaitForMainWindow();
    EXPECT_EQ(S().Calib.CalibrationStage, 0);
    EXPECT_EQ(S().Table.CurrentLine, line);
    for (int c = 1; c <= 3; ++c)
        EXPECT_EQ(S().Calib.ColumnTopLine[c], Page.FirstLineOfColumn(c)) << c;
    EXPECT_FALSE(Find<QLabel>("NotesBox")->text().contains("Move this box"));
    EXPECT_TRUE(Find<QToolButton>("ShowStats")->isEnabled());
    ExpectOnLine(line);
    Press(Qt::Key_Return);
    ExpectOnLine(S().Table.CurrentLine);
}

TEST_F(Wiring, NewScanSavesTheSettings) {
    OpenCalibrated();
    EXPECT_EQ(SettingsText().find("[Scan0]"), std::string::npos);
    Find<QAction>("MenuNewScan")->trigger();
    EXPECT_TRUE(Forms->StartWindow()->isVisible());
    EXPECT_FALSE(Window->isVisible());
    const std::string saved = SettingsText();
    EXPECT_NE(saved.find("[Scan0]"), std::string::npos);
    EXPECT_NE(saved.find("ImgFile=1872B20234.jpg"), std::string::npos);
    EXPECT_NE(saved.find("RegVersion=B"), std::string::npos);
}

TEST_F(Wiring, StatisticsOnlyPathShowsTheScreenWithExitAndNoFlaggedRecords) {
    Run();
    Files = {"", Page.Transcription};
    Forms->StartWindow()->Stage1->click();
    Forms->StartWindow()->Stage2->click();
    Window = Forms->MainForm();
    EXPECT_FALSE(Window->isVisible());
    ASSERT_TRUE(Stats().isVisible());
    EXPECT_EQ(Stats().CommandCaption(), "Exit");
    EXPECT_FALSE(Stats().Options(3)->isEnabled());
    EXPECT_TRUE(Stats().Options(0)->isChecked());
    EXPECT_TRUE(Stats().Options(0)->font().underline());
    EXPECT_TRUE(List().startsWith("  1  +INFO,volunteer@example.org"));
    EXPECT_FALSE(Stats().SummaryBox()->toPlainText().isEmpty());
    Stats().Command1()->click();
    EXPECT_TRUE(Window->Ended());
    EXPECT_NE(SettingsText().find("[Global]"), std::string::npos);
    EXPECT_EQ(SettingsText().find("[Scan0]"), std::string::npos);
}

TEST_F(Wiring, AfterAPrintTheLastScreenOfAStatisticsOnlySessionKeepsTheFocus) {
    RealPrompts = true;
    Run();
    Files = {"", Page.Transcription};
    Forms->StartWindow()->Stage1->click();
    Forms->StartWindow()->Stage2->click();
    ASSERT_TRUE(Stats().isVisible());
    ASSERT_EQ(Stats().CommandCaption(), "Exit");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Stats()));
    const QString pdf = PathToQString((Dir.Path() / "report.pdf").string());
    Stats().SetPrinterSource([pdf] { return PdfPrinter(pdf); });
    ScriptedUser user;
    user.Clicks(QMessageBox::Yes);
    QTest::mouseClick(Stats().PrintB(), Qt::LeftButton);
    ASSERT_EQ(user.Answered.size(), 1U);
    EXPECT_EQ(user.Answered[0].Text, "Do you want a print of all the QRL records ?");
    EXPECT_TRUE(QFile::exists(pdf));
    QTest::qWait(50);
    EXPECT_TRUE(Stats().isVisible());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Stats()));
    EXPECT_EQ(QApplication::activeWindow(), &Stats());
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(QApplication::focusWidget()->window(), &Stats());
}

TEST_F(Wiring, AfterAPrintTheKeysGoToTheRecordBoxWithTheScreenStillShown) {
    OpenCalibrated();
    QTest::mouseClick(Find<QToolButton>("ShowStats"), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Stats()));
    const QString pdf = PathToQString((Dir.Path() / "report.pdf").string());
    Stats().SetPrinterSource([pdf] { return PdfPrinter(pdf); });
    Prompts.Script = {Answer::Yes};
    QTest::mouseClick(Stats().PrintB(), Qt::LeftButton);
    EXPECT_TRUE(QFile::exists(pdf));
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
    EXPECT_EQ(QApplication::focusWidget(), DummyBox());
    EXPECT_TRUE(Stats().isVisible());
    // The screen belongs to the main window, so the desktop keeps it in front of it.
    ASSERT_NE(Stats().windowHandle(), nullptr);
    EXPECT_EQ(Stats().windowHandle()->transientParent(), Window->windowHandle());
}

TEST_F(Wiring, EveryWindowShowsTheProgramsIcon) {
    QApplication::setWindowIcon(QIcon());
    OpenCalibrated();
    QTest::mouseClick(Find<QToolButton>("ShowStats"), Qt::LeftButton);
    // The installed theme's icon, or the one built into the program.
    const QIcon bundled(QStringLiteral(":/icons/tallyview.svg"));
    ASSERT_FALSE(bundled.pixmap(32).isNull());
    for (QWidget* window : {static_cast<QWidget*>(Window), static_cast<QWidget*>(&Stats())}) {
        EXPECT_FALSE(window->windowIcon().isNull()) << window->objectName().toStdString();
        EXPECT_FALSE(window->windowIcon().pixmap(32).isNull());
    }
    const QImage shown = Window->windowIcon().pixmap(32).toImage();
    if (QIcon::fromTheme(QStringLiteral("tallyview")).isNull()) {
        EXPECT_EQ(shown, bundled.pixmap(32).toImage());
    }
}

TEST_F(Wiring, StatisticsButtonShowsTheScreenWhoseListsFollowFlagsAndAReload) {
    OpenCalibrated();
    Press(Qt::Key_Return);
    const int flagged = S().Table.CurrentLine;
    QTest::mouseClick(Find<QToolButton>("ShowStats"), Qt::LeftButton);
    ASSERT_TRUE(Stats().isVisible());
    EXPECT_EQ(Stats().CommandCaption(), "Close");
    Stats().Options(3)->click();
    EXPECT_EQ(List(), "None");
    Press(Qt::Key_M);
    EXPECT_TRUE(List().contains(LineShown(flagged))) << List().toStdString();

    Stats().Options(1)->click();
    EXPECT_EQ(S().StatsOption, 1);
    EXPECT_EQ(List(), "None");
    const std::string text = ReadBytes(Page.Transcription);
    Dir.Write(std::filesystem::path(Page.Transcription).filename().string(),
              std::string(text).replace(text.find("HARRIS,Ann,Hull,"), 16, "HARRIS,A?n,Hull,"));
    Press(Qt::Key_R);
    EXPECT_EQ(S().Calib.CalibrationStage, 0);
    EXPECT_TRUE(List().contains("HARRIS,A?n,Hull")) << List().toStdString();
    Stats().Options(3)->click();
    EXPECT_EQ(List(), "None");
}

TEST_F(Wiring, HistoryListSavesTheScanBeingVerifiedFirst) {
    OpenCalibrated();
    Find<QAction>("MenuShowStats")->trigger();
    Stats().Options(4)->click();
    EXPECT_TRUE(List().contains(" - Births 1872 Qtr 2 Page 234 - ")) << List().toStdString();
    EXPECT_TRUE(List().endsWith(" -- only the last 10 pages checked are shown --"));
    EXPECT_NE(SettingsText().find("ImgFile=1872B20234.jpg"), std::string::npos);
    Stats().Command1()->click();
    EXPECT_FALSE(Stats().isVisible());
    EXPECT_TRUE(DummyBox()->hasFocus());
}

TEST_F(Wiring, ClosingTheMainWindowClosesTheStatisticsScreenAndTheHelpForm) {
    OpenCalibrated();
    Find<QAction>("MenuShowStats")->trigger();
    Press(Qt::Key_F1);
    ASSERT_TRUE(Stats().isVisible());
    ASSERT_TRUE(Forms->Help().isVisible());
    Window->close();
    EXPECT_FALSE(Stats().isVisible());
    EXPECT_FALSE(Forms->Help().isVisible());
    EXPECT_EQ(Stats().CommandCaption(), "Die");
}

TEST_F(Wiring, F1OpensTheHelpFormAndHideGivesTheKeysBack) {
    OpenCalibrated();
    Press(Qt::Key_F1);
    HelpForm& help = Forms->Help();
    ASSERT_TRUE(help.isVisible());
    EXPECT_EQ(help.Label1()->text(), "Tallyview Commands Help");
    help.Next()->click();
    help.Hide()->click();
    EXPECT_FALSE(help.isVisible());
    EXPECT_TRUE(DummyBox()->hasFocus());
    Find<QAction>("MenuHelp")->trigger();
    EXPECT_TRUE(help.isVisible());
    EXPECT_EQ(help.Label1()->text(), "The Arrow Keys");
}

TEST_F(Wiring, AboutBoxShowsTheVersionLine) {
    OpenCalibrated();
    QString shown;
    QTimer::singleShot(0, [&shown] {
        auto* about = qobject_cast<AboutTallyview*>(QApplication::activeModalWidget());
        if (about == nullptr) return;
        shown = about->VersionLabel()->text();
        about->OK()->click();
    });
    Find<QAction>("MenuAbout")->trigger();
    EXPECT_EQ(shown, "Version 1.0.0 / 21-Jun-2022");
}

TEST_F(Wiring, AltDShowsTheDiagnosticsPanelWithItsEighteenLines) {
    OpenCalibrated();
    auto* frame = Find<QFrame>("DiagFrame");
    ASSERT_NE(frame, nullptr);
    EXPECT_FALSE(frame->isVisible());
    Press(Qt::Key_D, Qt::AltModifier);
    ASSERT_TRUE(frame->isVisible());
    const QStringList lines = Find<QLabel>("DiagBox")->text().split('\n');
    ASSERT_EQ(lines.size(), 18);
    EXPECT_EQ(lines[0], "Diagnostics -");
    EXPECT_TRUE(lines[1].startsWith("Screen Height/Width    : "));
    EXPECT_TRUE(lines[15].startsWith("Image Zoom / Rotation  : 1.00 0.00"));
    EXPECT_EQ(lines[17], "Press ALT and D keys simultaneously to hide");
    const QString box = lines[9];
    Press(Qt::Key_Return);
    EXPECT_NE(Find<QLabel>("DiagBox")->text().split('\n')[9], box);
    Press(Qt::Key_D, Qt::AltModifier);
    EXPECT_FALSE(frame->isVisible());
}

TEST_F(Wiring, SkipStepsIsKeptAndRestoreDefaultsClearsTheSettings) {
    Run();
    QTest::mouseClick(Forms->StartWindow()->SkipSteps, Qt::LeftButton);
    EXPECT_NE(SettingsText().find("SkipOpenScreen=Y"), std::string::npos);
    Files = {"", Page.Transcription};
    Forms->StartWindow()->Stage1->click();
    ASSERT_TRUE(Stats().isVisible());
    Stats().Command1()->click();
    EXPECT_NE(SettingsText().find("Version=1.0.0 / 21-Jun-2022"), std::string::npos);

    Run();
    EXPECT_TRUE(Forms->StartWindow()->SkipSteps->isChecked());
    Forms->StartWindow()->RestoreDefaults->click();
    EXPECT_EQ(SettingsText().find("Version="), std::string::npos);
    EXPECT_EQ(SettingsText().find("SkipOpenScreen"), std::string::npos);
}

} // namespace
} // namespace tv::test
