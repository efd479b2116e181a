#include "EventLoopTesting.h"

#include "core/QtPlatform.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QTest>
#include <QThread>

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
    // is not held up under the user's actions: no dialog is shown, and the program's own loop
    // runs, not a dialog's that has been answered but not yet left (on a slow machine the next
    // look comes before the dialog's loop ends).
    std::function<void()> start;
    start = [this, &user, &start] {
        if (QApplication::activeModalWidget() != nullptr ||
            QThread::currentThread()->loopLevel() > 1) {
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
