#include "PageSessionTesting.h"

#include <filesystem>

namespace tv::test {

namespace {

const char* const ChangedNotice = "Your transcription file has changed - press R to reload it";

class ChangeWatch : public PageSessionTest {
  protected:
    void SetUp() override { LoadCalibrated1878(); }

    // What the main window does on every repaint.
    void Repaint() { S.ChangeWatch(ModificationTime(Path)); }

    int Notices() const { return CountOf(S.Content.NotesText, ChangedNotice); }
};

TEST_F(ChangeWatch, ModificationTimeIsTheFilesTimeOrNothing) {
    EXPECT_EQ(ModificationTime(Path), std::filesystem::last_write_time(Path));
    EXPECT_EQ(ModificationTime(Path + ".missing"), std::nullopt);
}

TEST_F(ChangeWatch, AnUnchangedFileShowsNoNotice) {
    Repaint();
    Repaint();
    EXPECT_EQ(Notices(), 0);
}

TEST_F(ChangeWatch,
       ChangingTheFileOnDiskShowsTheNoticeOnceAtTheNextRepaintAndNotAgainUntilItChangesAgain) {
    Save(BirthsPage1878(), 10);
    EXPECT_EQ(Notices(), 0); // nothing until the window repaints
    Repaint();
    EXPECT_EQ(Notices(), 1);
    EXPECT_EQ(S.TranscriptionFileTime, ModificationTime(Path));
    EXPECT_EQ(S.Content.StatusNotes[1], ChangedNotice);

    Press(KeyHome); // a column jump clears the notes
    ASSERT_EQ(Notices(), 0);
    Repaint();
    Repaint();
    EXPECT_EQ(Notices(), 0);

    Save(BirthsPage1878(), 20);
    Repaint();
    EXPECT_EQ(Notices(), 1);
}

TEST_F(ChangeWatch, SavingTheFileTwiceWithoutReloadingGivesOneNotice) {
    Save(BirthsPage1878(), 10);
    Repaint();
    Save(BirthsPage1878(), 20);
    Repaint();
    EXPECT_EQ(Notices(), 1);
    EXPECT_EQ(S.TranscriptionFileTime, ModificationTime(Path));
}

TEST_F(ChangeWatch, NothingIsNoticedWhileCalibrating) {
    Save(BirthsPage1878(), 10);
    const std::optional<FileTime> before = S.TranscriptionFileTime;
    S.Calib.CalibrationStage = 2;
    Repaint();
    S.Calib.CalibrationStage = 0;
    S.Calib.CalibratingFlag = true;
    Repaint();
    EXPECT_EQ(Notices(), 0);
    EXPECT_EQ(S.TranscriptionFileTime, before);
    // Once calibrated the change is still noticed.
    S.Calib.CalibratingFlag = false;
    Repaint();
    EXPECT_EQ(Notices(), 1);
}

TEST_F(ChangeWatch, NothingIsNoticedBeforeTheBoxHasBeenLinedUp) {
    S.Calib.BoxLinedUp = false;
    Save(BirthsPage1878(), 10);
    Repaint();
    EXPECT_EQ(Notices(), 0);
}

TEST_F(ChangeWatch, AFileWhoseTimeCannotBeReadIsIgnored) {
    const std::optional<FileTime> before = S.TranscriptionFileTime;
    std::filesystem::remove(Path);
    Repaint();
    EXPECT_EQ(Notices(), 0);
    EXPECT_EQ(S.TranscriptionFileTime, before);
}

TEST_F(ChangeWatch, AReloadedFileIsNotNoticedAgain) {
    Save(BirthsPage1878(), 10);
    Repaint();
    Press(KeyR);
    Press(KeyHome);
    Repaint();
    EXPECT_EQ(Notices(), 0);
}

TEST_F(ChangeWatch, AChangeBetweenTheReloadAndTheRepaintIsNoticed) {
    Press(KeyR);
    Save(BirthsPage1878(), 30);
    Repaint();
    EXPECT_EQ(Notices(), 1);
}

} // namespace

} // namespace tv::test
