// The statistics screen's list for the selected option and the printed report, both drawn from
// the session's one check iterator so that the screen and the report always agree.
#include "core/Text.h"
#include "session/Session.h"
#include "stats/History.h"
#include "stats/Statistics.h"

namespace tv {

namespace {

CheckInputs InputsOf(const Session& s) {
    return {s.Table, s.Scan.ScanTypeCode, Utf8ToCp1252(s.GraphicsFile),
            Utf8ToCp1252(s.TranscriptionFile)};
}

} // namespace

std::string Session::RefreshTabs(SettingsStore& store, const MainWindowState& window) {
    const CheckInputs inputs = InputsOf(*this);
    switch (StatsOption) {
    case 0:
        return FileHeaderList(Table);
    case 1:
        return QueriesList(Checks, inputs);
    case 2:
        return WarningsList(Checks, inputs);
    case 3:
        return FlaggedList(Checks, inputs);
    case 4:
        if (History.ScanHistoryMatch != 1) SaveDefaults(store, window);
        return HistoryList(History, P.Time.Now());
    default:
        throw RunTimeError::SubscriptOutOfRange();
    }
}

std::vector<ReportLine> Session::Report(bool allRecords) {
    return ReportLines(allRecords, ScanDescription(Table), Checks, InputsOf(*this), P.Time.Now());
}

} // namespace tv
