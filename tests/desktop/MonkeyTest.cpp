// A monkey on a loaded session: 100,000 random keys, clicks, drags, resizes, scrolls and menu
// actions on the windowed program, with a fixed seed and every question answered at random by
// the scripted prompts. Nothing may crash, hang or escape but the documented run-time errors;
// under the sanitizers (make test-sanitize) no memory error and no leak either.
#include "DesktopTesting.h"

#include "view/ImageView.h"
#include "view/RecordBoxWidget.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>

#include <chrono>
#include <cstdio>
#include <random>

namespace tv::test {
namespace {

constexpr int Actions = 100000;
// Paints, timers and the change watch run when the event loop runs: every so many actions.
constexpr int ActionsBetweenEventLoops = 64;

using Clock = std::chrono::steady_clock;

const Qt::Key MonkeyKeys[] = {
    Qt::Key_Up,     Qt::Key_Down,      Qt::Key_Left,  Qt::Key_Right, Qt::Key_Return,
    Qt::Key_Enter,  Qt::Key_Backspace, Qt::Key_Plus,  Qt::Key_Minus, Qt::Key_Equal,
    Qt::Key_PageUp, Qt::Key_PageDown,  Qt::Key_Home,  Qt::Key_End,   Qt::Key_F1,
    Qt::Key_F11,    Qt::Key_F12,       Qt::Key_Space, Qt::Key_Tab,   Qt::Key_Escape,
    Qt::Key_Delete, Qt::Key_2,         Qt::Key_4,     Qt::Key_6,     Qt::Key_8};

// What the monkey did, and what came of it.
struct Tally {
    int Keys = 0;
    int Clicks = 0;
    int Drags = 0;
    int Resizes = 0;
    int Scrolls = 0;
    int MenuActions = 0;
    int NewScans = 0;
    int Prompts = 0;
    int RunTimeErrors = 0;
    int Restarts = 0;
    Clock::duration Longest{};
};

bool Documented(const RunTimeError& e) {
    return e.Number == 6 || e.Number == 9 || e.Number == 11;
}

class Monkey : public DesktopTest {
  protected:
    std::mt19937 Random{20261121U};
    SamplePage Page = GeneratePage("births1872", Dir.Path());
    Tally Done;

    int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(Random); }
    template <typename T> T* Any(const QList<T*>& items) {
        return items.isEmpty() ? nullptr : items[Below(static_cast<int>(items.size()))];
    }

    // The program as the user starts it again: the page through the four steps, calibrated.
    void Start() {
        Files.clear();
        Run(Page.Scan, Page.Transcription);
        WaitForMainWindow();
        if (S().Calib.CalibrationStage != 0) Calibrate(Page);
    }

    void ScriptAnswers() {
        static const Answer answers[] = {Answer::Ok, Answer::Cancel, Answer::Yes, Answer::No};
        Done.Prompts += static_cast<int>(Prompts.Shown.size());
        Prompts.Shown.clear();
        Prompts.Script.clear();
        for (int i = 0; i < 4; ++i)
            Prompts.Script.push_back(answers[Below(4)]);
    }

    void Key() {
        ++Done.Keys;
        Qt::KeyboardModifiers modifiers;
        if (Below(4) == 0) modifiers |= Qt::ShiftModifier;
        if (Below(8) == 0) modifiers |= Qt::AltModifier;
        if (Below(16) == 0) modifiers |= Qt::KeypadModifier;
        const bool letter = Below(3) == 0;
        const auto key = letter ? static_cast<Qt::Key>(Qt::Key_A + Below(26))
                                : MonkeyKeys[Below(static_cast<int>(std::size(MonkeyKeys)))];
        Press(key, modifiers);
    }

    // Any button of the main window but Exit, which would end the run.
    void Click() {
        QList<QToolButton*> buttons;
        for (QToolButton* button : Window->findChildren<QToolButton*>())
            if (button->isVisible() && button->isEnabled() && button->objectName() != "ExitButton")
                buttons << button;
        QToolButton* button = Any(buttons);
        if (button == nullptr) return;
        ++Done.Clicks;
        QTest::mouseClick(button, Qt::LeftButton);
    }

    // The box dragged by one of its labels, or its width by the size handle; or a click on
    // the scan itself.
    void Drag() {
        ++Done.Drags;
        RecordBoxWidget& box = Window->RdFrame();
        QWidget* handles[] = {box.NameBox, box.DistBox, box.NotesBox, box.ResizeBox,
                              Window->View().viewport()};
        QWidget* handle = handles[Below(5)];
        if (!handle->isVisible()) return;
        const QPoint from(Below(std::max(1, handle->width())),
                          Below(std::max(1, handle->height())));
        const QPoint to = from + QPoint(Below(801) - 400, Below(601) - 300);
        QTest::mousePress(handle, Qt::LeftButton, {}, from);
        for (int step = 1; step <= 3; ++step)
            QTest::mouseMove(handle, from + (to - from) * step / 3);
        QTest::mouseRelease(handle, Qt::LeftButton, {}, to);
    }

