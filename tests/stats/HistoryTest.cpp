// The History list of the statistics screen: the remembered scans, most recent first.
#include "stats/History.h"
#include "session/MemorySettingsStore.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::FixedClock;
using test::MemorySettingsStore;

const std::string Closing = " -- only the last 10 pages checked are shown --";

ScanHistoryEntry Entry(const std::string& image, const std::string& lastChecked, int16_t recNo) {
    ScanHistoryEntry e;
    e.ImgFile = image;
    e.LastChecked = lastChecked;
    e.RecNo = recNo;
    return e;
}

TEST(HistoryList, CurrentScanShowsThePresentTimeAndAnUndatedEntryShowsQuestionMarks) {
    ScanHistory h;
    h.Entries[1] = Entry("1911B30123.jpg", "01 Jan 2020 10:00", 57);
    h.Entries[2] = Entry("1866D20045.jpg", "", 12);
    h.ScanHistoryMatch = 1;
    EXPECT_EQ(HistoryList(h, {2026, 11, 20, 14, 5, 9}),
              "20 Nov 2026 14:05 - Births 1911 Qtr 3 Page 123 - 57 lines\r\n"
              "??? - Deaths 1866 Qtr 2 Page 45 - 12 lines\r\n" +
                  Closing);
}

TEST(HistoryList, OtherEntriesShowTheirStoredDate) {
    ScanHistory h;
    h.Entries[1] = Entry("1911B30123.jpg", "01 Jan 2020 10:00", 57);
    h.Entries[2] = Entry("1855M10213.jpg", "05 Nov 2026 09:07", 3);
    h.ScanHistoryMatch = 2;
    EXPECT_EQ(HistoryList(h, {2026, 11, 20, 14, 5, 9}),
              "01 Jan 2020 10:00 - Births 1911 Qtr 3 Page 123 - 57 lines\r\n"
              "20 Nov 2026 14:05 - Marriages 1855 Qtr 1 Page 213 - 3 lines\r\n" +
                  Closing);
}

TEST(HistoryList, AnnualScansHaveNoQuarterAndUnparsedNamesShowThemselves) {
    ScanHistory h;
    h.Entries[2] = Entry("1990D12.jpg", "05 Nov 2026 09:07", 0);
    h.Entries[5] = Entry("holiday snap.jpg", "05 Nov 2026 09:08", 1);
    h.Entries[7] = Entry("1911B3.jpg", "05 Nov 2026 09:09", 2);
    EXPECT_EQ(HistoryList(h, {}), "05 Nov 2026 09:07 - Deaths 1990  Page 12 - 0 lines\r\n"
                                  "05 Nov 2026 09:08 - holiday snap.jpg - 1 lines\r\n"
                                  "05 Nov 2026 09:09 - Births 1911 Qtr 3 Page -1 - 2 lines\r\n" +
                                      Closing);
}

TEST(HistoryList, NonAsciiFileNamesAreShownInWindows1252) {
    ScanHistory h;
    h.Entries[1] = Entry("caf\xC3\xA9.jpg", "05 Nov 2026 09:07", 4);
    EXPECT_EQ(HistoryList(h, {}), "05 Nov 2026 09:07 - caf\xE9.jpg - 4 lines\r\n" + Closing);
}

TEST(HistoryList, EmptyHistoryShowsOnlyTheClosingRow) {
    EXPECT_EQ(HistoryList(ScanHistory{}, {}), Closing);
}

SaveSnapshot Verifying(const std::string& graphicsFile) {
    SaveSnapshot s;
    s.VersionLabel = "Version 1.0.0 / 21-Jun-2022";
    s.GraphicsFile = graphicsFile;
    s.TranscriptionFile = "/home/ann/qrl/1911B30123.QRL";
    s.Current.RecNo = 40;
    return s;
}

TEST(RefreshHistory, SavesFirstSoThatTheScanBeingVerifiedIsListed) {
    MemorySettingsStore store;
    FixedClock clock;
    ScanHistory h;
    h.Entries[1] = Entry("1866D20045.jpg", "01 Jan 2020 10:00", 12);
    EXPECT_EQ(RefreshHistory(store, Verifying("/home/ann/scans/1911B30123.jpg"), h, clock),
              "20 Nov 2026 14:05 - Births 1911 Qtr 3 Page 123 - 40 lines\r\n"
              "01 Jan 2020 10:00 - Deaths 1866 Qtr 2 Page 45 - 12 lines\r\n" +
                  Closing);
    EXPECT_EQ(h.ScanHistoryMatch, 1);
    EXPECT_EQ(store.Read("Scan0", "ImgFile", ""), "1911B30123.jpg");
}

TEST(RefreshHistory, DoesNotSaveWhenTheCurrentScanIsAlreadyEntry1) {
    MemorySettingsStore store;
    FixedClock clock;
    ScanHistory h;
    h.Entries[1] = Entry("1911B30123.jpg", "01 Jan 2020 10:00", 12);
    h.ScanHistoryMatch = 1;
    RefreshHistory(store, Verifying("/home/ann/scans/1911B30123.jpg"), h, clock);
    EXPECT_EQ(store.Writes, 0);
    EXPECT_EQ(h.Entries[1].RecNo, 12);
}

TEST(RefreshHistory, DuringCalibrationTheListIsShownUnsaved) {
    MemorySettingsStore store;
    FixedClock clock;
    ScanHistory h;
    h.Entries[1] = Entry("1866D20045.jpg", "", 12);
    SaveSnapshot s = Verifying("/home/ann/scans/1911B30123.jpg");
    s.CalibratingFlag = true;
    EXPECT_EQ(RefreshHistory(store, s, h, clock),
              "??? - Deaths 1866 Qtr 2 Page 45 - 12 lines\r\n" + Closing);
    EXPECT_EQ(store.Writes, 0);
}

} // namespace
} // namespace tv
