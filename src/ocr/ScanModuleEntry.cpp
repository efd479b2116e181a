// The one function the scan module exports; everything else in the module is hidden, so that
// its own copies of the model's functions never stand in for the program's.
#include "ocr/ScanModule.h"

extern "C" __attribute__((visibility("default"))) const tv::ScanModuleEntries*
tallyview_scan_entries() {
    static const tv::ScanModuleEntries entries{tv::ScanModuleVersion, &tv::FindPrintedLines,
                                               &tv::ReadScanLines, &tv::ReadWholePage};
    return &entries;
}
