// The session's reading of the scan as the window uses it: Next Disagreement, the marks of the
// record in the box, the status line and the readings that are no longer wanted.
#include "PageSessionTesting.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace tv::test {

namespace {

class NextDisagreementTest : public PageSessionTest {
  protected:
    void SetUp() override { LoadCalibrated1878(); }

    // The records the comparison found disagreeing, as the session keeps them.
    void Disagree(const std::vector<Disagreement>& found) { S.Reading.Disagreements = found; }

    // Where the box stands when the record on line is reached as a column top's record is: by
    // the calibration (CalcFramePosn) and brought into view.
    std::pair<int32_t, int32_t> PlaceOf(int line) {
        PageSession other;
        other.LoadCalibrated1878();
        other.S.Table.CurrentLine = static_cast<int16_t>(line);
        other.S.ShowRecord(0);
        other.S.CalcFramePosn();
        other.S.EnsureFrameVisible();
        return {other.S.Box.BoxTop, other.S.Box.BoxLeft};
    }

    // A page with every record printed as transcribed, but for one forename, read with
    // confidence; the lines of one column it was read on.
    static PrintedLines OneColumn(int count) {
        PrintedLines lines;
        lines.ImageWidth = 2400;
        lines.ImageHeight = 3400;
        lines.Pitch = 30.0;
        FoundColumn column{100.0, 2300.0, 0.0, {}};
        for (int i = 0; i < count; ++i)
            column.Lines.push_back({100.0, 200.0 + 30.0 * i});
        lines.Columns.push_back(column);
        return lines;
    }
    ScanReading PrintedAs(int slipLine, const std::string& printedForename) const {
        const RecordTable& t = S.Table;
        ScanReading reading{2400, 3400, false, {}};
        for (int line = 1; line <= t.LineCount; ++line) {
            if (!t.IsRecord(line)) continue;
            ReadLine read{0, static_cast<int>(reading.Lines.size()), {}};
            const std::string forename = line == slipLine ? printedForename : t.Forenames[line];
            double left = 100.0;
            for (const std::string& word :
                 {t.Surname[line], forename, t.District[line], t.Volume[line], t.Page[line]}) {
                read.Words.push_back({word, left, 0.0, left + 20.0 * word.size(), 25.0, 96.0F});
                left += 20.0 * word.size() + 30.0;
            }
            reading.Lines.push_back(read);
        }
        return reading;
    }
    void CompleteReading(const ScanReading& reading) {
        const int run = S.ReadingStarted(OneColumn(static_cast<int>(reading.Lines.size())));
        S.ReadingCompleted(run, reading);
        RunComparison();
    }
    // The comparison the session asks for, run as the desktop runs it (on another thread there).
    void RunComparison() {
        const std::optional<ReadingComparison> wanted = S.ComparisonWanted();
        ASSERT_TRUE(wanted.has_value());
        S.DisagreementsFound(wanted->Id, Compare(*wanted));
        EXPECT_FALSE(S.Reading.Comparing);
    }

