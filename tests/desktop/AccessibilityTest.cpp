// Accessibility: every control of every form announces a name to assistive technology, the four
// steps of the start window go by keyboard alone, and the box text stays readable on every box
// colour.
#include "SessionFormsTesting.h"

#include "help/AboutTallyview.h"
#include "help/HelpForm.h"
#include "stats/Form3.h"
#include "support/FakePrompts.h"
#include "view/BoxTextColour.h"
#include "view/RecordBoxWidget.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>
#include <QTextEdit>

namespace tv::test {
namespace {

// A control the user works: clicks, types into, reads with a caret or moves through. The scroll
// bars of a text box or of the scan are parts of it, announced by their role and value, and
// Qt's own parts (named "qt_...") are Qt's to name.
bool Interactive(const QWidget* w) {
    if (qobject_cast<const QScrollBar*>(w) || w->objectName().startsWith("qt_")) return false;
    return qobject_cast<const QAbstractButton*>(w) || qobject_cast<const QLineEdit*>(w) ||
           qobject_cast<const QAbstractSpinBox*>(w) || qobject_cast<const QComboBox*>(w) ||
           qobject_cast<const QAbstractSlider*>(w) || qobject_cast<const QPlainTextEdit*>(w) ||
           qobject_cast<const QTextEdit*>(w) || qobject_cast<const QAbstractItemView*>(w) ||
           qobject_cast<const QTabBar*>(w) || qobject_cast<const QMenuBar*>(w) ||
           w->focusPolicy() != Qt::NoFocus;
}

// The name a screen reader announces for the widget.
QString AccessibleName(QWidget* w) {
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(w);
    return face != nullptr ? face->text(QAccessible::Name) : QString();
}

// Every interactive control of the form (the form itself included) whose announced name is
// empty, by class and object name.
QStringList Unnamed(QWidget& form) {
    QList<QWidget*> widgets = form.findChildren<QWidget*>();
    widgets.prepend(&form);
    QStringList unnamed;
    for (QWidget* w : widgets)
        if (Interactive(w) && AccessibleName(w).trimmed().isEmpty())
            unnamed << QString::fromLatin1(w->metaObject()->className()) + " '" + w->objectName() +
                           "'";
    return unnamed;
}

// Every enabled control of the form that the TAB key cannot reach.
QStringList OutOfTabReach(QWidget& form) {
    QStringList out;
    for (QWidget* w : form.findChildren<QWidget*>())
        if (Interactive(w) && w->isEnabled() && !(w->focusPolicy() & Qt::TabFocus))
            out << w->objectName();
    return out;
}

// Every menu and menu item of the window's menu bar that has no caption to announce.
QStringList UncaptionedMenuItems(QWidget& window) {
    QStringList out;
    for (QAction* menu : window.findChild<QMenuBar*>()->actions()) {
        if (menu->text().trimmed().isEmpty()) out << "a menu";
        for (QAction* item : menu->menu()->actions())
            if (!item->isSeparator() && item->text().trimmed().isEmpty()) out << item->objectName();
    }
    return out;
}

std::string Listed(const QStringList& names) {
    return names.join(", ").toStdString();
}

class Accessibility : public FormsTest {
  protected:
    SamplePage Page = GeneratePage("births1872", Dir.Path());
};

TEST_F(Accessibility, EveryControlOfTheStartWindowHasANameAndTakesTheTabKey) {
    StartForm& start = OpenStartForm();
    EXPECT_EQ(Listed(Unnamed(start)), "");
    EXPECT_EQ(Listed(OutOfTabReach(start)), "");
}

TEST_F(Accessibility, EveryControlAndMenuItemOfTheMainWindowHasAName) {
    OpenPage(Page);
    EXPECT_EQ(Listed(Unnamed(*Window)), "");
    EXPECT_EQ(Listed(UncaptionedMenuItems(*Window)), "");
    EXPECT_GE(Window->findChildren<QAbstractButton*>().size(), 20);
    EXPECT_EQ(Window->findChild<QMenuBar*>()->actions().size(), 5);
}

// A screen reader announces what the user sees, never a control's internal name.
TEST_F(Accessibility, TheMainWindowsControlsAreAnnouncedByWhatTheUserSees) {
    OpenPage(Page);
    const std::vector<std::pair<const char*, const char*>> spoken = {
        {"PrevRec", "Previous"},         {"NextRec", "Next"},         {"ZoomIn", "Zoom In"},
        {"TopCol1", "Column 1"},         {"TopCol6", "Column 6"},     {"RotateLeft", "Rotate left"},
        {"RotateRight", "Rotate right"}, {"ShowStats", "Statistics"}, {"ExitButton", "Exit"}};
    for (const auto& [name, words] : spoken)
        EXPECT_EQ(AccessibleName(Find<QWidget>(name)).toStdString(), words) << name;
    QStringList internal;
    QList<QWidget*> widgets = Window->findChildren<QWidget*>();
    for (QWidget* w : widgets)
        if (!w->objectName().isEmpty() && AccessibleName(w) == w->objectName())
            internal << w->objectName();
    EXPECT_EQ(Listed(internal), "");
}

TEST_F(Accessibility, TheRecordBoxIsAnnouncedByTheRecordItShows) {
    OpenPage(Page);
    Calibrate(Page);
    auto* box = Find<QWidget>("RdFrame");
    const QString shown =
        (Find<QLabel>("NameBox")->text() + ' ' + Find<QLabel>("DistBox")->text()).trimmed();
    ASSERT_FALSE(shown.isEmpty());
    EXPECT_EQ(AccessibleName(box), shown);
    EXPECT_EQ(AccessibleName(Find<QLabel>("NameBox")), Find<QLabel>("NameBox")->text());
    // The next record is announced when the box shows it.
    Press(Qt::Key_Return);
    const QString next =
        (Find<QLabel>("NameBox")->text() + ' ' + Find<QLabel>("DistBox")->text()).trimmed();
    EXPECT_NE(next, shown);
    EXPECT_EQ(AccessibleName(box), next);
}

TEST_F(Accessibility, EveryControlOfTheStatisticsScreenHasANameAndTakesTheTabKey) {
    FakePrompts prompts;
    Form3 stats(prompts);
    stats.Refresh("3 entries", "None");
    EXPECT_EQ(Listed(Unnamed(stats)), "");
    EXPECT_EQ(Listed(OutOfTabReach(stats)), "");
}

TEST_F(Accessibility, EveryControlOfTheScanLayoutFormHasANameAndTakesTheTabKey) {
    ScanTypesForm form;
    // As the session opens it: the close button has its caption from then on.
    form.Preselect({});
    EXPECT_EQ(Listed(Unnamed(form)), "");
    EXPECT_EQ(Listed(OutOfTabReach(form)), "");
    EXPECT_GE(form.findChildren<QAbstractButton*>().size(), 15);
}

TEST_F(Accessibility, EveryControlOfTheHelpFormHasANameAndTakesTheTabKey) {
    HelpForm help;
    EXPECT_EQ(Listed(Unnamed(help)), "");
    EXPECT_EQ(Listed(OutOfTabReach(help)), "");
}

TEST_F(Accessibility, EveryControlOfTheAboutBoxHasANameAndTakesTheTabKey) {
    AboutTallyview about("Version 1.0.0 / 21-Jun-2022");
    EXPECT_EQ(Listed(Unnamed(about)), "");
    EXPECT_EQ(Listed(OutOfTabReach(about)), "");
}

// The keys go to the control that has the focus, as the user's keyboard sends them.
void Key(Qt::Key key) {
    QWidget* focused = QApplication::focusWidget();
    ASSERT_NE(focused, nullptr);
    QTest::keyClick(focused, key);
}

TEST_F(Accessibility, TheFourStepsGoByKeyboardAlone) {
    Files = {Page.Scan, Page.Transcription};
    StartForm& start = OpenStartForm();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&start));
    ASSERT_EQ(QApplication::focusWidget(), start.Stage1);
    // TAB goes round the enabled controls and back to step 1.
    const std::vector<QWidget*> round = {start.SkipSteps, start.RestoreDefaults, start.Quit,
                                         start.Stage1};
    for (QWidget* next : round) {
        Key(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), next) << next->objectName().toStdString();
    }
    Key(Qt::Key_Space);
    ASSERT_EQ(start.ImageFileChosen, Page.Scan);
    ASSERT_EQ(QApplication::focusWidget(), start.Stage2);
    Key(Qt::Key_Return);
    ASSERT_EQ(start.TranscriptionChosen, Page.Transcription);
    ASSERT_EQ(QApplication::focusWidget(), start.Stage3);
    Key(Qt::Key_Enter);
    ASSERT_TRUE(Window->isVisible());
    // Step 3 hands the keys to the main window: ENTER confirms the first calibration stage.
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
    EXPECT_EQ(QApplication::focusWidget(), DummyBox());
    EXPECT_EQ(S().Calib.CalibrationStage, 1);
    Key(Qt::Key_Return);
    EXPECT_EQ(S().Calib.CalibrationStage, 2);
    // Back on the start window (the desktop's window switch), step 4 has the focus.
    start.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&start));
    ASSERT_EQ(QApplication::focusWidget(), start.Stage4);
    Key(Qt::Key_Return);
    EXPECT_FALSE(start.isVisible());
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
    EXPECT_EQ(QApplication::focusWidget(), DummyBox());
    EXPECT_EQ(Requests.size(), 2U);
}

