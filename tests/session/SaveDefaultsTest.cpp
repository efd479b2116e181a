// Writing the settings back: "Global", the current scan moved to the front of the history, the
// scan sections; Restore Defaults and the skip-steps box.
#include "session/MemorySettingsStore.h"
#include "session/Settings.h"
#include "support/FakePlatform.h"
#include "support/FakePrompts.h"
#include "transcription/ScanMatch.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::FakePrompts;
using test::FixedClock;
using test::MemorySettingsStore;

SaveSnapshot Snapshot(const std::string& graphicsFile) {
    SaveSnapshot s;
    s.VersionLabel = "Version 1.0.0 / 21-Jun-2022";
    s.Global = {4, true, false, 9000, 12000, 150, 250};
    s.GraphicsFile = graphicsFile;
    s.TranscriptionFile = "/home/ann/qrl/1911B30123.QRL";
    s.Current.NumColumns = 3;
    s.Current.ScanType = 7;
    s.Current.LineIncrTop = 27.5F;
    s.Current.LineIncrLeft = -1.0F;
    s.Current.FrameFontSize = 12;
    s.Current.BoxPerCent = 0.3F;
    s.Current.Scale = 80.0F;
    s.Current.RecNo = 57;
    s.Current.Negative = true;
    s.Current.SurnameOwnLine = "N";
    s.Current.ColTop[1] = 1520;
    s.Current.ColLeft[1] = 300;
    s.Current.ColFirst[1] = 1;
    return s;
}

// A history of ten scans named s1.jpg (most recent) to s10.jpg.
ScanHistory FullHistory() {
    ScanHistory h;
    for (int k = 1; k <= HistorySize; ++k) {
        h.Entries[k].ImgFile = "s" + std::to_string(k) + ".jpg";
        h.Entries[k].RecNo = static_cast<int16_t>(k);
    }
    return h;
}

std::vector<std::string> Names(const ScanHistory& h) {
    std::vector<std::string> names;
    for (int k = 1; k <= HistorySize; ++k)
        names.push_back(h.Entries[k].ImgFile);
    return names;
}

struct Saving {
    MemorySettingsStore Store;
    ScanHistory History;
    FixedClock Time;

    void Save(const SaveSnapshot& s) { SaveDefaults(Store, s, History, Time); }
    std::string Value(const std::string& section, const std::string& key) const {
        return Store.Read(section, key, "<none>");
    }
};

TEST(SaveDefaults, NothingAtAllIsSavedDuringCalibration) {
    Saving saving;
    SaveSnapshot s = Snapshot("/home/ann/scans/1911B30123.jpg");
    s.CalibratingFlag = true;
    saving.Save(s);
    EXPECT_TRUE(saving.Store.Sections.empty());
    EXPECT_EQ(saving.Store.Writes, 0);
    EXPECT_EQ(saving.History.ScanHistoryMatch, 0);
    EXPECT_TRUE(saving.History.Entries[1].Empty());
}

TEST(SaveDefaults, GlobalKeysAreDecimalTextAndTheVersionIsTheLabelFromItsNinthCharacter) {
    Saving saving;
    saving.Save(Snapshot("/home/ann/scans/1911B30123.jpg"));
    const std::map<std::string, std::string> expected = {{"Version", "1.0.0 / 21-Jun-2022"},
                                                         {"RegVersion", "B"},
                                                         {"TextBoxColour", "4"},
                                                         {"ShowRptSurnames", "Y"},
                                                         {"Magnifier", "N"},
                                                         {"LineUpAutomatically", "Y"},
                                                         {"FollowPrintedLines", "Y"},
                                                         {"FormHeight", "9000"},
                                                         {"FormWidth", "12000"},
                                                         {"FormTop", "150"},
                                                         {"FormLeft", "250"}};
    EXPECT_EQ(saving.Store.Sections["Global"], expected);
    EXPECT_GE(saving.Store.Flushes, 1);
}

TEST(SaveDefaults, WithoutAScanOnlyGlobalIsWritten) {
    for (const std::string& graphics : {std::string(), std::string("/home/ann/scans/")}) {
        Saving saving;
        saving.History = FullHistory();
        saving.Save(Snapshot(graphics));
        EXPECT_EQ(saving.Store.Sections.size(), 1U) << graphics;
        EXPECT_TRUE(saving.Store.HasSection("Global"));
        EXPECT_EQ(Names(saving.History), Names(FullHistory()));
        EXPECT_EQ(saving.History.ScanHistoryMatch, 0);
    }
}

