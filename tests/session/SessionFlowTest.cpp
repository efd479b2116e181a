// The session's life cycle: reset for a new scan, the two files, the open-file dialog's starting
// place, the preparation for calibration, New Scan while calibrating, scrolling and dropping.
#include "support/FakePlatform.h"
#include "support/TestFiles.h"
#include "transcription/ReadTranscription.h"
#include "view/KeyCodes.h"

#include <gtest/gtest.h>

#include <filesystem>
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

class SessionFlow : public ::testing::Test {
  protected:
    FakeSession F;
    Session& S = F.S;
    TempDir Dir;

    ScanHistoryEntry Entry(const std::string& image, const std::string& dir,
                           const std::string& sca) {
        ScanHistoryEntry e;
        e.ImgFile = image;
        e.ImgFileDir = "/scans/";
        e.SCAFile = sca;
        e.SCAFileDir = dir;
        return e;
    }

    // A page of n records with a header, read and prepared for calibration.
    void LoadAndInitialise(int records, const std::string& quarter = "1911,Sep",
                           const std::string& scan = "1911B30123") {
        std::string text = "+INFO,a@b.org,,SEQ,BIRTHS\r\n+S," + quarter + ",,\r\n";
        for (int r = 0; r < records; ++r)
            text +=
                "NAME" + std::to_string(r) + ",Ann,X,Leeds,9b," + std::to_string(100 + r) + "\r\n";
        S.ImageChosen("/scans/" + scan + ".jpg");
        ASSERT_NE(S.LoadTranscription(Dir.Write(scan + ".QRL", text)), QuitToken);
        S.InitialiseForm1();
    }
};

TEST_F(SessionFlow, VersionLineIsTheVersionNumbersAndTheFixedBuildDate) {
    const std::string numbers = std::to_string(TALLYVIEW_VERSION_MAJOR) + "." +
                                std::to_string(TALLYVIEW_VERSION_MINOR) + "." +
                                std::to_string(TALLYVIEW_VERSION_REVISION);
    EXPECT_EQ(VersionLine(), "Version " + numbers + " / 21-Jun-2022");
    EXPECT_EQ(VersionLine(), "Version 1.0.0 / 21-Jun-2022");
}

TEST_F(SessionFlow, FormLoad2ResetsThePerScanState) {
    S.Calib.CalibrationStage = 3;
    S.Calib.LineIncrTop = 400.0F;
    S.Calib.ColumnTopLine[2] = 40;
    S.Table.CurrentLine = 17;
    S.StatsOption = 3;
    S.Scan.NumColumns = 1;
    S.Scan.AskScanType = false;
    S.Box.ScanRotation = 1.2F;
    S.Box.RotationHintShown = true;
    S.Caption = "Tallyview - Births 1911 Qtr 3 Page 123";
    S.Commands.AdjColsVisible = true;
    S.Commands.AdjCol[2] = true;
    S.Form_Load2();
    EXPECT_EQ(S.Calib.CalibrationStage, 0);
    EXPECT_EQ(S.Calib.LineIncrTop, -1.0F);
    EXPECT_EQ(S.Calib.ColumnTopLine[2], 0);
    EXPECT_EQ(S.Table.CurrentLine, 0);
    EXPECT_EQ(S.StatsOption, 0);
    EXPECT_EQ(S.Scan.NumColumns, 3);
    EXPECT_TRUE(S.Scan.AskScanType);
    EXPECT_EQ(S.Box.ScanRotation, 0.0F);
    EXPECT_FALSE(S.Box.RotationHintShown);
    EXPECT_EQ(S.Caption, "Tallyview");
    EXPECT_FALSE(S.Commands.AdjColsVisible);
    EXPECT_FALSE(S.Commands.AdjCol[2]);
}

