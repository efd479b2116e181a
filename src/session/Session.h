#pragma once
// The state of one verification session, split by subsystem, and the operations that change
// it. The main window holds one Session and only draws its state and feeds it events; every
// rule lives here so that it is tested without a display.
#include "core/Clock.h"
#include "core/Prompts.h"
#include "layout/BoxGeometry.h"
#include "layout/Calibration.h"
#include "layout/LineUp.h"
#include "layout/ScanLayoutOptions.h"
#include "layout/ScanType.h"
#include "reading/PageReading.h"
#include "session/ScanHistory.h"
#include "session/Settings.h"
#include "stats/Checks.h"
#include "stats/Statistics.h"
#include "transcription/RecordTable.h"
#include "view/RecordBox.h"
#include "view/ScanViewPort.h"
#include "view/TextMeasure.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tv {

// The platform services a session uses; the desktop passes its own, tests pass fakes.
struct Platform {
    Prompts& Ask;
    TextMeasure& Measure;
    ScanViewPort& View;
    ScanLayoutChooser& LayoutChooser;
    const Clock& Time;
};

// Menu check marks and image options that the settings keep.
struct Preferences {
    bool ShowRptSurnames = false; // MenuShowRptSurnames ticked
    bool Magnifier = false;
    bool AntiAlias = true;
    bool Smoothing = true;
    bool Negative = false;
    bool Mirror = false;
};

// Which buttons and menu entries of the main window are enabled or shown.
struct CommandState {
    bool MenuCalibrate = true;
    bool MenuShowRptSurnames = true;
    bool ShowStats = false; // the Statistics button and MenuShowStats
    BoundedArray<bool, 1, 6> TopCol;
    BoundedArray<bool, 0, 3> AdjCol;
    bool AdjColsVisible = false;
};

// What a key or command asks of the desktop besides the state it changed.
struct CommandOutcome {
    bool OpenHelp = false;
    bool ShowStatistics = false;
    bool StatisticsChanged = false; // UpdateStats ran: rebuild the statistics screen's list
    bool ExitProgram = false;       // the reload gave up: end the program as Exit does
};

using FileTime = std::filesystem::file_time_type;

// The two files a session opens through the open-file dialog.
enum class FileKind { Image, Transcription };

// What the open-file dialog is asked: title, filters (description and patterns, in the desktop's
// filter syntax, the first one selected) and the folder and file name it starts at.
struct FileRequest {
    std::string Title;
    std::vector<std::string> Filters;
    std::string Folder; // native path, with its trailing separator; "" for the dialog's own
    std::string Name;
};

// The main window as the settings keep it.
struct MainWindowState {
    TwipsRect Form;           // its place and size on the screen
    std::string VersionLabel; // the version line it shows: "Version " and the version text
};

// "Version 1.0.0 / 21-Jun-2022": the program's version line on the start window.
std::string VersionLine();

class Session {
  public:
    explicit Session(Platform platform) : P(platform) {}

    Platform P;
    RecordTable Table;
    ScanType Scan;
    Calibration Calib;
    BoxPlacement Box;
    RecordBoxContent Content;
    CheckIterator Checks;
    ScanHistory History;
    Preferences Prefs;
    LineFinding Lines;
    PageReading Reading;
    CommandState Commands;
    std::string GraphicsFile;      // native path, "" when no scan
    std::string TranscriptionFile; // native path
    std::optional<FileTime> TranscriptionFileTime;
    std::string Caption = "Tallyview";
    std::string StatsSummaryText;
    int16_t StatsOption = 0;
    bool DiagVisible = false;

    // --- layout/CalibrateTextbox.cpp
    // Performs the next calibration stage: 0 -> 1 -> 2 -> ... -> NumColumns+1 -> 0.
    void CalibrateTextbox();

    // --- layout/FramePosition.cpp
    void CalcFramePosn();
    void GetFramePosn();
    void EnsureFrameVisible();
    // The user dropped the box with its top left corner at this place on the form (twips).
    void DropBox(int32_t formLeft, int32_t formTop);
    // The user dragged the size handle: the new box width in twips.
    void SetBoxWidth(int32_t width);
    void TopCol_Click(int16_t index);

    // --- layout/LineUp.cpp
    // The finder's lines for the scan turned by rotation degrees; they serve the placements made
    // from now on and never move the box where it stands.
    void PrintedLinesFound(PrintedLines lines, float rotation);
    // Puts the box that CalcFramePosn placed on the printed line the calibration stage asks for,
    // or, calibrated, on the found line nearest it; the line it went to, if any.
    std::optional<FoundLine> LineUpWithPrintedLines();
    // After the box moved by whole line spacings from a box that stood topBefore (twips): the
    // found line nearest the new place, keeping the box's distance from the line it stood on.
    std::optional<FoundLine> FollowPrintedLine(int32_t topBefore);

