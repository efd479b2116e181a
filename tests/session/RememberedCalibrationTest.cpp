// Reopening a scan verified before: its remembered spacing and column tops stand in for the
// calibration, rescaled to the present zoom, and the box stands on the record it stood on.
#include "support/FakePlatform.h"
#include "support/TestFiles.h"
#include "transcription/ReadTranscription.h"

#include <gtest/gtest.h>

#include <string>

namespace tv::test {
namespace {

class RememberedCalibration : public ::testing::Test {
  protected:
    FakeSession F;
    Session& S = F.S;
    TempDir Dir;
    ScanHistoryEntry Entry;

    // The scan as it was saved: two columns, spacing 300 twips at 150 %, the box on record 35.
    RememberedCalibration() {
        Entry.ImgFile = "1911B30123.jpg";
        Entry.ImgFileDir = "/scans/";
        Entry.SCAFile = "1911B30123.QRL";
        Entry.SCAFileDir = Dir.Path().string() + "/";
        Entry.NumColumns = 2;
        Entry.ScanType = 1;
        Entry.LineIncrTop = 300.0F;
        Entry.LineIncrLeft = 2.0F;
        Entry.Scale = 150.0F;
        Entry.FrameFontSize = 12;
        Entry.RecNo = 35;
        Entry.SurnameOwnLine = "N";
        Entry.ColTop[1] = 1500;
        Entry.ColLeft[1] = 1000;
        Entry.ColFirst[1] = 1;
        Entry.ColTop[2] = 1500;
        Entry.ColLeft[2] = 18000;
        Entry.ColFirst[2] = 31;
    }

    // Sixty records of 1911 (two header lines, so record r stands on line r + 2), opened with
    // Entry as history entry 1.
    void Open() {
        S.History.Entries[1] = Entry;
        std::string text = "+INFO,a@b.org,,SEQ,BIRTHS\r\n+S,1911,Sep,,\r\n";
        for (int r = 0; r < 60; ++r)
            text += "NAME" + std::to_string(100 + r / 2) + ",Ann,X,Leeds,9b," +
                    std::to_string(100 + r) + "\r\n";
        S.ImageChosen("/scans/1911B30123.jpg");
        ASSERT_NE(S.LoadTranscription(Dir.Write("1911B30123.QRL", text)), QuitToken);
        S.InitialiseForm1();
    }
};

TEST_F(RememberedCalibration, ScanVerifiedBeforeOpensCalibratedOnItsRecord) {
    Open();
    EXPECT_EQ(S.Calib.CalibrationStage, 0);
    EXPECT_FALSE(S.Calib.CalibratingFlag);
    EXPECT_TRUE(S.Calib.BoxLinedUp);
    EXPECT_EQ(S.Scan.NumColumns, 2);
    EXPECT_EQ(S.Calib.ColumnTopLine[1], 3);
    EXPECT_EQ(S.Calib.ColumnTopLine[2], 33);
    EXPECT_EQ(S.Calib.ColumnTopY[2], 1500);
    EXPECT_EQ(S.Calib.ColumnTopX[2], 18000);
    EXPECT_EQ(S.Calib.LineIncrTop, 300.0F);
    EXPECT_EQ(S.Calib.LineIncrLeft, 2.0F);
    EXPECT_EQ(S.Table.CurrentLine, 37);
    ASSERT_GE(S.Box.LinesFromTop, 4);
    EXPECT_EQ(S.Box.BoxTop, 1500 + S.Box.LinesFromTop * 300);
    EXPECT_EQ(S.Box.BoxLeft, 18000 + S.Box.LinesFromTop * 2);
    EXPECT_NE(S.Content.NameLine.find("NAME117"), std::string::npos);
    EXPECT_EQ(S.Content.BoxFontSize, 12);
    EXPECT_EQ(S.Content.NotesText.find("Move this box"), std::string::npos);
    EXPECT_TRUE(F.Chooser.Preselections.empty());
}

TEST_F(RememberedCalibration, CommandsAndStatisticsAreThoseOfACalibratedScan) {
    Open();
    EXPECT_TRUE(S.Commands.TopCol[1]);
    EXPECT_TRUE(S.Commands.TopCol[2]);
    EXPECT_FALSE(S.Commands.TopCol[3]);
    EXPECT_TRUE(S.Commands.MenuCalibrate);
    EXPECT_TRUE(S.Commands.MenuShowRptSurnames);
    EXPECT_TRUE(S.Commands.ShowStats);
    EXPECT_NE(S.StatsSummaryText.find("60"), std::string::npos);
}

TEST_F(RememberedCalibration, PositionsAreRescaledFromTheZoomTheyWereMeasuredAt) {
    Open();
    S.Box.CurrentZoom = 300.0F;
    ASSERT_TRUE(S.RestoreRememberedCalibration());
    EXPECT_EQ(S.Calib.ColumnTopY[1], 3000);
    EXPECT_EQ(S.Calib.ColumnTopX[1], 2000);
    EXPECT_EQ(S.Calib.ColumnTopX[2], 36000);
    EXPECT_EQ(S.Calib.LineIncrTop, 600.0F);
    EXPECT_EQ(S.Calib.LineIncrLeft, 4.0F);
}

TEST_F(RememberedCalibration, EntryWithoutASpacingStartsTheCalibration) {
    Entry.LineIncrTop = -1.0F;
    Open();
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
    EXPECT_NE(S.Content.NotesText.find("1st record in column 1"), std::string::npos);
}

TEST_F(RememberedCalibration, ColumnTopRecordMissingFromTheTranscriptionStartsTheCalibration) {
    Entry.ColFirst[2] = 61;
    Open();
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
    EXPECT_EQ(S.Calib.ColumnTopLine[2], 0);
}

TEST_F(RememberedCalibration, ColumnWithoutATopStartsTheCalibration) {
    Entry.ColTop[2] = -1;
    Open();
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
}

TEST_F(RememberedCalibration, SameScanWithAnotherTranscriptionStartsTheCalibration) {
    Entry.SCAFileDir = "/elsewhere/";
    Open();
    EXPECT_EQ(S.History.ScanHistoryMatch, 0);
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
}

TEST_F(RememberedCalibration, SurnamesOnTheirOwnLineComeBackWithTheirExtraPrintedLines) {
    Entry.SurnameOwnLine = "Y";
    Open();
    EXPECT_TRUE(S.Scan.SurnameOwnLine);
    // Each surname heads two records: its first record stands a line further down.
    EXPECT_EQ(S.Table.LineJump[5], 2);
    EXPECT_EQ(S.Table.LineJump[6], 1);
}

} // namespace
} // namespace tv::test