TEST_F(SessionFlow, FormLoad2KeepsTheBoxFontColourAndPreferences) {
    S.Content.BoxFontSize = 14;
    S.Content.BoxColourIndex = 5;
    S.Prefs.ShowRptSurnames = true;
    S.Form_Load2();
    EXPECT_EQ(S.Content.BoxFontSize, 14);
    EXPECT_EQ(S.Content.BoxColourIndex, 5);
    EXPECT_TRUE(S.Prefs.ShowRptSurnames);
}

TEST_F(SessionFlow, ImageDialogStartsAtTheMostRecentScan) {
    S.History.Entries[1] = Entry("1911B30123.jpg", "/qrl/", "1911B30123.QRL");
    FileRequest r = S.ChooseFileRequest(FileKind::Image);
    EXPECT_EQ(r.Title, "Select the file containing the scanned image of the index page");
    ASSERT_EQ(r.Filters.size(), 2U);
    EXPECT_EQ(r.Filters[0], "Graphics Files (*.JPG *.JPE *.JPEG *.GIF *.TIF *.TIFF *.jpg *.jpe "
                            "*.jpeg *.gif *.tif *.tiff *.png *.bmp)");
    EXPECT_EQ(r.Filters[1], "All Files (*)");
    EXPECT_EQ(r.Folder, "/scans/");
    EXPECT_EQ(r.Name, "1911B30123.jpg");
}

TEST_F(SessionFlow, TranscriptionDialogOfANewScanStartsInTheLatestFolderWithNoName) {
    S.History.Entries[1] = Entry("1911B30123.jpg", "/qrl/", "1911B30123.QRL");
    S.ImageChosen("/scans/1870B10001.jpg");
    FileRequest r = S.ChooseFileRequest(FileKind::Transcription);
    EXPECT_EQ(r.Title, "Select the file containing your transcription");
    ASSERT_EQ(r.Filters.size(), 2U);
    EXPECT_EQ(r.Filters[0], "QRL and SCA Files (*.SCA *.QRL *.sca *.qrl)");
    EXPECT_EQ(r.Filters[1], "All Files (*)");
    EXPECT_EQ(r.Folder, "/qrl/");
    EXPECT_EQ(r.Name, "");
}

TEST_F(SessionFlow, TranscriptionDialogOfAScanVerifiedBeforeStartsAtItsTranscription) {
    S.History.Entries[1] = Entry("1911B30123.jpg", "/qrl/", "1911B30123.QRL");
    S.History.Entries[2] = Entry("1870B10001.jpg", "/old/", "1870B10001.SCA");
    S.ImageChosen("/elsewhere/1870B10001.jpg");
    EXPECT_EQ(S.GraphicsFile, "/elsewhere/1870B10001.jpg");
    EXPECT_EQ(S.History.ScanHistoryMatch, 2);
    FileRequest r = S.ChooseFileRequest(FileKind::Transcription);
    EXPECT_EQ(r.Folder, "/old/");
    EXPECT_EQ(r.Name, "1870B10001.SCA");
}

TEST_F(SessionFlow, CancelledImageChoiceLeavesNoScanAndNoMatch) {
    S.History.Entries[1] = Entry("1911B30123.jpg", "/qrl/", "1911B30123.QRL");
    S.History.ScanHistoryMatch = 1;
    S.ImageChosen("");
    EXPECT_EQ(S.GraphicsFile, "");
    EXPECT_EQ(S.History.ScanHistoryMatch, 0);
}

TEST_F(SessionFlow, LoadedImageSaysNothing) {
    S.ImageChosen("/scans/1911B30123.jpg");
    EXPECT_TRUE(S.ImageLoaded(0));
    EXPECT_TRUE(F.Prompts.Shown.empty());
}

TEST_F(SessionFlow, FileThatIsNoPictureIsReportedAndEndsTheSession) {
    S.ImageChosen("/scans/1911B30123.jpg");
    EXPECT_FALSE(S.ImageLoaded(-2));
    ASSERT_EQ(F.Prompts.Shown.size(), 1U);
    EXPECT_EQ(F.Prompts.Shown[0].Text, "/scans/1911B30123.jpg is not a valid picture file");
    EXPECT_EQ(F.Prompts.Shown[0].Title, "Tallyview");
    EXPECT_EQ(F.Prompts.Shown[0].Choice, Buttons::Ok);
}

