#include "EventLoopTesting.h"

#include "core/QtPlatform.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QTest>

#include <algorithm>

namespace tv::test {

namespace {

constexpr int PollMs = 10;

// Counts the requests to end the program and keeps the test's process running: the Quit event
// that Qt sends when the program quits, or when its last window closed, is taken here.
class QuitWatch : public QObject {
  public:
    explicit QuitWatch(int& requests) : requests_(requests) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched != QCoreApplication::instance() || event->type() != QEvent::Quit) return false;
        ++requests_;
        return true;
    }

  private:
    int& requests_;
};

} // namespace

ScriptedUser::ScriptedUser() {
    connect(&timer_, &QTimer::timeout, this, &ScriptedUser::Poll);
    timer_.start(PollMs);
}

void ScriptedUser::Clicks(QMessageBox::StandardButton button, const std::string& textPart) {
    replies_.push_back({Kind::MessageBox, button, textPart, {}});
}

void ScriptedUser::Chooses(const std::string& path) {
    replies_.push_back({Kind::FileDialog, QMessageBox::NoButton, path, {}});
}

void ScriptedUser::Handles(const std::function<void(QDialog&)>& action) {
    replies_.push_back({Kind::Other, QMessageBox::NoButton, "", action});
}

void ScriptedUser::Poll() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) {
        // As a window manager does, the window the user worked in is active again once a dialog
        // over it has gone (Qt's offscreen platform activates nothing by itself).
        QWidget* active = QApplication::activeWindow();
        const bool gone = active == nullptr || !active->isVisible();
        if (!gone && qobject_cast<QDialog*>(active) == nullptr) {
            lastActive_ = active;
        } else if (gone && lastActive_ != nullptr && lastActive_->isVisible()) {
            lastActive_->activateWindow();
        }
        return;
    }
    if (busy_ || !dialog->isVisible()) return;
    // A user reads a dialog before answering it: the reply waits for the next look, when the
    // dialog's own event loop runs.
    if (dialog != shown_) {
        shown_ = dialog;
        return;
    }
    shown_ = nullptr;
    if (dialog->parentWidget() != nullptr && dialog->parentWidget()->window()->isVisible())
        lastActive_ = dialog->parentWidget()->window();
    busy_ = true;
    if (replies_.empty()) {
        ADD_FAILURE() << "a dialog nobody expected: " << dialog->windowTitle().toStdString() << ": "
                      << (qobject_cast<QMessageBox*>(dialog) != nullptr
                              ? qobject_cast<QMessageBox*>(dialog)->text().toStdString()
                              : std::string());
        dialog->reject();
    } else {
        const Reply reply = replies_.front();
        replies_.pop_front();
        Give(*dialog, reply);
    }
    busy_ = false;
}

void ScriptedUser::Give(QDialog& dialog, const Reply& reply) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    auto* files = qobject_cast<QFileDialog*>(&dialog);
    const Kind shown = box != nullptr     ? Kind::MessageBox
                       : files != nullptr ? Kind::FileDialog
                                          : Kind::Other;
    if (shown != reply.Expected) {
        ADD_FAILURE() << "another dialog than expected: " << dialog.windowTitle().toStdString();
        dialog.reject();
        return;
    }
    if (box != nullptr) {
        Seen << box->text();
        EXPECT_TRUE(box->text().contains(QString::fromStdString(reply.Text)))
            << box->text().toStdString() << " does not hold " << reply.Text;
        QAbstractButton* button = box->button(reply.Button);
        if (button == nullptr) {
            ADD_FAILURE() << "the message box has not that button: " << box->text().toStdString();
            box->reject();
            return;
        }
        QTest::mouseClick(button, Qt::LeftButton);
    } else if (files != nullptr) {
        if (reply.Text.empty()) {
            files->reject();
            return;
        }
        auto* name = files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (name == nullptr) {
            ADD_FAILURE() << "the file dialog has no file name box";
            files->reject();
            return;
        }
        name->setText(PathToQString(reply.Text));
        static_cast<QDialog*>(files)->accept(); // QFileDialog's own accept, as Open does
    } else {
        reply.Action(dialog);
    }
}

