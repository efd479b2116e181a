// The statistics screen driven as the main window drives it, and the printed report read back
// from the PDF it makes.
#include "stats/Form3.h"
#include "core/QtPlatform.h"
#include "core/Text.h"
#include "layout/ScanType.h"
#include "session/MemorySettingsStore.h"
#include "stats/Form3Print.h"
#include "stats/History.h"
#include "stats/StatsTable.h"
#include "support/FakePlatform.h"
#include "support/FakePrompts.h"
#include "support/TestFiles.h"
#include "transcription/ReadTranscription.h"

#include <QApplication>
#include <QFile>
#include <QInputDialog>
#include <QPageLayout>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

#include <filesystem>

namespace tv {
namespace {

const DateTime PrintedAt{2026, 11, 20, 14, 5, 9};
const std::string AllRecordsQuestion = "Do you want a print of all the QRL records ?";

// findings.QRL read as step 2 reads it, with a scan whose name gives the wrong quarter and one
// flagged record.
struct Findings {
    RecordTable Table;
    ScanType Scan;
    ColumnTopLines Tops;
    test::FakePrompts ReaderPrompts;
    std::string Graphics = "/home/ann/scans/1872D2042.jpg";
    CheckIterator It;

    Findings() {
        std::string name = test::DataFile("check/findings.QRL");
        ReaderContext context{Table, Scan, Tops, Graphics, ReaderPrompts};
        ReadTranscription(name, context);
        Table.LineFlagged[5] = true;
    }
    CheckInputs Inputs() const { return {Table, Scan.ScanTypeCode, Graphics, "findings.QRL"}; }
    std::vector<ReportLine> Report(bool allRecords) {
        return ReportLines(allRecords, ScanDescription(Table), It, Inputs(), PrintedAt);
    }
};

// The screen wired to the model as the main window wires it: an option click selects the option
// and rebuilds the list (RefreshTabs).
struct StatsScreen {
    Findings F;
    test::MemorySettingsStore Store;
    ScanHistory History;
    test::FixedClock Clock;
    test::FakePrompts Prompts;
    Form3 Form{Prompts};

