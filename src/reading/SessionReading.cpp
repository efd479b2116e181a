// The session's reading of the scan: the reader's progress and result, the comparison of the
// record table with it (again after every reload, without reading the page again), the Next
// Disagreement command and the marks of the record in the box. Nothing here flags a record,
// writes a file or changes a text, note or footer of the box: the reading is a help, never a
// verdict.
#include "reading/CompareRecords.h"
#include "session/Session.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tv {

namespace {

// The records (not fields) that disagree: Next Disagreement steps by them.
int RecordsDisagreeing(const std::vector<Disagreement>& found) {
    int records = 0;
    for (std::size_t i = 0; i < found.size(); ++i)
        if (i == 0 || found[i].Line != found[i - 1].Line) ++records;
    return records;
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Where text stands in shown (its start and length there), the spaces the box puts inside a
// field (a volume shown as "1 a") passed over.
std::optional<std::pair<std::size_t, std::size_t>> FindSpaced(const std::string& shown,
                                                              const std::string& text) {
    for (std::size_t start = 0; start < shown.size(); ++start) {
        if (shown[start] != text[0]) continue;
        std::size_t at = start;
        std::size_t matched = 0;
        while (at < shown.size() && matched < text.size()) {
            if (shown[at] == text[matched]) {
                ++matched;
            } else if (shown[at] != ' ' || text[matched] == ' ') {
                break;
            }
            ++at;
        }
        if (matched == text.size()) return std::make_pair(start, at - start);
    }
    return std::nullopt;
}

// Where the field's text stands in the box: the name line first, then the second line, each
// searched on from the end of the field found before, as the fields stand in that order. A
// surname the box shows as the dashes of a repeated surname is marked on the dashes.
void PlaceMark(const RecordBoxContent& box, const std::string& transcribed, FieldMark& mark) {
    const std::string text = Trimmed(transcribed);
    if (!text.empty()) {
        for (BoxLine line : {BoxLine::Name, BoxLine::Second}) {
            const std::string& shown = line == BoxLine::Name ? box.NameLine : box.SecondLine;
            const std::optional<std::pair<std::size_t, std::size_t>> at = FindSpaced(shown, text);
            if (!at) continue;
            mark.Line = line;
            mark.Start = at->first;
            mark.Length = at->second;
            return;
        }
    }
    if (mark.Field != 1) return;
    const std::size_t dashes = box.NameLine.find_first_not_of(' ');
    if (dashes == std::string::npos || box.NameLine[dashes] != '-') return;
    mark.Line = BoxLine::Name;
    mark.Start = dashes;
    mark.Length = box.NameLine.find_first_not_of('-', dashes) == std::string::npos
                      ? box.NameLine.size() - dashes
                      : box.NameLine.find_first_not_of('-', dashes) - dashes;
}

} // namespace

int Session::ReadingStarted(const PrintedLines& lines) {
    Reading.Run += 1;
    Reading.Running = true;
    Reading.Percent.reset();
    Reading.Reading = lines;
    return Reading.Run;
}

void Session::ReadingProgress(int run, int percent) {
    if (run != Reading.Run || !Reading.Running) return;
    Reading.Percent = std::clamp(percent, 0, 100);
}

// An empty reading (the OCR data could not be loaded, or nothing could be read) is no reading:
// the window then stays as it is without one. A reading of the scan turned again replaces the
// one before only now that it is complete, so the disagreements stay meanwhile.
void Session::ReadingCompleted(int run, ScanReading reading) {
    if (run != Reading.Run || !Reading.Running || !Reading.Reading) return;
    Reading.Running = false;
    Reading.Percent.reset();
    Reading.Comparing = false;
    if (reading.Lines.empty()) {
        Reading.Lines.reset();
        Reading.Done.reset();
    } else {
        Reading.Lines = std::move(Reading.Reading);
        Reading.Done = std::move(reading);
    }
    Reading.Reading.reset();
    CompareWithReading();
}

void Session::ReadingCancelled() {
    const int run = Reading.Run;
    const int comparison = Reading.Comparison;
    Reading = {};
    Reading.Run = run;
    Reading.Comparison = comparison;
}

std::vector<Disagreement> Compare(const ReadingComparison& comparison) {
    return FindDisagreements(comparison.Table, comparison.Scan, comparison.Lines,
                             comparison.Reading);
}

// The disagreements go at once: they name lines of the table compared before. Till the new ones
// come the status line shows the reading as complete.
void Session::CompareWithReading() {
    Reading.Disagreements.clear();
    Reading.Comparison += 1;
    Reading.Comparing = Reading.Done.has_value() && Reading.Lines.has_value();
    if (Reading.Comparing) Reading.Percent = 100;
}

std::optional<ReadingComparison> Session::ComparisonWanted() const {
    if (!Reading.Comparing || !Reading.Done || !Reading.Lines) return std::nullopt;
    return ReadingComparison{Reading.Comparison, Table, Scan, *Reading.Lines, *Reading.Done};
}

void Session::DisagreementsFound(int comparison, std::vector<Disagreement> found) {
    if (comparison != Reading.Comparison || !Reading.Comparing) return;
    Reading.Comparing = false;
    Reading.Percent.reset();
    Reading.Disagreements = std::move(found);
}

std::string Session::ReadingStatus() const {
    if ((Reading.Running || Reading.Comparing) && Reading.Percent)
        return "Reading the scan: " + std::to_string(*Reading.Percent) + " %";
    if (!Reading.Done) return "";
    const int records = RecordsDisagreeing(Reading.Disagreements);
    if (records == 0) return "Read the scan: no record differs";
    return "Read the scan: " + std::to_string(records) +
           (records == 1 ? " record differs" : " records differ") + " (F3: Next Disagreement)";
}

// The next record after the current line where a field disagrees; after the last one it goes
// round to the first, as a search goes on from the top, so that the key always has somewhere to
// go while any disagreement is left. Calibrated only, as the other record commands.
void Session::NextDisagreement() {
    if (Calib.CalibrationStage != 0 || Reading.Disagreements.empty()) return;
    const int16_t current = Table.CurrentLine;
    auto after = std::find_if(Reading.Disagreements.begin(), Reading.Disagreements.end(),
                              [current](const Disagreement& d) { return d.Line > current; });
    const int16_t line =
        after != Reading.Disagreements.end() ? after->Line : Reading.Disagreements.front().Line;
    if (line < 1 || line > Table.LineCount) return;
    Table.CurrentLine = line;
    ShowRecord(0);
    CalcFramePosn();
    EnsureFrameVisible();
}

std::vector<FieldMark> Session::BoxMarks() const {
    std::vector<FieldMark> marks;
    const int16_t line = Table.CurrentLine;
    if (line < 1 || line > Table.LineCount) return marks;
    for (const Disagreement& d : Reading.Disagreements) {
        if (d.Line != line) continue;
        FieldMark mark{d.Field, d.Read, std::nullopt, 0, 0};
        PlaceMark(Content, d.Transcribed, mark);
        marks.push_back(mark);
    }
    return marks;
}

} // namespace tv
