#include "transcription/RecordLines.h"

#include "core/Text.h"

namespace tv {

namespace {

bool ExtraFieldFromHeader(RecordTable& table, const Fields& fields) {
    const std::string& event = table.HeaderEvent;
    int16_t year = table.HeaderYear;
    if (event == "D") {
        table.LayoutBD1993 = year >= 1993;
        return true;
    }
    if (event == "B") {
        table.LayoutBD1993 = year >= 1993;
        return year >= 1912 || (year == 1911 && table.HeaderQuarter >= 3);
    }
    if (event == "M") {
        table.LayoutM1993 = year == 1993;
        table.LayoutM1994 = year >= 1994;
        return year >= 1912;
    }
    return !fields[6].empty();
}

bool AskExtraField(Prompts& prompts) {
    Prompt question{std::string("Is this a Death index or ...") + CR +
                        "... a Birth index with mother's surname or ..." + CR +
                        "... a Marriage index with wife's surname",
                    AppTitle, Buttons::YesNo};
    return prompts.Ask(question) == Answer::Yes;
}

// Pad: the field then spaces, cut to width. RPad: spaces then the field, its last width
// characters (the 1993 marriage layout's right-aligned column).
std::string Pad(const Fields& fields, int f, std::size_t width) {
    return PadRight(fields[f], width);
}
std::string RPad(const Fields& fields, int f, std::size_t width) {
    return AlignRight(fields[f], width);
}

// The 1993 and 1994 layouts keep Volume and Page as they were; their references go to the
// second line. The differing widths are those of the printed pages and are kept as they are.
bool StoreNinetiesReferences(RecordTable& table, int line, const Fields& fields) {
    std::string& alt = table.AltSecondLine[line];
    if (table.LayoutBD1993)
        alt = Pad(fields, 5, 6) + Pad(fields, 6, 6) + Pad(fields, 7, 4) + Pad(fields, 8, 5);
    else if (table.LayoutM1993)
        alt = Pad(fields, 5, 5) + Pad(fields, 6, 5) + RPad(fields, 7, 4);
    else if (table.LayoutM1994)
        alt = Pad(fields, 5, 4) + Pad(fields, 6, 4) + Pad(fields, 7, 5) + Pad(fields, 8, 4) +
              Pad(fields, 9, 5);
    else
        return false;
    table.ExtraField[line] = fields[3];
    table.District[line] = fields[4];
    return true;
}

void SetColumns(RecordTable& table, int line, const std::string& extra, const std::string& district,
                const std::string& volume, const std::string& page) {
    table.ExtraField[line] = extra;
    table.District[line] = district;
    table.Volume[line] = volume;
    table.Page[line] = page;
}

// Columns a layout does not name keep what they held: the reader does not clear them.
void StoreReferences(RecordTable& table, int line, const Fields& fields) {
    if (StoreNinetiesReferences(table, line, fields)) return;
    if (table.HasExtraField && table.AnnualIndex) {
        SetColumns(table, line, fields[3], fields[4], fields[6], fields[7]);
        table.AltSecondLine[line] = fields[5];
    } else if (table.HasExtraField) {
        SetColumns(table, line, fields[3], fields[4], fields[5], fields[6]);
    } else {
        SetColumns(table, line, "", fields[3], fields[4], fields[5]);
    }
}

} // namespace

void DecideExtraField(RecordTable& table, const Fields& fields, Prompts& prompts) {
    table.HasExtraField = ExtraFieldFromHeader(table, fields);
    if (fields[6].empty() == table.HasExtraField) table.HasExtraField = AskExtraField(prompts);
}

void StoreRecord(RecordTable& table, int line, const Fields& fields) {
    table.Surname[line] = fields[1].empty() ? "(blank)" : fields[1];
    table.Forenames[line] = fields[2];
    StoreReferences(table, line, fields);
    table.LineJump[line] = 1;
    table.LineFlagged[line] = false;
    table.RecordCount = To16(table.RecordCount + 1);
    table.LineRecNo[line] = table.RecordCount;
}

} // namespace tv
