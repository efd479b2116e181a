// Whole verification sessions driven by keys alone: the transcription is read, the box lined up
// with the scan's entries in every calibration stage, and every record stepped through with
// ENTER and back with BACKSPACE. The scans' line geometry is known, so every key is checked
// against where the box must stand, what it must show and whether the view had to scroll.
#include "PageSessionTesting.h"

#include <sstream>

namespace tv::test {

namespace {

// Where the entries of a scan lie: every column starts at the same height.
struct PagePlan {
    std::vector<int16_t> TopLines;
    int32_t Top;
    std::vector<int32_t> Lefts;
    int32_t Pitch; // twips from one printed line to the next
    int32_t Drift; // twips across from one printed line to the next
};

struct Place {
    int32_t Top;
    int32_t Left;
};

class ScriptedSession : public PageSessionTest {
  protected:
    int Keys = 0;
    int Scrolls = 0;
    int EnterScrolls = 0; // ENTER presses of the forward pass that scrolled the view

    // One key, checked: the view scrolls only when the box would leave the part of the view in
    // which it is kept, and the box is in view afterwards.
    CommandOutcome Key(int code, bool shift = false, bool alt = false) {
        const ViewMetrics before = F.View.Metrics();
        const int calls = F.View.ScrollCalls;
        CommandOutcome outcome = Press(code, shift, alt);
        ++Keys;
        const bool scrolled = F.View.ScrollCalls != calls;
        if (scrolled) {
            ++Scrolls;
            EXPECT_TRUE(S.Box.ViewScrolled);
            EXPECT_TRUE(WouldLeaveView(before)) << Where(code);
        }
        ExpectBoxInView(code);
        return outcome;
    }

    std::string Where(int code) const {
        std::ostringstream text;
        text << "key " << code << " at line " << S.Table.CurrentLine << ", box " << S.Box.BoxLeft
             << "," << S.Box.BoxTop;
        return text.str();
    }

    // The box within 900 twips of the view's top, or past any other edge of the visible part.
    bool WouldLeaveView(const ViewMetrics& view) const {
        const double x = view.ScrollX * view.TwipsPerPixelX;
        const double y = view.ScrollY * view.TwipsPerPixelY;
        const BoxPlacement& b = S.Box;
        const bool across =
            b.BoxLeft < x || b.BoxLeft + b.BoxWidth > x + (view.Control.Width - 300);
        const bool down =
            b.BoxTop < y + 900 || b.BoxTop + b.BoxHeight > y + (view.Control.Height - 300);
        return across || down;
    }

    void ExpectBoxInView(int code) const {
        const ViewMetrics view = F.View.Metrics();
        const double x = view.ScrollX * view.TwipsPerPixelX;
        const double y = view.ScrollY * view.TwipsPerPixelY;
        const BoxPlacement& b = S.Box;
        EXPECT_GE(b.BoxTop, y) << Where(code);
        EXPECT_LE(b.BoxTop + b.BoxHeight, y + view.Control.Height - 300) << Where(code);
        EXPECT_GE(b.BoxLeft, x) << Where(code);
        EXPECT_LE(b.BoxLeft + b.BoxWidth, x + view.Control.Width - 300) << Where(code);
    }

    // Where the box belongs for the current line: its column's top plus the printed lines
    // from that top times the measured spacing.
    Place RecordPlace() const {
        const int line = S.Table.CurrentLine;
        int c = S.Scan.NumColumns;
        while (c > 1 && S.Calib.ColumnTopLine[c] > line)
            --c;
        int lines = 0;
        for (int i = S.Calib.ColumnTopLine[c] + 1; i <= line; ++i)
            lines += S.Table.LineJump[i];
        return {S.Calib.ColumnTopY[c] + CLng(lines * static_cast<double>(S.Calib.LineIncrTop)),
                S.Calib.ColumnTopX[c] + CLng(lines * static_cast<double>(S.Calib.LineIncrLeft))};
    }