    StatsScreen() {
        QObject::connect(&Form, &Form3::optionSelected,
                         [this](int option) { Form.Refresh(Summary(), ListFor(option)); });
        Form.SetReportSource([this](bool allRecords) { return F.Report(allRecords); });
    }
    std::string Summary() const { return StatsSummary(ScanDescription(F.Table), F.Inputs()); }
    std::string ListFor(int option) {
        switch (option) {
        case 0:
            return FileHeaderList(F.Table);
        case 1:
            return QueriesList(F.It, F.Inputs());
        case 2:
            return WarningsList(F.It, F.Inputs());
        case 3:
            return FlaggedList(F.It, F.Inputs());
        default:
            break;
        }
        SaveSnapshot snapshot;
        snapshot.VersionLabel = "Version 1.0.0 / 21-Jun-2022";
        snapshot.GraphicsFile = F.Graphics;
        return RefreshHistory(Store, snapshot, History, Clock);
    }
};

QString Shown(const std::string& modelText) {
    return ToQString(UnixLineEnds(modelText));
}

std::vector<bool> Underlined(const Form3& form) {
    std::vector<bool> underlined;
    for (int i = 0; i < StatsOptionCount; ++i)
        underlined.push_back(form.Options(i)->font().underline());
    return underlined;
}

TEST(Form3, EachOptionShowsItsListAndUnderlinesOnlyItsCaption) {
    StatsScreen screen;
    for (int option : {1, 2, 3, 4, 0}) {
        screen.Form.Options(option)->click();
        EXPECT_EQ(screen.Form.SelectedOption(), option);
        EXPECT_TRUE(screen.Form.Options(option)->isChecked());
        std::vector<bool> expected(StatsOptionCount, false);
        expected[static_cast<std::size_t>(option)] = true;
        EXPECT_EQ(Underlined(screen.Form), expected) << option;
        EXPECT_EQ(screen.Form.SummaryBox()->toPlainText(), Shown(screen.Summary()));
    }
    screen.Form.Options(0)->click();
    EXPECT_EQ(screen.Form.ListBox()->toPlainText(), Shown(FileHeaderList(screen.F.Table)));
    screen.Form.Options(1)->click();
    EXPECT_EQ(screen.Form.ListBox()->toPlainText(), "  7 ACKROYD,Jo?n,2,Halifax,9a,300");
    screen.Form.Options(3)->click();
    EXPECT_EQ(screen.Form.ListBox()->toPlainText(), "  5 ABBOTT,Sarah,107,Leeds,9b,99");
    screen.Form.Options(2)->click();
    EXPECT_EQ(screen.Form.ListBox()->toPlainText(),
              Shown(WarningsList(screen.F.It, screen.F.Inputs())));
    EXPECT_TRUE(screen.Form.ListBox()->toPlainText().startsWith("Quarter in graphics file name"));
    screen.Form.Options(4)->click();
    EXPECT_EQ(screen.Form.ListBox()->toPlainText(),
              "20 Nov 2026 14:05 - Deaths 1872 Qtr 2 Page 42 - 0 lines\n"
              " -- only the last 10 pages checked are shown --");
}

TEST(Form3, ListBoxIsReadOnlyFixedPitchAndUnwrapped) {
    StatsScreen screen;
    EXPECT_TRUE(screen.Form.ListBox()->isReadOnly());
    EXPECT_TRUE(screen.Form.SummaryBox()->isReadOnly());
    EXPECT_TRUE(QFontInfo(screen.Form.ListBox()->font()).fixedPitch());
    EXPECT_EQ(screen.Form.ListBox()->lineWrapMode(), QPlainTextEdit::NoWrap);
    EXPECT_EQ(screen.Form.PrintB()->text(), "Print");
}

TEST(Form3, SelectedOptionSurvivesHiding) {
    StatsScreen screen;
    screen.Form.show();
    screen.Form.Options(2)->click();
    screen.Form.Command1()->click();
    EXPECT_FALSE(screen.Form.isVisible());
    screen.Form.show();
    EXPECT_EQ(screen.Form.SelectedOption(), 2);
    EXPECT_TRUE(screen.Form.Options(2)->isChecked());
    EXPECT_EQ(Underlined(screen.Form), (std::vector<bool>{false, false, true, false, false}));
}

TEST(Form3, StatisticsOnlySessionShowsTheFileHeaderWithFlaggedRecordsDisabled) {
    StatsScreen screen;
    screen.Form.Options(3)->click();
    screen.Form.ShowOption(0);
    screen.Form.SetOptionEnabled(3, false);
    screen.Form.SetCommandCaption("Exit");
    EXPECT_EQ(screen.Form.SelectedOption(), 0);
    EXPECT_FALSE(screen.Form.Options(3)->isEnabled());
    EXPECT_EQ(Underlined(screen.Form), (std::vector<bool>{true, false, false, false, false}));
    EXPECT_EQ(screen.Form.CommandCaption(), "Exit");
}

TEST(Form3, Command1HidesTheScreenAndReturnsTheFocusUnlessItReadsExit) {
    StatsScreen screen;
    QSignalSpy hidden(&screen.Form, &Form3::hidden);
    QSignalSpy exitProgram(&screen.Form, &Form3::exitProgram);
    screen.Form.show();
    screen.Form.Command1()->click();
    EXPECT_FALSE(screen.Form.isVisible());
    EXPECT_EQ(hidden.count(), 1);
    EXPECT_EQ(exitProgram.count(), 0);
}

TEST(Form3, ExitEndsTheProgramOnceEvenWhenTheScreenIsThenClosed) {
    StatsScreen screen;
    QSignalSpy hidden(&screen.Form, &Form3::hidden);
    QSignalSpy exitProgram(&screen.Form, &Form3::exitProgram);
    screen.Form.SetCommandCaption("Exit");
    screen.Form.show();
    screen.Form.Command1()->click();
    EXPECT_TRUE(screen.Form.close());
    EXPECT_EQ(exitProgram.count(), 1);
    EXPECT_EQ(hidden.count(), 0);
}

TEST(Form3, ClosingTheWindowActsAsCommand1UnlessItReadsDie) {
    StatsScreen screen;
    QSignalSpy hidden(&screen.Form, &Form3::hidden);
    QSignalSpy exitProgram(&screen.Form, &Form3::exitProgram);
    screen.Form.show();
    EXPECT_FALSE(screen.Form.close()); // hidden, not closed
    EXPECT_FALSE(screen.Form.isVisible());
    EXPECT_EQ(hidden.count(), 1);

    screen.Form.SetCommandCaption("Die");
    screen.Form.show();
    EXPECT_TRUE(screen.Form.close());
    EXPECT_EQ(hidden.count(), 1);
    EXPECT_EQ(exitProgram.count(), 0);

    Form3 last(screen.Prompts);
    QSignalSpy lastExit(&last, &Form3::exitProgram);
    last.SetCommandCaption("Exit");
    last.show();
    EXPECT_TRUE(last.close());
    EXPECT_EQ(lastExit.count(), 1);
}

TEST(Form3, IsCentredOverTheMainWindowOnTheFirstLoadOnly) {
    StatsScreen screen;
    screen.Form.resize(400, 300);
    const QRect mainWindow(100, 50, 1000, 700);
    EXPECT_TRUE(screen.Form.CentreOnFirstLoad(mainWindow));
    const QRect frame = screen.Form.frameGeometry();
    EXPECT_EQ(frame.left(), 100 + (1000 - frame.width()) / 2);
    EXPECT_EQ(frame.top(), 50 + (700 - frame.height()) / 2);
    screen.Form.move(10, 10);
    EXPECT_FALSE(screen.Form.CentreOnFirstLoad(mainWindow));
    EXPECT_EQ(screen.Form.pos(), QPoint(10, 10));
}

// ---- The printed report

// The report as pdftotext reads it back: pages of lines without the page margin and without the
// blank lines around each page's text.
using Pages = std::vector<std::vector<std::string>>;

std::vector<std::string> SplitOn(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end = text.find(separator); end != std::string::npos;
         start = end + 1, end = text.find(separator, start))
        parts.push_back(text.substr(start, end - start));
    parts.push_back(text.substr(start));
    return parts;
}

std::vector<std::string> WithoutBlankEnds(std::vector<std::string> lines) {
    for (std::string& line : lines)
        line = TrimRight(line);
    while (!lines.empty() && lines.back().empty())
        lines.pop_back();
    while (!lines.empty() && lines.front().empty())
        lines.erase(lines.begin());
    return lines;
}

Pages PdfPages(const QString& path) {
    QProcess process;
    // Courier New 10 is six points wide: the columns come back exactly, spaces included.
    process.start("pdftotext", {"-layout", "-fixed", "6", path, "-"});
    EXPECT_TRUE(process.waitForFinished(30000));
    std::vector<std::string> chunks = SplitOn(process.readAllStandardOutput().toStdString(), '\f');
    if (!chunks.empty() && chunks.back().empty()) chunks.pop_back();
    Pages pages;
    std::size_t margin = std::string::npos;
    for (const std::string& chunk : chunks) {
        pages.push_back(WithoutBlankEnds(SplitOn(chunk, '\n')));
        for (const std::string& line : pages.back())
            if (!line.empty()) margin = std::min(margin, line.find_first_not_of(' '));
    }
    for (auto& page : pages)
        for (std::string& line : page)
            if (!line.empty()) line = line.substr(margin);
    return pages;
}

// The lines the report should show on each page of the PDF printer, in UTF-8.
Pages ExpectedPages(const std::vector<ReportLine>& lines) {
    const std::vector<std::size_t> starts = PageStarts(lines, LinesPerPage(*PdfPrinter("x.pdf")));
    Pages pages;
    for (std::size_t p = 0; p < starts.size(); ++p) {
        const std::size_t end = p + 1 < starts.size() ? starts[p + 1] : lines.size();
        std::vector<std::string> page;
        for (std::size_t i = starts[p]; i < end; ++i)
            page.push_back(Cp1252ToUtf8(lines[i].Text));
        pages.push_back(WithoutBlankEnds(page));
    }
    return pages;
}

QString PdfPath(const test::TempDir& dir, const std::string& name) {
    return QString::fromStdString((dir.Path() / name).string());
}

TEST(PrintReportToPdf, ReadsBackAsTheReportLinesForBothAnswers) {
    for (bool allRecords : {false, true}) {
        Findings f;
        const std::vector<ReportLine> lines = f.Report(allRecords);
        test::TempDir dir;
        const QString path = PdfPath(dir, "report.pdf");
        ASSERT_EQ(PrintReportToPdf(lines, path), "");
        const Pages pages = PdfPages(path);
        ASSERT_EQ(pages.size(), 1U);
        EXPECT_EQ(pages, ExpectedPages(lines)) << allRecords;
        EXPECT_EQ(pages[0].front(), "Tallyview Report for Deaths 1872 Qtr 1 Page 42");
        EXPECT_EQ(pages[0].back(), "Printed 20/11/2026 14:05:09");
    }
}

TEST(PrintReportToPdf, LongReportBreaksPagesWithoutLeavingAHeadingAtTheFoot) {
    test::StatsTable t;
    t.Header("+INFO,someone@example.org,password,SEQUENCED,BIRTHS");
    for (int i = 0; i < 300; ++i)
        t.Record("NAME" + std::to_string(1000 + i), "Forename*", "MOTHER");
    CheckIterator it;
    const std::vector<ReportLine> lines = ReportLines(true, "", it, t.Inputs(), PrintedAt);
    test::TempDir dir;
    const QString path = PdfPath(dir, "long.pdf");
    ASSERT_EQ(PrintReportToPdf(lines, path), "");
    const Pages pages = PdfPages(path);
    EXPECT_GT(pages.size(), 3U);
    EXPECT_EQ(pages, ExpectedPages(lines));
    const std::vector<std::size_t> starts =
        PageStarts(lines, LinesPerPage(*PdfPrinter(path + ".x")));
    for (std::size_t p = 1; p < starts.size(); ++p)
        EXPECT_FALSE(lines[starts[p] - 1].Bold) << "page " << p << " ends in a heading";
}

TEST(PrintReportToPdf, AFolderThatCannotBeWrittenGivesTheReason) {
    test::TempDir dir;
    const std::string file = dir.Write("plain", "x");
    EXPECT_NE(PrintReportToPdf({{"line", false}}, QString::fromStdString(file + "/r.pdf")), "");
}

// Where the words of a PDF stand, in points, and the size of its pages.
struct PdfWords {
    double PageWidth = 0;
    double PageHeight = 0;
    double Left = 1e9, Top = 1e9, Right = 0, Bottom = 0; // of all the words on all the pages
    int Count = 0;
};

double Attribute(const std::string& line, const std::string& name) {
    const std::size_t at = line.find(name + "=\"");
    return at == std::string::npos ? -1 : std::stod(line.substr(at + name.size() + 2));
}

PdfWords WordBoxes(const QString& path) {
    QProcess process;
    process.start("pdftotext", {"-bbox", path, "-"});
    EXPECT_TRUE(process.waitForFinished(30000));
    PdfWords words;
    for (const std::string& line : SplitOn(process.readAllStandardOutput().toStdString(), '\n')) {
        if (line.find("<page ") != std::string::npos) {
            words.PageWidth = Attribute(line, "width");
            words.PageHeight = Attribute(line, "height");
        } else if (line.find("<word ") != std::string::npos) {
            words.Left = std::min(words.Left, Attribute(line, "xMin"));
            words.Top = std::min(words.Top, Attribute(line, "yMin"));
            words.Right = std::max(words.Right, Attribute(line, "xMax"));
            words.Bottom = std::max(words.Bottom, Attribute(line, "yMax"));
            ++words.Count;
        }
    }
    return words;
}

TEST(PrintReportToPdf, KeepsAtLeastFifteenMillimetresFromEveryEdgeOfThePaper) {
    const QMarginsF margins = PdfPrinter("x.pdf")->pageLayout().margins(QPageLayout::Millimeter);
    for (qreal margin : {margins.left(), margins.top(), margins.right(), margins.bottom()})
        EXPECT_GE(margin, ReportMarginMillimetres);
    // A long report with a line wider than the page: every word of every page stands inside the
    // margins, and the pages still break as PageStarts says.
    test::StatsTable t;
    t.Header("+INFO,someone@example.org,password,SEQUENCED,BIRTHS");
    t.Record("A" + std::string(300, 'W'), "Forename", "MOTHER");
    for (int i = 0; i < 200; ++i)
        t.Record("NAME" + std::to_string(1000 + i), "Forename*", "MOTHER");
    CheckIterator it;
    const std::vector<ReportLine> lines = ReportLines(true, "", it, t.Inputs(), PrintedAt);
    test::TempDir dir;
    const QString path = PdfPath(dir, "margins.pdf");
    ASSERT_EQ(PrintReportToPdf(lines, path), "");
    const PdfWords words = WordBoxes(path);
    ASSERT_GT(words.Count, 400);
    const double margin = ReportMarginMillimetres * 72.0 / 25.4;
    EXPECT_GE(words.Left, margin - 0.5);
    EXPECT_GE(words.Top, margin - 0.5);
    EXPECT_LE(words.Right, words.PageWidth - margin + 0.5);
    EXPECT_LE(words.Bottom, words.PageHeight - margin + 0.5);
    const Pages pages = PdfPages(path);
    EXPECT_GT(pages.size(), 2U);
    EXPECT_EQ(pages, ExpectedPages(WrapReportLines(lines, CharactersPerLine(*PdfPrinter("x")))));
}

// The printers of a test: names, and the default among them.
struct ListedPrinters : PrinterDirectory {
    QStringList List;
    QString Default;
    QStringList Names() const override { return List; }
    QString DefaultName() const override { return Default; }
};

TEST(ChoosePrinter, TakesTheDefaultThenTheOnlyPrinterThenAsksWhichOne) {
    std::vector<QStringList> asked;
    QString answer = "Hall";
    const PrinterPicker pick = [&](const QStringList& names) {
        asked.push_back(names);
        return answer;
    };
    ListedPrinters printers;
    printers.List = {"Office", "Hall"};
    printers.Default = "Office";
    PrinterChoice choice = ChoosePrinter(printers, pick);
    EXPECT_EQ(choice.Kind, PrinterChoiceKind::Chosen);
    EXPECT_EQ(choice.Name, "Office");
    printers.Default = "";
    printers.List = {"Hall"};
    choice = ChoosePrinter(printers, pick);
    EXPECT_EQ(choice.Kind, PrinterChoiceKind::Chosen);
    EXPECT_EQ(choice.Name, "Hall");
    EXPECT_TRUE(asked.empty());
    printers.List = {"Office", "Hall"};
    choice = ChoosePrinter(printers, pick);
    EXPECT_EQ(choice.Kind, PrinterChoiceKind::Chosen);
    EXPECT_EQ(choice.Name, "Hall");
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0], printers.List);
    answer = "";
    EXPECT_EQ(ChoosePrinter(printers, pick).Kind, PrinterChoiceKind::Cancelled);
    printers.List = {};
    EXPECT_EQ(ChoosePrinter(printers, pick).Kind, PrinterChoiceKind::NoneInstalled);
    EXPECT_EQ(asked.size(), 2U);
}

