#pragma once
// The windowed program with its real message boxes, answered as the user answers them: the
// scripted user gives its replies, then presses each box's default button, and keeps every text.
#include "DesktopTesting.h"
#include "ScriptedUser.h"

#include <QMessageBox>

#include <string>

namespace tv::test {

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

    // Answers the boxes it is told to, then every other box with its default button.
    ScriptedUser Boxes;

    HostileWindowTest() { Boxes.AnswersTheRestByDefault(); }
};

} // namespace tv::test