    void Resize() {
        ++Done.Resizes;
        Window->resize(320 + Below(1400), 240 + Below(900));
    }

    void Scroll() {
        ++Done.Scrolls;
        QScrollBar* bars[] = {Window->View().horizontalScrollBar(),
                              Window->View().verticalScrollBar()};
        QScrollBar* bar = bars[Below(2)];
        bar->setValue(bar->minimum() + Below(std::max(1, bar->maximum() - bar->minimum() + 1)));
    }

    // Any enabled menu item but Exit and the About box, whose own modal loop waits for a user.
    void Menu() {
        QList<QAction*> items;
        for (QAction* item : Window->findChildren<QAction*>()) {
            const QString name = item->objectName();
            if (item->isEnabled() && !name.isEmpty() && name != "MenuExit" && name != "MenuAbout")
                items << item;
        }
        QAction* item = Any(items);
        if (item == nullptr) return;
        ++Done.MenuActions;
        item->trigger();
    }

    // After New Scan: the start window's four steps with the same page.
    void BackToTheMainWindow() {
        StartForm* start = Forms->StartWindow();
        if (start == nullptr || !start->isVisible()) return;
        ++Done.NewScans;
        Files = {Page.Scan, Page.Transcription};
        for (QPushButton* step : {start->Stage1, start->Stage2, start->Stage3, start->Stage4})
            if (step->isEnabled()) step->click();
    }

    // What the event loop does between the user's actions: paints, timers, the change watch,
    // and the deletion of the windows closed for good.
    static void RunEventLoop() {
        QApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void OneAction() {
        const int kind = Below(100);
        if (kind < 60) {
            Key();
        } else if (kind < 72) {
            Click();
        } else if (kind < 82) {
            Drag();
        } else if (kind < 86) {
            Resize();
        } else if (kind < 90) {
            Scroll();
        } else {
            Menu();
        }
        BackToTheMainWindow();
    }
};

TEST_F(Monkey, HundredThousandRandomActionsOnALoadedSessionLetOutOnlyDocumentedErrors) {
    Start();
    for (int action = 0; action < Actions; ++action) {
        ScriptAnswers();
        const Clock::time_point began = Clock::now();
        bool restart = false;
        try {
            OneAction();
            if (action % ActionsBetweenEventLoops == 0) RunEventLoop();
            restart = Window->Ended() || !Window->isVisible();
        } catch (const RunTimeError& e) {
            ++Done.RunTimeErrors;
            std::printf("monkey: action %d: run-time error %d %s stage %d line %d top %d of %d\n",
                        action, e.Number, e.what(), S().Calib.CalibrationStage,
                        S().Table.CurrentLine, S().Calib.ColumnTopLine[1], S().Table.LineCount);
            EXPECT_TRUE(Documented(e))
                << "action " << action << ": " << e.Number << " " << e.what();
            restart = true;
        }
        Done.Longest = std::max(Done.Longest, Clock::now() - began);
        if (restart) {
            // The program ended, by its own exit or by a run-time error: the user starts again.
            ++Done.Restarts;
            Start();
        }
    }
    const auto longest = std::chrono::duration_cast<std::chrono::milliseconds>(Done.Longest);
    std::printf("monkey: %d keys, %d clicks, %d drags, %d resizes, %d scrolls, %d menu items, "
                "%d new scans, %d messages, %d run-time errors, %d restarts, longest %lld ms\n",
                Done.Keys, Done.Clicks, Done.Drags, Done.Resizes, Done.Scrolls, Done.MenuActions,
                Done.NewScans, Done.Prompts, Done.RunTimeErrors, Done.Restarts,
                static_cast<long long>(longest.count()));
    // The monkey reached what it aimed at: buttons, labels and menu items were there to use.
    EXPECT_GT(Done.Keys, Actions / 2);
    EXPECT_GT(Done.Clicks, Actions / 10);
    EXPECT_GT(Done.MenuActions, Actions / 20);
    // No action waits: the slowest one, a reload or a rotation of the scan, takes well under this.
    EXPECT_LT(longest.count(), 10000);
    // No window is left behind by the new scans and the forms opened on the way: one of each
    // form, and the menus.
    RunEventLoop();
    QStringList windows;
    for (QWidget* window : QApplication::topLevelWidgets())
        windows << QString::fromLatin1(window->metaObject()->className());
    EXPECT_LE(windows.count(QStringLiteral("StartForm")), 1) << windows.join(' ').toStdString();
    EXPECT_LT(windows.size(), 16) << windows.join(' ').toStdString();
    // The session still answers the keys.
    Press(Qt::Key_Home);
    EXPECT_TRUE(Window->isVisible());
}

} // namespace
} // namespace tv::test
