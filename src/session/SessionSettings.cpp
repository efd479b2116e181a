// The settings of a session: what the main window's load takes from them, and what SaveDefaults
// keeps of the session when the window closes, for a new scan and before the History list.
#include "session/Session.h"
#include "transcription/ScanMatch.h"

#include <algorithm>

namespace tv {

namespace {

// The record number of a table line; 0 for a line that is not a record or lies off the table.
int16_t RecordOf(const RecordTable& table, int line) {
    if (line < 1 || line > table.LineCount) return 0;
    return std::max<int16_t>(0, table.LineRecNo[line]);
}

std::string YesNo(bool value) {
    return value ? "Y" : "N";
}

// The scan's layout, calibration, box and image options as its history entry keeps them.
ScanHistoryEntry CurrentScan(const Session& s) {
    ScanHistoryEntry e;
    e.NumColumns = s.Scan.NumColumns;
    e.ScanType = s.Scan.ScanTypeCode;
    e.LineIncrTop = s.Calib.LineIncrTop;
    e.LineIncrLeft = s.Calib.LineIncrLeft;
    for (int c = 1; c <= 6; ++c) {
        e.ColTop[c] = s.Calib.ColumnTopY[c];
        e.ColLeft[c] = s.Calib.ColumnTopX[c];
        const int16_t first = RecordOf(s.Table, s.Calib.ColumnTopLine[c]);
        e.ColFirst[c] = first >= 1 ? first : -1;
    }
    e.FrameFontSize = s.Content.BoxFontSize;
    e.Scale = s.Box.CurrentZoom;
    e.RecNo = RecordOf(s.Table, s.Table.CurrentLine);
    e.AntiAlias = s.Prefs.AntiAlias;
    e.Negative = s.Prefs.Negative;
    e.Smoothing = s.Prefs.Smoothing;
    // The answer exists once the scan's layout has been chosen (step 3); before, there is none.
    e.SurnameOwnLine = s.Scan.FontName.empty() ? "" : YesNo(s.Scan.SurnameOwnLine);
    const int32_t control = s.P.View.Metrics().Control.Width;
    if (control > 0)
        e.BoxPerCent = static_cast<float>(static_cast<double>(s.Box.BoxWidth) / control);
    return e;
}

} // namespace

void Session::ApplySettings(const GlobalSettings& global) {
    SetBoxColour(global.TextBoxColour);
    Prefs.ShowRptSurnames = global.ShowRptSurnames;
    Prefs.Magnifier = global.Magnifier;
    Lines.LineUpAutomatically = global.LineUpAutomatically;
    Lines.FollowPrintedLines = global.FollowPrintedLines;
}

SaveSnapshot Session::Snapshot(const MainWindowState& window) const {
    SaveSnapshot snapshot;
    snapshot.CalibratingFlag = Calib.CalibratingFlag;
    snapshot.VersionLabel = window.VersionLabel;
    snapshot.GraphicsFile = GraphicsFile;
    snapshot.TranscriptionFile = TranscriptionFile;
    GlobalSettings& g = snapshot.Global;
    g.TextBoxColour = Content.BoxColourIndex;
    g.ShowRptSurnames = Prefs.ShowRptSurnames;
    g.Magnifier = Prefs.Magnifier;
    g.LineUpAutomatically = Lines.LineUpAutomatically;
    g.FollowPrintedLines = Lines.FollowPrintedLines;
    g.FormHeight = window.Form.Height;
    g.FormWidth = window.Form.Width;
    g.FormTop = window.Form.Top;
    g.FormLeft = window.Form.Left;
    snapshot.Current = CurrentScan(*this);
    return snapshot;
}

void Session::SaveDefaults(SettingsStore& store, const MainWindowState& window) {
    tv::SaveDefaults(store, Snapshot(window), History, P.Time);
    if (History.ScanHistoryMatch != 1) SetScanCurrent(GraphicsFile, History);
}

} // namespace tv
