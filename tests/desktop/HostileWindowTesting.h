#pragma once
// The windowed program with its real message boxes, answered as the user answers them: a timer
// finds the visible box, keeps its text and clicks one of its buttons.
#include "DesktopTesting.h"

#include <QMessageBox>
#include <QTimer>

#include <deque>
#include <string>
#include <vector>

namespace tv::test {

// A box the user answered: its title, its text (lines broken by LF) and the button clicked.
struct AnsweredBox {
    std::string Title;
    std::string Text;
    QMessageBox::StandardButton Clicked = QMessageBox::NoButton;
};

class MessageBoxAnswerer {
  public:
    MessageBoxAnswerer();

    // The next boxes are answered with these in turn; a box after them with its default button,
    // or OK.
    std::deque<QMessageBox::StandardButton> Answers;
    std::vector<AnsweredBox> Answered;

    // Waits until count boxes in all have been answered; false after timeoutMs.
    bool WaitForAnswered(std::size_t count, int timeoutMs = 10000) const;
    // The texts of the boxes answered, one to a line, for a failure's message.
    std::string Texts() const;

  private:
    void Poll();
    QTimer timer_;
};

class HostileWindowTest : public DesktopTest {
  protected:
    // A run of the program as DesktopTest::Run, with the real message boxes.
    DesktopForms& RunWithRealBoxes(const std::string& scan, const std::string& transcription);
    // Waits for the main window as DesktopTest::WaitForMainWindow, without making one: a message
    // box shown while the main window is made runs the event loop, and the start window's steps
    // with it, which make the one main window of the run.
    void WaitForTheMainWindow();
    // Writes a file of the bad scan corpus (scripts/make-bad-images.sh) into the test's folder.
    std::string MakeBadImage(const std::string& name);
    // The last visible record box's name line, as the user reads it.
    std::string NameBoxText() const;

    MessageBoxAnswerer Boxes;
};

} // namespace tv::test