// The list the user picks a printer from, answered through the real dialog.
TEST(AskWhichPrinter, ListsThePrintersAndGivesThePickedOneOrNothing) {
    for (bool accept : {true, false}) {
        QStringList offered;
        QTimer::singleShot(50, [&offered, accept] {
            auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            offered = dialog->comboBoxItems();
            dialog->setTextValue("Hall");
            if (accept)
                dialog->accept();
            else
                dialog->reject();
        });
        const QString picked = AskWhichPrinter(nullptr, {"Office", "Hall"});
        EXPECT_EQ(offered, (QStringList{"Office", "Hall"}));
        EXPECT_EQ(picked, accept ? "Hall" : "");
    }
}

TEST(PrintStats, WithPrintersButNoneTheDefaultAPickCancelledPrintsNothingAndSaysNothing) {
    StatsScreen screen;
    auto printers = std::make_shared<ListedPrinters>();
    printers->List = {"Office", "Hall"};
    screen.Form.SetPrinterDirectory(printers);
    int picks = 0;
    screen.Form.SetPrinterPicker([&picks](const QStringList&) {
        ++picks;
        return QString();
    });
    screen.Prompts.Script = {Answer::Yes};
    screen.Form.PrintStats();
    EXPECT_EQ(picks, 1);
    // Only the question about all the records: no "No printer is installed".
    ASSERT_EQ(screen.Prompts.Shown.size(), 1U);
    EXPECT_EQ(screen.Prompts.Shown[0].Text, AllRecordsQuestion);
}

