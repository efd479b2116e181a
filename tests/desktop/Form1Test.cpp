// The main window: its controls, the one key handler that consumes every key, the box drawn where
// the session places it, mouse drags, menus and buttons, scrolling and the change watch.
#include "SessionFormsTesting.h"

#include "core/Text.h"
#include "view/ImageView.h"
#include "view/RecordBoxWidget.h"

#include <QAction>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <chrono>

namespace tv::test {
namespace {

// Counts the key events that reach a widget past the window's preview.
class KeyCounter : public QObject {
  public:
    int Keys = 0;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) ++Keys;
        return QObject::eventFilter(watched, event);
    }
};

class Form1Test : public FormsTest {
  protected:
    SamplePage Page = GeneratePage("births1872", Dir.Path());

    void SetUp() override { OpenPage(Page); }

    QColor BoxColour() const { return Window->RdFrame().palette().color(QPalette::Window); }
    void Trigger(const QString& menuItem) {
        QAction* item = Find<QAction>(menuItem);
        ASSERT_NE(item, nullptr) << menuItem.toStdString();
        item->trigger();
    }
    void Click(const QString& button) {
        QToolButton* b = Find<QToolButton>(button);
        ASSERT_NE(b, nullptr) << button.toStdString();
        QTest::mouseClick(b, Qt::LeftButton);
    }
    // The file saved again by the transcription program, a little later.
    void Touch() {
        const auto later =
            std::filesystem::last_write_time(Page.Transcription) + std::chrono::seconds(5);
        std::filesystem::last_write_time(Page.Transcription, later);
    }
};

TEST_F(Form1Test, ControlsCarryTheirDocumentedNames) {
    for (const char* name : {"RdFrame", "NameBox", "DistBox", "NotesBox", "ResizeBox", "FootLabel"})
        EXPECT_NE(Find<QWidget>(name), nullptr) << name;
    EXPECT_NE(DummyBox(), nullptr);
    for (const char* name :
         {"PrevRec", "NextRec", "ZoomIn", "ZoomOut", "ShowStats", "RotateLeft", "RotateRight",
          "ExitButton", "TopCol1", "TopCol6", "AdjCol0", "AdjCol3"})
        EXPECT_NE(Find<QToolButton>(name), nullptr) << name;
    EXPECT_NE(Find<QFrame>("AdjCols"), nullptr);
    EXPECT_NE(Find<QLabel>("AdjColText0"), nullptr);
    for (const char* name :
         {"MenuNewScan", "MenuExit", "MenuReloadSCAFile", "MenuShowStats", "MenuShowRptSurnames",
          "MenuCalibrate", "MenuZoomIn", "MenuZoomOut", "MenuAntiAlias", "MenuSmoothing",
          "MenuMagnifier", "menuMirror", "MenuNegative", "MenuAboutImage", "MenuBoxColour0",
          "MenuBoxColour6", "MenuHelp", "MenuAbout"})
        EXPECT_NE(Find<QAction>(name), nullptr) << name;
    // The documented names are object names only: a screen reader announces what the user sees.
    for (const char* name : {"NameBox", "NextRec", "DummyBox", "FootLabel", "AdjCols", "RdFrame"})
        EXPECT_NE(Find<QWidget>(name)->accessibleName(), name);
}

TEST_F(Form1Test, CalibrationShowsTheBoxWithItsInstructionAndFooter) {
    EXPECT_TRUE(Window->RdFrame().isVisible());
    EXPECT_TRUE(
        Find<QLabel>("NotesBox")
            ->text()
            .startsWith("Move this box using the mouse or the arrow keys until it is just below "
                        "the 1st record in "
                        "column 1, then press the ENTER key. \nIf this is not a 6 column scan"));
    EXPECT_TRUE(Find<QLabel>("NameBox")->text().contains("HARRIS"));
    EXPECT_EQ(Find<QLabel>("FootLabel")->text(), ToQString(UnixLineEnds(S().Content.FootLabel)));
    EXPECT_TRUE(Find<QLabel>("FootLabel")->text().startsWith(" Line 6 of "));
    EXPECT_EQ(Window->windowTitle(), ToQString(S().Caption));
    EXPECT_TRUE(Window->windowTitle().startsWith("Tallyview - Births 1872"));
}

