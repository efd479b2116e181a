// The session and its settings: what the main window's load takes from them, what SaveDefaults
// keeps of the session, and the statistics screen's lists and report drawn from the session.
#include "session/MemorySettingsStore.h"
#include "support/FakePlatform.h"
#include "support/TestFiles.h"
#include "transcription/ReadTranscription.h"

#include <gtest/gtest.h>

#include <string>

namespace tv::test {
namespace {

const std::string Births1911 = "+INFO,someone@example.org,password,SEQ,BIRTHS,cp1252\r\n"
                               "+S,1911,Sep,,\r\n"
                               "+PAGE,0123\r\n"
                               "MUIR,Agnes,CAMPBELL,Newcastle T.,10b,211\r\n"
                               "MUIR,James,BROWN,Liverpool,8b,367\r\n"
                               "#COMMENT reads SMYTH or SMITH\r\n"
                               "MULLEN,John,HUGHES,Wigan,8c,311\r\n";

const MainWindowState Window{{150, 250, 14200, 9000}, "Version 1.0.0 / 21-Jun-2022"};

class SessionSettings : public ::testing::Test {
  protected:
    FakeSession F;
    Session& S = F.S;
    TempDir Dir;
    MemorySettingsStore Store;
    std::string Transcription;

    // The page read, its layout chosen, and calibrated by hand: column 1 from record 1 (line 4),
    // column 2 from record 3 (line 7); the box on record 2.
    void Calibrated() {
        S.ImageChosen("/home/ann/scans/1911B30123.jpg");
        Transcription = Dir.Write("1911B30123.QRL", Births1911);
        ASSERT_EQ(S.LoadTranscription(Transcription), Transcription);
        S.InitialiseForm1();
        S.Calib = {};
        S.Scan.NumColumns = 2;
        S.Calib.LineIncrTop = 27.5F;
        S.Calib.LineIncrLeft = 0.5F;
        S.Calib.ColumnTopLine[1] = 4;
        S.Calib.ColumnTopY[1] = 1520;
        S.Calib.ColumnTopX[1] = 300;
        S.Calib.ColumnTopLine[2] = 7;
        S.Calib.ColumnTopY[2] = 1490;
        S.Calib.ColumnTopX[2] = 9300;
        S.Table.CurrentLine = 5;
        S.Box.CurrentZoom = 125.0F;
        S.Box.BoxWidth = 4500; // a quarter of the 18000-twip view
        S.Content.BoxFontSize = 12;
    }
};

TEST_F(SessionSettings, LoadTakesTheBoxColourAndBothMenuTicks) {
    S.ApplySettings({4, true, true, 9000, 12000, 150, 250});
    EXPECT_EQ(S.Content.BoxColourIndex, 4);
    EXPECT_TRUE(S.Prefs.ShowRptSurnames);
    EXPECT_TRUE(S.Prefs.Magnifier);
}

TEST_F(SessionSettings, SnapshotHoldsTheWindowThePreferencesAndTheFiles) {
    Calibrated();
    S.SetBoxColour(5);
    S.Prefs.ShowRptSurnames = true;
    S.Prefs.Negative = true;
    S.Prefs.AntiAlias = false;
    const SaveSnapshot snap = S.Snapshot(Window);
    EXPECT_FALSE(snap.CalibratingFlag);
    EXPECT_EQ(snap.VersionLabel, "Version 1.0.0 / 21-Jun-2022");
    EXPECT_EQ(snap.GraphicsFile, "/home/ann/scans/1911B30123.jpg");
    EXPECT_EQ(snap.TranscriptionFile, Transcription);
    EXPECT_EQ(snap.Global.TextBoxColour, 5);
    EXPECT_TRUE(snap.Global.ShowRptSurnames);
    EXPECT_FALSE(snap.Global.Magnifier);
    EXPECT_EQ(snap.Global.FormLeft, 150);
    EXPECT_EQ(snap.Global.FormTop, 250);
    EXPECT_EQ(snap.Global.FormWidth, 14200);
    EXPECT_EQ(snap.Global.FormHeight, 9000);
    EXPECT_TRUE(snap.Current.Negative);
    EXPECT_FALSE(snap.Current.AntiAlias);
    EXPECT_TRUE(snap.Current.Smoothing);
}

TEST_F(SessionSettings, SnapshotHoldsTheScansLayoutCalibrationAndBox) {
    Calibrated();
    const ScanHistoryEntry e = S.Snapshot(Window).Current;
    EXPECT_EQ(e.NumColumns, 2);
    EXPECT_EQ(e.ScanType, S.Scan.ScanTypeCode);
    EXPECT_EQ(e.LineIncrTop, 27.5F);
    EXPECT_EQ(e.LineIncrLeft, 0.5F);
    EXPECT_EQ(e.ColTop[1], 1520);
    EXPECT_EQ(e.ColLeft[2], 9300);
    EXPECT_EQ(e.ColFirst[1], 1);
    EXPECT_EQ(e.ColFirst[2], 3);
    EXPECT_EQ(e.ColFirst[3], -1);
    EXPECT_EQ(e.FrameFontSize, 12);
    EXPECT_EQ(e.Scale, 125.0F);
    EXPECT_EQ(e.RecNo, 2);
    EXPECT_EQ(e.BoxPerCent, 0.25F);
    EXPECT_EQ(e.SurnameOwnLine, "N");
}

TEST_F(SessionSettings, BoxOffTheEndOfTheRecordsIsKeptAsRecordZero) {
    Calibrated();
    S.Table.CurrentLine = S.Table.LineCount + 1;
    EXPECT_EQ(S.Snapshot(Window).Current.RecNo, 0);
    S.Table.CurrentLine = 6; // the comment line
    EXPECT_EQ(S.Snapshot(Window).Current.RecNo, 0);
}

TEST_F(SessionSettings, NoSurnameAnswerBeforeTheLayoutIsChosen) {
    S.ImageChosen("/home/ann/scans/1911B30123.jpg");
    S.LoadTranscription(Dir.Write("1911B30123.QRL", Births1911));
    EXPECT_EQ(S.Snapshot(Window).Current.SurnameOwnLine, "");
}

TEST_F(SessionSettings, SaveDefaultsPutsTheScanFirstAndMatchesIt) {
    Calibrated();
    S.History.Entries[1].ImgFile = "1870B10001.jpg";
    S.SaveDefaults(Store, Window);
    EXPECT_EQ(S.History.ScanHistoryMatch, 1);
    EXPECT_EQ(Store.Sections["Global"]["FormTop"], "250");
    EXPECT_EQ(Store.Sections["Global"]["Version"], "1.0.0 / 21-Jun-2022");
    EXPECT_EQ(Store.Sections["Scan0"]["ImgFile"], "1911B30123.jpg");
    EXPECT_EQ(Store.Sections["Scan0"]["ImgFileDir"], "/home/ann/scans/");
    EXPECT_EQ(Store.Sections["Scan0"]["RecNo"], "2");
    EXPECT_EQ(Store.Sections["Scan0"]["Col2First"], "3");
    EXPECT_EQ(Store.Sections["Scan0"]["LastChecked"], "20 Nov 2026 14:05");
    EXPECT_EQ(Store.Sections["Scan1"]["ImgFile"], "1870B10001.jpg");
}

TEST_F(SessionSettings, SaveDefaultsWhileCalibratingWritesNothingAndMatchesTheScanAgain) {
    Calibrated();
    S.Calib.CalibratingFlag = true;
    S.History.Entries[2].ImgFile = "1911B30123.jpg";
    S.History.ScanHistoryMatch = 0;
    S.SaveDefaults(Store, Window);
    EXPECT_TRUE(Store.Sections.empty());
    EXPECT_EQ(S.History.ScanHistoryMatch, 2);
}

TEST_F(SessionSettings, EachOptionListsItsOwnList) {
    Calibrated();
    S.Table.LineFlagged[5] = true;
    S.StatsOption = 0;
    EXPECT_EQ(S.RefreshTabs(Store, Window).substr(0, 5), "  1  ");
    S.StatsOption = 3;
    EXPECT_NE(S.RefreshTabs(Store, Window).find("MUIR,James"), std::string::npos);
    S.StatsOption = 1;
    EXPECT_EQ(S.RefreshTabs(Store, Window), "None");
    EXPECT_TRUE(Store.Sections.empty());
}

TEST_F(SessionSettings, HistoryListSavesFirstUnlessTheScanIsAlreadyEntryOne) {
    Calibrated();
    S.StatsOption = 4;
    const std::string list = S.RefreshTabs(Store, Window);
    EXPECT_EQ(list.rfind("20 Nov 2026 14:05 - Births 1911 Qtr 3 Page 123 - 2 lines\r\n", 0), 0U)
        << list;
    EXPECT_EQ(Store.Sections["Scan0"]["ImgFile"], "1911B30123.jpg");
    const int writes = Store.Writes;
    S.RefreshTabs(Store, Window);
    EXPECT_EQ(Store.Writes, writes);
}

TEST_F(SessionSettings, OptionBeyondTheFiveIsASubscriptError) {
    S.StatsOption = 5;
    EXPECT_THROW(S.RefreshTabs(Store, Window), RunTimeError);
}

TEST_F(SessionSettings, ReportIsTheReportOfTheSessionAtThisMoment) {
    Calibrated();
    const std::vector<ReportLine> lines = S.Report(false);
    ASSERT_GT(lines.size(), 5U);
    EXPECT_EQ(lines[1].Text, "Tallyview Report for Births 1911 Qtr 3 Page 123");
    EXPECT_TRUE(lines[1].Bold);
    EXPECT_EQ(lines[3].Text, "    Graphics file: /home/ann/scans/1911B30123.jpg");
    EXPECT_EQ(lines.back().Text, "Printed 20/11/2026 14:05:09");
}

} // namespace
} // namespace tv::test