TEST(PrintStats, WithNoPrinterAtAllTheScreenSaysSoAndOffersAPdfFile) {
    StatsScreen screen;
    screen.Form.SetPrinterDirectory(std::make_shared<ListedPrinters>());
    screen.Form.SetPrinterPicker([](const QStringList&) -> QString {
        ADD_FAILURE() << "asked which printer with none installed";
        return {};
    });
    screen.Prompts.Script = {Answer::Yes, Answer::No};
    screen.Form.PrintStats();
    ASSERT_EQ(screen.Prompts.Shown.size(), 2U);
    EXPECT_EQ(screen.Prompts.Shown[1].Text,
              "No printer is installed, so the report cannot be printed.\r"
              "Do you want to save it as a PDF file instead?");
}

TEST(PageStarts, HeadingAtTheFootGoesOverWithTheLineAfterIt) {
    const std::vector<ReportLine> lines = {{"a", false}, {"b", false}, {"Heading", true},
                                           {"c", false}, {"d", false}, {"e", false}};
    EXPECT_EQ(PageStarts(lines, 3), (std::vector<std::size_t>{0, 2, 5}));
    EXPECT_EQ(PageStarts(lines, 4), (std::vector<std::size_t>{0, 4}));
    EXPECT_EQ(PageStarts(lines, 6), (std::vector<std::size_t>{0}));
    EXPECT_EQ(PageStarts({{"last", true}}, 1), (std::vector<std::size_t>{0}));
}