TEST_F(SessionFlow, OtherLoadErrorIsReportedWithItsNumber) {
    S.ImageChosen("/scans/1911B30123.jpg");
    EXPECT_FALSE(S.ImageLoaded(7));
    ASSERT_EQ(F.Prompts.Shown.size(), 1U);
    EXPECT_EQ(F.Prompts.Shown[0].Text, "Error 7 opening /scans/1911B30123.jpg");
    EXPECT_EQ(F.Prompts.Shown[0].Title, "Tallyview");
}

TEST_F(SessionFlow, CancelledTranscriptionChoiceQuits) {
    EXPECT_EQ(S.LoadTranscription(""), "**QUIT**");
    EXPECT_EQ(S.TranscriptionFile, "**QUIT**");
    EXPECT_TRUE(F.Prompts.Shown.empty());
}

TEST_F(SessionFlow, TranscriptionIsReadWithItsCaptionAndTime) {
    std::string path = Dir.Write("1911B30123.QRL", Births1911);
    S.ImageChosen("/scans/1911B30123.jpg");
    EXPECT_EQ(S.LoadTranscription(path), path);
    EXPECT_EQ(S.TranscriptionFile, path);
    EXPECT_EQ(S.Table.LineCount, 7);
    EXPECT_EQ(S.Table.RecordCount, 3);
    EXPECT_EQ(S.Caption, "Tallyview - Births 1911 Qtr 3 Page 123");
    EXPECT_EQ(S.TranscriptionFileTime, ModificationTime(path));
}

TEST_F(SessionFlow, FileThatCannotBeOpenedIsReportedAndQuits) {
    std::string path = (Dir.Path() / "missing.QRL").string();
    EXPECT_EQ(S.LoadTranscription(path), "**QUIT**");
    ASSERT_EQ(F.Prompts.Shown.size(), 1U);
    const Prompt& p = F.Prompts.Shown[0];
    EXPECT_EQ(p.Text.rfind("Cannot open " + path + "\r", 0), 0U) << p.Text;
    EXPECT_GT(p.Text.size(), ("Cannot open " + path + "\r").size());
    EXPECT_EQ(p.Title, "Tallyview");
    EXPECT_EQ(p.Choice, Buttons::Ok);
}

TEST_F(SessionFlow, AFileFarLongerThanATranscriptionIsRefusedNamingItAndTheReason) {
    std::string path = Dir.Write("huge.QRL", "");
    std::filesystem::resize_file(path, 100ULL << 30); // sparse: it takes no room
    EXPECT_EQ(S.LoadTranscription(path), "**QUIT**");
    ASSERT_EQ(F.Prompts.Shown.size(), 1U);
    EXPECT_EQ(F.Prompts.Shown[0].Text,
              "Cannot open " + path +
                  "\rThe file is longer than 16384000 bytes, far more than a transcription can "
                  "hold");
}

TEST_F(SessionFlow, RefusedTranscriptionQuits) {
    std::string path = Dir.Write("empty.QRL", "# nothing transcribed yet\r\n");
    F.Prompts.Script = {Answer::Ok, Answer::Cancel};
    EXPECT_EQ(S.LoadTranscription(path), "**QUIT**");
    EXPECT_FALSE(S.TranscriptionFileTime.has_value());
}

TEST_F(SessionFlow, HistoryMatchIsDroppedWhenAnotherTranscriptionIsChosen) {
    std::string path = Dir.Write("1911B30123.QRL", Births1911);
    S.History.Entries[3] = Entry("1911B30123.jpg", "/qrl/", "1911B30123.QRL");
    S.ImageChosen("/scans/1911B30123.jpg");
    ASSERT_EQ(S.History.ScanHistoryMatch, 3);
    S.LoadTranscription(path);
    EXPECT_EQ(S.History.ScanHistoryMatch, 0);
}

