#pragma once
// The History list of the statistics screen (option 4): the scans remembered in the settings,
// most recent first.
#include "core/Clock.h"
#include "session/ScanHistory.h"
#include "session/Settings.h"

#include <string>

namespace tv {

// One row per remembered scan and a closing row, joined with CR LF. The current scan (entry
// ScanHistoryMatch) shows the present time instead of its stored date.
std::string HistoryList(const ScanHistory& history, const DateTime& now);

// The list as the screen shows it: unless the current scan is already entry 1, the settings
// are saved first, so that the list includes the scan being verified.
std::string RefreshHistory(SettingsStore& store, const SaveSnapshot& snapshot, ScanHistory& history,
                           const Clock& clock);

} // namespace tv
