#pragma once
// The scan layout options form's rules: which options it preselects, what each stands for, and
// which page options a column choice allows. The desktop draws the form; tests script it.
#include "layout/ScanType.h"

#include <cstdint>

namespace tv {

// The form's selection: OptCol 1..6, OptPage 1..9, Check1.
struct ScanLayoutChoice {
    int16_t OptCol = 3;
    int16_t OptPage = 1;
    bool SurnamesOnOwnLine = false;
    bool operator==(const ScanLayoutChoice&) const = default;
};

// Shows the form modally with the preselection and returns the user's selection.
class ScanLayoutChooser {
  public:
    virtual ~ScanLayoutChooser() = default;
    virtual ScanLayoutChoice Choose(const ScanLayoutChoice& preselected) = 0;
};

// The selection that matches the current scan type.
ScanLayoutChoice PreselectScanLayout(const ScanType& scanType);
// The columns an OptCol stands for: its index for 1..3, index x 2 - 6 for 4..6.
int16_t ColumnsOfOptCol(int16_t optCol);
// OptPageOpts: options 1..6 for a single page, 7..9 for a double page.
bool PageOptionEnabled(int16_t optPage, bool doublePage);
// What the form's unload does: SetScanTypes with the selection.
void ApplyScanLayout(const ScanLayoutChoice& choice, ScanType& scanType, RecordTable& table,
                     const ColumnTopLines& columnTops);

} // namespace tv
