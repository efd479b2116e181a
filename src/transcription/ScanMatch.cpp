#include "transcription/ScanMatch.h"

#include "core/Numeric.h"
#include "core/Text.h"

namespace tv {

namespace {

// A name such as 1911B30123.jpg: "18" or "19", two more year digits, then B, M or D.
bool IsStandardScanName(const std::string& name) {
    if (name.size() < 5) return false;
    std::string century = name.substr(0, 2);
    char letter = UCase(name.substr(4, 1))[0];
    return (century == "18" || century == "19") && IsNumeric(name.substr(2, 2)) &&
           (letter == 'B' || letter == 'M' || letter == 'D');
}

} // namespace

void SetScanCurrent(const std::string& graphicsFile, ScanHistory& history) {
    history.ScanHistoryMatch = 0;
    history.ScanHistoryNear = 0;
    std::string name = BareFileName(graphicsFile);
    for (int entry = 1; entry <= HistorySize; ++entry) {
        // An empty entry is no remembered scan, so no scan at all matches nothing.
        if (!history.Entries[entry].Empty() && history.Entries[entry].ImgFile == name) {
            history.ScanHistoryMatch = To16(entry);
            return;
        }
    }
    if (!IsStandardScanName(name)) return;
    for (int entry = 1; entry <= HistorySize; ++entry) {
        if (Left(history.Entries[entry].ImgFile, 5) == Left(name, 5)) {
            history.ScanHistoryNear = To16(entry);
            return;
        }
    }
}

} // namespace tv