// PrintStats with the printer and the PDF file chooser in the test's hands.
struct Printing : StatsScreen {
    test::TempDir Dir;
    int PrinterAsked = 0;
    int ChooserAsked = 0;
    QString PrinterFile = PdfPath(Dir, "printer.pdf");
    QString ChosenFile = PdfPath(Dir, "chosen.pdf");
    bool HasPrinter = true;

    Printing() {
        Form.SetPrinterSource([this]() -> std::unique_ptr<QPrinter> {
            ++PrinterAsked;
            return HasPrinter ? PdfPrinter(PrinterFile) : nullptr;
        });
        Form.SetPdfFileChooser([this] {
            ++ChooserAsked;
            return ChosenFile;
        });
    }
};

TEST(PrintStats, CancelPrintsNothing) {
    Printing p;
    p.Prompts.Script = {Answer::Cancel};
    p.Form.PrintStats();
    ASSERT_EQ(p.Prompts.Shown.size(), 1U);
    EXPECT_EQ(p.Prompts.Shown[0].Text, AllRecordsQuestion);
    EXPECT_EQ(p.Prompts.Shown[0].Title, "Tallyview");
    EXPECT_EQ(p.Prompts.Shown[0].Choice, Buttons::YesNoCancel);
    EXPECT_EQ(p.PrinterAsked, 0);
    EXPECT_FALSE(QFile::exists(p.PrinterFile));
}

