// The user's flags on records, the notice that the transcription file changed on disk, and
// the reload that keeps the calibration when the column tops can still be found.
#include "core/Checked.h"
#include "core/Text.h"
#include "session/Session.h"
#include "transcription/ReadTranscription.h"

#include <algorithm>
#include <system_error>
#include <vector>

namespace tv {

namespace {

// A correction may add or remove up to three lines before a column top; a top that moved
// further is not looked for, and the user calibrates again.
constexpr int ColumnTopSearch = 3;

const char* const ChangedNotice = "Your transcription file has changed - press R to reload it";
const char* const ReloadedNotice = " *** Transcription file reloaded ***";

// Empty for a line outside the table: entries past its end hold an older table's lines.
std::string ColumnKey(const RecordTable& table, int line) {
    if (line < 1 || line > table.LineCount) return "";
    return table.Surname[line] + table.Forenames[line];
}

// False when the user cancels at the warning, which is asked once whatever the number of flags.
bool AcceptFlagLoss(const RecordTable& table, Prompts& prompts) {
    for (int line = 1; line <= table.LineCount; ++line) {
        if (!table.LineFlagged[line]) continue;
        Prompt warning{"All the flagged records will lose their flag", AppTitle, Buttons::OkCancel};
        return prompts.Ask(warning) != Answer::Cancel;
    }
    return true;
}

// The record table and caption that a successful read gives.
struct ReadResult {
    RecordTable Table;
    std::string Caption;
    bool Quit = false;
};

// Reads the file into a copy of the table, so that a failed read leaves the session's table,
// flags and calibration as they were. The layout is read into a copy too and dropped: the
// columns and pads the user settled belong to the calibration, which the reload keeps.
std::optional<ReadResult> ReadAgain(Session& s) {
    ReadResult result{s.Table, "", false};
    result.Table.LineFlagged.Fill(false); // the loader starts every flag cleared
    ScanType scratchLayout = s.Scan;
    std::string fileName = s.TranscriptionFile;
    std::string shownName = Utf8ToCp1252(fileName);
    std::string reason;
    try {
        ReaderContext context{result.Table, scratchLayout, s.Calib.ColumnTopLine, s.GraphicsFile,
                              s.P.Ask};
        result.Caption = ReadTranscription(fileName, context);
        result.Quit = fileName == QuitToken;
        return result;
    } catch (const FileError& e) {
        reason = e.Reason;
    } catch (const RunTimeError& e) {
        reason = RefusalReason(e);
    }
    s.P.Ask.Tell("Cannot reload " + shownName + CR + reason + CR +
                 "The records shown are those read before.");
    return std::nullopt;
}

// The line of the new table whose key is the column's key, near the old top; nothing when
// none.
std::optional<int16_t> RefindColumnTop(const RecordTable& table, int16_t top,
                                       const std::string& key) {
    // A record's key is never empty (a missing surname reads "(blank)"): an empty key is that of
    // a top outside the table, which no line of the new table holds.
    auto holdsKey = [&](int line) { return !key.empty() && ColumnKey(table, line) == key; };
    if (holdsKey(top)) return top;
    for (int line = std::max(1, top - ColumnTopSearch); line <= top + ColumnTopSearch; ++line)
        if (holdsKey(line)) return To16(line);
    return std::nullopt;
}

// Moves each column top to where its record now stands; false, with the tops untouched, when
// one cannot be found.
bool RefindColumnTops(Session& s, const std::vector<std::string>& keys) {
    ColumnTopLines tops = s.Calib.ColumnTopLine;
    for (int c = 1; c <= s.Scan.NumColumns; ++c) {
        std::optional<int16_t> found =
            RefindColumnTop(s.Table, tops[c], keys[static_cast<std::size_t>(c - 1)]);
        if (!found) return false;
        tops[c] = *found;
    }
    bool moved = false;
    for (int c = 1; c <= s.Scan.NumColumns; ++c)
        moved = moved || tops[c] != s.Calib.ColumnTopLine[c];
    s.Calib.ColumnTopLine = tops;
    // The ten-line gap count restarts at each column top, so moved tops change the jumps.
    if (moved) CalcLineJump(s.Table, s.Scan, s.Calib.ColumnTopLine);
    return true;
}

// The current line back onto a record: a record line stays, any other line steps on to the
// next record, and past the last record it steps back to the last one.
void BackOntoRecord(RecordTable& table) {
    if (table.CurrentLine > table.LineCount) {
        table.CurrentLine = To16(table.LineCount + 1); // never look at lines past the end
    } else {
        PrevRecordLine(table);
        NextRecordLine(table);
    }
    if (table.CurrentLine > table.LineCount) PrevRecordLine(table);
}

// The box showed a record of the table read before: its lines go, and a current line past the
// new end comes back to one past it, so that no entry beyond the new end is ever read.
void ForgetLinesReadBefore(Session& s) {
    s.Content.NameLine.clear();
    s.Content.SecondLine.clear();
    s.Content.FootLabel.clear();
    if (s.Table.CurrentLine > s.Table.LineCount) s.Table.CurrentLine = To16(s.Table.LineCount + 1);
}

void ShowReloaded(Session& s) {
    BackOntoRecord(s.Table);
    s.ShowRecord(0);
    SetNote(s.Content, NoteKind::AddStatus, ReloadedNotice, true);
    // The note adds a line: the box is laid out again before its height places it and the
    // diagnostics panel reports it.
    s.ResizeFrame();
    s.CalcFramePosn();
    s.EnsureFrameVisible();
}

} // namespace

std::optional<FileTime> ModificationTime(const std::string& path) {
    std::error_code error;
    FileTime time = std::filesystem::last_write_time(std::filesystem::path(path), error);
    if (error) return std::nullopt;
    return time;
}

CommandOutcome Session::ToggleFlag() {
    CommandOutcome outcome;
    if (Calib.CalibrationStage != 0) return outcome;
    int16_t line = Table.CurrentLine;
    if (line >= 1 && line <= Table.LineCount) Table.LineFlagged[line] = !Table.LineFlagged[line];
    ShowRecord(0);
    UpdateStats();
    outcome.StatisticsChanged = true;
    return outcome;
}

CommandOutcome Session::ReloadTranscription() {
    CommandOutcome outcome;
    if (Calib.CalibrationStage != 0) {
        P.Ask.Tell("Cannot reload while you are calibrating");
        return outcome;
    }
    if (!AcceptFlagLoss(Table, P.Ask)) return outcome;
    std::vector<std::string> keys;
    for (int c = 1; c <= Scan.NumColumns; ++c)
        keys.push_back(ColumnKey(Table, Calib.ColumnTopLine[c]));
    std::optional<ReadResult> read = ReadAgain(*this);
    if (!read) return outcome;
    if (read->Quit) {
        outcome.ExitProgram = true;
        return outcome;
    }
    Table = std::move(read->Table);
    Caption = read->Caption;
    ForgetLinesReadBefore(*this);
    TranscriptionFileTime = ModificationTime(TranscriptionFile);
    CalcLineJump(Table, Scan, Calib.ColumnTopLine);
    UpdateStats();
    // The page is the same: its reading is compared with the new table, not read again.
    CompareWithReading();
    outcome.StatisticsChanged = true;
    if (RefindColumnTops(*this, keys)) {
        ShowReloaded(*this);
    } else {
        P.Ask.Tell("The transcription file has changed - need to recalibrate");
        Calib.CalibrationStage = 0;
        CalibrateTextbox();
    }
    return outcome;
}

void Session::ChangeWatch(std::optional<FileTime> present) {
    // Not while calibrating or loading, and not before the box has been lined up once.
    if (Calib.CalibrationStage != 0 || Calib.CalibratingFlag || !Calib.BoxLinedUp) return;
    // A time that cannot be read (the file was deleted, say) is ignored.
    if (!present || present == TranscriptionFileTime) return;
    TranscriptionFileTime = present;
    SetNote(Content, NoteKind::AddStatus, ChangedNotice, true);
}

} // namespace tv