TEST(SaveDefaults, CurrentScanIsWrittenAsScan0WithItsFoldersAndTheTimeOfSaving) {
    Saving saving;
    saving.Save(Snapshot("/home/ann/scans/1911B30123.jpg"));
    EXPECT_EQ(saving.History.ScanHistoryMatch, 1);
    const std::map<std::string, std::string>& scan0 = saving.Store.Sections["Scan0"];
    EXPECT_EQ(scan0.at("ImgFile"), "1911B30123.jpg");
    EXPECT_EQ(scan0.at("ImgFileDir"), "/home/ann/scans/");
    EXPECT_EQ(scan0.at("SCAFile"), "1911B30123.QRL");
    EXPECT_EQ(scan0.at("SCAFileDir"), "/home/ann/qrl/");
    EXPECT_EQ(scan0.at("NumColumns"), "3");
    EXPECT_EQ(scan0.at("ScanType"), "7");
    EXPECT_EQ(scan0.at("LastChecked"), "20 Nov 2026 14:05");
    EXPECT_EQ(scan0.at("LineIncrTop"), "27.5");
    EXPECT_EQ(scan0.at("LineIncrLeft"), "-1");
    EXPECT_EQ(scan0.at("FrameFontSize"), "12");
    EXPECT_EQ(scan0.at("BoxPerCent"), "0.3");
    EXPECT_EQ(scan0.at("Scale"), "80");
    EXPECT_EQ(scan0.at("RecNo"), "57");
    EXPECT_EQ(scan0.at("AntiAlias"), "Y");
    EXPECT_EQ(scan0.at("Negative"), "Y");
    EXPECT_EQ(scan0.at("Smoothing"), "Y");
    EXPECT_EQ(scan0.at("SurnameOwnLine"), "N");
    EXPECT_EQ(scan0.at("Col1Top"), "1520");
    EXPECT_EQ(scan0.at("Col1Left"), "300");
    EXPECT_EQ(scan0.at("Col1First"), "1");
    EXPECT_EQ(scan0.at("Col6Top"), "-1");
    EXPECT_EQ(scan0.size(), 17U + 18U);
    EXPECT_FALSE(saving.Store.HasSection("Scan1"));
}

TEST(SaveDefaults, ResavingTheScanThatIsEntry3MakesItEntry1AndLosesNothing) {
    Saving saving;
    saving.History = FullHistory();
    saving.Save(Snapshot("/home/ann/scans/s3.jpg"));
    EXPECT_EQ(Names(saving.History),
              (std::vector<std::string>{"s3.jpg", "s1.jpg", "s2.jpg", "s4.jpg", "s5.jpg", "s6.jpg",
                                        "s7.jpg", "s8.jpg", "s9.jpg", "s10.jpg"}));
    EXPECT_EQ(saving.History.Entries[1].RecNo, 57);
    EXPECT_EQ(saving.History.Entries[2].RecNo, 1);
    EXPECT_EQ(saving.Value("Scan0", "ImgFile"), "s3.jpg");
    EXPECT_EQ(saving.Value("Scan1", "ImgFile"), "s1.jpg");
    EXPECT_EQ(saving.Value("Scan2", "ImgFile"), "s2.jpg");
    EXPECT_EQ(saving.Value("Scan9", "ImgFile"), "s10.jpg");
}

TEST(SaveDefaults, AnEleventhScanDropsTheOldestAndScan9TakesThePreviousEntry9) {
    Saving saving;
    saving.History = FullHistory();
    saving.Store.Sections["Scan9"] = {{"ImgFile", "s10.jpg"}, {"RecNo", "10"}};
    saving.Save(Snapshot("/home/ann/scans/new.jpg"));
    EXPECT_EQ(Names(saving.History),
              (std::vector<std::string>{"new.jpg", "s1.jpg", "s2.jpg", "s3.jpg", "s4.jpg", "s5.jpg",
                                        "s6.jpg", "s7.jpg", "s8.jpg", "s9.jpg"}));
    EXPECT_EQ(saving.Value("Scan9", "ImgFile"), "s9.jpg");
    EXPECT_EQ(saving.Value("Scan9", "RecNo"), "9");
}

TEST(SaveDefaults, ImageNameIsMatchedExactlyWithLetterCase) {
    Saving saving;
    saving.History.Entries[1].ImgFile = "1911B30123.JPG";
    saving.Save(Snapshot("/home/ann/scans/1911B30123.jpg"));
    EXPECT_EQ(saving.History.Entries[1].ImgFile, "1911B30123.jpg");
    EXPECT_EQ(saving.History.Entries[2].ImgFile, "1911B30123.JPG");
}

TEST(SaveDefaults, DriveLetterColonSeparatorAndNameStoresNoFolder) {
    Saving saving;
    saving.Save(Snapshot("C:/1911B30123.jpg"));
    EXPECT_EQ(saving.Value("Scan0", "ImgFile"), "1911B30123.jpg");
    EXPECT_EQ(saving.Value("Scan0", "ImgFileDir"), "");
}

// Saving and matching split a path by the same rule, so a scan saved from a path with a "\" in
// it is recognised when it is opened again.
TEST(SaveDefaults, AScanWhosePathHoldsABackslashIsRecognisedAgain) {
    Saving saving;
    const std::string path = "/home/ann/old\\scans\\1911B30123.jpg";
    saving.Save(Snapshot(path));
    EXPECT_EQ(saving.Value("Scan0", "ImgFile"), "1911B30123.jpg");
    EXPECT_EQ(saving.Value("Scan0", "ImgFileDir"), "/home/ann/old\\scans\\");
    saving.History.ScanHistoryMatch = 0;
    SetScanCurrent(path, saving.History);
    EXPECT_EQ(saving.History.ScanHistoryMatch, 1);
}