// The main window takes every key, and F10 reaches its menus: every command there (statistics,
// new scan, the scan's effects, exit) goes by keyboard too.
TEST_F(Accessibility, F10OpensTheMenusAndTheStatisticsComeFromTheKeyboard) {
    OpenPage(Page);
    Calibrate(Page);
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
    QSignalSpy statistics(Window, &Form1::ShowStatistics);
    Key(Qt::Key_F10);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->title().toStdString(), "File");
    QTest::keyClick(menu, Qt::Key_Right);
    // The next menu opens once the first has closed.
    ASSERT_TRUE(QTest::qWaitFor([&menu] {
        menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu != nullptr && menu->title() == QStringLiteral("Statistics");
    }));
    // Reached by an arrow key, a menu opens with its first item chosen.
    ASSERT_NE(menu->activeAction(), nullptr);
    EXPECT_EQ(menu->activeAction()->text().toStdString(), "Show Statistics");
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(statistics.count(), 1);
    // Closed with ESC, the menu gives the keys back to the window.
    Window->FocusRecordBox();
    Key(Qt::Key_F10);
    menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QTest::keyClick(menu, Qt::Key_Escape);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    const int16_t line = S().Table.CurrentLine;
    Key(Qt::Key_Return);
    EXPECT_GT(S().Table.CurrentLine, line);
}