TEST_F(SessionFlow, HistoryMatchIsKeptForTheSameTranscription) {
    std::string path = Dir.Write("1911B30123.QRL", Births1911);
    S.History.Entries[3] = Entry("1911B30123.jpg", Dir.Path().string() + "/", "1911B30123.QRL");
    S.ImageChosen("/scans/1911B30123.jpg");
    S.LoadTranscription(path);
    EXPECT_EQ(S.History.ScanHistoryMatch, 3);
}

TEST_F(SessionFlow, InitialiseForm1SizesTheBoxFromTheViewAndStartsCalibration) {
    F.View.State.ImageWidth = 120000; // a wide scan: its columns are wider than the view
    LoadAndInitialise(60);
    EXPECT_EQ(S.Box.BoxWidth, 14400); // 0.8 of the 18000-twip view
    EXPECT_EQ(S.Box.BaseZoom, 100.0F);
    EXPECT_EQ(S.Box.CurrentZoom, 100.0F);
    EXPECT_EQ(F.View.State.Zoom, 1.0);
    EXPECT_TRUE(S.Commands.AdjColsVisible);
    for (int i = 0; i <= 3; ++i)
        EXPECT_TRUE(S.Commands.AdjCol[i]);
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
    EXPECT_EQ(S.Table.CurrentLine, 3);
    EXPECT_NE(S.Content.NotesText.find("1st record in column 1"), std::string::npos);
}

TEST_F(SessionFlow, BoxIsNeverWiderThanAColumnOfTheScan) {
    F.View.State.Control.Width = 30000; // a view wider than a column
    LoadAndInitialise(60);
    ASSERT_GE(S.Scan.ColumnsAcross(), 2);
    EXPECT_EQ(S.Box.BoxWidth, CLng(36000.0 / S.Scan.ColumnsAcross()));
}

TEST_F(SessionFlow, BoxOfAOneColumnScanIsNeverWiderThanTheImage) {
    F.View.State.ImageWidth = 600 * 15.0; // a strip of 600 pixels
    LoadAndInitialise(30, "1843,Mar", "1843B10214");
    ASSERT_EQ(S.Scan.ColumnsAcross(), 1);
    EXPECT_EQ(S.Box.BoxWidth, 9000 - 95);
}

TEST_F(SessionFlow, ScanVerifiedBeforeOpensAtItsRememberedZoom) {
    ScanHistoryEntry e = Entry("1911B30123.jpg", Dir.Path().string() + "/", "1911B30123.QRL");
    e.Scale = 150.0F;
    S.History.Entries[1] = e;
    LoadAndInitialise(30);
    EXPECT_EQ(S.Box.CurrentZoom, 150.0F);
    EXPECT_EQ(S.Box.BaseZoom, 100.0F);
    EXPECT_EQ(F.View.State.Zoom, 1.5);
}

TEST_F(SessionFlow, NewScanIsRefusedWhileCalibrating) {
    S.Calib.CalibrationStage = 2;
    EXPECT_FALSE(S.NewScanAllowed());
    ASSERT_EQ(F.Prompts.Shown.size(), 1U);
    EXPECT_EQ(F.Prompts.Shown[0].Text, "Cannot load new scan while you are calibrating");
    EXPECT_EQ(F.Prompts.Shown[0].Choice, Buttons::Ok);
    EXPECT_EQ(F.Prompts.Shown[0].Title, "Tallyview");
}

TEST_F(SessionFlow, NewScanIsAllowedWhenCalibrated) {
    EXPECT_TRUE(S.NewScanAllowed());
    EXPECT_TRUE(F.Prompts.Shown.empty());
}