TEST_F(Form1Test, BoxIsDrawnWhereTheSessionPlacesIt) {
    const ViewMetrics m = Window->View().Metrics();
    EXPECT_NEAR(BoxOnScan().x(), BoxInSession().x(), 1.0);
    EXPECT_NEAR(BoxOnScan().y(), BoxInSession().y(), 1.0);
    EXPECT_EQ(Window->RdFrame().width(), std::lround(S().Box.BoxWidth / m.TwipsPerPixelX));
    EXPECT_EQ(S().Box.BoxWidth, std::min(CLng(0.8 * m.Control.Width),
                                         CLng(m.DisplayedWidth() / S().Scan.ColumnsAcross())));
}

TEST_F(Form1Test, BoxUsesTheTableFontAndTheNotesTheirOwnSize) {
    S().Content.BoxFontSize = 18;
    Press(Qt::Key_F); // 19: notes at 9
    EXPECT_EQ(Find<QLabel>("NameBox")->font().family(), "Times New Roman");
    EXPECT_EQ(Find<QLabel>("NameBox")->font().pointSize(), 19);
    EXPECT_EQ(Find<QLabel>("NotesBox")->font().pointSize(), 9);
}

TEST_F(Form1Test, EveryKeyIsConsumedByTheWindow) {
    KeyCounter counter;
    const QList<QWidget*> widgets = Window->findChildren<QWidget*>();
    for (QWidget* w : widgets)
        w->installEventFilter(&counter);
    const Qt::Key keys[] = {Qt::Key_A,      Qt::Key_X, Qt::Key_Tab,      Qt::Key_Space,
                            Qt::Key_Escape, Qt::Key_1, Qt::Key_Delete,   Qt::Key_F9,
                            Qt::Key_Home,   Qt::Key_M, Qt::Key_Backspace};
    for (Qt::Key key : keys)
        Press(key);
    Press(Qt::Key_F, Qt::AltModifier);
    QTest::keyClick(Find<QToolButton>("NextRec"), Qt::Key_Space);
    EXPECT_EQ(counter.Keys, 0);
    EXPECT_EQ(DummyBox()->text(), "");
    EXPECT_EQ(Window->focusWidget(), DummyBox());
    EXPECT_EQ(S().Calib.CalibrationStage, 1); // the space on the button did not click it
}

TEST_F(Form1Test, ArrowKeysMoveTheBoxByTheStep) {
    const int32_t top = S().Box.BoxTop;
    const int16_t step = S().MovementStep(false);
    Press(Qt::Key_Down);
    EXPECT_EQ(S().Box.BoxTop, top + step);
    Press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(S().Box.BoxTop, top + step - 8 * step);
    EXPECT_NEAR(BoxOnScan().y(), BoxInSession().y(), 1.0);
}

TEST_F(Form1Test, ButtonsFollowTheCommandsOfTheSession) {
    for (int c = 1; c <= 3; ++c)
        EXPECT_FALSE(Find<QToolButton>("TopCol" + QString::number(c))->isEnabled());
    EXPECT_FALSE(Find<QToolButton>("TopCol4")->isVisible());
    EXPECT_FALSE(Find<QToolButton>("ShowStats")->isEnabled());
    EXPECT_FALSE(Find<QAction>("MenuCalibrate")->isEnabled());
    EXPECT_TRUE(Find<QFrame>("AdjCols")->isVisible());
    EXPECT_TRUE(Find<QToolButton>("AdjCol0")->isEnabled());
    Calibrate(Page);
    for (int c = 1; c <= 3; ++c)
        EXPECT_TRUE(Find<QToolButton>("TopCol" + QString::number(c))->isEnabled());
    EXPECT_TRUE(Find<QToolButton>("ShowStats")->isEnabled());
    EXPECT_TRUE(Find<QAction>("MenuShowStats")->isEnabled());
    EXPECT_TRUE(Find<QAction>("MenuCalibrate")->isEnabled());
}

TEST_F(Form1Test, NextAndPreviousButtonsDoWhatEnterAndBackspaceDo) {
    Calibrate(Page);
    const int16_t top = S().Table.CurrentLine;
    Click("NextRec");
    Click("NextRec");
    EXPECT_EQ(S().Table.CurrentLine, top + 2);
    Click("PrevRec");
    EXPECT_EQ(S().Table.CurrentLine, top + 1);
    EXPECT_NEAR(BoxOnScan().y(), Page.Places.at(top + 1).Y, Page.Pitch / 4.0);
    EXPECT_EQ(Window->focusWidget(), DummyBox());
}