TEST(SaveDefaults, FolderIsKeptOnlyWhenItsSeparatorStandsAfterTheFourthCharacter) {
    Saving saving;
    SaveSnapshot s = Snapshot("/ab/1911B30123.jpg");
    s.TranscriptionFile = "/abc/1911B30123.QRL";
    saving.Save(s);
    EXPECT_EQ(saving.Value("Scan0", "ImgFileDir"), "");
    EXPECT_EQ(saving.Value("Scan0", "SCAFileDir"), "/abc/");
    s.GraphicsFile = "1911B30123.jpg";
    s.TranscriptionFile = "";
    saving.Save(s);
    EXPECT_EQ(saving.Value("Scan0", "ImgFile"), "1911B30123.jpg");
    EXPECT_EQ(saving.Value("Scan0", "ImgFileDir"), "");
    EXPECT_EQ(saving.Value("Scan0", "SCAFile"), "");
}

TEST(SaveDefaults, SectionsLeftOverFromEmptyEntriesAreDeletedAndNoneAreCreated) {
    Saving saving;
    saving.Store.Sections["Scan4"] = {{"ImgFile", ""}, {"RecNo", "3"}};
    saving.Store.Sections["Scan7"] = {{"ImgFile", "gone.jpg"}};
    saving.Save(Snapshot("/home/ann/scans/1911B30123.jpg"));
    EXPECT_FALSE(saving.Store.HasSection("Scan4"));
    EXPECT_FALSE(saving.Store.HasSection("Scan7"));
    EXPECT_EQ(saving.Store.Sections.size(), 2U); // Global and Scan0
}

TEST(SaveDefaults, SavedSettingsAreReadBackAsTheyWereSaved) {
    Saving saving;
    saving.History = FullHistory();
    saving.Save(Snapshot("/home/ann/scans/1911B30123.jpg"));
    FakePrompts prompts;
    ScanHistory again;
    GlobalSettings g = GetDefaults(saving.Store, prompts, again, {16200, 28800});
    EXPECT_TRUE(prompts.Shown.empty());
    EXPECT_EQ(g.TextBoxColour, 4);
    EXPECT_TRUE(g.ShowRptSurnames);
    EXPECT_EQ(g.FormHeight, 9000);
    EXPECT_EQ(g.FormWidth, 12000);
    EXPECT_EQ(g.FormTop, 150);
    EXPECT_EQ(g.FormLeft, 250);
    EXPECT_EQ(Names(again), Names(saving.History));
    const ScanHistoryEntry& e = again.Entries[1];
    EXPECT_EQ(e.ImgFileDir, "/home/ann/scans/");
    EXPECT_EQ(e.ScanType, 7);
    EXPECT_EQ(e.LineIncrTop, 27.5F);
    EXPECT_EQ(e.LineIncrLeft, -1.0F);
    EXPECT_EQ(e.BoxPerCent, 0.3F);
    EXPECT_EQ(e.Scale, 80.0F);
    EXPECT_EQ(e.RecNo, 57);
    EXPECT_TRUE(e.Negative);
    EXPECT_EQ(e.SurnameOwnLine, "N");
    EXPECT_EQ(e.ColTop[1], 1520);
    EXPECT_EQ(e.LastChecked, "20 Nov 2026 14:05");
    EXPECT_EQ(again.Entries[10].RecNo, 9);
}

TEST(RestoreDefaults, ClearsEverySettingWhenAVersionIsStored) {
    MemorySettingsStore store;
    store.Sections["Global"] = {{"Version", "1.0.0 / 21-Jun-2022"}, {"FormTop", "5"}};
    store.Sections["Scan0"] = {{"ImgFile", "a.jpg"}};
    RestoreDefaults(store);
    EXPECT_TRUE(store.Sections.empty());
}

TEST(RestoreDefaults, LeavesAStoreWithoutAVersionAlone) {
    MemorySettingsStore store;
    store.Sections["Global"] = {{"SkipOpenScreen", "Y"}};
    RestoreDefaults(store);
    EXPECT_EQ(store.Read("Global", "SkipOpenScreen", ""), "Y");
}

TEST(SkipSteps, IsKeptAsSkipOpenScreenYOrN) {
    MemorySettingsStore store;
    EXPECT_FALSE(ReadSkipSteps(store));
    WriteSkipSteps(store, true);
    EXPECT_EQ(store.Read("Global", "SkipOpenScreen", ""), "Y");
    EXPECT_TRUE(ReadSkipSteps(store));
    WriteSkipSteps(store, false);
    EXPECT_EQ(store.Read("Global", "SkipOpenScreen", ""), "N");
    EXPECT_FALSE(ReadSkipSteps(store));
}

} // namespace
} // namespace tv
