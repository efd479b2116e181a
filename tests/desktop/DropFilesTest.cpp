// Files dropped on the start window or the main window, and files named on the command line,
// taken as the scan or the transcription by their kind, as if chosen in the open-file dialogs.
#include "DesktopTesting.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QUrl>

namespace tv::test {
namespace {

QMimeData* FilesData(const std::vector<std::string>& paths) {
    auto* data = new QMimeData;
    QList<QUrl> urls;
    for (const std::string& path : paths)
        urls << QUrl::fromLocalFile(PathToQString(path));
    data->setUrls(urls);
    return data;
}

// Drags the files into the widget as the desktop does; whether the widget takes them. Qt
// delivers the drop only to the widget that took the drag as it entered.
bool Enter(QWidget& widget, const QMimeData& data) {
    QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &enter);
    return enter.isAccepted();
}

// Whether the widget takes the files dragged over it; the drag then leaves it again.
bool TakesDrag(QWidget& widget, const std::vector<std::string>& paths) {
    std::unique_ptr<QMimeData> data(FilesData(paths));
    const bool taken = Enter(widget, *data);
    QDragLeaveEvent leave;
    QApplication::sendEvent(&widget, &leave);
    return taken;
}

// Drags the files into the widget and drops them there; whether the drop was taken.
bool Drop(QWidget& widget, const std::vector<std::string>& paths) {
    std::unique_ptr<QMimeData> data(FilesData(paths));
    if (!Enter(widget, *data)) return false;
    QDropEvent drop(QPointF(20, 20), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &drop);
    return drop.isAccepted();
}

class DropOnStartWindow : public FormsTest {
  protected:
    SamplePage Page = GeneratePage("births1872", Dir.Path());
    std::string Notes = Dir.Write("notes.txt", "not a transcription");

    // The steps a drop starts run once the drop is over.
    void DropAndWait(const std::vector<std::string>& paths, const std::function<bool()>& done) {
        ASSERT_TRUE(Drop(*Start, paths));
        ASSERT_TRUE(QTest::qWaitFor(done, 10000));
    }
};

TEST_F(DropOnStartWindow, StepOneTakesAScanOrATranscriptionButNoOtherFile) {
    StartForm& start = OpenStartForm();
    EXPECT_TRUE(TakesDrag(start, {Page.Scan}));
    EXPECT_TRUE(TakesDrag(start, {Page.Transcription}));
    EXPECT_TRUE(TakesDrag(start, {Notes, Page.Transcription, Page.Scan}));
    EXPECT_FALSE(TakesDrag(start, {Notes}));
    EXPECT_FALSE(Drop(start, {Notes}));
    QApplication::processEvents();
    EXPECT_TRUE(start.Stage1->isEnabled());
    EXPECT_EQ(MainFormsCreated, 0);
}

TEST_F(DropOnStartWindow, ScanAndTranscriptionInAnyOrderRunTheFourStepsWithoutADialog) {
    OpenStartForm();
    DropAndWait({Page.Transcription, Page.Scan}, [this] { return !Start->isVisible(); });
    EXPECT_TRUE(Requests.empty());
    EXPECT_EQ(S().GraphicsFile, Page.Scan);
    EXPECT_EQ(S().TranscriptionFile, Page.Transcription);
    EXPECT_TRUE(Window->isVisible());
    EXPECT_EQ(S().Calib.CalibrationStage, 1);
    // The tick was not the user's: it stays as it was.
    EXPECT_FALSE(Start->SkipSteps->isChecked());
}

TEST_F(DropOnStartWindow, AScanAloneIsStepOneAndStepTwoWaitsForItsClick) {
    StartForm& start = OpenStartForm();
    DropAndWait({Page.Scan}, [&start] { return start.Stage2->isEnabled(); });
    EXPECT_TRUE(Requests.empty());
    EXPECT_EQ(start.ImageFileChosen, Page.Scan);
    EXPECT_EQ(S().GraphicsFile, Page.Scan);
    EXPECT_FALSE(start.Stage1->isEnabled());
    EXPECT_TRUE(start.Stage2->hasFocus());
}

TEST_F(DropOnStartWindow, ATranscriptionAtStepOneLeavesTheScanToItsDialogThenRunsStepTwo) {
    Files = {Page.Scan};
    StartForm& start = OpenStartForm();
    DropAndWait({Page.Transcription}, [&start] { return start.Stage3->isEnabled(); });
    ASSERT_EQ(Requests.size(), 1U);
    EXPECT_EQ(Requests[0].Title, "Select the file containing the scanned image of the index page");
    EXPECT_EQ(start.ImageFileChosen, Page.Scan);
    EXPECT_EQ(start.TranscriptionChosen, Page.Transcription);
}

TEST_F(DropOnStartWindow, ATranscriptionWithTheScanDialogCancelledIsAStatisticsOnlyCheck) {
    Files = {""};
    StartForm& start = OpenStartForm();
    DropAndWait({Page.Transcription}, [this] { return !StatisticsRequests.empty(); });
    EXPECT_EQ(StatisticsRequests, std::vector<bool>{true});
    EXPECT_EQ(start.TranscriptionChosen, Page.Transcription);
    EXPECT_FALSE(start.isVisible());
}

TEST_F(DropOnStartWindow, StepTwoTakesOnlyATranscription) {
    Files = {Page.Scan};
    StartForm& start = OpenStartForm();
    start.Stage1->click();
    EXPECT_FALSE(TakesDrag(start, {Page.Scan}));
    EXPECT_TRUE(TakesDrag(start, {Page.Scan, Page.Transcription}));
    DropAndWait({Page.Scan, Page.Transcription}, [&start] { return start.Stage3->isEnabled(); });
    EXPECT_EQ(Requests.size(), 1U);
    EXPECT_EQ(start.TranscriptionChosen, Page.Transcription);
    // Lined up and verifying: no step waits for a file any more.
    EXPECT_FALSE(TakesDrag(start, {Page.Transcription}));
}

class DropOnMainWindow : public DesktopTest {
  protected:
    SamplePage PageIn(const char* kind, const char* folder) {
        std::filesystem::create_directories(Dir.Path() / folder);
        return GeneratePage(kind, Dir.Path() / folder);
    }