    void ExpectOnRecordLine() const {
        const Place place = RecordPlace();
        EXPECT_NEAR(S.Box.BoxTop, place.Top, 1) << "line " << S.Table.CurrentLine;
        EXPECT_NEAR(S.Box.BoxLeft, place.Left, 1) << "line " << S.Table.CurrentLine;
    }

    // The box shows exactly what ShowRecord gives for the current line.
    void ExpectBoxShowsCurrentLine() const {
        Session shown = S;
        shown.ShowRecord(0);
        EXPECT_EQ(S.Content.NameLine, shown.Content.NameLine) << "line " << S.Table.CurrentLine;
        EXPECT_EQ(S.Content.SecondLine, shown.Content.SecondLine) << "line " << S.Table.CurrentLine;
        EXPECT_EQ(S.Content.FootLabel, shown.Content.FootLabel) << "line " << S.Table.CurrentLine;
    }

    bool HasNote(const std::string& note) const {
        return S.Content.NotesText.find(note) != std::string::npos;
    }

    // Moves the box with arrow keys to a position along one axis, big steps first. A target
    // off the step grid is reached from the image's edge, where the clamp puts the box at a
    // known place (70 twips from the top, 65 from the left).
    void Align(int32_t target, bool vertical) {
        auto position = [&] { return vertical ? S.Box.BoxTop : S.Box.BoxLeft; };
        const int forward = vertical ? KeyDown : KeyRight;
        const int back = vertical ? KeyUp : KeyLeft;
        const int32_t edge = vertical ? 70 : 65;
        const int16_t small = S.MovementStep(false);
        const int16_t big = S.MovementStep(true);
        if ((target - position()) % small != 0)
            for (int i = 0; i < 1000 && position() > edge; ++i)
                Key(back, true);
        for (int i = 0; i < 1000 && position() + big <= target; ++i)
            Key(forward, true);
        for (int i = 0; i < 1000 && position() - big >= target; ++i)
            Key(back, true);
        for (int i = 0; i < 1000 && position() + small <= target; ++i)
            Key(forward);
        for (int i = 0; i < 1000 && position() - small >= target; ++i)
            Key(back);
        ASSERT_EQ(position(), target) << (vertical ? "top" : "left");
    }

    void MoveBoxTo(const Place& place) {
        Align(place.Top, true);
        Align(place.Left, false);
    }

    // + and - choose the entry that stands first in a column.
    void SelectEntry(int line) {
        for (int i = 0; i < 100 && S.Table.CurrentLine < line; ++i)
            Key(KeyPlus);
        for (int i = 0; i < 100 && S.Table.CurrentLine > line; ++i)
            Key(KeyMinus);
        ASSERT_EQ(S.Table.CurrentLine, line);
    }

    // The calibration dialogue: the first and tenth entries of column 1, then the first entry
    // of each further column, each confirmed with ENTER.
    void Calibrate(const PagePlan& plan) {
        S.CalibrateTextbox();
        ASSERT_EQ(S.Calib.CalibrationStage, 1);
        ASSERT_EQ(S.Table.CurrentLine, plan.TopLines[0]);
        ExpectBoxShowsCurrentLine();
        MoveBoxTo({plan.Top, plan.Lefts[0]});
        Key(KeyEnter);
        ASSERT_EQ(S.Calib.CalibrationStage, 2);
        ExpectBoxShowsCurrentLine();
        const int16_t lines = S.Box.LinesFromTop;
        ASSERT_GE(lines, 9);
        MoveBoxTo({plan.Top + lines * plan.Pitch, plan.Lefts[0] + lines * plan.Drift});
        Key(KeyEnter);
        EXPECT_FLOAT_EQ(S.Calib.LineIncrTop, static_cast<float>(plan.Pitch));
        EXPECT_FLOAT_EQ(S.Calib.LineIncrLeft, static_cast<float>(plan.Drift));
        for (std::size_t c = 1; c < plan.TopLines.size(); ++c) {
            ASSERT_EQ(S.Calib.CalibrationStage, static_cast<int>(c) + 2);
            SelectEntry(plan.TopLines[c]);
            ExpectBoxShowsCurrentLine();
            MoveBoxTo({plan.Top, plan.Lefts[c]});
            Key(KeyEnter);
        }
        ASSERT_EQ(S.Calib.CalibrationStage, 0);
        EXPECT_TRUE(S.Calib.BoxLinedUp);
        for (std::size_t c = 0; c < plan.TopLines.size(); ++c) {
            const int column = static_cast<int>(c) + 1;
            EXPECT_EQ(S.Calib.ColumnTopLine[column], plan.TopLines[c]);
            EXPECT_EQ(S.Calib.ColumnTopY[column], plan.Top);
            EXPECT_EQ(S.Calib.ColumnTopX[column], plan.Lefts[c]);
        }
        EXPECT_EQ(S.Table.CurrentLine, plan.TopLines[0]);
        ExpectOnRecordLine();
        ExpectBoxShowsCurrentLine();
    }

