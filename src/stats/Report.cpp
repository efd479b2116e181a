#include "stats/Statistics.h"

#include "stats/StatsParts.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace tv {

namespace {

class Report {
  public:
    void Text(std::string text) { lines_.push_back({std::move(text), false}); }
    void Heading(std::string text) { lines_.push_back({std::move(text), true}); }
    void Blank() { Text(""); }
    // Each line behind indent, or noneText alone when there is none. Each line is made once, at
    // its full length, and moved into the report.
    void Indented(const std::vector<std::string>& lines, const std::string& indent,
                  const std::string& noneText) {
        if (lines.empty()) Text(noneText);
        for (const std::string& line : lines) {
            std::string text;
            text.reserve(indent.size() + line.size());
            text += indent;
            text += line;
            Text(std::move(text));
        }
    }
    std::vector<ReportLine> Take() { return std::move(lines_); }

  private:
    std::vector<ReportLine> lines_;
};

void AddHead(Report& report, const std::string& scanDescription, const CheckInputs& in) {
    report.Blank();
    report.Heading(scanDescription.empty() ? "Tallyview Report"
                                           : "Tallyview Report for " + scanDescription);
    report.Blank();
    if (!in.GraphicsFile.empty()) report.Text("    Graphics file: " + in.GraphicsFile);
    report.Text("    Transcription file: " + in.TranscriptionFile);
    report.Blank();
    report.Text(CountsLine(in.Table));
    report.Blank();
}

void AddFileHeader(Report& report, const RecordTable& table) {
    report.Heading("File Header");
    std::vector<std::string> rows = HeaderRows(table, 7, "     .. QRL records ..");
    report.Indented(rows, "", "    No header lines found");
    report.Blank();
}

// Unlike the screen, the report shows the title of an empty category, so that the reader sees
// the check was made.
void AddWarnings(Report& report, CheckIterator& it, const CheckInputs& in) {
    report.Heading("Warnings");
    report.Blank();
    std::vector<std::string> fileNames = CollectCheckLines(it, CheckFileNames, in).Lines;
    for (const std::string& line : fileNames)
        report.Text("  " + line);
    if (!fileNames.empty()) report.Blank();
    for (int16_t category : {CheckNamesOutOfSequence, CheckMissingSurnames, CheckSuspectAge}) {
        if (category == CheckSuspectAge && !in.Table.HasExtraField) continue;
        CheckList list = CollectCheckLines(it, category, in);
        report.Text("  " + list.Title);
        report.Indented(list.Lines, "    ", "        None");
        report.Blank();
    }
}

void AddListing(Report& report, const RecordTable& table) {
    report.Heading("QRL Records");
    for (int i = 1; i <= table.LineCount; ++i)
        report.Text(TableRow(table, i, 7));
    report.Blank();
}

} // namespace

std::vector<ReportLine> ReportLines(bool allRecords, const std::string& scanDescription,
                                    CheckIterator& it, const CheckInputs& in, const DateTime& now) {
    Report report;
    AddHead(report, scanDescription, in);
    report.Heading("Flagged QRL Records");
    report.Indented(CollectCheckLines(it, CheckFlagged, in).Lines, "    ", "        None");
    report.Blank();
    // The full listing already shows every header line, so the two sections never appear together.
    if (!allRecords) AddFileHeader(report, in.Table);
    report.Heading("Queries");
    report.Indented(CollectCheckLines(it, CheckQueries, in).Lines, "    ", "    None");
    report.Blank();
    AddWarnings(report, it, in);
    if (allRecords) AddListing(report, in.Table);
    report.Text("Printed " + FormatGeneralDate(now));
    return report.Take();
}

bool ReportHasFindings(CheckIterator& it, const CheckInputs& in) {
    std::vector<int16_t> categories;
    for (int16_t category : {CheckQueries, CheckFlagged, CheckFileNames, CheckNamesOutOfSequence,
                             CheckMissingSurnames, CheckSuspectAge})
        if (category != CheckSuspectAge || in.Table.HasExtraField) categories.push_back(category);
    bool found = false;
    std::string title;
    std::string line;
    // A category's first line is all the answer needs: the next category starts afresh whatever
    // the one before left behind.
    for (std::size_t k = 0; k + 1 < categories.size(); ++k)
        found = GetNextCheckLine(it, categories[k], title, line, in) || found;
    // The last runs to its end, so the iterator is left ready for any caller, as after a list.
    return !CollectCheckLines(it, categories.back(), in).Lines.empty() || found;
}

} // namespace tv
