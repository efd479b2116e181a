#include "transcription/ReadTranscription.h"

#include "core/Text.h"
#include "transcription/FileNames.h"
#include "transcription/HeaderLines.h"
#include "transcription/LineReader.h"
#include "transcription/RecordLines.h"
#include "transcription/SplitFields.h"
#include "transcription/TextConversion.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace tv {

namespace {

constexpr std::size_t ShownLineLength = 100;
constexpr std::string_view CutMark = " ... ...";
constexpr const char* InconsistentName =
    " in graphics file name appears to be inconsistent with details in file header";

// What one read keeps besides the table.
struct ReadState {
    HeaderSeen Seen;
    int LastRecordLine = -1;
    bool VeryLongLineSeen = false;
    TextEncoding Encoding = TextEncoding::Plain;
    Fields LineFields;
};

void ResetTable(RecordTable& table) {
    table.HeaderEvent = "?";
    table.HeaderYear = -1;
    table.HeaderQuarter = -1;
    table.HeaderPageCount = 0;
    table.LayoutBD1993 = false;
    table.LayoutM1993 = false;
    table.LayoutM1994 = false;
    table.LineCount = 0;
    table.RecordCount = 0;
    table.TranscriptionCodePage = 0;
}

std::string ShownText(const std::string& line) {
    if (line.size() <= ShownLineLength) return line;
    return Left(line, ShownLineLength) + std::string(CutMark);
}

// Tested on the raw line: longer than 200, or longer than 100 unless it is a comment.
bool IsVeryLong(const RawLine& raw) {
    return raw.Length > 200 || (raw.Length > ShownLineLength && !StartsWith(raw.Head, '#'));
}

// A very long line is kept only as a marker, unconverted; the other columns keep their values.
void StoreVeryLongLine(RecordTable& table, int line, const RawLine& raw) {
    table.LineText[line] = Left(raw.Head, ShownLineLength) + std::string(CutMark);
    table.Surname[line].clear();
    table.LineJump[line] = 0;
    table.LineRecNo[line] = -1;
}

// The marks a transcriber leaves on a doubtful entry, as a table of the 256 byte values: every
// character of every line is tested, so each test is one look-up rather than five comparisons.
constexpr std::array<bool, 256> QueryMarks = [] {
    std::array<bool, 256> marks{};
    for (char c : std::string_view("*_?{["))
        marks[static_cast<unsigned char>(c)] = true;
    return marks;
}();

// Runs to the line's end without stopping at a mark: hardly any line has one, and a loop without
// a branch per character is the quicker for the lines that have none.
bool HasQueryMark(std::string_view text) {
    bool found = false;
    for (char c : text)
        found |= QueryMarks[static_cast<unsigned char>(c)];
    return found;
}

void MarkNotARecord(RecordTable& table, int line) {
    table.LineRecNo[line] = -1;
    table.LineJump[line] = 0;
}

void ReadLine(ReaderContext& context, ReadState& state, RawLine& raw) {
    RecordTable& table = context.Table;
    int line = table.LineCount;
    if (IsVeryLong(raw)) {
        state.VeryLongLineSeen = true;
        StoreVeryLongLine(table, line, raw);
        return;
    }
    // The code page in force so far: a "+INFO" line converts only the lines after it.
    std::string text = ConvToAnsi(std::move(raw.Head), table.TranscriptionCodePage);
    table.LineQuery[line] = HasQueryMark(text);
    Fields& fields = state.LineFields;
    SplitFields(text, fields, table.LineCount, context.Ask);
    const bool blank = text.empty();
    // Moved into the table rather than copied when it is shown whole, as nearly every line is.
    table.LineText[line] = text.size() <= ShownLineLength ? std::move(text) : ShownText(text);
    if (StartsWith(fields[1], '+')) {
        table.Surname[line] = fields[1];
        ApplyHeaderLine(table, fields, state.Seen);
        MarkNotARecord(table, line);
    } else if (StartsWith(fields[1], '#') || blank) {
        table.Surname[line] = fields[1];
        MarkNotARecord(table, line);
    } else {
        // The record's surname is stored by StoreRecord alone: it is copied once.
        if (state.LastRecordLine < 0) DecideExtraField(table, fields, context.Ask);
        StoreRecord(table, line, fields);
        state.LastRecordLine = line;
    }
}

std::string Caption(const std::string& description) {
    return description.empty() ? std::string(AppTitle)
                               : std::string(AppTitle) + " - " + description;
}

std::string Mismatches(const ParsedFileName& name, const RecordTable& table) {
    std::string list;
    if (name.Year > 0 && table.HeaderYear > 0 && name.Year != table.HeaderYear) list += "Year, ";
    if (name.Quarter > 0 && table.HeaderQuarter > 0 && name.Quarter != table.HeaderQuarter)
        list += "Quarter, ";
    if (!name.Letter.empty() && table.HeaderEvent != "?" && name.Letter != table.HeaderEvent)
        list += "BMorD, ";
    return list;
}

// The scan's file name against the header; a warning only.
void CheckFileName(const ReaderContext& context) {
    const RecordTable& table = context.Table;
    ParsedFileName name = ParseFileName(context.GraphicsFile);
    std::string list = Mismatches(name, table);
    if (list.empty()) return;
    context.Ask.Tell(list.substr(0, list.size() - 2) + InconsistentName + LF +
                     "File name     Year:" + std::to_string(name.Year) +
                     "  Qtr:" + std::to_string(name.Quarter) + "  B,M or D:" + name.Letter + LF +
                     "File header  Year:" + std::to_string(table.HeaderYear) + "  Qtr:" +
                     std::to_string(table.HeaderQuarter) + "  B,M or D:" + table.HeaderEvent);
}

// False when the user cancels.
bool CarryOnDespite(const std::string& shownName, const char* reason, Prompts& prompts) {
    Prompt warning{"Suspect file " + shownName + CR + reason + CR + CR +
                       "Click OK to carry on or CANCEL to quit",
                   AppTitle, Buttons::OkCancel};
    warning.Default = Answer::Cancel;
    return prompts.Ask(warning) != Answer::Cancel;
}

// The plausibility warnings, in order; false when the user quits at one of them.
bool CarryOnDespiteSuspicions(const std::string& shownName, const ReaderContext& context,
                              const ReadState& state) {
    std::vector<const char*> reasons;
    // First: a file in another encoding is the likely cause of every warning after it.
    if (const char* encoding = EncodingReason(state.Encoding)) reasons.push_back(encoding);
    if (context.Table.RecordCount == 0)
        reasons.push_back(
            "Could not find any transcribed birth, marriage or death entries in the file");
    if (!state.Seen.Any())
        reasons.push_back("Could not find any +INFO/S/F/M/B/U/PAGE header lines in the file");
    if (state.VeryLongLineSeen) reasons.push_back("One or more very long lines in the file");
    for (const char* reason : reasons)
        if (!CarryOnDespite(shownName, reason, context.Ask)) return false;
    return true;
}

} // namespace

std::string ReadTranscription(std::string& fileName, ReaderContext& context) {
    RecordTable& table = context.Table;
    std::string shownName = Utf8ToCp1252(fileName);
    ResetTable(table);
    ReadState state;
    RawLines raw = ReadLines(fileName, MaxLines);
    state.Encoding = raw.Encoding;
    for (RawLine& line : raw.Lines) {
        table.LineCount = To16(table.LineCount + 1);
        ReadLine(context, state, line);
    }
    if (raw.MoreLines) {
        // The limit counts lines of every kind; the message says records, as it always has.
        context.Ask.Tell("You've exceeded the limit of " + std::to_string(MaxLines) +
                         " records in the file " + shownName);
        fileName = QuitToken;
        return AppTitle;
    }
    CollectHeaderPages(table, state.LastRecordLine, context.Ask);
    ReadScanTypeTable(table, context.Scan, context.ColumnTops);
    std::string caption = Caption(ScanDescription(table));
    CheckFileName(context);
    if (!CarryOnDespiteSuspicions(shownName, context, state)) fileName = QuitToken;
    return caption;
}

} // namespace tv
