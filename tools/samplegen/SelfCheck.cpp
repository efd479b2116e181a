#include "SelfCheck.h"

#include "core/Prompts.h"
#include "layout/ScanType.h"
#include "stats/Checks.h"
#include "stats/StatsParts.h"
#include "transcription/FileNames.h"
#include "transcription/ReadTranscription.h"

#include <cmath>
#include <memory>
#include <numbers>
#include <stdexcept>

namespace samplegen {

namespace {

// Answers every message with OK or Yes and keeps its text: a sample must raise none.
class RecordingPrompts : public tv::Prompts {
  public:
    std::vector<std::string> Texts;
    tv::Answer Ask(const tv::Prompt& prompt) override {
        Texts.push_back(prompt.Text);
        return prompt.Choice == tv::Buttons::YesNo || prompt.Choice == tv::Buttons::YesNoCancel
                   ? tv::Answer::Yes
                   : tv::Answer::Ok;
    }
};

struct Model {
    tv::RecordTable Table;
    tv::ScanType Type;
    tv::ColumnTopLines ColumnTops;
    tv::ScanHistory History;
    RecordingPrompts Prompts;
};

void Require(bool holds, const KindSpec& kind, const std::string& what) {
    if (!holds) throw std::runtime_error(kind.Name + ": " + what);
}

void CheckRead(const KindSpec& kind, Model& m, const std::string& scanName, std::string path) {
    m.ColumnTops.Fill(0);
    tv::ReaderContext context{m.Table, m.Type, m.ColumnTops, scanName, m.Prompts};
    tv::ReadTranscription(path, context);
    Require(path != tv::QuitToken, kind, "the reader gave up on the transcription");
    for (const std::string& text : m.Prompts.Texts)
        Require(false, kind, "the reader said: " + text);
    const tv::RecordTable& t = m.Table;
    Require(t.HeaderEvent == std::string(1, kind.Event) && t.HeaderYear == kind.Year &&
                t.HeaderQuarter == kind.Quarter && t.AnnualIndex == kind.Annual(),
            kind, "the header gives another event, year or quarter");
    Require(t.HeaderPageCount == kind.Pages, kind, "the header gives another number of pages");
    for (int p = 1; p <= kind.Pages; ++p)
        Require(t.HeaderPages[p] == kind.FirstPage + p - 1, kind, "a header page differs");
    const tv::ParsedFileName parsed = tv::ParseFileName(scanName);
    Require(parsed.Year == kind.Year && parsed.Quarter == kind.Quarter &&
                parsed.Letter == std::string(1, kind.Event) && parsed.Page == kind.FirstPage,
            kind, "the scan's name does not say its year, event, quarter and page");
}

// The box's second line of an annual index: its one reference to 1992; from 1993 the four,
// each padded with spaces or cut to its width.
std::string SecondLine(const Entry& e) {
    if (e.References.size() != 4) return e.References.empty() ? "" : e.References[0];
    const int widths[] = {6, 6, 4, 5};
    std::string line;
    for (std::size_t i = 0; i < 4; ++i)
        line +=
            (e.References[i] + std::string(20, ' ')).substr(0, static_cast<std::size_t>(widths[i]));
    return line;
}

void CheckRecords(const KindSpec& kind, const Model& m, const PageLayout& layout,
                  const Transcription& transcription) {
    const tv::RecordTable& t = m.Table;
    Require(t.RecordCount == std::ssize(layout.Records), kind, "the reader counts other records");
    for (std::size_t r = 0; r < layout.Records.size(); ++r) {
        const int line = transcription.RecordLines[r];
        const Entry& e = layout.Records[r];
        Require(t.LineRecNo[line] == static_cast<int>(r) + 1 && t.Surname[line] == e.Surname &&
                    t.Forenames[line] == e.Forenames && t.ExtraField[line] == e.Extra &&
                    t.District[line] == e.District && t.Volume[line] == e.Volume &&
                    t.Page[line] == e.Page &&
                    (!kind.Annual() || t.AltSecondLine[line] == SecondLine(e)),
                kind, "the reader reads line " + std::to_string(line) + " otherwise");
    }
}

void CheckScanType(const KindSpec& kind, Model& m, const std::string& scanName) {
    tv::ChooseScanType(m.Table, m.Type, m.ColumnTops, scanName, m.History);
    const tv::ScanType& s = m.Type;
    Require(s.NumColumns == kind.Columns(), kind,
            "the program takes " + std::to_string(s.NumColumns) + " columns");
    Require(s.IndexFont == kind.IndexFont, kind, "the program shows another font");
    Require(s.SurnameOwnLine == kind.SurnameOwnLine() && s.TenLineGap == kind.TenLineGap &&
                s.LongExtraLen == kind.LongExtraLen,
            kind, "the program counts printed lines by other rules");
    const tv::CheckInputs inputs{m.Table, s.ScanTypeCode, scanName, "sample"};
    for (int16_t category : {tv::CheckQueries, tv::CheckNamesOutOfSequence, tv::CheckSuspectAge,
                             tv::CheckMissingSurnames, tv::CheckFileNames}) {
        tv::CheckIterator it;
        const tv::CheckList found = tv::CollectCheckLines(it, category, inputs);
        Require(found.Lines.empty(), kind,
                "the statistics list " + found.Title +
                    (found.Lines.empty() ? "" : " " + found.Lines[0]));
    }
}

// Between two entries of one column, the program's printed lines times the pitch: exactly on
// the page, and on the turned scan along the page's slope.
void CheckLineJumps(const KindSpec& kind, Model& m, const PageLayout& layout,
                    const PageGeometry& geometry, const Transcription& transcription) {
    for (int c = 1; c <= kind.Columns(); ++c)
        m.ColumnTops[c] = static_cast<int16_t>(
            transcription.RecordLines[static_cast<std::size_t>(layout.ColumnTops[c - 1])]);
    tv::CalcLineJump(m.Table, m.Type, m.ColumnTops);
    const double slope = std::cos(kind.RotationDegrees * std::numbers::pi / 180.0);
    for (std::size_t r = 1; r < layout.Records.size(); ++r) {
        const Placement& before = layout.Places[r - 1];
        const Placement& here = layout.Places[r];
        if (here.Column != before.Column) continue;
        int jumps = 0;
        for (int line = transcription.RecordLines[r - 1] + 1; line <= transcription.RecordLines[r];
             ++line)
            jumps += m.Table.LineJump[line];
        const double expected = jumps * kind.Pitch;
        const QPointF a = geometry.ScanPoint(before);
        const QPointF b = geometry.ScanPoint(here);
        const std::string where = "line " + std::to_string(transcription.RecordLines[r]);
        Require(here.Line - before.Line == jumps, kind,
                where + " is " + std::to_string(here.Line - before.Line) +
                    " printed lines below the entry before, the program counts " +
                    std::to_string(jumps));
        Require(std::abs((b.y() - a.y()) - expected * slope) < 0.001 &&
                    std::abs(std::hypot(b.x() - a.x(), b.y() - a.y()) - expected) < 0.001,
                kind, where + ": its position on the scan is not LineJump times the pitch");
    }
}

} // namespace

void CheckWithModel(const KindSpec& kind, const PageLayout& layout, const PageGeometry& geometry,
                    const Transcription& transcription, const std::string& transcriptionPath) {
    auto model = std::make_unique<Model>();
    const std::string scanName = kind.BaseName() + ".jpg";
    CheckRead(kind, *model, scanName, transcriptionPath);
    CheckRecords(kind, *model, layout, transcription);
    CheckScanType(kind, *model, scanName);
    CheckLineJumps(kind, *model, layout, geometry, transcription);
}

} // namespace samplegen