TEST(PrintStats, YesAndNoPrintTheirReportOnTheDefaultPrinter) {
    for (Answer answer : {Answer::Yes, Answer::No}) {
        Printing p;
        p.Prompts.Script = {answer};
        p.Form.PrintStats();
        EXPECT_EQ(p.Prompts.Shown.size(), 1U);
        EXPECT_EQ(p.PrinterAsked, 1);
        EXPECT_EQ(PdfPages(p.PrinterFile), ExpectedPages(p.F.Report(answer == Answer::Yes)));
    }
}

TEST(PrintStats, WithoutAPrinterOffersToSaveTheReportAsAPdfFile) {
    Printing p;
    p.HasPrinter = false;
    p.Prompts.Script = {Answer::No, Answer::Yes};
    p.Form.PrintStats();
    ASSERT_EQ(p.Prompts.Shown.size(), 2U);
    EXPECT_EQ(p.Prompts.Shown[1].Text, "No printer is installed, so the report cannot be printed.\r"
                                       "Do you want to save it as a PDF file instead?");
    EXPECT_EQ(p.Prompts.Shown[1].Choice, Buttons::YesNo);
    EXPECT_EQ(p.Prompts.Shown[1].Title, "Tallyview");
    EXPECT_EQ(p.ChooserAsked, 1);
    EXPECT_EQ(PdfPages(p.ChosenFile), ExpectedPages(p.F.Report(false)));
}

