// The scan layout options form's rules: the preselection from the current scan type, the
// columns each column option stands for, the page options a column choice allows, and applying
// the selection when the form closes.
#include "layout/ScanLayoutOptions.h"

namespace tv {

namespace {

// The page option that shows the scan type code; 1 (whole page) for a code the form lacks.
int16_t PageOptionOfCode(int16_t code) {
    if (code == 21 || code == 22) return static_cast<int16_t>(code - 19);
    if (code >= 31 && code <= 33) return static_cast<int16_t>(code - 27);
    if (code == 40) return 7;
    if (code == 41 || code == 42) return static_cast<int16_t>(code - 33);
    return 1;
}

// The first of the column options first..last standing for the total; 0 when none does.
int16_t OptColOfTotal(int total, int16_t first, int16_t last) {
    for (int16_t optCol = first; optCol <= last; ++optCol)
        if (ColumnsOfOptCol(optCol) == total) return optCol;
    return 0;
}

// A single page of a double-page scan is chosen by the columns of both pages together; a
// choice that only the other group can show is looked for there.
int16_t OptColOfScan(const ScanType& scanType) {
    const bool onePage = scanType.ScanTypeCode == 41 || scanType.ScanTypeCode == 42;
    const int total = onePage ? 2 * scanType.NumColumns : scanType.NumColumns;
    const int16_t single = OptColOfTotal(total, 1, 3);
    const int16_t twoPages = OptColOfTotal(total, 4, 6);
    if (scanType.DoublePage()) return twoPages != 0 ? twoPages : single;
    return single != 0 ? single : twoPages;
}

} // namespace

ScanLayoutChoice PreselectScanLayout(const ScanType& scanType) {
    ScanLayoutChoice choice;
    choice.OptPage = PageOptionOfCode(scanType.ScanTypeCode);
    if (int16_t optCol = OptColOfScan(scanType); optCol != 0) choice.OptCol = optCol;
    choice.SurnamesOnOwnLine = scanType.SurnameOwnLine;
    return choice;
}

int16_t ColumnsOfOptCol(int16_t optCol) {
    if (optCol < 1 || optCol > 6) throw RunTimeError::SubscriptOutOfRange();
    return optCol <= 3 ? optCol : static_cast<int16_t>(optCol * 2 - 6);
}

bool PageOptionEnabled(int16_t optPage, bool doublePage) {
    return doublePage ? optPage >= 7 && optPage <= 9 : optPage >= 1 && optPage <= 6;
}

void ApplyScanLayout(const ScanLayoutChoice& choice, ScanType& scanType, RecordTable& table,
                     const ColumnTopLines& columnTops) {
    SetScanTypes(scanType, ColumnsOfOptCol(choice.OptCol), choice.OptPage, choice.SurnamesOnOwnLine,
                 table, columnTops);
}

} // namespace tv
