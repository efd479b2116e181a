// The flows of the start window through the running program: the four steps, the
// statistics-only path with and without the skip box, New Scan, Quit and the closing of each
// window, with the real dialogs answered by a scripted user and the event loop of the program.
#include "EventLoopTesting.h"

#include "stats/Form3.h"

#include <QAction>
#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace tv::test {
namespace {

const QString MainName = QStringLiteral("Form1");
const QString StartName = QStringLiteral("StartForm");
const QString StatsName = QStringLiteral("Form3");

class ProgramFlow : public ProgramTest {
  protected:
    // The statistics-only path has shown the screen with "Exit" and closed the start window;
    // the program goes on running with the screen open.
    void StatisticsOnlyScreenStays() {
        ASSERT_TRUE(WaitFor([] { return VisibleWindows() == QStringList{StatsName}; }))
            << VisibleWindows().join(",").toStdString();
        Form3& stats = Forms->Statistics();
        QTest::qWait(300); // the program has every chance to end by itself
        EXPECT_FALSE(Ended());
        EXPECT_EQ(VisibleWindows(), QStringList{StatsName});
        EXPECT_EQ(stats.Command1()->text(), "Exit");
        EXPECT_FALSE(stats.Options(3)->isEnabled());
        EXPECT_TRUE(stats.Options(0)->isChecked());
        EXPECT_TRUE(stats.Options(0)->font().underline());
        EXPECT_FALSE(stats.Options(3)->font().underline());
        EXPECT_TRUE(WaitFor([&stats] { return ActiveWindow() == &stats; }));
    }
};

TEST_F(ProgramFlow, FourStepsLeadToTheMainWindowWithTheKeysOnIt) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        EXPECT_EQ(VisibleWindows(), QStringList{StartName});
        EXPECT_TRUE(FocusComesTo("Stage1"));
        Verifying(page);
        EXPECT_FALSE(Ended());
        EXPECT_EQ(ActiveWindow(), Window);
        EXPECT_TRUE(FocusComesTo("DummyBox")) << FocusName().toStdString();
        const int16_t line = S().Table.CurrentLine;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_EQ(S().Table.CurrentLine, line + 1);
    });
}

TEST_F(ProgramFlow, AfterStepThreeTheArrowKeysAndEnterReachTheMainWindow) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        StepsOneAndTwo(page);
        Click(Start().Stage3);
        TakeMainWindow();
        ASSERT_TRUE(WaitFor([this] { return ActiveWindow() == Window; }));
        EXPECT_TRUE(FocusComesTo("DummyBox")) << FocusName().toStdString();
        EXPECT_EQ(VisibleWindows(), (QStringList{MainName, StartName}));
        EXPECT_TRUE(Start().Stage4->isEnabled());
        // The keys go where the focus is, with no click on the main window first.
        const int32_t top = S().Box.BoxTop;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        EXPECT_GT(S().Box.BoxTop, top);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_EQ(S().Calib.CalibrationStage, 2);
    });
}

TEST_F(ProgramFlow, SkipStepsGoesFromTheScanChoiceStraightToCalibration) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        Click(Start().SkipSteps);
        User.Chooses(page.Scan);
        User.Chooses(page.Transcription);
        Click(Start().Stage1);
        ASSERT_TRUE(UserDone());
        TakeMainWindow();
        ASSERT_TRUE(WaitFor([] { return VisibleWindows() == QStringList{MainName}; }));
        EXPECT_EQ(S().Calib.CalibrationStage, 1);
        EXPECT_TRUE(WaitFor([this] { return ActiveWindow() == Window; }));
        EXPECT_TRUE(FocusComesTo("DummyBox")) << FocusName().toStdString();
        EXPECT_FALSE(Ended());
    });
}

TEST_F(ProgramFlow, TranscriptionWithoutAScanStaysInTheStatisticsScreenUntilExit) {
    StartProgram();
    RunProgram([&] {
        User.Chooses(""); // no scan
        Click(Start().Stage1);
        ASSERT_TRUE(UserDone());
        User.Chooses(DataFile("check/clean.QRL"));
        Click(Start().Stage2);
        ASSERT_TRUE(UserDone());
        StatisticsOnlyScreenStays();
        Click(Forms->Statistics().Command1());
        ExpectEndedWithNoWindowLeft();
    });
}

TEST_F(ProgramFlow, WithSkipStepsACancelledScanStillEndsInTheStatisticsScreen) {
    StartProgram();
    RunProgram([&] {
        Click(Start().SkipSteps);
        User.Chooses("");
        User.Chooses(DataFile("check/clean.QRL"));
        Click(Start().Stage1);
        ASSERT_TRUE(UserDone());
        StatisticsOnlyScreenStays();
    });
}

TEST_F(ProgramFlow, TranscriptionNamedAloneOnTheCommandLineWithTheScanDialogCancelled) {
    StartProgram("", DataFile("check/clean.QRL"));
    User.Chooses("");
    RunProgram([&] {
        ASSERT_TRUE(UserDone());
        StatisticsOnlyScreenStays();
    });
}