    std::string FileText() const {
        std::ifstream in(Path, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }
};

const int Record7 = LineOf1878Record(7);
const int Record20 = LineOf1878Record(20);
const int Record50 = LineOf1878Record(50);

TEST_F(NextDisagreementTest, GoesToTheNextRecordThatDisagreesAndPlacesTheBoxThere) {
    Disagree({{static_cast<int16_t>(Record7), 3, "Keighley", "Keigh1ey"},
              {static_cast<int16_t>(Record20), 1, "BARKER", "BARKFR"},
              {static_cast<int16_t>(Record50), 2, "Sarah", "Sarab"}});
    Press(KeyF3);
    EXPECT_EQ(S.Table.CurrentLine, Record7);
    EXPECT_EQ(std::make_pair(S.Box.BoxTop, S.Box.BoxLeft), PlaceOf(Record7));
    Press(KeyF3);
    EXPECT_EQ(S.Table.CurrentLine, Record20);
    Press(KeyF3);
    EXPECT_EQ(S.Table.CurrentLine, Record50);
    // In the third column, the box is where the calibration puts that record.
    EXPECT_EQ(std::make_pair(S.Box.BoxTop, S.Box.BoxLeft), PlaceOf(Record50));
}

TEST_F(NextDisagreementTest, AfterTheLastOneGoesRoundToTheFirst) {
    Disagree({{static_cast<int16_t>(Record7), 3, "Keighley", "Keigh1ey"},
              {static_cast<int16_t>(Record20), 1, "BARKER", "BARKFR"}});
    S.Table.CurrentLine = static_cast<int16_t>(Record20);
    S.ShowRecord(0);
    Press(KeyF3);
    EXPECT_EQ(S.Table.CurrentLine, Record7);
    // Past the last record, too.
    S.Table.CurrentLine = static_cast<int16_t>(S.Table.LineCount + 1);
    Press(KeyF3);
    EXPECT_EQ(S.Table.CurrentLine, Record7);
}

TEST_F(NextDisagreementTest, StepsOverARecordWithTwoFieldsOnce) {
    Disagree({{static_cast<int16_t>(Record7), 1, "AINSWORTH", "AINSW0RTH"},
              {static_cast<int16_t>(Record7), 3, "Keighley", "Keigh1ey"},
              {static_cast<int16_t>(Record20), 1, "BARKER", "BARKFR"}});
    Press(KeyF3);
    EXPECT_EQ(S.Table.CurrentLine, Record7);
    Press(KeyF3);
    EXPECT_EQ(S.Table.CurrentLine, Record20);
}

TEST_F(NextDisagreementTest, DoesNothingWithoutDisagreementsOrWhileCalibrating) {
    const int16_t line = S.Table.CurrentLine;
    const int32_t top = S.Box.BoxTop;
    Press(KeyF3);
    EXPECT_EQ(S.Table.CurrentLine, line);
    EXPECT_EQ(S.Box.BoxTop, top);

    Disagree({{static_cast<int16_t>(Record20), 1, "BARKER", "BARKFR"}});
    S.Calib.CalibrationStage = 2;
    Press(KeyF3);
    EXPECT_EQ(S.Table.CurrentLine, line);
}

TEST_F(NextDisagreementTest, ShowsTheRecordAsAnyStepDoesAndFlagsAndWritesNothing) {
    const std::string before = FileText();
    const std::string notesBefore = S.Content.NotesText;
    Disagree({{static_cast<int16_t>(Record20), 1, "BARKER", "BARKFR"}});
    Press(KeyF3);
    PageSession stepped;
    stepped.LoadCalibrated1878();
    while (stepped.S.Table.CurrentLine < Record20)
        stepped.Press(KeyEnter);
    EXPECT_EQ(S.Content.NameLine, stepped.S.Content.NameLine);
    EXPECT_EQ(S.Content.SecondLine, stepped.S.Content.SecondLine);
    EXPECT_EQ(S.Content.FootLabel, stepped.S.Content.FootLabel);
    // No note of its own: the notes are those the record had before.
    EXPECT_EQ(S.Content.NotesText, notesBefore);
    for (int line = 1; line <= S.Table.LineCount; ++line)
        EXPECT_FALSE(S.Table.LineFlagged[line]) << line;
    EXPECT_EQ(FileText(), before);
}

TEST_F(NextDisagreementTest, MarksTheFieldWhereTheBoxShowsIt) {
    Disagree({{static_cast<int16_t>(Record20), 3, "Dewsbury", "Dewsbnry"}});
    Press(KeyF3);
    const std::vector<FieldMark> marks = S.BoxMarks();
    ASSERT_EQ(marks.size(), 1U);
    EXPECT_EQ(marks[0].Field, 3);
    EXPECT_EQ(marks[0].Read, "Dewsbnry");
    ASSERT_TRUE(marks[0].Line.has_value());
    const std::string& shown =
        *marks[0].Line == BoxLine::Name ? S.Content.NameLine : S.Content.SecondLine;
    EXPECT_EQ(shown.substr(marks[0].Start, marks[0].Length), "Dewsbury");
}

TEST_F(NextDisagreementTest, MarksAVolumeTheBoxShowsWithASpaceInside) {
    // The layouts of the fixed-pitch index font with volume style 2 (1911, say) show volume
    // 9b as "9 b".
    S.Scan.IndexFont = 'C';
    S.Scan.VolPageStyle = 2;
    S.Scan.DistrictPad = 40; // the district on the name line: the second line is the volume's
    const int line = Record20;
    Disagree({{static_cast<int16_t>(line), 4, S.Table.Volume[line], "9d"}});
    S.Table.CurrentLine = static_cast<int16_t>(line);
    S.ShowRecord(0);
    const std::vector<FieldMark> marks = S.BoxMarks();
    ASSERT_EQ(marks.size(), 1U);
    ASSERT_TRUE(marks[0].Line.has_value()) << S.Content.SecondLine;
    const std::string& shown =
        *marks[0].Line == BoxLine::Name ? S.Content.NameLine : S.Content.SecondLine;
    std::string marked = shown.substr(marks[0].Start, marks[0].Length);
    EXPECT_NE(marked, S.Table.Volume[line]) << "the layout shows the volume as it is";
    std::erase(marked, ' ');
    EXPECT_EQ(marked, S.Table.Volume[line]);
}

TEST_F(NextDisagreementTest, MarksARepeatedSurnameOnItsDashes) {
    // Records 2 and 3 share their surname: the box shows record 3's as dashes.
    const int line = LineOf1878Record(3);
    Disagree({{static_cast<int16_t>(line), 1, "ACKROYD", "ACKROYDE"}});
    Press(KeyF3);
    ASSERT_EQ(S.Content.NameLine.find("ACKROYD"), std::string::npos) << S.Content.NameLine;
    const std::vector<FieldMark> marks = S.BoxMarks();
    ASSERT_EQ(marks.size(), 1U);
    ASSERT_TRUE(marks[0].Line.has_value());
    EXPECT_EQ(*marks[0].Line, BoxLine::Name);
    const std::string dashes = S.Content.NameLine.substr(marks[0].Start, marks[0].Length);
    EXPECT_FALSE(dashes.empty());
    EXPECT_EQ(dashes.find_first_not_of('-'), std::string::npos) << dashes;
}

TEST_F(NextDisagreementTest, MarksOnlyTheRecordInTheBox) {
    Disagree({{static_cast<int16_t>(Record20), 1, "BARKER", "BARKFR"}});
    EXPECT_TRUE(S.BoxMarks().empty());
    Press(KeyF3);
    EXPECT_EQ(S.BoxMarks().size(), 1U);
    Press(KeyEnter);
    EXPECT_TRUE(S.BoxMarks().empty());
}

TEST_F(NextDisagreementTest, TheStatusLineTellsTheShareReadOnlyOnceTheReaderReportsIt) {
    const int run = S.ReadingStarted(PrintedLines{});
    EXPECT_EQ(S.ReadingStatus(), "");
    S.ReadingProgress(run, 40);
    EXPECT_EQ(S.ReadingStatus(), "Reading the scan: 40 %");
    S.ReadingProgress(run, 41);
    EXPECT_EQ(S.ReadingStatus(), "Reading the scan: 41 %");
}

TEST_F(NextDisagreementTest, AnEmptyReadingLeavesNothingToTell) {
    // The reader had no OCR data, or could read nothing: the window stays as it was.
    const int run = S.ReadingStarted(PrintedLines{});
    S.ReadingProgress(run, 100);
    S.ReadingCompleted(run, ScanReading{});
    EXPECT_FALSE(S.Reading.Running);
    EXPECT_FALSE(S.Reading.Done.has_value());
    EXPECT_TRUE(S.Reading.Disagreements.empty());
    EXPECT_EQ(S.ReadingStatus(), "");
}

TEST_F(NextDisagreementTest, ANewScanDropsTheReadingAndWhatItsReaderStillSends) {
    const int run = S.ReadingStarted(PrintedLines{});
    S.ReadingProgress(run, 30);
    Disagree({{static_cast<int16_t>(Record20), 1, "BARKER", "BARKFR"}});
    S.Form_Load2();
    EXPECT_FALSE(S.Reading.Running);
    EXPECT_TRUE(S.Reading.Disagreements.empty());
    EXPECT_EQ(S.ReadingStatus(), "");
    S.ReadingProgress(run, 60);
    EXPECT_EQ(S.ReadingStatus(), "");
    ScanReading late;
    late.Lines.push_back(ReadLine{0, 0, {ReadWord{"ABBOTT", 0, 0, 10, 10, 95.0F}}});
    S.ReadingCompleted(run, late);
    EXPECT_FALSE(S.Reading.Done.has_value());
}

TEST_F(NextDisagreementTest, AReadingStartedAgainTakesOverFromTheOneBefore) {
    const int first = S.ReadingStarted(PrintedLines{});
    const int second = S.ReadingStarted(PrintedLines{});
    EXPECT_NE(first, second);
    S.ReadingProgress(first, 90);
    EXPECT_EQ(S.ReadingStatus(), "");
    S.ReadingCompleted(first, ScanReading{});
    EXPECT_TRUE(S.Reading.Running);
    S.ReadingProgress(second, 10);
    EXPECT_EQ(S.ReadingStatus(), "Reading the scan: 10 %");
}

TEST_F(NextDisagreementTest, TheCompleteReadingIsComparedWithTheRecords) {
    // Record 20's forename is John; the page prints Joan.
    CompleteReading(PrintedAs(Record20, "Joan"));
    ASSERT_EQ(S.Reading.Disagreements.size(), 1U);
    EXPECT_EQ(S.Reading.Disagreements[0].Line, Record20);
    EXPECT_EQ(S.Reading.Disagreements[0].Field, 2);
    EXPECT_EQ(S.Reading.Disagreements[0].Transcribed, "John");
    EXPECT_EQ(S.Reading.Disagreements[0].Read, "Joan");
    EXPECT_EQ(S.ReadingStatus(), "Read the scan: 1 record differs (F3: Next Disagreement)");
    Press(KeyF3);
    EXPECT_EQ(S.Table.CurrentLine, Record20);
}

TEST_F(NextDisagreementTest, AReloadIsComparedWithTheReadingOfThePageWithoutReadingItAgain) {
    CompleteReading(PrintedAs(Record20, "Joan"));
    ASSERT_EQ(S.Reading.Disagreements.size(), 1U);
    const int run = S.Reading.Run;
    // The volunteer corrects record 20 and makes a slip in record 7 (Elizabeth).
    std::vector<std::string> lines = BirthsPage1878();
    auto replace = [&lines](int tableLine, const std::string& from, const std::string& to) {
        std::string& text = lines[static_cast<std::size_t>(tableLine - 1)];
        text.replace(text.find(from), from.size(), to);
    };
    replace(Record20, "John", "Joan");
    replace(Record7, "Elizabeth", "Elisabeth");
    Save(lines);
    Press(KeyR);
    EXPECT_EQ(S.Reading.Run, run);
    EXPECT_FALSE(S.Reading.Running);
    // The disagreements of the table before name its lines: they go until the comparison is done.
    EXPECT_TRUE(S.Reading.Disagreements.empty());
    EXPECT_EQ(S.ReadingStatus(), "Reading the scan: 100 %");
    RunComparison();
    ASSERT_EQ(S.Reading.Disagreements.size(), 1U);
    EXPECT_EQ(S.Reading.Disagreements[0].Line, Record7);
    EXPECT_EQ(S.Reading.Disagreements[0].Transcribed, "Elisabeth");
    EXPECT_EQ(S.Reading.Disagreements[0].Read, "Elizabeth");
}

TEST_F(NextDisagreementTest, AReadingAgainAfterATurnKeepsTheDisagreementsUntilItCompletes) {
    CompleteReading(PrintedAs(Record20, "Joan"));
    ASSERT_EQ(S.Reading.Disagreements.size(), 1U);
    const ScanReading again = PrintedAs(0, "");
    const int run = S.ReadingStarted(OneColumn(static_cast<int>(again.Lines.size())));
    S.ReadingProgress(run, 50);
    EXPECT_EQ(S.ReadingStatus(), "Reading the scan: 50 %");
    EXPECT_EQ(S.Reading.Disagreements.size(), 1U);
    Press(KeyF3);
    EXPECT_EQ(S.Table.CurrentLine, Record20);
    S.ReadingCompleted(run, again);
    RunComparison();
    EXPECT_TRUE(S.Reading.Disagreements.empty());
    EXPECT_EQ(S.ReadingStatus(), "Read the scan: no record differs");
}

TEST_F(NextDisagreementTest, AComparisonOvertakenByAReloadIsDropped) {
    const ScanReading reading = PrintedAs(Record20, "Joan");
    const int run = S.ReadingStarted(OneColumn(static_cast<int>(reading.Lines.size())));
    S.ReadingCompleted(run, reading);
    const std::optional<ReadingComparison> before = S.ComparisonWanted();
    ASSERT_TRUE(before.has_value());
    // The volunteer corrects record 20 and reloads while the first comparison still runs.
    std::vector<std::string> lines = BirthsPage1878();
    std::string& text = lines[static_cast<std::size_t>(Record20 - 1)];
    text.replace(text.find("John"), 4, "Joan");
    Save(lines);
    Press(KeyR);
    S.DisagreementsFound(before->Id, Compare(*before));
    EXPECT_TRUE(S.Reading.Comparing);
    EXPECT_TRUE(S.Reading.Disagreements.empty());
    RunComparison();
    EXPECT_TRUE(S.Reading.Disagreements.empty());
    EXPECT_EQ(S.ReadingStatus(), "Read the scan: no record differs");
}

} // namespace

} // namespace tv::test