TEST_F(Form1Test, ColumnButtonsGoToTheirColumnTops) {
    Calibrate(Page);
    Click("TopCol3");
    EXPECT_EQ(S().Table.CurrentLine, Page.FirstLineOfColumn(3));
    EXPECT_NEAR(BoxOnScan().y(), Page.Places.at(Page.FirstLineOfColumn(3)).Y, Page.Pitch / 4.0);
}

TEST_F(Form1Test, DraggingTheBoxByItsLabelDropsItThere) {
    const QPointF before = BoxOnScan();
    QLabel* name = Find<QLabel>("NameBox");
    QTest::mousePress(name, Qt::LeftButton, {}, QPoint(10, 5));
    QTest::mouseMove(name, QPoint(40, 25));
    // The box moved with the pointer, so the pointer is over the same point of the label again.
    QTest::mouseRelease(name, Qt::LeftButton, {}, QPoint(10, 5));
    const double zoom = Window->View().Metrics().Zoom;
    EXPECT_NEAR(BoxInSession().x(), before.x() + 30 / zoom, 1.0);
    EXPECT_NEAR(BoxInSession().y(), before.y() + 20 / zoom, 1.0);
    EXPECT_NEAR(BoxOnScan().y(), BoxInSession().y(), 1.0);
    // The dropped place is what the next calibration stage takes.
    const int32_t dropped = S().Box.BoxTop;
    Press(Qt::Key_Return);
    EXPECT_EQ(S().Calib.ColumnTopY[1], dropped);
}

