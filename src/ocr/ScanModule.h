#pragma once
// Finding the printed lines (Leptonica) and reading them (Tesseract) are a module of their own,
// tallyview-scan.so, opened the first time a scan is looked at, on the worker thread that looks:
// Tesseract and Leptonica with the libraries they pull in cost about 15 ms at every start of a
// program linked with them, and a start that never opens a scan should not pay it. The program
// and the module meet only through the one table below; the program's FindPrintedLines,
// ReadScanLines and ReadWholePage (ScanModuleLoader.cpp) open the module and call through it.
#include "linefind/FindPrintedLines.h"
#include "ocr/ReadScanLines.h"

namespace tv {

// The table the module hands out. Version changes whenever the table or a type passed through it
// does, so that a module of another build is refused rather than called.
struct ScanModuleEntries {
    int Version = 0;
    PrintedLines (*FindLines)(const GreyRows& scan, int columnsAcross,
                              const std::atomic<bool>* cancelled) = nullptr;
    ScanReading (*ReadLines)(const GreyImage& scan, const PrintedLines& lines,
                             const ReadOptions& options) = nullptr;
    int (*ReadWhole)(const GreyImage& scan) = nullptr;
};

inline constexpr int ScanModuleVersion = 2;

// The module's one exported function, by name, as the loader looks it up.
inline constexpr const char* ScanModuleEntryName = "tallyview_scan_entries";
using ScanModuleEntryFunction = const ScanModuleEntries* (*)();

// The module's file name.
inline constexpr const char* ScanModuleFile = "tallyview-scan.so";

} // namespace tv
