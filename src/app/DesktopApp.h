#pragma once
// The windowed program: the start window and the main window, wired to each other.
#include "session/Form1.h"
#include "session/StartForm.h"

#include <QObject>

#include <memory>
#include <string>

namespace tv {

// The forms of one run, each created on first use. The statistics screen, the help form and
// the About box connect to the main window's hooks (see Form1.h) and the start window's.
class DesktopForms : public QObject {
  public:
    // Files named on the command line ("" for none): both given, the four steps run with them
    // instead of the dialogs, as if SkipSteps were ticked.
    DesktopForms(std::string scan, std::string transcription);
    ~DesktopForms() override;

    // Shows the start window; with the two files it runs the steps once the event loop runs.
    void Start();

    Form1* MainForm();
    StartForm* StartWindow() { return start_.get(); }

  private:
    void ShowStartForm();
    void NewScan();
    void MainFormClosing();
    std::string ChooseFile(FileKind kind, const FileRequest& request);

    std::string scan_;
    std::string transcription_;
    std::unique_ptr<Form1> main_;
    std::unique_ptr<StartForm> start_;
};

// Runs the windowed program until its last window closes; returns the exit status.
int RunDesktop(int argc, char** argv, const std::string& scan, const std::string& transcription);

} // namespace tv
