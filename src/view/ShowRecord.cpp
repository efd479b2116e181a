#include "core/Text.h"
#include "session/Session.h"

#include <string>

namespace tv {
namespace {

constexpr const char* EndWhileCalibrating = " Reached end of records";
constexpr const char* EndWhenCalibrated = ".... Reached end of records ....";
constexpr const char* StartWhileCalibrating = " Reached start of records";
constexpr const char* StartWhenCalibrated = ".... Reached start of records ....";
constexpr const char* FlaggedNote = "  **FLAGGED**  Press M to clear flag";
constexpr const char* FollowingLine = "  Following line: ";
constexpr const char* BlankSurname = "(blank)";
constexpr int FollowingLinesShown = 4;

bool Calibrated(const Session& s) {
    return s.Calib.CalibrationStage == 0;
}

// Moves CurrentLine; the printed lines between the record left and the one reached.
int16_t Move(RecordTable& t, int direction) {
    auto jumpOf = [&t](int line) -> int16_t {
        return line >= 1 && line <= t.LineCount ? t.LineJump[line] : 0;
    };
    if (direction > 0) {
        NextRecordLine(t);
        return jumpOf(t.CurrentLine);
    }
    if (direction < 0) {
        int16_t step = jumpOf(t.CurrentLine);
        PrevRecordLine(t);
        return step;
    }
    return 0;
}

// The nearest record line before the current one, 0 when there is none.
int16_t PreviousRecord(const RecordTable& t) {
    int16_t line = To16(t.CurrentLine - 1);
    while (line > 0 && !t.IsRecord(line))
        line = To16(line - 1);
    return line;
}

bool AtColumnTop(const Session& s, int line) {
    for (int c = 1; c <= s.Scan.NumColumns; ++c)
        if (s.Calib.ColumnTopLine[c] == line) return true;
    return false;
}

// A part shorter than the width is padded and cut to width - 1, so the next field starts in
// the printed column after one separating space.
void PadTo(std::string& text, int width) {
    if (width >= 1 && static_cast<int>(text.size()) < width)
        text = PadRight(text, static_cast<std::size_t>(width - 1));
}

// As PadTo, but an unpadded part (width 0) is followed by three spaces.
void PadOrSpace(std::string& text, int width) {
    if (width == 0)
        text += "   ";
    else
        PadTo(text, width);
}

std::string SurnamePart(const Session& s, int line) {
    const RecordTable& t = s.Table;
    int16_t previous = PreviousRecord(t);
    bool repeated = !s.Prefs.ShowRptSurnames && previous > 0 && Calibrated(s) &&
                    t.Surname[previous] == t.Surname[line] && t.Surname[line] != BlankSurname &&
                    !AtColumnTop(s, line);
    if (repeated) return s.Scan.IndexFont == 'C' ? "  --" : "  ------";
    std::string part = "  " + t.Surname[line];
    if (s.Scan.SurnamePad == 0) part += ",";
    return part;
}

// The first line and, when the district stands on the second line, the start of that line.
void BuildNameLine(const Session& s, int line, std::string& name, std::string& second) {
    const RecordTable& t = s.Table;
    name = SurnamePart(s, line);
    PadTo(name, s.Scan.SurnamePad);
    name += " " + t.Forenames[line];
    if (t.HasExtraField) {
        PadOrSpace(name, s.Scan.ExtraPad);
        name += " " + t.ExtraField[line];
    }
    second.clear();
    if (s.Scan.DistrictPad == 99) {
        second = t.District[line];
    } else {
        PadOrSpace(name, s.Scan.DistrictPad);
        name += " " + t.District[line];
    }
    name = TrimRight(name);
}

bool KeepsAlignment(const RecordTable& t) {
    return t.LayoutBD1993 || t.LayoutM1994;
}

void AddVolumePageTimes(const RecordTable& t, int line, std::string& second) {
    const std::string& volume = t.Volume[line];
    const std::string& page = t.Page[line];
    if (page.size() > 5 || volume.size() > 3)
        second += "   " + volume + "  " + page;
    else
        second += Left("   " + volume + "   ", 6) + AlignRight(page, 6);
    if (!KeepsAlignment(t)) second = Trim(second);
}

// Volume and page by the style of the period; false when the style does not apply.
bool AddStyledVolumePage(int16_t style, const std::string& volume, const std::string& page,
                         std::string& second) {
    if (style == 1 && page.size() < 5) {
        second = volume + AlignRight(page, 4);
    } else if (style == 2 && page.size() < 6) {
        std::string lead = volume.empty() ? "" : volume.substr(0, volume.size() - 1);
        second = lead + " " + Right(volume, 1) + AlignRight(page, 6);
    } else if (style == 3 && page.size() < 5) {
        second = volume + AlignRight(page, 5);
    } else if (style == 4) {
        second = volume + (volume.size() == 1 ? " " : "") + AlignRight(page, 5);
    } else {
        return false;
    }
    return true;
}

// Volume and page when no style applies, or after a district on the second line.
void AddPlainVolumePage(const RecordTable& t, int line, int16_t style, const std::string& page,
                        std::string& second) {
    const std::string& volume = t.Volume[line];
    if (volume.size() > 3 || page.size() > 4)
        second += "  " + volume + " " + page;
    else if (style == 5)
        second = t.AltSecondLine[line] + "  " + PadRight(volume, 4) + page;
    else
        second += Left("  " + volume + "   ", 5) + AlignRight(page, 5);
}

void AddVolumePageCourier(const Session& s, int line, std::string& second) {
    const RecordTable& t = s.Table;
    std::string page = Trim(t.Page[line]);
    int16_t style = s.Scan.VolPageStyle;
    if (t.LayoutBD1993 || t.LayoutM1993 || t.LayoutM1994)
        second = t.AltSecondLine[line];
    else if (!second.empty() || !AddStyledVolumePage(style, t.Volume[line], page, second))
        AddPlainVolumePage(t, line, style, page, second);
    if (!KeepsAlignment(t)) second = Trim(second);
}

bool CollapseDoubleSpace(std::string& text, std::size_t from) {
    std::size_t at = text.find("  ", from);
    if (at == std::string::npos) return false;
    text.erase(at, 1);
    return true;
}

// Shortens the two lines until they stand side by side within the box.
void FitLines(const Session& s, std::string& name, std::string& second) {
    const bool courier = s.Scan.IndexFont == 'C';
    const double room = s.Box.BoxWidth * (courier ? 0.97 : 0.9);
    auto width = [&s](const std::string& text) {
        return static_cast<double>(
            s.P.Measure.TextWidth(text, s.Scan.FontName, s.Content.BoxFontSize));
    };
    auto fits = [&] { return width(name) + width("  ") + width(second) <= room; };
    while (!fits()) {
        bool changed = CollapseDoubleSpace(second, 0);
        if (changed && fits()) return;
        // Near the end of a long name line even the two leading spaces may go.
        if (name.size() >= 16 && CollapseDoubleSpace(name, name.size() - 16)) changed = true;
        if (!changed) break;
    }
    while (!fits() && CollapseDoubleSpace(name, 1)) {
    }
    while (!fits()) {
        bool changed = false;
        if (name.size() > 5) {
            name = name.substr(0, name.size() - 3) + "..";
            changed = true;
        }
        if (second.size() >= 6) {
            second = ".." + second.substr(3);
            changed = true;
        }
        if (!changed) break;
    }
}

void ShowOffTheEnd(Session& s, const char* calibratingNote, const char* calibratedNote) {
    if (Calibrated(s)) s.Content.NameLine.clear();
    s.Content.SecondLine.clear();
    s.Content.FootLabel.clear();
    SetNote(s.Content, NoteKind::AddStatus, Calibrated(s) ? calibratedNote : calibratingNote, true);
}

void ShowNotes(Session& s, int line) {
    const RecordTable& t = s.Table;
    NoteKind flagKind = t.LineFlagged[line] ? NoteKind::AddStatus : NoteKind::RemoveStatus;
    SetNote(s.Content, flagKind, FlaggedNote, true);
    for (int next = line + 1; next <= line + FollowingLinesShown; ++next) {
        if (next > t.LineCount || t.IsRecord(next)) break;
        SetNote(s.Content, NoteKind::AddComment, FollowingLine + t.LineText[next], true);
    }
}

std::string Footer(const RecordTable& t, int line) {
    return " Line " + std::to_string(line) + " of " + std::to_string(t.LineCount) +
           ",  QRL entry " + std::to_string(t.LineRecNo[line]) + " of " +
           std::to_string(t.RecordCount) + CR + "  " + t.Surname[line] + ", " + t.Forenames[line];
}

} // namespace

int16_t Session::ShowRecord(int direction) {
    int16_t step = Move(Table, direction);
    const int line = Table.CurrentLine;
    if (line > Table.LineCount || line < 1) {
        if (line > Table.LineCount)
            ShowOffTheEnd(*this, EndWhileCalibrating, EndWhenCalibrated);
        else
            ShowOffTheEnd(*this, StartWhileCalibrating, StartWhenCalibrated);
        ResizeFrame();
        return step;
    }
    std::string name;
    std::string second;
    BuildNameLine(*this, line, name, second);
    if (Scan.IndexFont == 'C')
        AddVolumePageCourier(*this, line, second);
    else
        AddVolumePageTimes(Table, line, second);
    FitLines(*this, name, second);
    Content.NameLine = name;
    Content.SecondLine = "  " + second;
    if (Calibrated(*this)) ShowNotes(*this, line);
    Content.FootLabel = Footer(Table, line);
    ResizeFrame();
    return step;
}

} // namespace tv
