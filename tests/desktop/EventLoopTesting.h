#pragma once
// The program as its user meets it: the start window, the main window and the statistics screen
// wired as main() wires them, with the real message boxes, file dialogs and layout form, run
// inside QApplication::exec as the program runs. A scripted user answers each modal dialog once
// it is shown, by clicking its button, and the tests assert what the user sees: the windows on
// the screen, where the keyboard focus is, and whether the program is still running.
#include "ScriptedUser.h"
#include "SessionFormsTesting.h"

#include "app/DesktopApp.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QDialog>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QPushButton>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <string>

namespace tv::test {

class ProgramTest : public FormsTest {
  protected:
    ProgramTest();
    ~ProgramTest() override;

    // Starts the program as main() does, with the files named on its command line ("" none).
    DesktopForms& StartProgram(const std::string& scan = "", const std::string& transcription = "");
    // Runs the event loop as the program does while the user acts; returns when the user is done.
    void RunProgram(const std::function<void()>& user);
    // Processes events until the condition holds; false when it still does not after ms.
    static bool WaitFor(const std::function<bool()>& condition, int ms = 10000);
    // Waits until the scripted user has given every reply.
    bool UserDone(int ms = 10000) {
        return WaitFor([this] { return User.Done(); }, ms);
    }
    // A click of the left mouse button on a button, as the user gives it.
    void Click(QAbstractButton* button);
    // The user asked the program to end, or its last window closed: Qt was asked to quit.
    bool Ended() const { return quitRequests_ > 0; }
    // The program ends, and no window of it is left on the screen.
    void ExpectEndedWithNoWindowLeft() {
        EXPECT_TRUE(WaitFor([this] { return Ended(); }));
        EXPECT_TRUE(VisibleWindows().isEmpty());
    }
    // The object names of the top-level windows on the screen, sorted.
    static QStringList VisibleWindows();
    // The window that holds the keyboard focus, and the focused control's object name.
    static QWidget* ActiveWindow();
    static QString FocusName();
    // Waits until the control of that name has the focus (activation follows a dialog's close).
    static bool FocusComesTo(const QString& name) {
        return WaitFor([&name] { return FocusName() == name; }, 3000);
    }
    // The keys of the main window from here on: the helpers of FormsTest drive it.
    void TakeMainWindow();
    // The files of a page of the sample generator, drawn into the test's folder.
    SamplePage Page(const std::string& kind = "births1911");

    StartForm& Start() { return *Forms->StartWindow(); }
    // Steps 1 and 2 by their buttons with the dialogs answered; the start window waits at 3.
    void StepsOneAndTwo(const SamplePage& page);
    // The four steps by their buttons and the calibration by keys: the user verifies.
    void Verifying(const SamplePage& page);
    // SkipSteps ticked and the replies to the two file dialogs of the statistics-only path (no
    // scan, then the transcription); step 1 then runs both steps.
    void ChooseTranscriptionOnly(const std::string& transcription);

    ScriptedUser User;
    std::unique_ptr<DesktopForms> Forms;

  private:
    std::unique_ptr<QObject> quitWatch_;
    int quitRequests_ = 0;
};

} // namespace tv::test