    // ENTER through every record, then once more past the last one. Returns the lines shown.
    std::vector<int> StepForward() {
        std::vector<int> shown = {S.Table.CurrentLine};
        for (int i = 0; i < 1000; ++i) {
            const Place from{S.Box.BoxTop, S.Box.BoxLeft};
            const int scrollsBefore = Scrolls;
            Key(KeyEnter);
            EnterScrolls += Scrolls - scrollsBefore;
            if (S.Table.CurrentLine > S.Table.LineCount) {
                EXPECT_EQ(S.Box.BoxTop, from.Top);
                EXPECT_EQ(S.Box.BoxLeft, from.Left);
                EXPECT_TRUE(HasNote(".... Reached end of records ...."));
                EXPECT_EQ(S.Content.NameLine, "");
                EXPECT_EQ(S.Content.FootLabel, "");
                break;
            }
            ExpectOnRecordLine();
            ExpectBoxShowsCurrentLine();
            shown.push_back(S.Table.CurrentLine);
        }
        return shown;
    }

    // BACKSPACE from past the end back to before the first record. Returns the lines shown.
    std::vector<int> StepBack() {
        std::vector<int> shown;
        for (int i = 0; i < 1000; ++i) {
            const Place from{S.Box.BoxTop, S.Box.BoxLeft};
            const int left = S.Table.CurrentLine;
            const int lines = left <= S.Table.LineCount ? S.Table.LineJump[left] : 0;
            Key(KeyBackspace);
            if (S.Table.CurrentLine < 1) {
                EXPECT_EQ(S.Box.BoxTop,
                          from.Top - CLng(lines * static_cast<double>(S.Calib.LineIncrTop)));
                EXPECT_TRUE(HasNote(".... Reached start of records ...."));
                EXPECT_EQ(S.Content.NameLine, "");
                break;
            }
            ExpectOnRecordLine();
            ExpectBoxShowsCurrentLine();
            shown.insert(shown.begin(), S.Table.CurrentLine);
        }
        return shown;
    }

    std::vector<int> RecordLines() const {
        std::vector<int> lines;
        for (int line = 1; line <= S.Table.LineCount; ++line)
            if (S.Table.IsRecord(line)) lines.push_back(line);
        return lines;
    }

