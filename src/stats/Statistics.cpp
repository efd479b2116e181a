#include "stats/Statistics.h"

#include "core/Text.h"
#include "stats/StatsParts.h"

namespace tv {

namespace {

// Rows joined with CR LF; the last row has no line break after it.
std::string JoinRows(const std::vector<std::string>& rows) {
    std::string text;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (i > 0) text += CRLF;
        text += rows[i];
    }
    return text;
}

std::string RowsOrNone(const std::vector<std::string>& rows) {
    return rows.empty() ? "None" : JoinRows(rows);
}

void Append(std::vector<std::string>& rows, const std::vector<std::string>& more) {
    rows.insert(rows.end(), more.begin(), more.end());
}

// A later warning category: an empty row and its title before its lines, nothing when it has none.
void AppendSeparated(std::vector<std::string>& rows, const CheckList& list) {
    if (list.Lines.empty()) return;
    rows.push_back("");
    rows.push_back(list.Title);
    Append(rows, list.Lines);
}

} // namespace

std::string StatsSummary(const std::string& scanDescription, const CheckInputs& in) {
    std::string text = scanDescription + CRLF;
    if (!in.GraphicsFile.empty()) text += "Graphics file: " + in.GraphicsFile + CRLF;
    text += "Transcription file: " + in.TranscriptionFile + CRLF + CRLF;
    return text + CountsLine(in.Table);
}

std::string FileHeaderList(const RecordTable& table) {
    std::vector<std::string> rows = HeaderRows(table, 3, " .. QRL records ..");
    return rows.empty() ? "No header lines found" : JoinRows(rows);
}

std::string QueriesList(CheckIterator& it, const CheckInputs& in) {
    return RowsOrNone(CollectCheckLines(it, CheckQueries, in).Lines);
}

std::string WarningsList(CheckIterator& it, const CheckInputs& in) {
    std::vector<std::string> rows = CollectCheckLines(it, CheckFileNames, in).Lines;
    if (!rows.empty()) rows.push_back("");
    CheckList names = CollectCheckLines(it, CheckNamesOutOfSequence, in);
    if (!names.Lines.empty()) {
        rows.push_back(names.Title);
        Append(rows, names.Lines);
    }
    AppendSeparated(rows, CollectCheckLines(it, CheckMissingSurnames, in));
    if (in.Table.HasExtraField) AppendSeparated(rows, CollectCheckLines(it, CheckSuspectAge, in));
    return RowsOrNone(rows);
}

std::string FlaggedList(CheckIterator& it, const CheckInputs& in) {
    return RowsOrNone(CollectCheckLines(it, CheckFlagged, in).Lines);
}

} // namespace tv
