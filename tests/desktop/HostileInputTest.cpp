// Hostile input through the windowed program, with its real message boxes answered as the user
// answers them: a scan path that is a named pipe, a transcription of one record or none, one
// emptied while it is verified, a page number no 16-bit number holds. The program never hangs;
// a calibration with one record or none divides by zero, the run-time error that ends the
// program as every one does; a page number read at start is passed over with the rest of the
// start's loading errors, and refused on reload naming its line.
#include "HostileWindowTesting.h"

#include "app/QtApplication.h"
#include "core/RunTimeError.h"
#include "view/KeyCodes.h"

#include <QAction>
#include <QLabel>
#include <QTest>

#include <atomic>
#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace tv::test {
namespace {

namespace fs = std::filesystem;

// A writer that lets go a reader waiting on the pipe, should the program open it and wait:
// the test then fails instead of hanging.
class PipeRescue {
  public:
    explicit PipeRescue(std::string pipe) : pipe_(std::move(pipe)), thread_([this] { Watch(); }) {}
    ~PipeRescue() {
        stop_ = true;
        thread_.join();
    }
    PipeRescue(const PipeRescue&) = delete;
    PipeRescue& operator=(const PipeRescue&) = delete;

    // A reader was found waiting on the pipe.
    bool Rescued() const { return rescued_; }

  private:
    // After a while, each reader found waiting is let go (the reader may open the pipe again).
    void Watch() {
        using namespace std::chrono;
        const auto deadline = steady_clock::now() + seconds(3);
        while (!stop_) {
            std::this_thread::sleep_for(milliseconds(20));
            if (steady_clock::now() < deadline) continue;
            // Opening for writing without waiting succeeds only when a reader has it open.
            const int descriptor = ::open(pipe_.c_str(), O_WRONLY | O_NONBLOCK);
            if (descriptor >= 0) {
                rescued_ = true;
                ::close(descriptor);
            }
        }
    }

    std::string pipe_;
    std::atomic<bool> stop_{false};
    std::atomic<bool> rescued_{false};
    std::thread thread_;
};

class HostileInput : public HostileWindowTest {
  protected:
    SamplePage Page = GeneratePage("births1872", Dir.Path());

    // The page's transcription cut down: its header lines and its first `records` records.
    std::string HeaderAndRecords(int records) const {
        std::istringstream in(ReadBytes(Page.Transcription));
        std::string line;
        std::string kept;
        int taken = 0;
        while (std::getline(in, line)) {
            const bool header = !line.empty() && line[0] == '+';
            if (!header && (line.empty() || line[0] == '#' || ++taken > records)) continue;
            kept += line + "\n";
        }
        return kept;
    }

    void Rewrite(const std::string& bytes) const {
        std::ofstream(Page.Transcription, std::ios::binary | std::ios::trunc) << bytes;
    }

    // The main window waits at the first calibration stage.
    void OpenTheWindow() {
        RunWithRealBoxes(Page.Scan, Page.Transcription);
        WaitForTheMainWindow();
        ASSERT_EQ(S().Calib.CalibrationStage, 1);
    }

    bool NotesHold(const std::string& text) const {
        return S().Content.NotesText.find(text) != std::string::npos;
    }

    // The session is alive and calibrated, its window shown and answering keys.
    void ExpectAliveAndCalibrated() {
        EXPECT_EQ(S().Calib.CalibrationStage, 0);
        EXPECT_TRUE(Window->isVisible());
        EXPECT_FALSE(Window->Ended());
        Press(Qt::Key_Down);
        EXPECT_TRUE(Window->isVisible());
    }

