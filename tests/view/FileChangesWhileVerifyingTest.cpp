// The transcription file changing under a session that verifies it: growing, growing past the
// line limit, emptied, deleted and written again, replaced by a pipe. The change watch never
// fails, and a reload either takes the new file or says why not and keeps what was read.
#include "PageSessionTesting.h"

#include <sys/stat.h>

#include <chrono>
#include <filesystem>

namespace tv::test {

namespace {

const char* const ChangedNotice = "Your transcription file has changed - press R to reload it";

class FileChangesWhileVerifying : public PageSessionTest {
  protected:
    void SetUp() override { LoadCalibrated1878(); }

    void Repaint() { S.ChangeWatch(ModificationTime(Path)); }
    bool HasNote(const std::string& note) const {
        return S.Content.NotesText.find(note) != std::string::npos;
    }

    // What a reload that keeps everything must leave: the 95 lines, the flag and the tops.
    void ExpectKeptAsRead() {
        EXPECT_EQ(S.Table.LineCount, 95);
        EXPECT_TRUE(S.Table.LineFlagged[LineOf1878Record(20)]);
        EXPECT_EQ(S.Calib.CalibrationStage, 0);
        EXPECT_EQ(S.Calib.ColumnTopLine[2], 35);
        EXPECT_FLOAT_EQ(S.Calib.LineIncrTop, 1224.0F);
    }

    void FlagRecord20() {
        S.Table.CurrentLine = static_cast<int16_t>(LineOf1878Record(20));
        Press(KeyM);
    }
};

} // namespace

TEST_F(FileChangesWhileVerifying, AFileThatGrowsIsNoticedAndItsNewRecordsReloaded) {
    std::vector<std::string> lines = BirthsPage1878();
    lines.insert(lines.end() - 1, "YOUNG,Walter,Leeds,9a,400");
    lines.insert(lines.end() - 1, "YOUNG,Alice,Leeds,9a,401");
    Save(lines);
    Repaint();
    EXPECT_TRUE(HasNote(ChangedNotice));
    Press(KeyR);
    EXPECT_EQ(S.Table.LineCount, 97);
    EXPECT_EQ(S.Table.RecordCount, 92);
    EXPECT_EQ(S.Calib.CalibrationStage, 0);
    EXPECT_EQ(S.Calib.ColumnTopLine[3], 65);
    EXPECT_TRUE(F.Prompts.Shown.empty());
}

TEST_F(FileChangesWhileVerifying, AFileThatGrowsPastTheLimitEndsTheProgramAtTheReload) {
    std::vector<std::string> lines = BirthsPage1878();
    while (lines.size() < 1001)
        lines.push_back("#ADDED,one line too many");
    Save(lines);
    Repaint();
    const CommandOutcome outcome = Press(KeyR);
    ASSERT_EQ(F.Prompts.Shown.size(), 1U);
    EXPECT_EQ(F.Prompts.Shown[0].Text,
              "You've exceeded the limit of 1000 records in the file " + Path);
    EXPECT_TRUE(outcome.ExitProgram);
    EXPECT_EQ(S.Table.LineCount, 95);
}

TEST_F(FileChangesWhileVerifying, AnEmptiedFileReloadedAfterBothWarningsStartsCalibrationAfresh) {
    FlagRecord20();
    Save({});
    F.Prompts.Script = {Answer::Ok, Answer::Ok, Answer::Ok};
    const CommandOutcome outcome = Press(KeyR);
    const std::vector<std::string> texts = F.Prompts.Texts();
    ASSERT_EQ(texts.size(), 4U);
    EXPECT_EQ(texts[0], "All the flagged records will lose their flag");
    EXPECT_EQ(texts[1].rfind("Suspect file " + Path, 0), 0U);
    EXPECT_EQ(texts[2].rfind("Suspect file " + Path, 0), 0U);
    EXPECT_EQ(texts[3], "The transcription file has changed - need to recalibrate");
    EXPECT_FALSE(outcome.ExitProgram);
    EXPECT_EQ(S.Table.LineCount, 0);
    EXPECT_EQ(S.Calib.CalibrationStage, 1);
    // Every key on the empty table returns, but the ENTER that confirms the tenth entry: with no
    // line to count, the spacing division fails, as documented, and the program would end.
    for (int code : TableKeys()) {
        try {
            Press(code);
        } catch (const RunTimeError& e) {
            EXPECT_EQ(e.Number, 11) << code;
            EXPECT_EQ(S.Calib.CalibrationStage, 2) << code;
            break;
        }
    }
}

TEST_F(FileChangesWhileVerifying, ADeletedFileIsIgnoredUntilItIsWrittenAgain) {
    FlagRecord20();
    const std::optional<FileTime> before = S.TranscriptionFileTime;
    std::filesystem::remove(Path);
    Repaint();
    Repaint();
    EXPECT_FALSE(HasNote(ChangedNotice));
    EXPECT_EQ(S.TranscriptionFileTime, before);
    Save(BirthsPage1878(), 30);
    Repaint();
    EXPECT_TRUE(HasNote(ChangedNotice));
    Press(KeyR);
    EXPECT_EQ(F.Prompts.Texts(),
              std::vector<std::string>{"All the flagged records will lose their flag"});
    EXPECT_EQ(S.Table.LineCount, 95);
    EXPECT_FALSE(S.Table.LineFlagged[LineOf1878Record(20)]);
}

TEST_F(FileChangesWhileVerifying, AFileReplacedByAPipeIsReportedAtOnceAndEverythingKept) {
    FlagRecord20();
    std::filesystem::remove(Path);
    ASSERT_EQ(mkfifo(Path.c_str(), 0600), 0);
    Repaint(); // a pipe has a time too: the change is noticed
    const auto start = std::chrono::steady_clock::now();
    const CommandOutcome outcome = Press(KeyR);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    ASSERT_EQ(F.Prompts.Shown.size(), 2U);
    EXPECT_EQ(F.Prompts.Shown[1].Text, "Cannot reload " + Path + CR + "Not a regular file" + CR +
                                           "The records shown are those read before.");
    EXPECT_FALSE(outcome.ExitProgram);
    ExpectKeptAsRead();
}

TEST_F(FileChangesWhileVerifying, AFileTurnedToBinaryBytesReloadsWithoutHarm) {
    std::string bytes;
    for (int i = 0; i < 20000; ++i)
        bytes += static_cast<char>((i * 7919 + 13) % 256);
    Dir.Write("PAGE.SCA", bytes);
    F.Prompts.Script = {Answer::Ok, Answer::Ok, Answer::Ok, Answer::Ok};
    EXPECT_NO_THROW(Press(KeyR));
    EXPECT_GT(S.Table.LineCount, 0);
    EXPECT_LE(S.Table.LineCount, 1000);
}

} // namespace tv::test