// The key table has no use for F10 with SHIFT or ALT: no menu opens.
TEST_F(Accessibility, F10WithAModifierOpensNoMenu) {
    OpenPage(Page);
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(Accessibility, SkipStepsIsTickedWithTheSpaceBar) {
    std::vector<bool> saved;
    StartForm& start = OpenStartForm();
    start.SkipStepsChanged = [&saved](bool ticked) { saved.push_back(ticked); };
    ASSERT_TRUE(QTest::qWaitForWindowActive(&start));
    Key(Qt::Key_Tab);
    Key(Qt::Key_Space);
    EXPECT_TRUE(start.SkipSteps->isChecked());
    EXPECT_EQ(saved, std::vector<bool>{true});
}

TEST_F(Accessibility, TheBoxTextIsWhiteOnTheBlackBoxColourAndBlackOnTheOthers) {
    OpenPage(Page);
    for (int colour = 0; colour <= 6; ++colour) {
        Find<QAction>("MenuBoxColour" + QString::number(colour))->trigger();
        const Rgb box = BoxColours[static_cast<std::size_t>(colour)];
        const Rgb text = BoxTextColour(static_cast<int16_t>(colour));
        for (const char* name : {"NameBox", "DistBox", "NotesBox", "FootLabel"}) {
            const QPalette palette = Find<QLabel>(name)->palette();
            EXPECT_EQ(palette.color(QPalette::Window), QColor(box.Red, box.Green, box.Blue))
                << name << " on colour " << colour;
            EXPECT_EQ(palette.color(QPalette::WindowText), QColor(text.Red, text.Green, text.Blue))
                << name << " on colour " << colour;
        }
    }
    EXPECT_EQ(Find<QLabel>("NameBox")->palette().color(QPalette::WindowText), QColor(Qt::black));
    Find<QAction>("MenuBoxColour0")->trigger();
    EXPECT_EQ(Find<QLabel>("NameBox")->palette().color(QPalette::WindowText), QColor(Qt::white));
}

} // namespace
} // namespace tv::test
