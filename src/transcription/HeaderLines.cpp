#include "transcription/HeaderLines.h"

#include "core/Numeric.h"
#include "core/Text.h"
#include "transcription/SplitFields.h"
#include "transcription/TextConversion.h"

#include <cmath>
#include <limits>
#include <optional>

namespace tv {

namespace {

std::string EventLetter(const std::string& eventWord) {
    std::string word = UCase(Left(eventWord, 4));
    if (word == "BIRT") return "B";
    if (word == "MARR") return "M";
    if (word == "DEAT") return "D";
    return "?";
}

// "cp" and a whole number that the platform can convert from; anything else is ignored.
void TakeCodePage(RecordTable& table, const std::string& field) {
    if (LCase(Left(field, 2)) != "cp") return;
    std::optional<double> value = NumericValue(field.substr(2));
    if (!value || std::floor(*value) != *value) return;
    if (*value < std::numeric_limits<int32_t>::min() ||
        *value > std::numeric_limits<int32_t>::max())
        return;
    auto codePage = static_cast<int32_t>(*value);
    if (IsValidCodePage(codePage)) table.TranscriptionCodePage = codePage;
}

int16_t HeaderYearOf(const std::string& field) {
    std::optional<double> value = NumericValue(field);
    if (!value || *value < 1837 || *value > 2000) return -1;
    return CInt(*value);
}

int16_t HeaderQuarterOf(const std::string& field) {
    std::string month = UCase(Left(field, 3));
    if (month == "MAR") return 1;
    if (month == "JUN") return 2;
    if (month == "SEP") return 3;
    if (month == "DEC") return 4;
    return month.empty() ? 0 : -1;
}

void ApplyYearGroup(RecordTable& table, const Fields& fields, HeaderSeen& seen) {
    if (seen.YearGroup) {
        // Kept deliberately: two such lines make the file ambiguous, so neither is trusted.
        table.HeaderYear = -1;
        table.HeaderQuarter = -1;
        return;
    }
    seen.YearGroup = true;
    table.HeaderYear = HeaderYearOf(fields[2]);
    table.HeaderQuarter = HeaderQuarterOf(fields[3]);
    table.AnnualIndex = table.HeaderYear >= 1984 && table.HeaderQuarter == 0;
}

bool IsYearGroup(const std::string& keyword) {
    return keyword == "+S" || keyword == "+F" || keyword == "+M" || keyword == "+B" ||
           keyword == "+U";
}

} // namespace

void ApplyHeaderLine(RecordTable& table, const Fields& fields, HeaderSeen& seen) {
    std::string keyword = UCase(fields[1]);
    if (keyword == "+INFO") {
        seen.Info = true;
        table.HeaderEvent = EventLetter(fields[5]);
        TakeCodePage(table, fields[6]);
    } else if (keyword == "+PAGE") {
        seen.Page = true;
    } else if (IsYearGroup(keyword)) {
        ApplyYearGroup(table, fields, seen);
    }
}

void CollectHeaderPages(RecordTable& table, int lastRecordLine, Prompts& prompts) {
    Fields fields;
    for (int line = 1; line <= lastRecordLine; ++line) {
        // Case-sensitive here, unlike the first pass: a "+page" line counts as a header but
        // gives no page number. Kept deliberately.
        if (table.Surname[line] != "+PAGE") continue;
        SplitFields(table.LineText[line], fields, table.LineCount, prompts);
        std::optional<double> value = NumericValue(fields[2]);
        if (!value || *value >= 9999 || table.HeaderPageCount >= MaxHeaderPages) continue;
        int16_t page = 0;
        try {
            page = CInt(*value);
        } catch (const RunTimeError& e) {
            // A page such as -99999: the error names the line it was read from.
            throw e.InLine(line);
        }
        table.HeaderPageCount = To16(table.HeaderPageCount + 1);
        table.HeaderPages[table.HeaderPageCount] = page;
        table.HeaderPageLines[table.HeaderPageCount] = To16(line);
    }
}

} // namespace tv
