// The scan type for any header: ChooseScanType (the built-in tables, the remembered choice and
// the two-page rules) on a record table and scan history made from the input. The only error is
// the documented overflow of the year and quarter key.
#include "FuzzSupport.h"
#include "layout/ScanType.h"
#include "transcription/ScanMatch.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <string>

namespace {

using tv::fuzz::Require;

int16_t SomeYear(FuzzedDataProvider& input) {
    return input.ConsumeBool() ? input.ConsumeIntegralInRange<int16_t>(1830, 2010)
                               : input.ConsumeIntegral<int16_t>();
}

void FillHeader(FuzzedDataProvider& input, tv::RecordTable& table) {
    static const char* const events[] = {"B", "M", "D", "?"};
    table.HeaderEvent = input.ConsumeBool() ? events[input.ConsumeIntegralInRange(0, 3)]
                                            : input.ConsumeRandomLengthString(3);
    table.HeaderYear = SomeYear(input);
    table.HeaderQuarter = input.ConsumeBool() ? input.ConsumeIntegralInRange<int16_t>(-1, 4)
                                              : input.ConsumeIntegral<int16_t>();
    table.HeaderPageCount = input.ConsumeIntegralInRange<int16_t>(0, tv::MaxHeaderPages);
    for (int k = 1; k <= table.HeaderPageCount; ++k)
        table.HeaderPages[k] = input.ConsumeIntegralInRange<int16_t>(-1, 9998);
}

// Record and other lines, as the reader leaves them before CalcLineJump.
void FillLines(FuzzedDataProvider& input, tv::RecordTable& table) {
    static const char* const surnames[] = {"SMITH", "JONES", "(blank)", ""};
    table.LineCount = input.ConsumeIntegralInRange<int16_t>(0, tv::MaxLines);
    for (int line = 1; line <= table.LineCount; ++line) {
        const bool record = input.ConsumeBool();
        table.Surname[line] = surnames[input.ConsumeIntegralInRange(0, 3)];
        table.Forenames[line] = std::string(input.ConsumeIntegralInRange(0, 30), 'a');
        table.ExtraField[line] = std::string(input.ConsumeIntegralInRange(0, 30), 'b');
        table.LineJump[line] = record ? 1 : 0;
        table.LineRecNo[line] = record ? ++table.RecordCount : -1;
    }
}

void FillHistory(FuzzedDataProvider& input, tv::ScanHistory& history) {
    for (int k = 1; k <= tv::HistorySize; ++k) {
        if (!input.ConsumeBool()) continue;
        tv::ScanHistoryEntry& e = history.Entries[k];
        e.ImgFile = input.ConsumeRandomLengthString(16);
        // The ranges that reading the settings lets through.
        e.NumColumns = input.ConsumeIntegralInRange<int16_t>(1, 6);
        e.ScanType = input.ConsumeIntegralInRange<int16_t>(1, 42);
    }
}

bool KeyOverflows(const tv::RecordTable& table) {
    if (table.HeaderYear < 1837 || table.HeaderQuarter < 0) return false;
    return table.HeaderYear * 10 > 32767 || table.HeaderYear * 10 + table.HeaderQuarter > 32767;
}

void CheckScanType(const tv::RecordTable& table, const tv::ScanType& scan) {
    Require(scan.NumColumns >= 1 && scan.NumColumns <= 6, "1 to 6 columns");
    Require(scan.ScanTypeCode >= 1 && scan.ScanTypeCode <= 42, "a scan type code of 1..42");
    Require(scan.FontName == "Times New Roman" || scan.FontName == "Courier New", "a box font");
    Require(scan.ColumnsAcross() <= 6, "at most 6 columns across the scan");
    for (int line = 1; line <= table.LineCount; ++line) {
        if (table.IsRecord(line))
            Require(table.LineJump[line] >= 1 && table.LineJump[line] <= 4, "a jump of 1..4");
        else
            Require(table.LineJump[line] == 0, "no jump for a line that is no record");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider input(data, size);
    tv::RecordTable table;
    tv::ScanType scan;
    tv::ColumnTopLines columnTops;
    tv::ScanHistory history;
    FillHeader(input, table);
    FillHistory(input, history);
    for (int c = 1; c <= 6; ++c)
        columnTops[c] = input.ConsumeIntegral<int16_t>();
    const std::string graphicsFile = input.ConsumeRandomLengthString(24);
    FillLines(input, table);
    tv::SetScanCurrent(graphicsFile, history);
    try {
        tv::ChooseScanType(table, scan, columnTops, graphicsFile, history);
    } catch (const tv::RunTimeError& e) {
        Require(e.Number == 6 && KeyOverflows(table), "only the year key overflows");
        return 0;
    }
    Require(!KeyOverflows(table), "an overflowing year key is an error");
    CheckScanType(table, scan);
    const std::string description = tv::ScanDescription(table);
    Require(description.size() < 64, "a short description");
    return 0;
}
