#include "TranscriptionWriter.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace samplegen {

namespace {

const char* const QuarterWords[] = {"Mar", "Jun", "Sep", "Dec"};

std::string FourDigits(int number) {
    char text[8];
    std::snprintf(text, sizeof text, "%04d", number);
    return text;
}

std::string RecordLine(const KindSpec& kind, const Entry& e) {
    std::vector<std::string> fields = {e.Surname, e.Forenames};
    if (kind.HasExtra()) fields.push_back(e.Extra);
    fields.push_back(e.District);
    fields.insert(fields.end(), e.References.begin(), e.References.end());
    // From 1993 the annual index has no volume and page.
    if (!e.Volume.empty() || !e.Page.empty())
        for (const std::string& field : {e.Volume, e.Page})
            fields.push_back(field);
    std::string line;
    for (const std::string& field : fields) {
        if (field.find_first_of(",\"") != std::string::npos)
            throw std::logic_error("a field holds a comma or a quote: " + field);
        line += (line.empty() ? "" : ",") + field;
    }
    return line;
}

// Two decimals whatever the locale: hundredths rounded to even as whole numbers.
std::string Decimal(double value) {
    const long long hundredths = std::llrint(value * 100.0);
    const long long whole = std::llabs(hundredths);
    char text[32];
    std::snprintf(text, sizeof text, "%s%lld.%02lld", hundredths < 0 ? "-" : "", whole / 100,
                  whole % 100);
    return text;
}

void WriteText(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    if (!out) throw std::runtime_error("cannot write " + path);
}

} // namespace

Transcription BuildTranscription(const KindSpec& kind, const PageLayout& layout) {
    const std::string year = std::to_string(kind.Year);
    // An annual index leaves the quarter empty.
    const std::string quarter = kind.Annual() ? "" : QuarterWords[kind.Quarter - 1];
    const std::string series =
        "BX" + year + (kind.Annual() ? "" : "C" + std::to_string(kind.Quarter));
    Transcription t;
    t.Lines = {"+INFO,volunteer@example.org,password,SEQUENCED,BIRTHS,cp1252",
               "+S," + year + "," + quarter + "," + series + ",12/03/2024",
               "+CREDIT,Sample Volunteer,volunteer@example.org",
               "+PAGE," + FourDigits(kind.FirstPage),
               "#COMMENT Sample page " + kind.Name + " drawn by tallyview_samplegen"};
    const int secondPageTop =
        kind.Pages == 2 ? layout.ColumnTops.at(static_cast<std::size_t>(kind.ColumnsPerPage)) : -1;
    for (std::size_t r = 0; r < layout.Records.size(); ++r) {
        if (static_cast<int>(r) == secondPageTop)
            t.Lines.push_back("+PAGE," + FourDigits(kind.FirstPage + 1));
        t.Lines.push_back(RecordLine(kind, layout.Records[r]));
        t.RecordLines.push_back(static_cast<int>(t.Lines.size()));
    }
    return t;
}

void WriteTranscription(const Transcription& transcription, const std::string& path) {
    std::string text;
    for (const std::string& line : transcription.Lines)
        text += line + "\r\n";
    WriteText(path, text);
}

void WritePositions(const KindSpec& kind, const PageLayout& layout, const PageGeometry& geometry,
                    const Transcription& transcription, const std::string& path,
                    const PageShape& shape) {
    std::string text = "# pitch " + std::to_string(shape.Pitch(kind)) + "\n# columns " +
                       std::to_string(kind.Columns()) + "\n";
    for (int c = 1; c <= kind.Columns(); ++c) {
        const int top = layout.ColumnTops.at(static_cast<std::size_t>(c - 1));
        text +=
            "# column " + std::to_string(c) + " " +
            Decimal(
                shape.Map(geometry.ScanPoint(layout.Places[static_cast<std::size_t>(top)]), kind)
                    .x()) +
            "\n";
    }
    text += "# scan " + kind.BaseName() + ".jpg " +
            std::to_string(std::lround(geometry.ScanWidth() * shape.Scale)) + " " +
            std::to_string(std::lround(geometry.ScanHeight() * shape.Scale)) + "\n# rotation " +
            Decimal(kind.RotationDegrees) + "\n# below " +
            std::to_string(std::lround(geometry.BelowBaseline() * shape.Scale)) + "\n";
    for (std::size_t r = 0; r < layout.Records.size(); ++r) {
        const Placement& place = layout.Places[r];
        const QPointF point = shape.Map(geometry.ScanPoint(place), kind);
        text += std::to_string(transcription.RecordLines[r]) + " " + std::to_string(place.Column) +
                " " + Decimal(point.x()) + " " + Decimal(point.y()) + "\n";
    }
    WriteText(path, text);
}

} // namespace samplegen