TEST_F(ProgramFlow, ClosingTheStatisticsOnlyScreenByItsWindowEndsTheProgram) {
    StartProgram();
    RunProgram([&] {
        Click(Start().SkipSteps);
        User.Chooses("");
        User.Chooses(DataFile("check/clean.QRL"));
        Click(Start().Stage1);
        ASSERT_TRUE(UserDone());
        StatisticsOnlyScreenStays();
        Forms->Statistics().close();
        ExpectEndedWithNoWindowLeft();
    });
}

TEST_F(ProgramFlow, QuitEndsTheProgram) {
    StartProgram();
    RunProgram([&] {
        Click(Start().Quit);
        ExpectEndedWithNoWindowLeft();
    });
}

TEST_F(ProgramFlow, CancellingTheTranscriptionChoiceQuits) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        User.Chooses(page.Scan);
        Click(Start().Stage1);
        ASSERT_TRUE(UserDone());
        User.Chooses("");
        Click(Start().Stage2);
        ASSERT_TRUE(UserDone());
        ExpectEndedWithNoWindowLeft();
    });
}

TEST_F(ProgramFlow, ClosingTheStartWindowBeforeStepThreeQuits) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        User.Chooses(page.Scan);
        Click(Start().Stage1);
        ASSERT_TRUE(UserDone());
        Start().close();
        ExpectEndedWithNoWindowLeft();
    });
}

TEST_F(ProgramFlow, ClosingTheStartWindowAfterStepThreeLeavesTheMainWindowRunning) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        StepsOneAndTwo(page);
        Click(Start().Stage3);
        TakeMainWindow();
        Start().close();
        QTest::qWait(300);
        EXPECT_FALSE(Ended());
        EXPECT_EQ(VisibleWindows(), QStringList{MainName});
        EXPECT_TRUE(WaitFor([this] { return ActiveWindow() == Window; }));
        EXPECT_TRUE(FocusComesTo("DummyBox")) << FocusName().toStdString();
    });
}

TEST_F(ProgramFlow, ClosingTheMainWindowEndsTheProgramAndClosesTheOthers) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        Verifying(page);
        Click(Window->findChild<QAbstractButton*>("ShowStats"));
        ASSERT_TRUE(WaitFor([] { return VisibleWindows().contains(StatsName); }));
        Window->close();
        ExpectEndedWithNoWindowLeft();
    });
}

TEST_F(ProgramFlow, TheExitButtonEndsTheProgram) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        Verifying(page);
        Click(Window->findChild<QAbstractButton*>("ExitButton"));
        ExpectEndedWithNoWindowLeft();
    });
}

TEST_F(ProgramFlow, TheStatisticsScreenOfAVerifyingSessionHidesAndGivesTheKeysBack) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        Verifying(page);
        Click(Window->findChild<QAbstractButton*>("ShowStats"));
        ASSERT_TRUE(WaitFor([] { return VisibleWindows().contains(StatsName); }));
        Form3& stats = Forms->Statistics();
        EXPECT_EQ(stats.Command1()->text(), "Close");
        EXPECT_TRUE(stats.Options(3)->isEnabled());
        Click(stats.Command1());
        EXPECT_TRUE(WaitFor([] { return VisibleWindows() == QStringList{MainName}; }));
        EXPECT_TRUE(WaitFor([this] { return ActiveWindow() == Window; }));
        EXPECT_TRUE(FocusComesTo("DummyBox")) << FocusName().toStdString();
        // Closing its window does the same.
        Click(Window->findChild<QAbstractButton*>("ShowStats"));
        ASSERT_TRUE(WaitFor([] { return VisibleWindows().contains(StatsName); }));
        stats.close();
        EXPECT_TRUE(WaitFor([] { return VisibleWindows() == QStringList{MainName}; }));
        EXPECT_FALSE(Ended());
    });
}

TEST_F(ProgramFlow, NewScanShowsTheStartWindowAgainAndItsStepsReuseTheMainWindow) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        Verifying(page);
        Window->findChild<QAction*>("MenuNewScan")->trigger();
        ASSERT_TRUE(WaitFor([] { return VisibleWindows() == QStringList{StartName}; }));
        EXPECT_FALSE(Ended());
        Form1* first = Window;
        StepsOneAndTwo(page);
        Click(Start().Stage3);
        TakeMainWindow();
        EXPECT_EQ(Window, first);
        // The scan was verified before: it opens calibrated at once.
        EXPECT_EQ(S().Calib.CalibrationStage, 0);
        Click(Start().Stage4);
        EXPECT_TRUE(WaitFor([] { return VisibleWindows() == QStringList{MainName}; }));
        EXPECT_TRUE(WaitFor([this] { return ActiveWindow() == Window; }));
        EXPECT_FALSE(Ended());
    });
}

TEST_F(ProgramFlow, NewScanWhileCalibratingIsRefusedInTheRealMessageBox) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        StepsOneAndTwo(page);
        Click(Start().Stage3);
        TakeMainWindow();
        User.Clicks(QMessageBox::Ok, "Cannot load new scan while you are calibrating");
        Window->findChild<QAction*>("MenuNewScan")->trigger();
        ASSERT_TRUE(UserDone());
        EXPECT_TRUE(Window->isVisible());
        EXPECT_EQ(S().Calib.CalibrationStage, 1);
        EXPECT_FALSE(Ended());
    });
}

} // namespace
} // namespace tv::test
