#pragma once
// The start window (StartForm): the program's first window, which leads the user through the
// four steps: choose the scan image, choose the transcription, line the box up with the scan,
// start verifying. Each step is the handler of one button. It comes back through New Scan, with
// the main window kept. Files dropped on it stand in for the open-file dialogs of the steps.
//
// Hooks for the app's wiring:
// - SkipStepsChanged(ticked): the user ticked or unticked SkipSteps; the settings keep it as
//   "SkipOpenScreen".
// - RestoreDefaultsClicked(): the RestoreDefaults button; the settings clear every stored value.
// - Quitting(): the user quits (the Quit button, a refused transcription, or closing this window
//   before step 3): the statistics screen captions its close button "Die" and closes, then the
//   About box and the help form close. The main window is closed here.
#include "session/SessionFiles.h"

#include <QWidget>

#include <functional>
#include <string>

class QCheckBox;
class QLabel;
class QPushButton;

namespace tv {

class Form1;

class StartForm : public QWidget {
    Q_OBJECT

  public:
    // Creates the main window on step 1 of the first scan.
    using MainFormFactory = std::function<Form1*()>;

    // The window's load; skipOpenScreen is the stored "SkipOpenScreen" setting.
    StartForm(MainFormFactory createMainForm, bool skipOpenScreen, QWidget* parent = nullptr);

    // New Scan from the main window: the main window stays and is hidden meanwhile.
    void NewScan(Form1* mainForm);
    // Files named on the command line or dropped on a window, which answer the open-file dialogs
    // of the steps in their place. Waiting at step 1, the steps run up to the last one whose
    // file was given (the scan's dialog still asks when only a transcription was given); both
    // files run all four steps at once, as if SkipSteps were ticked, without changing the tick.
    // Waiting at step 2, a transcription runs it. Nothing happens when no step waits for them.
    void OpenFiles(const SessionFiles& files);
    // Whether OpenFiles would take any of the files now.
    bool TakesFiles(const SessionFiles& files) const;
    // The main window is closing, which ends the program: this window closes without quitting.
    void CloseForGood();

    void Stage1_Click();
    void Stage2_Click();
    void Stage3_Click();
    void Stage4_Click();
    void Quit_Click();

    bool FirstScan = true;
    bool Proceeding = false;
    bool InLoad = false;
    std::string ImageFileChosen;
    std::string TranscriptionChosen;

    QPushButton* Stage1;
    QPushButton* Stage2;
    QPushButton* Stage3;
    QPushButton* Stage4;
    QCheckBox* SkipSteps;
    QPushButton* RestoreDefaults;
    QPushButton* Quit;
    QLabel* Label3;

    std::function<void(bool ticked)> SkipStepsChanged;
    std::function<void()> RestoreDefaultsClicked;

  signals:
    void Quitting();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void LayOut();
    QPushButton* StepButton(const char* name, const char* caption, void (StartForm::*handler)());
    void SkipSteps_Click();
    // What Quit does before this window closes.
    void QuitOthers();

    MainFormFactory createMainForm_;
    Form1* main_ = nullptr;
    bool skipThisTime_ = false;
    // The files OpenFiles hands to the main window once step 1 has it.
    SessionFiles given_;
};

} // namespace tv