    // Stepping down a line at a time scrolls only now and then, when the box reaches the
    // bottom of the view.
    void ExpectStepsDownScrollNowAndThen(std::size_t records) const {
        EXPECT_GE(EnterScrolls, 2);
        EXPECT_LT(static_cast<std::size_t>(EnterScrolls) * 4, records);
        EXPECT_LT(Scrolls, Keys);
    }
};

TEST_F(ScriptedSession, AThreeColumnBirthsPageOf1878IsVerifiedRecordByRecord) {
    Load(BirthsPage1878(), GraphicsFile1878);
    ASSERT_TRUE(F.Prompts.Shown.empty());
    ASSERT_EQ(S.Scan.NumColumns, 3);
    ASSERT_EQ(S.Scan.IndexFont, 'T');
    ASSERT_FALSE(S.Scan.AskScanType);
    const PagePlan plan{{4, 35, 65}, 70 + 34 * 103, {65 + 20 * 34, 12305, 23865}, 34 * 36, 68};
    Calibrate(plan);
    if (HasFatalFailure()) return;

    EXPECT_EQ(S.Content.NameLine, "  ABBOTT, Mary");
    EXPECT_EQ(S.Content.SecondLine, "  Leeds   9a    100");
    EXPECT_EQ(S.Content.FootLabel,
              std::string(" Line 4 of 95,  QRL entry 1 of 90") + CR + "  ABBOTT, Mary");
    Key(KeyEnter);
    Key(KeyEnter);
    EXPECT_EQ(S.Content.NameLine, "  ------ Ann");
    EXPECT_EQ(S.Content.SecondLine, "  Halifax   9c    106");
    EXPECT_EQ(S.Box.BoxTop, 3572 + 2 * 1224);
    EXPECT_EQ(S.Box.BoxLeft, 745 + 2 * 68);
    Key(KeyHome);

    std::vector<int> forward = StepForward();
    EXPECT_EQ(forward, RecordLines());
    std::vector<int> back = StepBack();
    EXPECT_EQ(back, RecordLines());
    ExpectStepsDownScrollNowAndThen(forward.size());

    S.Table.CurrentLine = static_cast<int16_t>(LineOf1878Record(15));
    S.ShowRecord(0);
    EXPECT_TRUE(HasNote("  Following line: #COMMENT,ink blot over the next entry"));
    Key(KeyPageDown);
    EXPECT_EQ(S.Content.NameLine, "  BRADLEY, William"); // a repeated surname at a column top
    EXPECT_EQ(S.Content.SecondLine, "  Halifax   9a    190");
    Key(KeyEnter);
    EXPECT_EQ(S.Content.NameLine, "  BROOK, Sarah");
}

TEST_F(ScriptedSession, ATwoColumnBirthsPageOf1965WithSurnameLinesAndGapsIsVerifiedRecordByRecord) {
    Load(BirthsPage1965(), GraphicsFile1965);
    ASSERT_TRUE(F.Prompts.Shown.empty());
    ASSERT_EQ(S.Scan.NumColumns, 2);
    ASSERT_EQ(S.Scan.IndexFont, 'C');
    ASSERT_TRUE(S.Scan.SurnameOwnLine);
    ASSERT_TRUE(S.Scan.TenLineGap);
    const PagePlan plan{{4, 24}, 70 + 34 * 100, {65 + 40 * 34, 1425 + 250 * 68}, 34 * 20, 0};
    Calibrate(plan);
    if (HasFatalFailure()) return;

    const std::string seven(7, ' ');
    EXPECT_EQ(S.Content.NameLine, "  ABEL, Karen M" + seven + " SMITH" + seven + " Leeds");
    EXPECT_EQ(S.Content.SecondLine, "  2c  101");
    EXPECT_EQ(S.Content.FootLabel,
              std::string(" Line 4 of 44,  QRL entry 1 of 40") + CR + "  ABEL, Karen M");
    Key(KeyEnter);
    EXPECT_EQ(S.Content.NameLine,
              "  -- Paul" + std::string(13, ' ') + " SMITH" + seven + " Bradford");
    EXPECT_EQ(S.Content.SecondLine, "  2b  102");
    Key(KeyHome);

    std::vector<int> forward = StepForward();
    EXPECT_EQ(forward, RecordLines());
    std::vector<int> back = StepBack();
    EXPECT_EQ(back, RecordLines());
    ExpectStepsDownScrollNowAndThen(forward.size());

    // Surname lines and gaps: the column holds more printed lines than records.
    S.Table.CurrentLine = LineOf1965Record(20);
    EXPECT_GT(RecordPlace().Top, 3470 + 19 * 680);
    Key(KeyEnd);
    EXPECT_EQ(S.Content.NameLine, "  ARCHER, Linda" + seven + " FEATHERSTONEHAUGHS Leeds");
    EXPECT_EQ(S.Content.SecondLine, "  2c  121");
    EXPECT_EQ(S.Content.FootLabel,
              std::string(" Line 24 of 44,  QRL entry 21 of 40") + CR + "  ARCHER, Linda");
}

} // namespace

} // namespace tv::test