TEST(PrintStats, DecliningThePdfOfferOrItsFileNameWritesNothing) {
    Printing p;
    p.HasPrinter = false;
    p.Prompts.Script = {Answer::Yes, Answer::No};
    p.Form.PrintStats();
    EXPECT_EQ(p.ChooserAsked, 0);
    p.Prompts.Script = {Answer::Yes, Answer::Yes};
    p.ChosenFile = "";
    p.Form.PrintStats();
    EXPECT_EQ(p.ChooserAsked, 1);
    EXPECT_EQ(p.Prompts.Shown.size(), 4U);
}

TEST(PrintStats, APdfFileThatCannotBeWrittenIsReported) {
    Printing p;
    p.HasPrinter = false;
    const std::string plain = p.Dir.Write("plain", "x");
    p.ChosenFile = QString::fromStdString(plain + "/report.pdf");
    p.Prompts.Script = {Answer::Yes, Answer::Yes};
    p.Form.PrintStats();
    ASSERT_EQ(p.Prompts.Shown.size(), 3U);
    const std::string told = "Tallyview could not write the report to " + plain + "/report.pdf\r";
    EXPECT_TRUE(p.Prompts.Shown[2].Text.starts_with(told)) << p.Prompts.Shown[2].Text;
    EXPECT_GT(p.Prompts.Shown[2].Text.size(), told.size()); // with the system's reason
}

TEST(PrintStats, ThePdfIsNeverWrittenOverTheTranscriptionWhateverItsPath) {
    Printing p;
    p.HasPrinter = false;
    const std::string transcription = p.Dir.Write("1872D10042.QRL", "+S,1872,Mar\r\n");
    std::filesystem::create_symlink(transcription, p.Dir.Path() / "link.pdf");
    p.Form.SetReadFiles([&] { return std::vector<std::string>{transcription, ""}; });
    p.ChosenFile = QString::fromStdString((p.Dir.Path() / "link.pdf").string());
    p.Prompts.Script = {Answer::Yes, Answer::Yes};
    p.Form.PrintStats();
    ASSERT_EQ(p.Prompts.Shown.size(), 3U);
    EXPECT_EQ(p.Prompts.Shown[2].Text,
              "Tallyview could not write the report to " + (p.Dir.Path() / "link.pdf").string() +
                  "\rIt is the file " + transcription + ", which Tallyview only reads");
    EXPECT_EQ(test::ReadBytes(transcription), "+S,1872,Mar\r\n");
}

TEST(PrintB, ReturnsTheFocusAfterPrintingUnlessCommand1ReadsExit) {
    Printing p;
    QSignalSpy printed(&p.Form, &Form3::printed);
    p.Prompts.Script = {Answer::Cancel, Answer::Cancel};
    p.Form.PrintB()->click();
    EXPECT_EQ(printed.count(), 1);
    p.Form.SetCommandCaption("Exit");
    p.Form.PrintB()->click();
    EXPECT_EQ(printed.count(), 1);
    EXPECT_EQ(p.Prompts.Shown.size(), 2U);
}

} // namespace
} // namespace tv
