#include "core/Text.h"
#include "session/Session.h"
#include "stats/Statistics.h"

namespace tv {

void Session::UpdateStats() {
    CheckInputs inputs{Table, Scan.ScanTypeCode, Utf8ToCp1252(GraphicsFile),
                       Utf8ToCp1252(TranscriptionFile)};
    StatsSummaryText = StatsSummary(ScanDescription(Table), inputs);
    // The first load enables the Statistics button; the desktop centres the screen then.
    Commands.ShowStats = true;
}

} // namespace tv
