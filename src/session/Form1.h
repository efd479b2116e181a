#pragma once
// The main verification window (Form1): the scan view, the box over it, the buttons and the
// menus. It holds the one session, draws its state and turns every key, click and drag into a
// session call; after each call it brings the box, the labels, the enabled states and the
// caption up to date from the session.
//
// Hooks for the forms that connect to it (the app's wiring):
// - ShowStatistics(statisticsOnly): the statistics screen is wanted. True on the statistics-only
//   path (step 2 without a scan; the statistics are up to date and option 0 is selected): the
//   screen captions its close button "Exit", disables its option 3 and ends the program when
//   closed. False from the ShowStats button and the MenuShowStats item.
// - StatisticsChanged(): the statistics were recomputed (flag, reload): rebuild the open screen.
// - OpenHelp(): F1 and the commands help menu item; OpenAbout(): the About menu item.
// - NewScanRequested(files): New Scan was allowed: save the settings, show the start window and
//   call its NewScan with this window. The files dropped on this window, if any, then go to the
//   start window's OpenFiles; none from the menu item.
// - Closing(): the window is closing: save the settings, close the start window, the statistics
//   screen, the About box and the help form, and end the program.
// - Synced(): the window was brought up to date with the session after a command; the
//   diagnostics panel (DiagFrame, ALT+D) refreshes from here while Session::DiagVisible is set.
//
// Given a settings store, the window's load reads the settings (GetDefaults) and takes its box
// colour, menu ticks, size and place from them; the wiring saves them (Session::SaveDefaults
// with WindowState()).
#include "core/Clock.h"
#include "core/QtPlatform.h"
#include "session/Session.h"
#include "session/SessionFiles.h"

#include <QMainWindow>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class QAction;
class QFrame;
class QLabel;
class QLineEdit;
class QMenu;
class QTimer;
class QToolButton;

namespace tv {

class ImageView;
class RecordBoxWidget;
class ScanTypesForm;

// The open-file dialog: the path chosen, "" when the choice was cancelled.
using FileChooser = std::function<std::string(FileKind kind, const FileRequest& request)>;

// The open-file dialog itself: existing files only, starting where the request says.
std::string OpenFileDialog(const FileRequest& request);

// Services Form1 can be given in place of its own; tests script them.
struct Form1Services {
    Prompts* Ask = nullptr;                     // nullptr: modal message boxes
    ScanLayoutChooser* LayoutChooser = nullptr; // nullptr: the ScanTypes form
    FileChooser ChooseFile;                     // empty: the open-file dialog
    SettingsStore* Settings = nullptr;          // nullptr: no settings are read
};

class QtLineFinder;
class QtScanReader;

class Form1 : public QMainWindow {
    Q_OBJECT

  public:
    explicit Form1(Form1Services services = {}, QWidget* parent = nullptr);
    ~Form1() override;

    Session& Model() { return *session_; }
    ImageView& View() { return *view_; }
    ScanTypesForm& ScanTypes() { return *scanTypes_; }
    RecordBoxWidget& RdFrame() { return *rdFrame_; }

    // What the start window asks of the main window.
    void Form_Load2();
    void SetVersionLine(const QString& text);
    // "J": choose and load the scan image, returning its path ("" when none); anything else:
    // choose and read the transcription, returning its path or "**QUIT**".
    std::string LoadFiles(const std::string& kind);
    // A file dropped or named on the command line: the next choice of its kind takes it
    // without opening the dialog.
    void GiveFile(FileKind kind, const std::string& path);
    void InitialiseForm1();
    // Step 4: the user starts verifying on this window.
    void StartVerifying();
    // Step 2 without a scan: the statistics are brought up to date and shown, with no scan.
    void StatisticsOnly();
    // The window was closed: the program is ending.
    bool Ended() const { return ended_; }
    // The window's place on the screen and its version line, as the settings keep them.
    MainWindowState WindowState() const;
    // The user comes back from another form: the keys go to the record box again.
    void FocusRecordBox();

    // The one key-down handler: every key pressed on this window comes here and is consumed.
    void Form_KeyDown(int keyCode, bool shift, bool alt);
    // The line finder is at work on the scan.
    bool FindingLines() const;
    // The OCR reader is at work on the found lines of the scan.
    bool ReadingScan() const;

