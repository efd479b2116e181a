// The session's life cycle: resetting for a new scan, the two files of a session and what the
// open-file dialog is asked, the preparation for calibration (or the calibration remembered for
// a scan verified before) and the refusal of a new scan while calibrating.
#include "core/Text.h"
#include "layout/FrameArithmetic.h"
#include "session/Session.h"
#include "transcription/ReadTranscription.h"
#include "transcription/ScanMatch.h"

#include <algorithm>

namespace tv {

namespace {

// The build date shown beside the version: a fixed text, deliberately not the compile date.
constexpr const char* BuildDate = "21-Jun-2022";

const std::vector<std::string> ImageFilters = {
    "Graphics Files (*.JPG *.JPE *.JPEG *.GIF *.TIF *.TIFF *.jpg *.jpe *.jpeg *.gif *.tif *.tiff "
    "*.png *.bmp)",
    "All Files (*)"};
const std::vector<std::string> TranscriptionFilters = {
    "QRL and SCA Files (*.SCA *.QRL *.sca *.qrl)", "All Files (*)"};

// The box may not stand closer than these to the image's left and right edges, so the widest
// box that fits the image is its width less both.
constexpr double ImageSideMargins = 65 + 30;
constexpr double BoxShareOfView = 0.8;
// The smallest step of the zoom table: a remembered zoom below it is no zoom to show a scan at.
constexpr float SmallestZoom = 10.0F;

// The zoom at which a newly loaded scan is shown: the one it was verified at before, if any.
float StartingZoom(const ScanHistory& history) {
    const int16_t match = history.ScanHistoryMatch;
    if (match >= 1 && history.Entries[match].Scale >= SmallestZoom)
        return history.Entries[match].Scale;
    return 100.0F;
}

// The first table line holding record recNo, 0 when there is none.
int16_t LineOfRecord(const RecordTable& table, int recNo) {
    if (recNo < 1) return 0;
    for (int16_t line = 1; line <= table.LineCount; ++line)
        if (table.LineRecNo[line] == recNo) return line;
    return 0;
}

// The remembered tops of columns 1..columns, rescaled by ratio into calib; false when one of
// them is missing or its first record is not in the transcription.
bool RememberedColumnTops(const ScanHistoryEntry& entry, const RecordTable& table, int16_t columns,
                          double ratio, Calibration& calib) {
    for (int c = 1; c <= columns; ++c) {
        const int16_t line = LineOfRecord(table, entry.ColFirst[c]);
        if (line == 0 || entry.ColTop[c] < 0 || entry.ColLeft[c] < 0) return false;
        calib.ColumnTopY[c] = CLng(entry.ColTop[c] * ratio);
        calib.ColumnTopX[c] = CLng(entry.ColLeft[c] * ratio);
        calib.ColumnTopLine[c] = line;
    }
    return true;
}

// The commands of a calibrated scan, as the end of a calibration leaves them.
void EnableCalibratedCommands(CommandState& commands, int16_t columns) {
    commands.MenuCalibrate = true;
    commands.MenuShowRptSurnames = true;
    for (int c = 1; c <= 6; ++c)
        commands.TopCol[c] = c <= columns;
}

} // namespace

std::string VersionLine() {
    return "Version " + std::to_string(TALLYVIEW_VERSION_MAJOR) + "." +
           std::to_string(TALLYVIEW_VERSION_MINOR) + "." +
           std::to_string(TALLYVIEW_VERSION_REVISION) + " / " + BuildDate;
}

void Session::Form_Load2() {
    Calib = {};
    Table.CurrentLine = 0;
    StatsOption = 0;
    Scan = {};
    Box.ScanRotation = 0.0F;
    Box.RotationHintShown = false;
    Box.BoxPlacementPending = false;
    // The lines found on the scan before belong to it, not to the next one.
    Lines.Found.reset();
    // So is its reading.
    ReadingCancelled();
    Caption = AppTitle;
    // A freshly loaded scan is never mirrored.
    Prefs.Mirror = false;
    Commands.AdjColsVisible = false;
    Commands.AdjCol.Fill(false);
}

FileRequest Session::ChooseFileRequest(FileKind kind) const {
    const ScanHistoryEntry& latest = History.Entries[1];
    if (kind == FileKind::Image)
        return {"Select the file containing the scanned image of the index page", ImageFilters,
                latest.ImgFileDir, latest.ImgFile};
    FileRequest request{"Select the file containing your transcription", TranscriptionFilters,
                        latest.SCAFileDir, ""};
    // A scan verified before opens the dialog at the transcription it was verified with.
    if (History.ScanHistoryMatch >= 1) {
        const ScanHistoryEntry& match = History.Entries[History.ScanHistoryMatch];
        request.Folder = match.SCAFileDir;
        request.Name = match.SCAFile;
    }
    return request;
}

void Session::ImageChosen(const std::string& path) {
    GraphicsFile = path;
    SetScanCurrent(GraphicsFile, History);
}

bool Session::ImageLoaded(int errorCode) {
    if (errorCode == 0) return true;
    const std::string shown = Utf8ToCp1252(GraphicsFile);
    if (errorCode == -2)
        P.Ask.Tell(shown + " is not a valid picture file");
    else
        P.Ask.Tell("Error " + std::to_string(errorCode) + " opening " + shown);
    return false;
}

std::string Session::LoadTranscription(const std::string& path) {
    TranscriptionFile = path;
    const int16_t match = History.ScanHistoryMatch;
    if (match != 0) {
        const ScanHistoryEntry& entry = History.Entries[match];
        if (entry.SCAFileDir + entry.SCAFile != path) History.ScanHistoryMatch = 0;
    }
    if (path.empty()) {
        TranscriptionFile = QuitToken;
        return TranscriptionFile;
    }
    try {
        ReaderContext context{Table, Scan, Calib.ColumnTopLine, GraphicsFile, P.Ask};
        Caption = ReadTranscription(TranscriptionFile, context);
    } catch (const FileError& e) {
        P.Ask.Tell("Cannot open " + Utf8ToCp1252(path) + CR + e.Reason);
        TranscriptionFile = QuitToken;
        return TranscriptionFile;
    } catch (const RunTimeError&) {
        // Deliberately passed over, as every run-time error of this loading is: the session goes
        // on with what the reader had read when it happened.
    }
    if (TranscriptionFile != QuitToken) TranscriptionFileTime = ModificationTime(path);
    return TranscriptionFile;
}

void Session::InitialiseForm1() {
    ChooseScanType(Table, Scan, Calib.ColumnTopLine, GraphicsFile, History);
    const float zoom = StartingZoom(History);
    const ViewMetrics view = P.View.Metrics();
    // At most one column of the scan wide, so that it can stand under an entry of the last
    // column, and never wider than the image.
    const double shown = view.ImageWidth * zoom / 100.0;
    const double width = std::min({BoxShareOfView * view.Control.Width,
                                   shown / Scan.ColumnsAcross(), shown - ImageSideMargins});
    Box.BoxWidth = CLng(std::max(0.0, width));
    Content.NameLine.clear();
    Content.SecondLine.clear();
    Box.BaseZoom = 100.0F;
    Box.CurrentZoom = zoom;
    P.View.SetZoom(zoom / 100.0);
    CalcLineJump(Table, Scan, Calib.ColumnTopLine);
    Commands.AdjColsVisible = true;
    Commands.AdjCol.Fill(true);
    if (!RestoreRememberedCalibration()) CalibrateTextbox();
}

bool Session::RestoreRememberedCalibration() {
    const int16_t match = History.ScanHistoryMatch;
    if (match < 1) return false;
    const ScanHistoryEntry& entry = History.Entries[match];
    if (entry.LineIncrTop == -1.0F || entry.Scale <= 0.0F) return false;
    const double ratio = static_cast<double>(Box.CurrentZoom) / entry.Scale;
    Calibration restored;
    if (!RememberedColumnTops(entry, Table, Scan.NumColumns, ratio, restored)) return false;
    restored.LineIncrTop = static_cast<float>(entry.LineIncrTop * ratio);
    restored.LineIncrLeft = static_cast<float>(entry.LineIncrLeft * ratio);
    restored.BoxLinedUp = true;
    Calib = restored;
    // The layout the user settled for this scan, so that the printed lines count as before.
    if (entry.SurnameOwnLine == "Y" || entry.SurnameOwnLine == "N")
        Scan.SurnameOwnLine = entry.SurnameOwnLine == "Y";
    Scan.AskScanType = false;
    CalcLineJump(Table, Scan, Calib.ColumnTopLine);
    Content.BoxFontSize = entry.FrameFontSize;
    const int16_t line = LineOfRecord(Table, entry.RecNo);
    Table.CurrentLine = line != 0 ? line : Calib.ColumnTopLine[1];
    EnableCalibratedCommands(Commands, Scan.NumColumns);
    UpdateStats();
    SetNote(Content, NoteKind::ClearAll, "", true);
    CalcFramePosn();
    ShowRecord(0);
    EnsureFrameVisible();
    return true;
}

bool Session::NewScanAllowed() {
    if (Calib.CalibrationStage == 0) return true;
    P.Ask.Tell("Cannot load new scan while you are calibrating");
    return false;
}

void Session::ViewMoved() {
    const TwipsPoint onForm = BoxOnForm(Box.BoxLeft, Box.BoxTop, P.View.Metrics());
    Box.FormLeft = onForm.Left;
    Box.FormTop = onForm.Top;
    Box.BoxPlacementPending = true;
}

void Session::BoxDropped(int32_t formLeft, int32_t formTop) {
    DropBox(formLeft, formTop);
    // The drop placed the box, so no key has to place it any more.
    Box.BoxPlacementPending = false;
}

void Session::MenuCalibrate_Click() {
    if (!Commands.MenuCalibrate) return;
    Calib.CalibrationStage = 0;
    CalibrateTextbox();
}

void Session::MenuShowRptSurnames_Click() {
    if (!Commands.MenuShowRptSurnames) return;
    Prefs.ShowRptSurnames = !Prefs.ShowRptSurnames;
    ShowRecord(0);
}

} // namespace tv
