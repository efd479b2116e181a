// The start window: its four steps with and without SkipSteps, the statistics-only path, quitting
// and closing, and New Scan.
#include "SessionFormsTesting.h"

#include "session/Session.h"
#include "view/ImageView.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace tv::test {
namespace {

class StartFormTest : public FormsTest {
  protected:
    SamplePage Page = GeneratePage("births1872", Dir.Path());
};

TEST_F(StartFormTest, LoadShowsTheFourStepsWithOnlyTheFirstEnabled) {
    StartForm& start = OpenStartForm();
    EXPECT_EQ(start.Stage1->text(), "Step 1 - specify the scanned image file");
    EXPECT_EQ(start.Stage2->text(), "Step 2 - specify your transcription file");
    EXPECT_EQ(start.Stage3->text(), "Step 3 - line up the scanned image and your transcription");
    EXPECT_EQ(start.Stage4->text(), "Step 4 - now ready to verify transcription");
    EXPECT_TRUE(start.Stage1->isEnabled());
    EXPECT_FALSE(start.Stage2->isEnabled());
    EXPECT_FALSE(start.Stage3->isEnabled());
    EXPECT_FALSE(start.Stage4->isEnabled());
    EXPECT_TRUE(start.FirstScan);
    EXPECT_FALSE(start.Proceeding);
    EXPECT_TRUE(start.RestoreDefaults->isVisible());
    EXPECT_TRUE(start.SkipSteps->isVisible());
}

TEST_F(StartFormTest, Label3ShowsTheVersionLine) {
    EXPECT_EQ(OpenStartForm().Label3->text().toStdString(), VersionLine());
    EXPECT_EQ(Start->Label3->text(), "Version 1.0.0 / 21-Jun-2022");
}

TEST_F(StartFormTest, StoredSkipSettingTicksTheBoxWithoutCountingAsAClick) {
    int saved = 0;
    StartForm& start = OpenStartForm(true);
    start.SkipStepsChanged = [&saved](bool) { ++saved; };
    EXPECT_TRUE(start.SkipSteps->isChecked());
    EXPECT_EQ(saved, 0);
}

TEST_F(StartFormTest, ClickingSkipStepsHandsTheTickToTheSettings) {
    std::vector<bool> saved;
    StartForm& start = OpenStartForm();
    start.SkipStepsChanged = [&saved](bool ticked) { saved.push_back(ticked); };
    QTest::mouseClick(start.SkipSteps, Qt::LeftButton);
    QTest::mouseClick(start.SkipSteps, Qt::LeftButton);
    EXPECT_EQ(saved, (std::vector<bool>{true, false}));
}

TEST_F(StartFormTest, RestoreDefaultsButtonCallsItsHook) {
    int restored = 0;
    StartForm& start = OpenStartForm();
    start.RestoreDefaultsClicked = [&restored] { ++restored; };
    start.RestoreDefaults->click();
    EXPECT_EQ(restored, 1);
}

TEST_F(StartFormTest, StepOneCreatesTheMainWindowAndLoadsTheScan) {
    Files = {Page.Scan};
    StartForm& start = OpenStartForm();
    start.Stage1->click();
    EXPECT_EQ(MainFormsCreated, 1);
    EXPECT_EQ(start.ImageFileChosen, Page.Scan);
    EXPECT_EQ(S().GraphicsFile, Page.Scan);
    EXPECT_EQ(Window->View().Metrics().ImagePixelWidth, 2400);
    EXPECT_FALSE(start.RestoreDefaults->isVisible());
    EXPECT_FALSE(start.SkipSteps->isVisible());
    EXPECT_FALSE(start.Stage1->isEnabled());
    EXPECT_TRUE(start.Stage2->isEnabled());
    EXPECT_FALSE(Window->isVisible());
    EXPECT_EQ(Find<QLabel>("VersionLine")->text(), start.Label3->text());
    ASSERT_EQ(Requests.size(), 1U);
    EXPECT_EQ(Requests[0].Title, "Select the file containing the scanned image of the index page");
}

TEST_F(StartFormTest, FourStepsOneClickEach) {
    Files = {Page.Scan, Page.Transcription};
    StartForm& start = OpenStartForm();
    start.Stage1->click();
    start.Stage2->click();
    EXPECT_EQ(start.TranscriptionChosen, Page.Transcription);
    EXPECT_FALSE(start.Stage2->isEnabled());
    EXPECT_TRUE(start.Stage3->isEnabled());
    EXPECT_FALSE(start.Proceeding);
    start.Stage3->click();
    EXPECT_TRUE(Window->isVisible());
    EXPECT_EQ(S().Calib.CalibrationStage, 1);
    EXPECT_TRUE(start.Proceeding);
    EXPECT_TRUE(start.Stage4->isEnabled());
    EXPECT_TRUE(start.isVisible());
    start.Stage4->click();
    EXPECT_FALSE(start.isVisible());
    EXPECT_TRUE(Window->isVisible());
    EXPECT_FALSE(Window->Ended());
}

TEST_F(StartFormTest, SkipStepsGoesStraightToStepFourAfterTheImage) {
    Files = {Page.Scan, Page.Transcription};
    StartForm& start = OpenStartForm(true);
    start.Stage1->click();
    EXPECT_FALSE(start.isVisible());
    EXPECT_TRUE(start.Proceeding);
    EXPECT_TRUE(Window->isVisible());
    EXPECT_EQ(S().Calib.CalibrationStage, 1);
    EXPECT_EQ(Requests.size(), 2U);
}

TEST_F(StartFormTest, CancelledImageWithSkipStepsEndsInTheStatisticsOnly) {
    Files = {"", Page.Transcription};
    StartForm& start = OpenStartForm(true);
    start.Stage1->click();
    EXPECT_EQ(StatisticsRequests, std::vector<bool>{true});
    EXPECT_EQ(start.ImageFileChosen, "");
    EXPECT_EQ(start.TranscriptionChosen, Page.Transcription);
    EXPECT_FALSE(start.isVisible());
    EXPECT_TRUE(start.Proceeding);
    EXPECT_FALSE(Window->isVisible());
    EXPECT_FALSE(Window->Ended());
    EXPECT_EQ(S().Calib.CalibrationStage, 0);
    EXPECT_EQ(S().StatsOption, 0);
    EXPECT_FALSE(S().StatsSummaryText.empty());
}

TEST_F(StartFormTest, StatisticsOnlyPathCallsTheShowStatisticsHook) {
    Files = {"", Page.Transcription};
    StartForm& start = OpenStartForm();
    start.Stage1->click();
    EXPECT_TRUE(StatisticsRequests.empty());
    start.Stage2->click();
    EXPECT_EQ(StatisticsRequests, std::vector<bool>{true});
    EXPECT_FALSE(start.isVisible());
    EXPECT_TRUE(start.Proceeding);
    EXPECT_FALSE(Window->Ended());
}

TEST_F(StartFormTest, CancelledTranscriptionQuitsTheProgram) {
    Files = {Page.Scan, ""};
    StartForm& start = OpenStartForm();
    QSignalSpy quitting(&start, &StartForm::Quitting);
    start.Stage1->click();
    start.Stage2->click();
    EXPECT_EQ(start.TranscriptionChosen, "**QUIT**");
    EXPECT_EQ(quitting.count(), 1);
    EXPECT_TRUE(Window->Ended());
    EXPECT_FALSE(start.isVisible());
    EXPECT_TRUE(Prompts.Shown.empty());
}

TEST_F(StartFormTest, QuitButtonClosesTheMainWindowAndItself) {
    Files = {Page.Scan};
    StartForm& start = OpenStartForm();
    start.Stage1->click();
    QSignalSpy closing(Window, &Form1::Closing);
    start.Quit->click();
    EXPECT_EQ(closing.count(), 1);
    EXPECT_TRUE(Window->Ended());
    EXPECT_FALSE(start.isVisible());
}

TEST_F(StartFormTest, ClosingTheStartWindowBeforeStepThreeQuits) {
    Files = {Page.Scan, Page.Transcription};
    StartForm& start = OpenStartForm();
    QSignalSpy quitting(&start, &StartForm::Quitting);
    start.Stage1->click();
    start.Stage2->click();
    start.close();
    EXPECT_EQ(quitting.count(), 1);
    EXPECT_TRUE(Window->Ended());
}

TEST_F(StartFormTest, ClosingTheStartWindowAfterStepThreeLeavesTheMainWindow) {
    Files = {Page.Scan, Page.Transcription};
    StartForm& start = OpenStartForm();
    QSignalSpy quitting(&start, &StartForm::Quitting);
    start.Stage1->click();
    start.Stage2->click();
    start.Stage3->click();
    start.close();
    EXPECT_EQ(quitting.count(), 0);
    EXPECT_FALSE(Window->Ended());
    EXPECT_TRUE(Window->isVisible());
}

TEST_F(StartFormTest, ScanThatIsNoPictureIsReportedAndEndsTheProgram) {
    const std::string bad = Dir.Write("1872B20234.jpg", "this is not a picture at all");
    Files = {bad, Page.Transcription};
    StartForm& start = OpenStartForm(true);
    start.Stage1->click();
    ASSERT_EQ(Prompts.Shown.size(), 1U);
    EXPECT_EQ(Prompts.Shown[0].Text, bad + " is not a valid picture file");
    EXPECT_EQ(Prompts.Shown[0].Title, "Tallyview");
    EXPECT_EQ(Prompts.Shown[0].Choice, Buttons::Ok);
    EXPECT_TRUE(Window->Ended());
    EXPECT_FALSE(start.isVisible());
    // Nothing of step 2 ran: the transcription dialog was never opened.
    EXPECT_EQ(Requests.size(), 1U);
}

TEST_F(StartFormTest, MissingScanIsReportedWithItsErrorNumber) {
    const std::string missing = (Dir.Path() / "1872B29999.jpg").string();
    Files = {missing};
    OpenStartForm().Stage1->click();
    ASSERT_EQ(Prompts.Shown.size(), 1U);
    EXPECT_EQ(Prompts.Shown[0].Text, "Error 1 opening " + missing);
    EXPECT_TRUE(Window->Ended());
}

TEST_F(StartFormTest, NewScanKeepsTheMainWindowAndResetsItOnStepOne) {
    Files = {Page.Scan, Page.Transcription};
    OpenStartForm(true).Stage1->click();
    Form1* main = Window;
    main->Model().Calib.CalibrationStage = 0; // as if calibrated
    main->Model().Content.BoxFontSize = 14;

    Start = std::make_unique<StartForm>([this] { return CreateMainForm(); }, false);
    Start->show();
    Start->NewScan(main);
    EXPECT_FALSE(Start->FirstScan);
    EXPECT_FALSE(main->isVisible());
    Files = {Page.Scan, Page.Transcription};
    Start->Stage1->click();
    EXPECT_EQ(MainFormsCreated, 1);
    EXPECT_EQ(Window, main);
    EXPECT_EQ(S().Calib.CalibrationStage, 0);
    EXPECT_EQ(S().Content.BoxFontSize, 14);
    EXPECT_TRUE(Start->Stage2->isEnabled());
    Start->Stage2->click();
    Start->Stage3->click();
    EXPECT_EQ(S().Calib.CalibrationStage, 1);
    EXPECT_TRUE(main->isVisible());
}

} // namespace
} // namespace tv::test
