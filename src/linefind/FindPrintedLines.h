#pragma once
// Finds the printed text lines and the columns of a scanned index page with Leptonica: the page
// is reduced and binarized with its lighting evened out, its skew is measured and taken out, the
// columns are split where the vertical projection of the ink leaves a gap, and in several
// upright slices of each column the baselines are found where the row projection of the ink
// drops; the slices' baselines are linked into lines, so that a page curved towards the binding
// or photographed at a slant still gives each line's left end. The only code that links
// Leptonica; it knows nothing of records, only of ink.
#include "layout/PrintedLines.h"

#include <atomic>
#include <cstdint>
#include <functional>

namespace tv {

// The scan as 8-bit grey rows (0 black, 255 white), read once from top to bottom.
struct GreyRows {
    int Width = 0;
    int Height = 0;
    // Writes row y (Width bytes) to out.
    std::function<void(int y, uint8_t* out)> Row;
};

// columnsAcross: the columns of entries the scan is expected to show (0: as the gaps say).
// Nothing is found (an empty result) on a blank page, a photograph, a page too small to hold
// lines, or when cancelled becomes true, which is looked at between the steps.
PrintedLines FindPrintedLines(const GreyRows& scan, int columnsAcross,
                              const std::atomic<bool>* cancelled = nullptr);

} // namespace tv
