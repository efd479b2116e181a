// Every question of the running program answered each way through the real message box: the
// reader's questions, a scan that cannot be shown, the reload's flag warning, the C key's offer
// to recalibrate, and the print questions with the report saved as a PDF file.
#include "EventLoopTesting.h"

#include "stats/Form3.h"

#include <QProcess>
#include <QPushButton>
#include <QTest>

#include <filesystem>
#include <sstream>

namespace tv::test {
namespace {

const std::string ExtraFieldQuestion = "Is this a Death index or ...";
const std::string FlagWarning = "All the flagged records will lose their flag";
const std::string PrintQuestion = "Do you want a print of all the QRL records ?";
const std::string PdfOffer = "Do you want to save it as a PDF file instead?";

// A births index of 1880, which has no third field, whose records carry one: the reader asks.
std::string ThirdFieldQuestionFile(const TempDir& dir) {
    return dir.Write("1880B10123.QRL",
                     "+INFO,someone@example.org,password,SEQUENCED,BIRTHS,cp1252\r\n"
                     "+S,1880,Mar,BX1880C1,12/03/2024\r\n"
                     "+PAGE,0123\r\n"
                     "ADAMS,John,SMITH,Bolton,8c,123\r\n"
                     "BAKER,Mary,JONES,Bury,8c,45\r\n");
}

// Whether a line of the text is this heading.
bool HasLine(const std::string& text, const std::string& heading) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        while (!line.empty() && (line.back() == ' ' || line.back() == '\r'))
            line.pop_back();
        if (line == heading) return true;
    }
    return false;
}

// The text of a PDF file, through poppler's pdftotext.
std::string PdfText(const std::string& path) {
    QProcess process;
    process.start("pdftotext", {"-layout", PathToQString(path), "-"});
    if (!process.waitForFinished(30000)) return "";
    return process.readAllStandardOutput().toStdString();
}

class ProgramQuestions : public ProgramTest {
  protected:
    // The statistics-only screen of clean.QRL, with no printer on the machine: the report is
    // offered as a PDF file.
    Form3& StatisticsScreen() {
        ChooseTranscriptionOnly(DataFile("check/clean.QRL"));
        Click(Start().Stage1);
        EXPECT_TRUE(UserDone());
        EXPECT_TRUE(WaitFor([this] { return Forms->Statistics().isVisible(); }));
        Form3& stats = Forms->Statistics();
        stats.SetPrinterSource([] { return std::unique_ptr<QPrinter>(); });
        return stats;
    }

    // Prints with this answer to the question; the report goes to report.pdf.
    std::string Print(QMessageBox::StandardButton answer) {
        Form3& stats = StatisticsScreen();
        User.Clicks(answer, PrintQuestion);
        const std::string pdf = (Dir.Path() / "report.pdf").string();
        if (answer != QMessageBox::Cancel) {
            User.Clicks(QMessageBox::Yes, PdfOffer);
            User.Chooses(pdf);
        }
        Click(stats.PrintB());
        EXPECT_TRUE(UserDone());
        EXPECT_FALSE(Ended());
        EXPECT_TRUE(stats.isVisible());
        return std::filesystem::exists(pdf) ? PdfText(pdf) : "";
    }

    void VerifyingWithAFlag(const SamplePage& page) {
        Verifying(page);
        Press(Qt::Key_Return);
        Press(Qt::Key_M);
        ASSERT_TRUE(S().Table.LineFlagged[S().Table.CurrentLine]);
    }
};

TEST_F(ProgramQuestions, PrintAnsweredYesListsEveryRecordAndNotTheFileHeader) {
    StartProgram();
    RunProgram([&] {
        const std::string report = Print(QMessageBox::Yes);
        EXPECT_TRUE(HasLine(report, "QRL Records")) << report;
        EXPECT_FALSE(HasLine(report, "File Header")) << report;
    });
}

TEST_F(ProgramQuestions, PrintAnsweredNoPrintsTheFileHeaderSection) {
    StartProgram();
    RunProgram([&] {
        const std::string report = Print(QMessageBox::No);
        EXPECT_TRUE(HasLine(report, "File Header")) << report;
        EXPECT_NE(report.find("Tallyview Report"), std::string::npos) << report;
        EXPECT_FALSE(HasLine(report, "QRL Records")) << report;
    });
}

TEST_F(ProgramQuestions, PrintAnsweredCancelPrintsNothing) {
    StartProgram();
    RunProgram([&] {
        EXPECT_EQ(Print(QMessageBox::Cancel), "");
        EXPECT_EQ(User.Answered.size(), 1U);
    });
}

TEST_F(ProgramQuestions, NoToThePdfOfferSavesNothing) {
    StartProgram();
    RunProgram([&] {
        Form3& stats = StatisticsScreen();
        User.Clicks(QMessageBox::Yes, PrintQuestion);
        User.Clicks(QMessageBox::No, PdfOffer);
        Click(stats.PrintB());
        EXPECT_TRUE(UserDone());
        EXPECT_FALSE(std::filesystem::exists(Dir.Path() / "report.pdf"));
        EXPECT_FALSE(Ended());
    });
}

