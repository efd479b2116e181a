#pragma once
// What the OCR read on the printed lines of a scan, and the records where the transcription and
// the print disagree. The reader (src/ocr) hands its words here; the rules of matching records
// to printed lines and fields to words live in this folder and know nothing of the OCR engine.
// The results are a help, never a verdict: nothing here flags a record or writes a file.
#include "layout/PrintedLines.h"
#include "layout/ScanType.h"
#include "transcription/RecordTable.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tv {

// One word as read, in pixels of the image as stored in the file (before any zoom or turn by
// the user).
struct ReadWord {
    std::string Text; // Windows-1252
    double Left = 0.0;
    double Top = 0.0;
    double Right = 0.0;
    double Bottom = 0.0;
    float Confidence = 0.0F; // 0..100, the reader's own confidence in the word
};

// The words read on one found line: Column and Index name the line in PrintedLines.
struct ReadLine {
    int Column = 0;
    int Index = 0;
    std::vector<ReadWord> Words;
};

// The reading of one scan: the lines read so far, in the order of PrintedLines (column by column,
// top down).
struct ScanReading {
    int ImageWidth = 0;
    int ImageHeight = 0;
    // The paper of the scan is grainy (worn, filmed, noisy): its faded print breaks the closed
    // loops of 0, 6, 8 and 9, and the reader tells them apart with a confidence it has not earned.
    bool Grainy = false;
    std::vector<ReadLine> Lines;
};

// One field of one record where the transcription and the scan disagree.
struct Disagreement {
    int16_t Line = 0;        // table line number
    int Field = 0;           // 1-based, as SplitFields cuts the record's line
    std::string Transcribed; // Windows-1252, as in the file
    std::string Read;        // Windows-1252, as the scan reads
};

} // namespace tv
