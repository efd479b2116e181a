#pragma once
// The record table: one entry per line of the transcription file (at most 1000), with the
// header's event, year, quarter and pages. Entry 0 is never filled; the file's first line is 1.
#include "core/Checked.h"

#include <cstdint>
#include <string>

namespace tv {

inline constexpr int MaxLines = 1000;
inline constexpr int MaxFields = 20;
inline constexpr int MaxHeaderPages = 30;

template <typename T> using LineArray = BoundedArray<T, 0, MaxLines>;
// Fields 1..20 of one line as SplitFields cuts it (entry 0 unused).
using Fields = BoundedArray<std::string, 0, MaxFields>;

struct RecordTable {
    int16_t LineCount = 0;
    int16_t RecordCount = 0;
    int16_t CurrentLine = 0;

    std::string HeaderEvent = "?"; // "B", "M", "D" or "?"
    int16_t HeaderYear = -1;
    int16_t HeaderQuarter = -1;
    int16_t HeaderPageCount = 0;
    BoundedArray<int16_t, 1, MaxHeaderPages> HeaderPages;
    BoundedArray<int16_t, 1, MaxHeaderPages> HeaderPageLines;
    int32_t TranscriptionCodePage = 0;

    bool HasExtraField = false; // False when the program starts
    bool AnnualIndex = false;
    bool LayoutBD1993 = false;
    bool LayoutM1993 = false;
    bool LayoutM1994 = false;

    LineArray<std::string> LineText;
    LineArray<std::string> Surname;
    LineArray<std::string> Forenames;
    LineArray<std::string> ExtraField;
    LineArray<std::string> District;
    LineArray<std::string> Volume;
    LineArray<std::string> Page;
    LineArray<std::string> AltSecondLine;
    LineArray<bool> LineFlagged;
    LineArray<int16_t> LineRecNo;
    LineArray<bool> LineQuery;
    LineArray<int16_t> LineJump;

    bool IsRecord(int line) const { return LineRecNo[line] >= 1; }
};

// CurrentLine + 1, then on to the next record line; one past the end is LineCount + 1.
void NextRecordLine(RecordTable& table);
// CurrentLine - 1, then back to the previous record line; before the first it is 0.
void PrevRecordLine(RecordTable& table);

} // namespace tv
