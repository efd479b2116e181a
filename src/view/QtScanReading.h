#pragma once
// The scan as the OCR reader takes it: the window's worker and `tallyview --compare` both read a
// decoded scan through here, so that both read it alike.
#include "ocr/ReadScanLines.h"

#include <QImage>

namespace tv {

// Reads the found lines of scan (any format; lines found on this same image, unturned).
ScanReading ReadScan(const QImage& scan, const PrintedLines& lines, const ReadOptions& options);

} // namespace tv