TEST_F(Form1Test, DraggingTheSizeHandleSetsTheBoxWidth) {
    QLabel* handle = Find<QLabel>("ResizeBox");
    const int width = Window->RdFrame().width();
    QTest::mousePress(handle, Qt::LeftButton, {}, QPoint(8, 8));
    QTest::mouseMove(handle, QPoint(-92, 8));
    // The handle moved with the box's edge, under the pointer.
    QTest::mouseRelease(handle, Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_EQ(Window->RdFrame().width(), width - 100);
    EXPECT_NEAR(S().Box.BoxWidth, (width - 100) * Window->View().Metrics().TwipsPerPixelX, 1.0);
}

TEST_F(Form1Test, ZoomButtonsAndKeysStepTheZoom) {
    Click("ZoomIn");
    EXPECT_EQ(S().Box.CurrentZoom, 125.0F);
    EXPECT_DOUBLE_EQ(Window->View().Metrics().Zoom, 1.25);
    Press(Qt::Key_F12);
    EXPECT_EQ(S().Box.CurrentZoom, 100.0F);
    Trigger("MenuZoomOut");
    EXPECT_EQ(S().Box.CurrentZoom, 90.0F);
    EXPECT_NEAR(BoxOnScan().y(), BoxInSession().y(), 1.0);
}

TEST_F(Form1Test, RotateButtonsTurnTheScanAndGiveTheHintOnce) {
    Click("RotateLeft");
    EXPECT_FLOAT_EQ(S().Box.ScanRotation, 0.4F);
    EXPECT_TRUE(
        Find<QLabel>("NotesBox")
            ->text()
            .contains("Press the rotation key repeatedly until the scan is correctly aligned"));
    Click("RotateRight");
    EXPECT_FLOAT_EQ(S().Box.ScanRotation, 0.0F);
}

TEST_F(Form1Test, BoxColourMenuColoursTheBoxAndTicksOneItem) {
    Trigger("MenuBoxColour3");
    EXPECT_EQ(BoxColour(), QColor(192, 192, 255));
    for (int i = 0; i <= 6; ++i)
        EXPECT_EQ(Find<QAction>("MenuBoxColour" + QString::number(i))->isChecked(), i == 3);
    Trigger("MenuBoxColour3"); // choosing it again keeps it ticked
    EXPECT_TRUE(Find<QAction>("MenuBoxColour3")->isChecked());
    Press(Qt::Key_B);
    EXPECT_EQ(BoxColour(), QColor(135, 181, 207));
    EXPECT_TRUE(Find<QAction>("MenuBoxColour4")->isChecked());
    EXPECT_EQ(Find<QLabel>("FootLabel")->palette().color(QPalette::Window), QColor(135, 181, 207));
}

TEST_F(Form1Test, ImageEffectItemsToggleTheirTicksAndOptions) {
    EXPECT_TRUE(Find<QAction>("MenuAntiAlias")->isChecked());
    Trigger("MenuAntiAlias");
    EXPECT_FALSE(S().Prefs.AntiAlias);
    EXPECT_FALSE(Find<QAction>("MenuAntiAlias")->isChecked());
    Trigger("MenuNegative");
    Trigger("menuMirror");
    EXPECT_TRUE(S().Prefs.Negative);
    EXPECT_TRUE(S().Prefs.Mirror);
    EXPECT_TRUE(Find<QAction>("MenuNegative")->isChecked());
    Trigger("MenuMagnifier");
    EXPECT_TRUE(Find<QAction>("MenuMagnifier")->isChecked());
}

TEST_F(Form1Test, ImageInformationIsShownInAMessage) {
    Trigger("MenuAboutImage");
    ASSERT_EQ(Prompts.Shown.size(), 1U);
    EXPECT_NE(Prompts.Shown[0].Text.find("1872B20234.jpg"), std::string::npos);
    EXPECT_NE(Prompts.Shown[0].Text.find("2400"), std::string::npos);
    EXPECT_EQ(Prompts.Shown[0].Title, "Tallyview");
}

TEST_F(Form1Test, ShowStatisticsButtonAndMenuCallTheHook) {
    Calibrate(Page);
    Click("ShowStats");
    Trigger("MenuShowStats");
    EXPECT_EQ(StatisticsRequests, (std::vector<bool>{false, false}));
}

TEST_F(Form1Test, EveryCommandEndsWithTheWindowUpToDate) {
    QSignalSpy synced(Window, &Form1::Synced);
    Press(Qt::Key_Down);
    Click("ZoomIn");
    Trigger("MenuBoxColour2");
    EXPECT_EQ(synced.count(), 3);
}

TEST_F(Form1Test, HelpAndAboutItemsCallTheirHooks) {
    QSignalSpy help(Window, &Form1::OpenHelp);
    QSignalSpy about(Window, &Form1::OpenAbout);
    Press(Qt::Key_F1);
    Trigger("MenuHelp");
    Trigger("MenuAbout");
    EXPECT_EQ(help.count(), 2);
    EXPECT_EQ(about.count(), 1);
}

TEST_F(Form1Test, FlagKeyShowsTheFlagNoteAndTellsTheStatistics) {
    Calibrate(Page);
    QSignalSpy changed(Window, &Form1::StatisticsChanged);
    Press(Qt::Key_M);
    EXPECT_TRUE(Find<QLabel>("NotesBox")->text().contains("**FLAGGED**  Press M to clear flag"));
    EXPECT_EQ(changed.count(), 1);
    Press(Qt::Key_M);
    EXPECT_FALSE(Find<QLabel>("NotesBox")->text().contains("**FLAGGED**"));
}

TEST_F(Form1Test, RepeatedSurnamesItemShowsTheSurnamesAgain) {
    Calibrate(Page);
    Press(Qt::Key_Return);
    EXPECT_FALSE(Find<QLabel>("NameBox")->text().contains("HARRIS"));
    Trigger("MenuShowRptSurnames");
    EXPECT_TRUE(Find<QAction>("MenuShowRptSurnames")->isChecked());
    EXPECT_TRUE(Find<QLabel>("NameBox")->text().contains("HARRIS"));
}

TEST_F(Form1Test, ReCalibrateStartsTheDialogueAgain) {
    Calibrate(Page);
    Trigger("MenuCalibrate");
    EXPECT_EQ(S().Calib.CalibrationStage, 1);
    EXPECT_TRUE(Find<QLabel>("NotesBox")->text().contains("1st record in column 1"));
}

TEST_F(Form1Test, ScrollingTheViewCarriesTheBoxAndTheNextKeyBringsItBack) {
    const QPointF before = BoxOnScan();
    const int top = Window->RdFrame().y();
    Window->View().verticalScrollBar()->setValue(Window->View().verticalScrollBar()->value() + 40);
    EXPECT_EQ(Window->RdFrame().y(), top - 40);
    EXPECT_NEAR(BoxOnScan().y(), before.y(), 1.0);
    EXPECT_TRUE(S().Box.BoxPlacementPending);
    Press(Qt::Key_Return); // only places the box
    EXPECT_EQ(S().Calib.CalibrationStage, 1);
    EXPECT_FALSE(S().Box.BoxPlacementPending);
}

TEST_F(Form1Test, ChangedTranscriptionIsNoticedOnceAtTheNextRepaint) {
    const QString notice = "Your transcription file has changed - press R to reload it";
    Calibrate(Page);
    Window->View().viewport()->repaint();
    EXPECT_FALSE(Find<QLabel>("NotesBox")->text().contains(notice));
    Touch();
    Window->View().viewport()->repaint();
    EXPECT_EQ(Find<QLabel>("NotesBox")->text().count(notice), 1);
    Window->View().viewport()->repaint();
    EXPECT_EQ(Find<QLabel>("NotesBox")->text().count(notice), 1);
    Press(Qt::Key_Home); // a column jump clears the notes
    Window->View().viewport()->repaint();
    EXPECT_EQ(Find<QLabel>("NotesBox")->text().count(notice), 0);
    Touch();
    Window->View().viewport()->repaint();
    EXPECT_EQ(Find<QLabel>("NotesBox")->text().count(notice), 1);
}

TEST_F(Form1Test, NoChangeNoticeWhileCalibrating) {
    Touch();
    Window->View().viewport()->repaint();
    EXPECT_FALSE(Find<QLabel>("NotesBox")->text().contains("has changed"));
}

TEST_F(Form1Test, NewScanIsRefusedWhileCalibrating) {
    QSignalSpy newScan(Window, &Form1::NewScanRequested);
    Trigger("MenuNewScan");
    ASSERT_EQ(Prompts.Shown.size(), 1U);
    EXPECT_EQ(Prompts.Shown[0].Text, "Cannot load new scan while you are calibrating");
    EXPECT_EQ(newScan.count(), 0);
    EXPECT_TRUE(Window->RdFrame().isVisible());
}

TEST_F(Form1Test, NewScanAfterCalibrationHidesTheBoxAndAsksForTheStartWindow) {
    Calibrate(Page);
    QSignalSpy newScan(Window, &Form1::NewScanRequested);
    Trigger("MenuNewScan");
    EXPECT_EQ(newScan.count(), 1);
    EXPECT_FALSE(Window->RdFrame().isVisible());
    EXPECT_TRUE(Prompts.Shown.empty());
}

TEST_F(Form1Test, ExitButtonAndMenuCloseTheWindowOnce) {
    QSignalSpy closing(Window, &Form1::Closing);
    Click("ExitButton");
    EXPECT_TRUE(Window->Ended());
    EXPECT_FALSE(Window->isVisible());
    Trigger("MenuExit");
    EXPECT_EQ(closing.count(), 1);
}

TEST_F(Form1Test, TheCKeyInTheFirstStageOpensTheScanTypesForm) {
    Start.reset();
    Main.reset();
    RealScanTypes = true;
    OpenPage(Page);
    bool shown = false;
    WhenScanTypesShown([&shown](ScanTypesForm& form) {
        shown = true;
        form.OptCol(1)->click();
        form.OptPage(1)->click();
        form.CloseButton->click();
    });
    Press(Qt::Key_C);
    EXPECT_TRUE(shown);
    EXPECT_EQ(S().Scan.NumColumns, 1);
    EXPECT_EQ(S().Scan.ScanTypeCode, 1);
    EXPECT_EQ(S().Calib.CalibrationStage, 1);
    EXPECT_TRUE(Find<QLabel>("NotesBox")->text().contains("If this is not a 1 column scan"));
    EXPECT_EQ(Window->focusWidget(), DummyBox());
}

TEST_F(Form1Test, TheCKeyLaterAsksWhetherToRecalibrate) {
    Calibrate(Page);
    Prompts.Script = {Answer::No};
    Press(Qt::Key_C);
    ASSERT_EQ(Prompts.Shown.size(), 1U);
    EXPECT_EQ(Prompts.Shown[0].Text, "You can only change the number of columns during the first "
                                     "stage of calibration\rDo you want to recalibrate now ?");
    EXPECT_EQ(S().Calib.CalibrationStage, 0);
}

} // namespace
} // namespace tv::test
