#pragma once
// Where the entries of each column lie on this scan, as the user taught it with ENTER.
#include "core/Checked.h"
#include "layout/ScanType.h"

#include <cstdint>

namespace tv {

struct Calibration {
    // 0 calibrated; 1 waiting for the 1st entry of column 1; 2 for its 10th entry;
    // 3..NumColumns+1 for the first entry of column stage-1.
    int16_t CalibrationStage = 0;
    BoundedArray<int32_t, 1, 6> ColumnTopY;
    BoundedArray<int32_t, 1, 6> ColumnTopX;
    ColumnTopLines ColumnTopLine;
    float LineIncrTop = -1.0F; // -1: not measured
    float LineIncrLeft = -1.0F;
    // A calibration is in progress (settings are not saved meanwhile).
    bool CalibratingFlag = false;
    // The box has been lined up with the scan at least once (the change watch waits for it).
    bool BoxLinedUp = false;
};

} // namespace tv
