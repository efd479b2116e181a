#pragma once
// The windowed program: the start window, the main window, the statistics screen, the help form
// and the About box, wired to each other and to the one settings store of the run.
#include "session/Form1.h"
#include "session/QtSettingsStore.h"
#include "session/StartForm.h"

#include <QObject>
#include <QString>

#include <memory>
#include <string>

namespace tv {

class Form3;
class HelpForm;

// What the windowed program is given; tests give their own.
struct DesktopServices {
    // The settings file; "" for the user's own (DefaultSettingsPath).
    QString SettingsPath;
    // The main window's prompts, layout chooser and file dialog; the real ones where empty.
    Form1Services Main;
};

// The forms of one run, each created on first use. The help form belongs to the main window; the
// statistics screen is a window of its own, since on the statistics-only path it is the one
// window left open while the main window stays hidden.
class DesktopForms : public QObject {
  public:
    // Files named on the command line ("" for none) answer the start window's dialogs in their
    // place (StartForm::OpenFiles): both given, the four steps run with them at once.
    DesktopForms(std::string scan, std::string transcription, DesktopServices services = {});
    ~DesktopForms() override;

    // Shows the start window; with files it runs the steps once the event loop runs.
    void Start();

    Form1* MainForm();
    StartForm* StartWindow() { return start_.get(); }
    Form3& Statistics();
    HelpForm& Help();
    QtSettingsStore& Settings() { return *store_; }

  private:
    Prompts& Ask();
    void ShowStartForm();
    // New Scan: the start window again, which takes the files dropped on the main window.
    void NewScan(const SessionFiles& files);
    // The start window opens files once the event loop runs, never inside a drop.
    void OpenFilesSoon(const SessionFiles& files);
    void MainFormClosing();
    // Quitting or ending: the statistics screen and the help form close with the program.
    void CloseOthers();
    void SaveDefaults();

    // DesktopStatistics.cpp
    void ShowStats(bool statisticsOnly);
    void StatisticsChanged();
    void SelectOption(int option);
    void RefreshStats();
    void OpenHelp();
    void OpenAbout();

    SessionFiles files_;
    DesktopServices services_;
    QtPrompts prompts_;
    // The statistics screen's questions are its own windows: closing one gives the activation
    // back to the screen, not to whichever window the desktop picks.
    QtPrompts statsPrompts_;
    std::unique_ptr<QtSettingsStore> store_;
    std::unique_ptr<Form1> main_;
    std::unique_ptr<StartForm> start_;
    std::unique_ptr<Form3> form3_;
    HelpForm* help_ = nullptr; // a child of the main window
};

// Runs the windowed program until its last window closes; returns the exit status.
int RunDesktop(int argc, char** argv, const std::string& scan, const std::string& transcription);

} // namespace tv
