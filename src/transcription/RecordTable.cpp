#include "transcription/RecordTable.h"

namespace tv {

void NextRecordLine(RecordTable& table) {
    table.CurrentLine = To16(table.CurrentLine + 1);
    while (table.CurrentLine <= table.LineCount && !table.IsRecord(table.CurrentLine))
        table.CurrentLine = To16(table.CurrentLine + 1);
    if (table.CurrentLine > table.LineCount) table.CurrentLine = To16(table.LineCount + 1);
}

void PrevRecordLine(RecordTable& table) {
    do {
        table.CurrentLine = To16(table.CurrentLine - 1);
        if (table.CurrentLine < 1) {
            table.CurrentLine = 0;
            return;
        }
    } while (!table.IsRecord(table.CurrentLine));
}

} // namespace tv
