#pragma once
// The current scan type: the page layout that the built-in tables give for the transcription's
// event, year and quarter, and the user's choice of columns and part of the page.
#include "core/Checked.h"
#include "session/ScanHistory.h"
#include "transcription/RecordTable.h"

#include <cstdint>
#include <string>

namespace tv {

using ColumnTopLines = BoundedArray<int16_t, 1, 6>;

struct ScanType {
    int16_t NumColumns = 3;
    int16_t ScanTypeCode = 1;
    bool AskScanType = true;
    char IndexFont = 'T'; // 'T' Times New Roman, 'C' Courier New
    std::string FontName; // the box font chosen by ChooseScanType ("" until then)
    int16_t SurnamePad = 0;
    int16_t ExtraPad = 0;
    int16_t DistrictPad = 99; // 99: the district part is not padded
    int16_t VolPageStyle = 0;
    float FirstLineFraction = 0.07F;
    bool SurnameOwnLine = false;
    bool TenLineGap = false;
    int16_t LongForenamesLen = 99;
    int16_t LongExtraLen = 99;

    bool DoublePage() const { return ScanTypeCode >= 40 && ScanTypeCode <= 42; }
    // Columns across the whole scan: a single page of a double-page scan shows both pages.
    int16_t ColumnsAcross() const {
        return ScanTypeCode == 41 || ScanTypeCode == 42 ? To16(2 * NumColumns) : NumColumns;
    }
};

// The three built-in tables, kept as their literal strings.
extern const char* const BirthsTable;
extern const char* const MarriagesTable;
extern const char* const DeathsTable;

// Applies the table of the header's event up to its year and quarter, then CalcLineJump.
void ReadScanTypeTable(RecordTable& table, ScanType& scanType, const ColumnTopLines& columnTops);

// ReadScanTypeTable, the font, then the columns and scan type code from the remembered choice
// (ScanHistoryMatch, else ScanHistoryNear) or the automatic two-page rules.
void ChooseScanType(RecordTable& table, ScanType& scanType, const ColumnTopLines& columnTops,
                    const std::string& graphicsFile, ScanHistory& history);

// The user's choice from the scan layout options form.
void SetScanTypes(ScanType& scanType, int16_t columns, int16_t pageOption, bool surnameOwnLine,
                  RecordTable& table, const ColumnTopLines& columnTops);

// Printed index lines from each record to the one before (LineJump of record lines).
void CalcLineJump(RecordTable& table, const ScanType& scanType, const ColumnTopLines& columnTops);

// "Births 1911 Qtr 3 Page 123": event word, year, quarter and header pages; "" when none.
std::string ScanDescription(const RecordTable& table);

} // namespace tv
