#pragma once
// Reads the printed text of the found lines of a scan with Tesseract: only the region of each
// found line is given to it, with a character whitelist suited to printed index pages. The only
// code that links Tesseract; it knows nothing of records, only of lines and words.
#include "reading/ScanReading.h"

#include <atomic>
#include <cstdint>
#include <functional>

namespace tv {

// The scan as 8-bit grey (0 black, 255 white), the image as stored in the file, held whole so
// that any line's region can be cut from it.
struct GreyImage {
    int Width = 0;
    int Height = 0;
    int Stride = 0; // bytes from one row to the next
    const uint8_t* Pixels = nullptr;
};

struct ReadOptions {
    int Threads = 2; // lines are read on this many threads at once
    // Called now and then with the share of the lines read (0..100), from any reading thread.
    std::function<void(int percent)> Progress;
    // Looked at between lines: reading stops and returns what it has when it becomes true.
    const std::atomic<bool>* Cancelled = nullptr;
};

// Reads every line of lines on scan (the lines found on that same image). Returns the lines in
// the order of lines (column by column, top down); an empty reading when the OCR data cannot be
// loaded or nothing could be read.
ScanReading ReadScanLines(const GreyImage& scan, const PrintedLines& lines,
                          const ReadOptions& options);

// Tesseract's own reading of the whole scan, with its own layout analysis (PSM_AUTO) and no
// whitelist: the yardstick the benchmarks measure ReadScanLines against. Returns the number of
// words read; -1 when the OCR data cannot be loaded.
int ReadWholePage(const GreyImage& scan);

} // namespace tv
