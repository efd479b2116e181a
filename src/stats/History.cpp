#include "stats/History.h"

#include "core/Text.h"
#include "transcription/FileNames.h"

namespace tv {

namespace {

std::string EventWord(const std::string& letter) {
    if (letter == "B") return "Births ";
    if (letter == "M") return "Marriages ";
    if (letter == "D") return "Deaths ";
    return "";
}

// The scan as its file name describes it, or the file name itself when it names no year.
std::string ScanPart(const std::string& imgFile) {
    const ParsedFileName parsed = ParseFileName(imgFile);
    if (parsed.Year < 1) return Utf8ToCp1252(imgFile);
    std::string text = EventWord(parsed.Letter) + std::to_string(parsed.Year) + " ";
    if (parsed.Quarter > 0) text += "Qtr " + std::to_string(parsed.Quarter);
    return text + " Page " + std::to_string(parsed.Page);
}

// No key keeps a scan's line count, so the row shows the record the box last stood on ("RecNo").
std::string HistoryRow(const ScanHistoryEntry& entry, bool current, const DateTime& now) {
    std::string date = current ? FormatLastChecked(now) : entry.LastChecked;
    // Kept as the list has always shown it: "??? - " with a single space.
    if (date.empty()) date = "???";
    return date + " - " + ScanPart(entry.ImgFile) + " - " + std::to_string(entry.RecNo) + " lines";
}

} // namespace

std::string HistoryList(const ScanHistory& history, const DateTime& now) {
    std::string text;
    for (int k = 1; k <= HistorySize; ++k) {
        const ScanHistoryEntry& entry = history.Entries[k];
        if (entry.Empty()) continue;
        text += HistoryRow(entry, k == history.ScanHistoryMatch, now) + CRLF;
    }
    return text + " -- only the last " + std::to_string(HistorySize) +
           " pages checked are shown --";
}

std::string RefreshHistory(SettingsStore& store, const SaveSnapshot& snapshot, ScanHistory& history,
                           const Clock& clock) {
    if (history.ScanHistoryMatch != 1) SaveDefaults(store, snapshot, history, clock);
    return HistoryList(history, clock.Now());
}

} // namespace tv