ProgramTest::ProgramTest() : quitWatch_(std::make_unique<QuitWatch>(quitRequests_)) {
    QCoreApplication::instance()->installEventFilter(quitWatch_.get());
}

ProgramTest::~ProgramTest() {
    Window = nullptr;
    Forms.reset();
    QCoreApplication::instance()->removeEventFilter(quitWatch_.get());
}

DesktopForms& ProgramTest::StartProgram(const std::string& scan, const std::string& transcription) {
    DesktopServices services;
    services.SettingsPath = PathToQString((Dir.Path() / "config" / "Tallyview.conf").string());
    Forms = std::make_unique<DesktopForms>(scan, transcription, services);
    Forms->Start();
    return *Forms;
}

void ProgramTest::RunProgram(const std::function<void()>& user) {
    // The user starts once no dialog of the start is waiting, so that the dialog's own event loop
    // is not held up under the user's actions.
    std::function<void()> start;
    start = [this, &user, &start] {
        if (QApplication::activeModalWidget() != nullptr) {
            QTimer::singleShot(PollMs, QCoreApplication::instance(), start);
            return;
        }
        // The program's first window comes up active, as on a desktop.
        StartForm* first = Forms ? Forms->StartWindow() : nullptr;
        if (first != nullptr && first->isVisible()) {
            EXPECT_TRUE(QTest::qWaitForWindowActive(first));
        }
        user();
        QCoreApplication::exit(0);
    };
    QTimer::singleShot(0, QCoreApplication::instance(), start);
    QApplication::exec();
    EXPECT_TRUE(User.Done()) << "the user had replies left for dialogs never shown";
}

bool ProgramTest::WaitFor(const std::function<bool()>& condition, int ms) {
    return QTest::qWaitFor(condition, ms);
}

void ProgramTest::Click(QAbstractButton* button) {
    ASSERT_NE(button, nullptr);
    ASSERT_TRUE(button->isVisible() && button->isEnabled()) << button->objectName().toStdString();
    User.WorksIn(button->window());
    QTest::mouseClick(button, Qt::LeftButton);
}

QStringList ProgramTest::VisibleWindows() {
    QStringList names;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible()) names << widget->objectName();
    std::sort(names.begin(), names.end());
    return names;
}

QWidget* ProgramTest::ActiveWindow() {
    return QApplication::activeWindow();
}

QString ProgramTest::FocusName() {
    const QWidget* focus = QApplication::focusWidget();
    return focus != nullptr ? focus->objectName() : QString();
}

void ProgramTest::TakeMainWindow() {
    Window = Forms->MainForm();
}

SamplePage ProgramTest::Page(const std::string& kind) {
    return GeneratePage(kind, Dir.Path());
}

void ProgramTest::StepsOneAndTwo(const SamplePage& page) {
    User.Chooses(page.Scan);
    Click(Start().Stage1);
    ASSERT_TRUE(UserDone());
    ASSERT_TRUE(Start().Stage2->isEnabled());
    EXPECT_TRUE(FocusComesTo("Stage2"))
        << FocusName().toStdString() << " in "
        << (ActiveWindow() != nullptr ? ActiveWindow()->objectName().toStdString() : "no window");
    User.Chooses(page.Transcription);
    Click(Start().Stage2);
    ASSERT_TRUE(UserDone());
    ASSERT_TRUE(Start().Stage3->isEnabled());
    EXPECT_TRUE(FocusComesTo("Stage3")) << FocusName().toStdString();
}

void ProgramTest::Verifying(const SamplePage& page) {
    StepsOneAndTwo(page);
    Click(Start().Stage3);
    TakeMainWindow();
    ASSERT_TRUE(WaitFor([this] { return ActiveWindow() == Window; }));
    Calibrate(page);
    Click(Start().Stage4);
    ASSERT_TRUE(WaitFor([] { return VisibleWindows() == QStringList{"Form1"}; }));
}

void ProgramTest::ChooseTranscriptionOnly(const std::string& transcription) {
    Click(Start().SkipSteps);
    User.Chooses("");
    User.Chooses(transcription);
}

} // namespace tv::test
