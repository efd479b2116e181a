#pragma once
// The windowed program as the app wires it (DesktopForms): the start window, the main window,
// the statistics screen, the help form and the About box, with the fixture's scripted prompts,
// layout chooser and file dialog, and the settings kept in the test's own folder.
#include "SessionFormsTesting.h"

#include "app/DesktopApp.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

class QFileDialog;

namespace tv::test {

// Answers the real open-file dialog, once it is shown, with the whole path typed as the user may
// type it, whatever folder the dialog shows; `seen` gets the dialog first.
void AnswerFileDialog(const std::string& file,
                      const std::function<void(const QFileDialog&)>& seen = {});

class DesktopTest : public FormsTest {
  protected:
    ~DesktopTest() override;

    // A run of the program: the start window is shown; with both files the four steps run as
    // soon as the events are processed.
    DesktopForms& Run(const std::string& scan = "", const std::string& transcription = "");
    // Waits until the run's main window is shown and active; the helpers drive it from then on.
    void WaitForMainWindow();
    // The run is over: its forms are deleted (close the main window first to save).
    void EndRun();

    std::filesystem::path SettingsFile() const { return Dir.Path() / "config" / "Tallyview.conf"; }
    std::string SettingsText() const;

    std::unique_ptr<DesktopForms> Forms;
    // The program's own message boxes instead of the scripted prompts: a test answers them
    // through the real dialogs.
    bool RealPrompts = false;
};

} // namespace tv::test