    // --- reading/SessionReading.cpp
    // A reading of the scan starts on these found lines; the number of its run, which its
    // reports carry.
    int ReadingStarted(const PrintedLines& lines);
    // The reading of run has read this share (0..100) of the lines.
    void ReadingProgress(int run, int percent);
    // The reading of run is complete: the record table is compared with it.
    void ReadingCompleted(int run, ScanReading reading);
    // The reading under way, and any reading of the scan before, are dropped: the scan changed.
    void ReadingCancelled();
    // Asks for the record table to be compared with the reading of the page, if there is one:
    // after the reading completes and after every reload of the transcription.
    void CompareWithReading();
    // The comparison asked for and not yet done, to run off the user-interface thread.
    std::optional<ReadingComparison> ComparisonWanted() const;
    // The disagreements a comparison found; taken when it is the latest one asked for.
    void DisagreementsFound(int comparison, std::vector<Disagreement> found);
    // The window's status line: how far the reading has got, then the records that disagree;
    // "" while there is nothing to tell.
    std::string ReadingStatus() const;
    // Next Disagreement (F3): to the next record after the current one where a field disagrees.
    void NextDisagreement();
    // The fields of the record in the box that disagree, where the box shows them.
    std::vector<FieldMark> BoxMarks() const;

    // --- layout/ZoomRotate.cpp
    // +1 one step in, -1 one step out, 10 or more a percentage of BaseZoom.
    void Zoom(float argument);
    void Rotate(float degrees);
    void WidenBox(int16_t step);
    void NarrowBox(int16_t step);

    // --- view/ShowRecord.cpp
    // Moves by direction (-1, 0, +1), fills the box; returns the printed-line step.
    int16_t ShowRecord(int direction);
    void ResizeFrame();
    void SetBoxColour(int16_t index);
    void ChangeFontSize(int delta);
    void AdjCol_Click(int16_t index);

    // --- view/KeyTable.cpp
    // The one key-down handler: every key is consumed.
    CommandOutcome Form_KeyDown(int keyCode, bool shift, bool alt);
    // A button that does what its key does (PrevRec, NextRec): the command itself, never
    // swallowed by a pending placement as the first key after a scroll is.
    CommandOutcome ButtonCommand(int keyCode);
    int16_t MovementStep(bool shift) const;

    // --- view/FlagsReload.cpp
    CommandOutcome ToggleFlag();
    CommandOutcome ReloadTranscription();
    // The change watch: the file's present modification time, or nothing when it cannot be read.
    void ChangeWatch(std::optional<FileTime> present);

    // --- stats/SessionStats.cpp
    void UpdateStats();

    // --- stats/StatsTabs.cpp
    // The list of StatsOption (RefreshTabs). The History list saves the settings first unless
    // the current scan is already entry 1, so that it includes the scan being verified.
    std::string RefreshTabs(SettingsStore& store, const MainWindowState& window);
    // The printed report; allRecords is the answer Yes to printing all the records.
    std::vector<ReportLine> Report(bool allRecords);

    // --- session/SessionSettings.cpp
    // What the main window's load takes from the settings: the box colour and two menu ticks.
    void ApplySettings(const GlobalSettings& global);
    // What SaveDefaults keeps of this session at this moment.
    SaveSnapshot Snapshot(const MainWindowState& window) const;
    // SaveDefaults; when that did not make the current scan entry 1 (no scan, or calibrating),
    // the scan is matched against the history again.
    void SaveDefaults(SettingsStore& store, const MainWindowState& window);

    // --- session/SessionFlow.cpp
    // Resets the per-scan state: on the main window's first load and for every new scan.
    void Form_Load2();
    // What the open-file dialog starts at, from the scan history.
    FileRequest ChooseFileRequest(FileKind kind) const;
    // The scan image the user chose ("" when the choice was cancelled).
    void ImageChosen(const std::string& path);
    // The viewer's error code after loading GraphicsFile (0 when it loaded). False, after
    // telling the user, when the scan cannot be shown: the program then ends.
    bool ImageLoaded(int errorCode);
    // Reads the chosen transcription ("" when the choice was cancelled). Returns its path, or
    // "**QUIT**" when there is none, it cannot be opened or the user refused it.
    std::string LoadTranscription(const std::string& path);
    // Prepares the newly loaded pair of files for verifying and starts calibration; the main
    // window is laid out before, so the view's size is known.
    void InitialiseForm1();
    // A scan verified before whose history entry holds a spacing and the column tops: the
    // calibration is taken from it, rescaled to the present zoom, and the box stands on the
    // record it stood on; no calibration is needed. False, with nothing changed, otherwise.
    bool RestoreRememberedCalibration();
    // New Scan: refused, with a message, while calibrating.
    bool NewScanAllowed();
    // The scan moved under the box (the user scrolled, or the window changed size): the box
    // keeps its place on the scan and the next key puts it back in view.
    void ViewMoved();
    // The user dropped the dragged box with its top left corner here on the form (twips).
    void BoxDropped(int32_t formLeft, int32_t formTop);
    // The ReCalibrate menu item: calibration again from its first stage, keeping the layout.
    void MenuCalibrate_Click();
    // The Show Repeated Surnames menu item: toggles its tick and shows the record again.
    void MenuShowRptSurnames_Click();
};

// The modification time of a file, or nothing when it cannot be read.
std::optional<FileTime> ModificationTime(const std::string& path);

} // namespace tv
