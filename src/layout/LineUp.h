#pragma once
// The box and the printed lines found on the scan: the two options and what the session knows
// of the lines. The rules are Session members in layout/LineUp.cpp.
#include "layout/PrintedLines.h"

#include <cstdint>
#include <optional>

namespace tv {

struct LineFinding {
    // Scan menu "Line Up Automatically": each calibration stage puts the box on the line it asks
    // for.
    bool LineUpAutomatically = true;
    // Scan menu "Follow Printed Lines": after calibration the box goes to the found line nearest
    // the place the calibration computes.
    bool FollowPrintedLines = true;
    // The lines of the scan as loaded (unturned); nothing until the finder has run, and after a
    // turn until it has run on the turned scan.
    std::optional<PrintedLines> Found;
    // The turn (degrees) of the scan the lines were found on.
    float FoundAtRotation = 0.0F;
    // The found line the last CalcFramePosn put the box on, if any.
    std::optional<FoundLine> LinedUp;
    // Where the first calibration stage put the box, until the user moves it.
    struct BoxAt {
        int32_t Top = 0;
        int32_t Left = 0;
    };
    std::optional<BoxAt> StageOneBox;
};

} // namespace tv