TEST_F(ProgramQuestions, ThirdFieldQuestionAnsweredYesReadsTheThirdField) {
    const std::string file = ThirdFieldQuestionFile(Dir);
    StartProgram();
    RunProgram([&] {
        ChooseTranscriptionOnly(file);
        User.Clicks(QMessageBox::Yes, ExtraFieldQuestion);
        Click(Start().Stage1);
        ASSERT_TRUE(UserDone());
        ASSERT_TRUE(WaitFor([this] { return Forms->Statistics().isVisible(); }));
        EXPECT_TRUE(Forms->MainForm()->Model().Table.HasExtraField);
        EXPECT_EQ(Forms->MainForm()->Model().Table.District[4], "Bolton");
    });
}

TEST_F(ProgramQuestions, ThirdFieldQuestionAnsweredNoReadsFiveFields) {
    const std::string file = ThirdFieldQuestionFile(Dir);
    StartProgram();
    RunProgram([&] {
        ChooseTranscriptionOnly(file);
        User.Clicks(QMessageBox::No, ExtraFieldQuestion);
        Click(Start().Stage1);
        ASSERT_TRUE(UserDone());
        ASSERT_TRUE(WaitFor([this] { return Forms->Statistics().isVisible(); }));
        EXPECT_FALSE(Forms->MainForm()->Model().Table.HasExtraField);
        EXPECT_EQ(Forms->MainForm()->Model().Table.District[4], "SMITH");
    });
}

TEST_F(ProgramQuestions, SuspectFileAnsweredOkCarriesOn) {
    StartProgram();
    RunProgram([&] {
        ChooseTranscriptionOnly(DataFile("check/noheaders.QRL"));
        User.Clicks(QMessageBox::Ok, "Suspect file ");
        Click(Start().Stage1);
        ASSERT_TRUE(UserDone());
        EXPECT_TRUE(WaitFor([this] { return Forms->Statistics().isVisible(); }));
        EXPECT_FALSE(Ended());
    });
}

TEST_F(ProgramQuestions, SuspectFileAnsweredCancelQuits) {
    StartProgram();
    RunProgram([&] {
        ChooseTranscriptionOnly(DataFile("check/noheaders.QRL"));
        User.Clicks(QMessageBox::Cancel, "Suspect file ");
        Click(Start().Stage1);
        ASSERT_TRUE(UserDone());
        ExpectEndedWithNoWindowLeft();
    });
}

TEST_F(ProgramQuestions, AScanThatIsNoPictureIsReportedAndEndsTheProgram) {
    const std::string scan = Dir.Write("1911B30456.jpg", "not a picture at all");
    StartProgram();
    RunProgram([&] {
        User.Chooses(scan);
        User.Clicks(QMessageBox::Ok, " is not a valid picture file");
        Click(Start().Stage1);
        ASSERT_TRUE(UserDone());
        ExpectEndedWithNoWindowLeft();
    });
}

TEST_F(ProgramQuestions, ReloadWithAFlagAnsweredOkReloadsAndClearsTheFlag) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        VerifyingWithAFlag(page);
        const int16_t line = S().Table.CurrentLine;
        User.Clicks(QMessageBox::Ok, FlagWarning);
        Press(Qt::Key_R);
        ASSERT_TRUE(UserDone());
        EXPECT_FALSE(S().Table.LineFlagged[line]);
        EXPECT_NE(S().Content.NotesText.find("Transcription file reloaded"), std::string::npos);
        EXPECT_TRUE(FocusComesTo("DummyBox"));
    });
}

TEST_F(ProgramQuestions, ReloadWithAFlagAnsweredCancelKeepsEverything) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        VerifyingWithAFlag(page);
        const int16_t line = S().Table.CurrentLine;
        User.Clicks(QMessageBox::Cancel, FlagWarning);
        Press(Qt::Key_R);
        ASSERT_TRUE(UserDone());
        EXPECT_TRUE(S().Table.LineFlagged[line]);
        EXPECT_EQ(S().Content.NotesText.find("Transcription file reloaded"), std::string::npos);
    });
}

TEST_F(ProgramQuestions, ReloadWhileCalibratingIsRefused) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        StepsOneAndTwo(page);
        Click(Start().Stage3);
        TakeMainWindow();
        User.Clicks(QMessageBox::Ok, "Cannot reload while you are calibrating");
        Press(Qt::Key_R);
        ASSERT_TRUE(UserDone());
        EXPECT_EQ(S().Calib.CalibrationStage, 1);
    });
}

TEST_F(ProgramQuestions, RecalibrateOfferAnsweredNoKeepsTheCalibration) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        Verifying(page);
        User.Clicks(QMessageBox::No, "Do you want to recalibrate now ?");
        Press(Qt::Key_C);
        ASSERT_TRUE(UserDone());
        EXPECT_EQ(S().Calib.CalibrationStage, 0);
    });
}

TEST_F(ProgramQuestions, RecalibrateOfferAnsweredYesShowsTheLayoutFormAndStartsAgain) {
    const SamplePage page = Page();
    StartProgram();
    RunProgram([&] {
        Verifying(page);
        User.Clicks(QMessageBox::Yes, "Do you want to recalibrate now ?");
        User.Handles([](QDialog& form) {
            QTest::mouseClick(static_cast<ScanTypesForm&>(form).CloseButton, Qt::LeftButton);
        });
        Press(Qt::Key_C);
        ASSERT_TRUE(UserDone());
        EXPECT_EQ(S().Calib.CalibrationStage, 1);
        EXPECT_TRUE(WaitFor([this] { return ActiveWindow() == Window; }))
            << (ActiveWindow() != nullptr ? ActiveWindow()->objectName().toStdString() : "none");
    });
}

} // namespace
} // namespace tv::test
