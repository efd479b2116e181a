#include "transcription/ScanMatch.h"

#include <gtest/gtest.h>

#include <memory>

namespace tv {

namespace {

std::unique_ptr<ScanHistory> HistoryOf(std::initializer_list<const char*> names) {
    auto history = std::make_unique<ScanHistory>();
    int entry = 1;
    for (const char* name : names)
        history->Entries[entry++].ImgFile = name;
    return history;
}

} // namespace

TEST(SetScanCurrent, ImageAlreadyVerifiedIsTheMatch) {
    auto history = HistoryOf({"1911B30001.jpg", "1911B30123.jpg", "1911B30123.jpg"});
    SetScanCurrent("/scans/1911B30123.jpg", *history);
    EXPECT_EQ(history->ScanHistoryMatch, 2);
    EXPECT_EQ(history->ScanHistoryNear, 0);
}

TEST(SetScanCurrent, NameAfterABackslashIsComparedToo) {
    auto history = HistoryOf({"1911B30123.jpg"});
    SetScanCurrent("C:\\scans\\1911B30123.jpg", *history);
    EXPECT_EQ(history->ScanHistoryMatch, 1);
}

TEST(SetScanCurrent, MatchIsExactAndCaseSensitive) {
    auto history = HistoryOf({"1911b30123.jpg"});
    SetScanCurrent("1911B30123.jpg", *history);
    EXPECT_EQ(history->ScanHistoryMatch, 0);
}

TEST(SetScanCurrent, SameYearAndEventIsTheFirstNearEntry) {
    auto history = HistoryOf({"1850M10001.jpg", "1911B10004.jpg", "1911B20009.jpg"});
    SetScanCurrent("/scans/1911B30123.jpg", *history);
    EXPECT_EQ(history->ScanHistoryMatch, 0);
    EXPECT_EQ(history->ScanHistoryNear, 2);
}

TEST(SetScanCurrent, LowerCaseEventLetterIsAStandardName) {
    auto history = HistoryOf({"1911d10004.jpg"});
    SetScanCurrent("1911d30123.jpg", *history);
    EXPECT_EQ(history->ScanHistoryNear, 1);
}

TEST(SetScanCurrent, NameThatIsNotAStandardScanNameHasNoNearEntry) {
    auto history = HistoryOf({"2011B10004.jpg", "19xxB1.jpg", "1911X1.jpg"});
    SetScanCurrent("2011B30123.jpg", *history);
    EXPECT_EQ(history->ScanHistoryNear, 0);
    SetScanCurrent("19xxB2.jpg", *history);
    EXPECT_EQ(history->ScanHistoryNear, 0);
    SetScanCurrent("1911X2.jpg", *history);
    EXPECT_EQ(history->ScanHistoryNear, 0);
}

TEST(SetScanCurrent, ClearsTheEarlierResults) {
    auto history = HistoryOf({"1911B30123.jpg"});
    history->ScanHistoryMatch = 4;
    history->ScanHistoryNear = 5;
    SetScanCurrent("1850M10001.jpg", *history);
    EXPECT_EQ(history->ScanHistoryMatch, 0);
    EXPECT_EQ(history->ScanHistoryNear, 0);
}

} // namespace tv

namespace tv {

TEST(SetScanCurrent, NoScanMatchesNoEmptyEntry) {
    ScanHistory history;
    history.Entries[2].ImgFile = "1911B30123.jpg";
    SetScanCurrent("", history);
    EXPECT_EQ(history.ScanHistoryMatch, 0);
    EXPECT_EQ(history.ScanHistoryNear, 0);
}

} // namespace tv
