// The built-in page layouts and ReadScanTypeTable, which overlays them up to the transcription's
// year and quarter.
#include "core/Numeric.h"
#include "layout/ScanType.h"

#include <string_view>

namespace tv {

// Rows of 28 characters: key (year and quarter), blank, columns, scan type code, ask, blank, font,
// surname pad, extra pad, district pad, volume/page style, first line in hundredths, blank,
// surname on its own line, ten-line gap, long forenames length, long extra field length.
// A "-" leaves what the earlier rows set.
const char* const BirthsTable = "00000 301Y T000099007 NN9999"
                                "18373 1--- C17--35--- ------"
                                "18661 3--N T00--00--- ------"
                                "18681 ---- -----99--- ------"
                                "18701 ---- --------17 ------"
                                "18711 ---- --------07 ------"
                                "18891 ---- --------17 ------"
                                "18921 ---- --------07 ------"
                                "19103 2--- C--32322-- ------"
                                "19113 ---- ---2536--- ------"
                                "19631 ---- -------3-- ------"
                                "19632 ---- ---2336--- Y---18"
                                "19642 ---- ---------- -Y--19"
                                "19661 ---- -------1-- --2213"
                                "19742 ---- -------4-- --2016"
                                "19840 ---- ---33465-- ------"
                                "19930 ---- ---2334-16 --2109";

const char* const MarriagesTable = "00000 301Y T000099007 NN9999"
                                   "18373 1--- C12--26--- ------"
                                   "18431 ---N ---------- ------"
                                   "18441 ---Y ---------- ------"
                                   "18451 ---N ---------- ------"
                                   "18532 ---Y ---------- ------"
                                   "18533 ---N ---------- ------"
                                   "18541 ---Y ---------- ------"
                                   "18571 ---N ---------- ------"
                                   "18584 ---Y ---------- ------"
                                   "18591 ---N ---------- ------"
                                   "18602 ---Y ---------- ------"
                                   "18603 ---N ---------- ------"
                                   "18661 3--N T00--00--- ------"
                                   "18681 ---- -----99--- ------"
                                   "18981 ---- --------14 ------"
                                   "18991 ---- --------07 ------"
                                   "19103 2--- C--32322-- ------"
                                   "19121 ---- ---2436--- ------"
                                   "19631 ---- -------3-- ------"
                                   "19632 ---- ---------- Y-----"
                                   "19642 ---- ---------- -Y----"
                                   "19661 ---- -------1-- --1412"
                                   "19742 ---- -------4-- --9914"
                                   "19840 ---- ---33465-- ------"
                                   "19940 ---- ---1829-16 --2111";

const char* const DeathsTable = "00000 301Y T000099007 NN9999"
                                "18373 1--- C122126--- ------"
                                "18661 3--N T000000--- ------"
                                "18681 ---- -----99--- ------"
                                "18961 ---- --------14 ------"
                                "18971 ---- --------07 ------"
                                "19103 2--- C--25322-- ------"
                                "19121 ---- ---3037--- ------"
                                "19631 ---- -------3-- ------"
                                "19632 ---- ---------- Y-----"
                                "19642 ---- ---------- -Y----"
                                "19661 ---- -------1-- --20--"
                                "19742 ---- -------4-- ------"
                                "19840 ---- ---33465-- ------"
                                "19930 ---- ---2332-16 --2109";

namespace {

constexpr std::size_t RowLength = 28;

// The characters of a row at 1-based positions first..last.
std::string_view Field(std::string_view row, std::size_t first, std::size_t last) {
    return row.substr(first - 1, last - first + 1);
}

void ApplyNumber(std::string_view field, int16_t& target) {
    if (IsNumeric(field)) target = CInt(NumericValue(field).value());
}

void ApplyFlag(std::string_view field, bool& target) {
    if (field != "-") target = field == "Y";
}

void ApplyRow(std::string_view row, ScanType& scanType) {
    ApplyNumber(Field(row, 7, 7), scanType.NumColumns);
    ApplyNumber(Field(row, 8, 9), scanType.ScanTypeCode);
    ApplyFlag(Field(row, 10, 10), scanType.AskScanType);
    if (Field(row, 12, 12) != "-") scanType.IndexFont = Field(row, 12, 12).front();
    ApplyNumber(Field(row, 13, 14), scanType.SurnamePad);
    ApplyNumber(Field(row, 15, 16), scanType.ExtraPad);
    ApplyNumber(Field(row, 17, 18), scanType.DistrictPad);
    ApplyNumber(Field(row, 19, 19), scanType.VolPageStyle);
    if (IsNumeric(Field(row, 20, 21)))
        scanType.FirstLineFraction =
            static_cast<float>(NumericValue(Field(row, 20, 21)).value() / 100.0);
    ApplyFlag(Field(row, 23, 23), scanType.SurnameOwnLine);
    ApplyFlag(Field(row, 24, 24), scanType.TenLineGap);
    ApplyNumber(Field(row, 25, 26), scanType.LongForenamesLen);
    ApplyNumber(Field(row, 27, 28), scanType.LongExtraLen);
}

// Year and quarter as one key in 16-bit arithmetic: a year above 3276 overflows, as it always
// has; an unknown year or quarter selects the default row alone.
int16_t TableKey(const RecordTable& table) {
    if (table.HeaderYear < 1837 || table.HeaderQuarter < 0) return 0;
    return To16(To16(table.HeaderYear * 10) + table.HeaderQuarter);
}

} // namespace

void ReadScanTypeTable(RecordTable& table, ScanType& scanType, const ColumnTopLines& columnTops) {
    int16_t key = TableKey(table);
    std::string_view rows = BirthsTable;
    if (table.HeaderEvent == "M") {
        rows = MarriagesTable;
    } else if (table.HeaderEvent == "D") {
        rows = DeathsTable;
    } else if (table.HeaderEvent != "B") {
        key = 0;
    }
    for (std::size_t i = 0; i < rows.size(); i += RowLength) {
        std::string_view row = rows.substr(i, RowLength);
        if (key < CInt(NumericValue(Field(row, 1, 5)).value())) break;
        ApplyRow(row, scanType);
    }
    CalcLineJump(table, scanType, columnTops);
}

} // namespace tv