    SamplePage First = PageIn("births1872", "first");
    SamplePage Second = PageIn("births1911", "second");
};

TEST_F(DropOnMainWindow, ANewPairStartsANewScanWithThemWhenCalibrated) {
    Run(First.Scan, First.Transcription);
    WaitForMainWindow();
    Calibrate(First);
    EXPECT_TRUE(TakesDrag(*Window, {Second.Scan, Second.Transcription}));
    ASSERT_TRUE(Drop(*Window, {Second.Transcription, Second.Scan}));
    ASSERT_TRUE(QTest::qWaitFor([this] { return S().GraphicsFile == Second.Scan; }, 10000));
    WaitForMainWindow();
    EXPECT_TRUE(Requests.empty());
    EXPECT_EQ(S().TranscriptionFile, Second.Transcription);
    EXPECT_EQ(S().Calib.CalibrationStage, 1);
    // New Scan saved the first scan's calibration.
    EXPECT_NE(SettingsText().find("ImgFile=1872B20234.jpg"), std::string::npos);
}

TEST_F(DropOnMainWindow, IsRefusedWhileCalibratingAsNewScanIs) {
    Run(First.Scan, First.Transcription);
    WaitForMainWindow();
    // The drop itself is refused: the sender learns that nothing was taken.
    std::unique_ptr<QMimeData> data(FilesData({Second.Scan}));
    ASSERT_TRUE(Enter(*Window, *data));
    QDropEvent drop(QPointF(20, 20), Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Window, &drop);
    EXPECT_FALSE(drop.isAccepted());
    EXPECT_EQ(drop.dropAction(), Qt::IgnoreAction);
    QApplication::processEvents();
    ASSERT_EQ(Prompts.Shown.size(), 1U);
    EXPECT_EQ(Prompts.Shown[0].Text, "Cannot load new scan while you are calibrating");
    EXPECT_EQ(S().GraphicsFile, First.Scan);
    EXPECT_TRUE(Window->isVisible());
}

TEST_F(DropOnMainWindow, FilesOfNoKnownKindAreNotTaken) {
    Run(First.Scan, First.Transcription);
    WaitForMainWindow();
    const std::string notes = Dir.Write("notes.txt", "x");
    EXPECT_FALSE(TakesDrag(*Window, {notes}));
    EXPECT_FALSE(Drop(*Window, {notes}));
    QApplication::processEvents();
    EXPECT_TRUE(Prompts.Shown.empty());
}

class CommandLineFilesTest : public DesktopTest {
  protected:
    SamplePage Page = GeneratePage("births1872", Dir.Path());
};

TEST_F(CommandLineFilesTest, AScanAloneRunsStepOneWithIt) {
    Run(Page.Scan, "");
    StartForm& start = *Forms->StartWindow();
    ASSERT_TRUE(QTest::qWaitFor([&start] { return start.Stage2->isEnabled(); }, 10000));
    EXPECT_TRUE(Requests.empty());
    EXPECT_EQ(start.ImageFileChosen, Page.Scan);
}

TEST_F(CommandLineFilesTest, ATranscriptionAloneAsksForTheScanThenReadsIt) {
    Files = {Page.Scan};
    Run("", Page.Transcription);
    StartForm& start = *Forms->StartWindow();
    ASSERT_TRUE(QTest::qWaitFor([&start] { return start.Stage3->isEnabled(); }, 10000));
    ASSERT_EQ(Requests.size(), 1U);
    EXPECT_EQ(start.TranscriptionChosen, Page.Transcription);
}

} // namespace
} // namespace tv::test
