#pragma once
#include "session/ScanHistory.h"

#include <string>

namespace tv {

// Sets ScanHistoryMatch and ScanHistoryNear for the scan graphicsFile.
void SetScanCurrent(const std::string& graphicsFile, ScanHistory& history);

} // namespace tv
