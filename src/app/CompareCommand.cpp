#include "app/CompareCommand.h"

#include "app/CommandFiles.h"

#include "core/Text.h"
#include "linefind/FindPrintedLines.h"
#include "reading/CompareRecords.h"
#include "view/QtLineFinder.h"
#include "view/QtScanReading.h"

#include <thread>

namespace tv {

int RunCompare(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    DecodedScan scan;
    if (const int status = DecodeCommandScan(args, "compare", CompareUsageText, err, scan))
        return status;
    StandardErrorPrompts prompts(err);
    RecordTable table;
    ScanType scanType;
    ColumnTopLines columnTops;
    ScanHistory history;
    if (const int status = ReadCommandTranscription(args[0], args[1], prompts, err, table, scanType,
                                                    columnTops, history))
        return status;
    const QImage& pixels = scan.Pristine;
    const PrintedLines lines = FindPrintedLines(
        GreyRowsOf(pixels), ColumnsToFind(scanType, pixels.width(), pixels.height()));
    ReadOptions options;
    options.Threads =
        static_cast<int>(std::max(1U, std::min(2U, std::thread::hardware_concurrency())));
    const ScanReading reading = ReadScan(pixels, lines, options);
    const std::vector<Disagreement> found = FindDisagreements(table, scanType, lines, reading);
    for (const Disagreement& d : found)
        out << d.Line << '\t' << d.Field << '\t' << Cp1252ToUtf8(d.Transcribed) << '\t'
            << Cp1252ToUtf8(d.Read) << '\n';
    return found.empty() ? 0 : 1;
}

} // namespace tv