TEST_F(SessionFlow, ScrolledViewCarriesTheBoxAndTheNextKeyOnlyPlacesIt) {
    LoadAndInitialise(60);
    const int32_t top = S.Box.BoxTop;
    const int32_t formTop = S.Box.FormTop;
    F.View.SetScroll(0, 100);
    S.ViewMoved();
    EXPECT_EQ(S.Box.FormTop, formTop - 1500);
    EXPECT_TRUE(S.Box.BoxPlacementPending);
    S.Form_KeyDown(KeyEnter, false, false); // ENTER only places the box
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
    EXPECT_EQ(S.Box.BoxTop, top);
    EXPECT_FALSE(S.Box.BoxPlacementPending);
}

TEST_F(SessionFlow, NextButtonAfterAScrollDoesItsCommandAtOnce) {
    LoadAndInitialise(60);
    F.View.SetScroll(0, 100);
    S.ViewMoved();
    S.ButtonCommand(KeyEnter); // the Next button: the next calibration stage, not a placement
    EXPECT_EQ(S.Calib.CalibrationStage, 2);
    EXPECT_FALSE(S.Box.BoxPlacementPending);
}

TEST_F(SessionFlow, FirstKeyAfterAZoomButtonIsNotSwallowed) {
    LoadAndInitialise(60);
    F.View.SetScroll(0, 100);
    S.ViewMoved();
    S.Zoom(+1.0F); // the Zoom In button places the box itself
    EXPECT_FALSE(S.Box.BoxPlacementPending);
    S.Form_KeyDown(KeyEnter, false, false);
    EXPECT_EQ(S.Calib.CalibrationStage, 2);
}

TEST_F(SessionFlow, DroppedBoxLeavesNoPlacementPending) {
    LoadAndInitialise(60);
    F.View.SetScroll(0, 100);
    S.ViewMoved();
    S.BoxDropped(5000, 4000);
    EXPECT_FALSE(S.Box.BoxPlacementPending);
    EXPECT_EQ(S.Box.BoxLeft, 5000 - 600);
    EXPECT_EQ(S.Box.BoxTop, 4000 - 600 + 1500);
}

TEST_F(SessionFlow, ReCalibrateStartsAgainAtTheFirstStageWithoutAskingTheLayout) {
    LoadAndInitialise(60);
    S.Calib.CalibrationStage = 0;
    S.Commands.MenuCalibrate = true;
    S.Scan.AskScanType = false;
    const std::size_t asked = F.Chooser.Preselections.size();
    S.MenuCalibrate_Click();
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
    EXPECT_FALSE(S.Commands.MenuCalibrate);
    EXPECT_EQ(F.Chooser.Preselections.size(), asked);
}

TEST_F(SessionFlow, ReCalibrateDoesNothingWhileItsMenuItemIsDisabled) {
    LoadAndInitialise(60);
    S.MenuCalibrate_Click();
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
    EXPECT_EQ(S.Calib.ColumnTopLine[1], 0);
}

TEST_F(SessionFlow, ShowRepeatedSurnamesTogglesTheTickAndRedrawsTheRecord) {
    std::string text = "+INFO,a@b.org,,SEQ,BIRTHS\r\n+S,1911,Sep,,\r\n"
                       "MUIR,Agnes,X,Leeds,9b,100\r\nMUIR,James,Y,Leeds,9b,101\r\n";
    S.ImageChosen("/scans/1911B30123.jpg");
    S.LoadTranscription(Dir.Write("1911B30123.QRL", text));
    S.Box.BoxWidth = 9000;
    S.Calib.ColumnTopLine[1] = 3;
    S.Table.CurrentLine = 4;
    S.ShowRecord(0);
    EXPECT_EQ(S.Content.NameLine.find("MUIR"), std::string::npos);
    S.MenuShowRptSurnames_Click();
    EXPECT_TRUE(S.Prefs.ShowRptSurnames);
    EXPECT_NE(S.Content.NameLine.find("MUIR"), std::string::npos);
}

} // namespace
} // namespace tv::test
