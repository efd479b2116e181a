// The window's reading of the scan, as the volunteer meets it: the status line while the page is
// read and after, the Next Disagreement item of the Scan menu and its key, the mark on the field
// of the record in the box where the transcription says something else than the print, the
// scan's reading beside the box, and keys that move the box at once while the page is read.
#include "EventLoopTesting.h"

#include "session/Form1.h"
#include "view/RecordBoxWidget.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QTest>
#include <QToolButton>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace tv::test {
namespace {

// A transcription with one slip a volunteer makes: a letter of one record's forename changed.
struct Slip {
    int Line = 0;        // table line of the record
    std::string Typed;   // the forename as the slip has it
    std::string Printed; // as the page prints it
};

Slip MakeSlip(const std::string& transcription, int record) {
    std::ifstream in(transcription, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    in.close();
    Slip slip;
    int records = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string& line = lines[i];
        if (line.empty() || line[0] == '+' || line[0] == '#') continue;
        if (++records != record) continue;
        const std::size_t first = line.find(',');
        const std::size_t second = line.find(',', first + 1);
        slip.Line = static_cast<int>(i) + 1;
        slip.Printed = line.substr(first + 1, second - first - 1);
        slip.Typed = slip.Printed;
        slip.Typed[1] = slip.Typed[1] == 'o' ? 'a' : 'o';
        line.replace(first + 1, second - first - 1, slip.Typed);
    }
    std::ofstream out(transcription, std::ios::binary | std::ios::trunc);
    for (const std::string& line : lines)
        out << line << '\n';
    return slip;
}

class ScanReadingWindow : public ProgramTest {
  protected:
    QLabel* Status() const { return Find<QLabel>("ReadingStatus"); }
    QString StatusText() const { return Status() != nullptr ? Status()->text() : QString(); }
    // The reading is complete: the status line tells the records that disagree.
    bool ReadingDone(int ms = 120000) {
        return WaitFor([this] { return StatusText().startsWith("Read the scan: "); }, ms);
    }
    void PressOnWindow(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    // The record Next Disagreement goes to from the current line.
    static int NextAfter(const std::vector<int>& differing, int current) {
        const auto next = std::find_if(differing.begin(), differing.end(),
                                       [current](int line) { return line > current; });
        return next != differing.end() ? *next : differing.front();
    }
    // The table lines of the records that differ, in table order.
    std::vector<int> DifferingRecords() const {
        std::vector<int> lines;
        for (const Disagreement& d : S().Reading.Disagreements)
            if (lines.empty() || lines.back() != d.Line) lines.push_back(d.Line);
        return lines;
    }
};

TEST_F(ScanReadingWindow, TheStatusLineFollowsTheReadingAndNextDisagreementMarksTheSlip) {
    SamplePage page = Page("births1911");
    const Slip slip = MakeSlip(page.Transcription, 9);
    ASSERT_GT(slip.Line, 0);
    StartProgram();
    RunProgram([&] {
        Verifying(page);
        ASSERT_EQ(S().Calib.CalibrationStage, 0);
        // While the page is read, the status line tells how far the reading has got.
        const QRegularExpression progress(QStringLiteral("^Reading the scan: \\d{1,3} %$"));
        EXPECT_TRUE(WaitFor([&] { return progress.match(StatusText()).hasMatch(); }, 60000))
            << StatusText().toStdString();
        ASSERT_TRUE(ReadingDone()) << StatusText().toStdString();
        const std::vector<int> differing = DifferingRecords();
        ASSERT_FALSE(differing.empty());
        EXPECT_EQ(StatusText(),
                  differing.size() == 1
                      ? QString("Read the scan: 1 record differs (F3: Next Disagreement)")
                      : QString("Read the scan: %1 records differ (F3: Next "
                                "Disagreement)")
                            .arg(differing.size()));
        EXPECT_TRUE(Status()->isVisible());
        // The slip is found on its line and field, whatever else the reading doubts.
        bool found = false;
        for (const Disagreement& d : S().Reading.Disagreements)
            found = found || (d.Line == slip.Line && d.Field == 2 && d.Transcribed == slip.Typed &&
                              d.Read == slip.Printed);
        EXPECT_TRUE(found);

        // F3 goes from record to record that differs, the slip among them; the box's own texts
        // stay as the record makes them.
        PressOnWindow(Qt::Key_Home);
        for (std::size_t k = 0; k < differing.size() && S().Table.CurrentLine != slip.Line; ++k) {
            const int current = S().Table.CurrentLine;
            PressOnWindow(Qt::Key_F3);
            EXPECT_EQ(S().Table.CurrentLine, NextAfter(differing, current));
        }
        ASSERT_EQ(S().Table.CurrentLine, slip.Line);
        RecordBoxWidget& box = Window->RdFrame();
        EXPECT_EQ(box.NameBox->text().toStdString(), S().Content.NameLine);
        EXPECT_EQ(box.DistBox->text().toStdString(), S().Content.SecondLine);
        // The forename is marked where the box shows it: a patch over its letters.
        const QString typed = QString::fromStdString(slip.Typed);
        bool marked = false;
        for (QWidget* mark : box.ShownMarks()) {
            auto* label = qobject_cast<QLabel*>(mark->parentWidget());
            ASSERT_NE(label, nullptr);
            EXPECT_TRUE(mark->isVisible());
            const QString shown = label->text();
            const auto at = shown.indexOf(typed);
            const QFontMetrics metrics(label->font());
            marked = marked || (at >= 0 && mark->x() == metrics.horizontalAdvance(shown.left(at)) &&
                                mark->width() == metrics.horizontalAdvance(typed));
        }
        EXPECT_TRUE(marked);
        // The scan's reading beside the box.
        auto* reads = Find<QLabel>("ScanReads");
        ASSERT_NE(reads, nullptr);
        EXPECT_TRUE(reads->isVisible());
        EXPECT_TRUE(reads->text().split('\n').contains("Scan reads: " +
                                                       QString::fromStdString(slip.Printed)))
            << reads->text().toStdString();
        EXPECT_FALSE(reads->geometry().intersects(box.geometry()));
        EXPECT_TRUE(Window->centralWidget()->rect().contains(reads->geometry()))
            << reads->x() << " " << reads->width();

        // A record that does not differ has no mark and nothing beside the box.
        PressOnWindow(Qt::Key_Home);
        while (std::count(differing.begin(), differing.end(), S().Table.CurrentLine) != 0)
            PressOnWindow(Qt::Key_Return);
        EXPECT_TRUE(box.ShownMarks().empty());
        EXPECT_FALSE(reads->isVisible());
        // The next record that differs, from the Scan menu.
        const int current = S().Table.CurrentLine;
        auto* item = Find<QAction>("MenuNextDisagreement");
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->text(), "Next Disagreement\tF3");
        item->trigger();
        EXPECT_EQ(S().Table.CurrentLine, NextAfter(differing, current));
        EXPECT_TRUE(reads->isVisible());
        EXPECT_FALSE(Ended());
    });
}

TEST_F(ScanReadingWindow, TheNextDisagreementItemIsInTheScanMenu) {
    const SamplePage page = Page("births1911");
    StartProgram();
    RunProgram([&] {
        Verifying(page);
        QMenu* scan = nullptr;
        for (QAction* menu : Window->menuBar()->actions())
            if (menu->text() == "Scan") scan = menu->menu();
        ASSERT_NE(scan, nullptr);
        auto* item = Find<QAction>("MenuNextDisagreement");
        ASSERT_NE(item, nullptr);
        EXPECT_TRUE(scan->actions().contains(item));
        EXPECT_TRUE(item->isEnabled());
    });
}

TEST_F(ScanReadingWindow, KeysMoveTheBoxAtOnceWhileThePageIsRead) {
    const SamplePage page = Page("births1911");
    StartProgram();
    RunProgram([&] {
        Verifying(page);
        ASSERT_TRUE(WaitFor([this] { return Window->ReadingScan(); }, 60000));
        for (int press = 0; press < 5; ++press) {
            const int16_t line = S().Table.CurrentLine;
            const int32_t top = S().Box.BoxTop;
            PressOnWindow(Qt::Key_Return);
            EXPECT_EQ(S().Table.CurrentLine, line + 1);
            EXPECT_GT(S().Box.BoxTop, top);
        }
        // The reading was still going on after the keys.
        EXPECT_TRUE(Window->ReadingScan());
        ASSERT_TRUE(ReadingDone());
        EXPECT_FALSE(Ended());
    });
}

TEST_F(ScanReadingWindow, ANewScanStopsTheReadingOfTheScanBefore) {
    const SamplePage first = Page("births1911");
    const SamplePage second = Page("births1872");
    StartProgram();
    RunProgram([&] {
        Verifying(first);
        ASSERT_TRUE(WaitFor([this] { return Window->ReadingScan(); }, 60000));
        Find<QAction>("MenuNewScan")->trigger();
        ASSERT_TRUE(WaitFor([this] { return Start().isVisible(); }));
        // The new scan replaces the one read: its reading stops and nothing of it is left.
        StepsOneAndTwo(second);
        EXPECT_FALSE(Window->ReadingScan());
        EXPECT_EQ(StatusText(), "");
        EXPECT_FALSE(S().Reading.Done.has_value());
        EXPECT_TRUE(S().Reading.Disagreements.empty());
        // The new scan is read once its lines are found.
        Click(Start().Stage3);
        ASSERT_TRUE(WaitFor([this] { return Window->ReadingScan(); }, 60000));
        EXPECT_FALSE(Ended());
    });
}

TEST_F(ScanReadingWindow, ATurnOfTheScanReadsItAgain) {
    const SamplePage page = Page("births1911");
    StartProgram();
    RunProgram([&] {
        Verifying(page);
        ASSERT_TRUE(ReadingDone());
        const int run = S().Reading.Run;
        const std::size_t differing = S().Reading.Disagreements.size();
        Click(Find<QToolButton>("RotateLeft"));
        // The lines are found again on the turned scan, and read again.
        ASSERT_TRUE(WaitFor([this] { return Window->ReadingScan(); }, 60000));
        EXPECT_EQ(S().Reading.Run, run + 1);
        // Meanwhile the reading before still counts.
        EXPECT_EQ(S().Reading.Disagreements.size(), differing);
        ASSERT_TRUE(WaitFor([this] { return !Window->ReadingScan(); }, 120000));
        EXPECT_TRUE(S().Reading.Done.has_value());
        EXPECT_TRUE(StatusText().startsWith("Read the scan: ")) << StatusText().toStdString();
        EXPECT_FALSE(Ended());
    });
}

TEST_F(ScanReadingWindow, WithoutTheOcrDataTheWindowIsAsWithoutTheReading) {
    const SamplePage page = Page("births1911");
    // The reader finds no English data where it is told to look.
    const QByteArray before = qgetenv("TESSDATA_PREFIX");
    const bool had = qEnvironmentVariableIsSet("TESSDATA_PREFIX");
    qputenv("TESSDATA_PREFIX", QByteArray::fromStdString(Dir.Path().string() + "/"));
    StartProgram();
    RunProgram([&] {
        Verifying(page);
        ASSERT_TRUE(
            WaitFor([this] { return S().Reading.Run > 0 && !Window->ReadingScan(); }, 60000));
        EXPECT_EQ(StatusText(), "");
        EXPECT_FALSE(S().Reading.Done.has_value());
        const int16_t line = S().Table.CurrentLine;
        PressOnWindow(Qt::Key_F3);
        EXPECT_EQ(S().Table.CurrentLine, line);
        EXPECT_TRUE(Window->RdFrame().ShownMarks().empty());
        EXPECT_FALSE(Find<QLabel>("ScanReads")->isVisible());
        EXPECT_FALSE(Ended());
    });
    if (had)
        qputenv("TESSDATA_PREFIX", before);
    else
        qunsetenv("TESSDATA_PREFIX");
}

} // namespace
} // namespace tv::test