    // ENTER at the tenth entry of the first column: the box is still on the first record's line,
    // the spacing divides by zero, and the run-time error leaves the key press for the event
    // loop's handler, which reports it ("Run-time error '11':" ...) and ends the program.
    void ExpectTheTenthEntryToDivideByZero() {
        ASSERT_EQ(S().Calib.CalibrationStage, 2);
        EXPECT_EQ(S().Box.LinesFromTop, 0);
        try {
            // Handed to the key-down handler as the key catcher hands it: an exception must not
            // cross Qt's own event delivery, which cannot unwind (the sanitizer sees its guards
            // left behind), and in the program it never does, the event loop's handler takes it.
            Window->Form_KeyDown(KeyEnter, false, false);
            ADD_FAILURE() << "no run-time error";
        } catch (const RunTimeError& e) {
            EXPECT_EQ(RunTimeErrorText(e).toStdString(),
                      "Run-time error '11':\n\nDivision by zero");
        }
    }
};

TEST_F(HostileInput, ScanThatIsANamedPipeIsRefusedAtOnceAndNeverWaitedFor) {
    const std::string pipe = MakeBadImage("fifo.jpg");
    struct stat info {};
    ASSERT_EQ(::stat(pipe.c_str(), &info), 0);
    ASSERT_TRUE(S_ISFIFO(info.st_mode));
    const PipeRescue rescue(pipe);
    RunWithRealBoxes(pipe, Page.Transcription);
    ASSERT_TRUE(Boxes.WaitForAnswered(1));
    EXPECT_FALSE(rescue.Rescued()) << "the program opened the pipe and waited on it";
    EXPECT_EQ(Boxes.Answered[0].Text, pipe + " is not a valid picture file");
    EXPECT_EQ(Boxes.Answered[0].Title, "Tallyview");
    // The scan's message ends the program, as for any scan that cannot be shown.
    EXPECT_TRUE(QTest::qWaitFor([this] { return Forms->MainForm()->Ended(); }, 5000));
    EXPECT_FALSE(Forms->StartWindow()->isVisible());
}

TEST_F(HostileInput, OneRecordDividesByZeroAtTheTenthEntry) {
    Rewrite(HeaderAndRecords(1));
    OpenTheWindow();
    Press(Qt::Key_Return);
    ExpectTheTenthEntryToDivideByZero();
    EXPECT_TRUE(Boxes.Answered.empty()) << Boxes.Texts();
}

TEST_F(HostileInput, FileWithoutRecordsTheUserCarriesOnWithShowsNothingAndDividesByZero) {
    Rewrite(HeaderAndRecords(0));
    Boxes.Clicks(QMessageBox::Ok); // carry on with the suspect file
    OpenTheWindow();
    ASSERT_EQ(Boxes.Answered.size(), 1U) << Boxes.Texts();
    EXPECT_NE(Boxes.Answered[0].Text.find("Could not find any transcribed"), std::string::npos);
    EXPECT_EQ(NameBoxText(), "");
    Press(Qt::Key_Return);
    EXPECT_EQ(NameBoxText(), "");
    ExpectTheTenthEntryToDivideByZero();
}

TEST_F(HostileInput, ReloadOfAnEmptiedFileShowsNoRecordOfTheOldTable) {
    OpenTheWindow();
    Calibrate(Page);
    ASSERT_FALSE(NameBoxText().empty());
    Rewrite("");
    Boxes.Clicks(QMessageBox::Ok);
    Boxes.Clicks(QMessageBox::Ok); // carry on with the suspect file
    Press(Qt::Key_R);
    ASSERT_EQ(Boxes.Answered.size(), 3U) << Boxes.Texts();
    EXPECT_NE(Boxes.Answered[0].Text.find("Could not find any transcribed"), std::string::npos);
    EXPECT_NE(Boxes.Answered[1].Text.find("Could not find any +INFO"), std::string::npos);
    EXPECT_EQ(Boxes.Answered[2].Text, "The transcription file has changed - need to recalibrate");
    ASSERT_EQ(S().Table.LineCount, 0);
    ASSERT_EQ(S().Calib.CalibrationStage, 1);
    // The box shows nothing of the table read before.
    EXPECT_EQ(NameBoxText(), "");
    EXPECT_EQ(S().Content.NameLine, "");
    EXPECT_LE(S().Table.CurrentLine, S().Table.LineCount + 1);
    // Calibration starts before the first line, never on one of the table read before; with no
    // record its tenth entry is the first, as for any file without records.
    Press(Qt::Key_Return);
    EXPECT_EQ(S().Table.CurrentLine, 0);
    EXPECT_EQ(NameBoxText(), "");
    ExpectTheTenthEntryToDivideByZero();
}

// The page's transcription with a "+PAGE" line of -99999 after its headers; its line number.
int WithImpossiblePage(const std::string& path) {
    std::istringstream in(ReadBytes(path));
    std::string line;
    std::string bytes;
    int number = 0;
    int pageLine = 0;
    while (std::getline(in, line)) {
        if (pageLine == 0 && !line.empty() && line[0] != '+') {
            bytes += "+PAGE,-99999\r\n";
            pageLine = ++number;
        }
        bytes += line + "\n";
        ++number;
    }
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
    return pageLine;
}

// At start the overflow is passed over as every run-time error of the loading is: no message,
// the file is taken with what was read before the error, and the session goes on.
TEST_F(HostileInput, ImpossiblePageAtStartIsPassedOverAndTheSessionGoesOn) {
    const int line = WithImpossiblePage(Page.Transcription);
    ASSERT_GT(line, 0);
    OpenTheWindow();
    EXPECT_TRUE(Boxes.Answered.empty()) << Boxes.Texts();
    EXPECT_EQ(S().TranscriptionFile, Page.Transcription);
    EXPECT_EQ(S().Caption, "Tallyview");
    EXPECT_GT(S().Table.LineCount, line);
    EXPECT_EQ(S().Table.LineText[line], "+PAGE,-99999");
    EXPECT_FALSE(NameBoxText().empty());
    for (int press = 0; press < 10 && S().Calib.CalibrationStage != 0; ++press)
        Press(Qt::Key_Return);
    ExpectAliveAndCalibrated();
    EXPECT_TRUE(Boxes.Answered.empty()) << Boxes.Texts();
}

TEST_F(HostileInput, ImpossiblePageIsRefusedOnReloadNamingItsLine) {
    OpenTheWindow();
    Calibrate(Page);
    const int line = WithImpossiblePage(Page.Transcription);
    Press(Qt::Key_R);
    ASSERT_EQ(Boxes.Answered.size(), 1U) << Boxes.Texts();
    EXPECT_EQ(Boxes.Answered[0].Text,
              "Cannot reload " + Page.Transcription + "\nRun-time error 6: Overflow in line " +
                  std::to_string(line) + "\nThe records shown are those read before.");
    ExpectAliveAndCalibrated();
}

} // namespace
} // namespace tv::test