  signals:
    void ShowStatistics(bool statisticsOnly);
    void StatisticsChanged();
    void OpenHelp();
    void OpenAbout();
    void NewScanRequested(const tv::SessionFiles& files);
    void Closing();
    void Synced();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    // Form1Files.cpp: scans and transcriptions dropped on the window start a new scan with them.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    // Form1Keys.cpp: F10 opens the menu bar's first menu.
    void OpenMenuBar();
    // Form1.cpp
    void BuildWindow();
    QWidget* BuildButtonBar();
    QFrame* BuildAdjCols();
    QToolButton* Button(const QString& name, const QString& caption, const QString& tip,
                        const std::function<void()>& operation, const QString& spoken = {});
    void PlaceOnScreen();
    // Starts the line finder on the scan as it is shown now (turned by the user, if so).
    void FindLines();
    void FindLinesAfterTurning();
    // The layout chosen again (C in the first stage) looks for another number of columns: the
    // lines are found again for it.
    void FindLinesForLayout();
    // The lines were found on the scan turned by rotation degrees: the reading of the page starts
    // on them, when there are any.
    void LinesFound(PrintedLines lines, float rotation);
    // Runs a session operation for a button or menu item, then brings the window up to date.
    void Do(const std::function<void()>& operation);
    // A key for the session; the outcome also tells when it completed a calibration.
    CommandOutcome KeyOutcome(int keyCode, bool shift, bool alt);
    // A button that does what its key does; a pending placement never swallows it.
    CommandOutcome ButtonOutcome(int keyCode);
    CommandOutcome CalibrationOutcome(const std::function<CommandOutcome()>& command);
    void Outcome(const CommandOutcome& outcome);
    void MenuNewScan_Click();
    // New Scan, with files for the start window's dialogs (none from the menu item).
    void NewScan(const SessionFiles& files);
    void BoxDropped(QPoint topLeft);
    void BoxResized(int width);
    void ViewScrolled();
    // The view moved or changed size on the window: the box is placed again once the layout
    // has settled.
    void ViewGeometryChanged();
    void ViewRepainted();

    // Form1Menus.cpp
    void BuildMenus();
    QAction* MenuItem(QMenu* menu, const QString& name, const QString& caption,
                      const std::function<void()>& operation, bool checkable = false);
    void BuildImageMenu();
    void BuildBoxColourMenu();
    void ImageOption(bool Preferences::*option);
    void MenuAboutImage_Click();
    void SyncMenuTicks();

    // Form1Files.cpp
    // The file given for kind, else the open-file dialog's choice.
    std::string ChooseFile(FileKind kind);
    std::string LoadImageFile();
    // The menu ticks' image options onto the view.
    void ApplyImageOptions();

    // Form1Settings.cpp
    void LoadSettings(SettingsStore& store);
    ScreenSize ScreenTwips() const;
    int32_t Twips(int pixels) const;
    QFrame* BuildDiagFrame(QWidget* parent);
    void DiagBoxRefresh();

    // Form1Sync.cpp
    void Sync();
    void SyncBox();
    void SyncCommands();
    // The reading's status line, the marks of the record in the box and the scan's reading of the
    // marked fields beside the box.
    void SyncReadingStatus();
    void SyncReadingMarks();
    int Pixels(int32_t twips) const;

    Form1Services services_;
    QtPrompts prompts_;
    QtTextMeasure measure_;
    SystemClock clock_;
    double twipsPerPixel_;
    ScanTypesForm* scanTypes_;
    ImageView* view_;
    std::unique_ptr<Session> session_;

    RecordBoxWidget* rdFrame_ = nullptr;
    QLabel* footLabel_ = nullptr;
    QLineEdit* dummyBox_ = nullptr;
    QWidget* buttonBar_ = nullptr;
    QFrame* adjCols_ = nullptr;
    QLabel* versionLine_ = nullptr;
    QToolButton* showStats_ = nullptr;
    QFrame* diagFrame_ = nullptr;
    QLabel* diagBox_ = nullptr;
    std::array<QToolButton*, 6> topCol_{}; // TopCol 1..6
    std::array<QToolButton*, 4> adjCol_{}; // AdjCol 0..3
    QAction* menuShowStats_ = nullptr;
    QAction* menuShowRptSurnames_ = nullptr;
    QAction* menuCalibrate_ = nullptr;
    QAction* menuLineUp_ = nullptr;
    QAction* menuFollowLines_ = nullptr;
    // Finds the printed lines of the scan off the user-interface thread.
    QtLineFinder* lineFinder_ = nullptr;
    QTimer* findAfterTurn_ = nullptr;
    int columnsSought_ = 0; // the columns the finder was last asked for; 0: not asked yet
    // Reads the found lines of the scan off the user-interface thread.
    QtScanReader* scanReader_ = nullptr;
    QLabel* readingStatus_ = nullptr; // in the status line
    QLabel* scanReads_ = nullptr;     // beside the box
    int comparisonStarted_ = 0;       // the latest comparison handed to the reader
    static constexpr int FindAfterTurnMs = 400;
    std::vector<std::pair<QAction*, bool Preferences::*>> imageTicks_;
    std::vector<QAction*> boxColours_;
    std::map<FileKind, std::string> givenFiles_;

    bool boxShown_ = false;
    bool placedFromSettings_ = false;
    bool placementQueued_ = false;
    bool ended_ = false;
    // The view's own state of the two effects that toggle.
    bool viewNegative_ = false;
    bool viewMirror_ = false;
};

} // namespace tv
