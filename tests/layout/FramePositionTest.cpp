// Placing the box: from a line to a position, from the form back to image space, and keeping
// the box inside the image and the view.
#include "LayoutSessionTesting.h"
#include "layout/FrameArithmetic.h"

namespace tv::test {
namespace {

// The view of the session fixture: 36000 x 51000 twips shown in 18000 x 12000 at (600, 600).
ViewMetrics FixtureView() {
    ViewMetrics view;
    view.ImageWidth = ImageWidthTwips;
    view.ImageHeight = ImageHeightTwips;
    view.Control = {ControlLeft, ControlTop, 18000, 12000};
    return view;
}

BoxPlacement BoxAt(int32_t left, int32_t top) {
    BoxPlacement box;
    box.BoxLeft = left;
    box.BoxTop = top;
    box.BoxWidth = 6000;
    box.BoxHeight = 900;
    return box;
}

class FramePosition : public LayoutSessionTest {
  protected:
    FramePosition() { AddRecords(60); }

    void PlaceAt(int32_t left, int32_t top) {
        S.Box.BoxLeft = left;
        S.Box.BoxTop = top;
        S.EnsureFrameVisible();
    }

    void ShowLine(int16_t line) {
        S.Table.CurrentLine = line;
        S.CalcFramePosn();
        S.EnsureFrameVisible();
    }
};

TEST_F(FramePosition, BoxAboveTheImageTopIsPutBackAt70Twips) {
    PlaceAt(2000, -500);
    EXPECT_EQ(S.Box.BoxTop, 70);
    EXPECT_EQ(S.Box.FormTop, 70 + ControlTop);
}

TEST_F(FramePosition, BoxPastTheRightEdgeStopsAtImageWidthLessBoxWidthLess30) {
    PlaceAt(40000, 5000);
    EXPECT_EQ(S.Box.BoxLeft, ImageWidthTwips - 6000 - 30);
}

TEST_F(FramePosition, BoxPastTheBottomAndLeftEdgesStopsAt20And65Twips) {
    PlaceAt(-10, 60000);
    EXPECT_EQ(S.Box.BoxTop, ImageHeightTwips - 900 - 20);
    EXPECT_EQ(S.Box.BoxLeft, 65);
}

TEST_F(FramePosition, BoxAt899TwipsFromTheLeftThatLeavesTheViewScrollsItToZero) {
    F.View.State.ScrollX = 200;
    PlaceAt(899, 5000);
    EXPECT_EQ(F.View.State.ScrollX, 0);
    EXPECT_TRUE(S.Box.ViewScrolled);
    EXPECT_EQ(S.Box.FormLeft, 899 + ControlLeft);
}

TEST_F(FramePosition, BoxAt900TwipsThatLeavesTheViewScrollsItToBoxLeftLess900) {
    ViewMetrics view = FixtureView();
    view.ScrollX = 200;
    FramePlacement placed = PlaceFrame(BoxAt(900, 5000), view);
    EXPECT_TRUE(placed.Scrolled);
    EXPECT_EQ(placed.ScrollX, 0);
    placed = PlaceFrame(BoxAt(15000, 5000), FixtureView());
    EXPECT_EQ(placed.ScrollX, (15000 - 900) / 15);
}

TEST_F(FramePosition, HorizontalScrollStopsAtTheImageWidthLessTheVisibleWidth) {
    FramePlacement placed = PlaceFrame(BoxAt(25000, 5000), FixtureView());
    EXPECT_EQ(placed.ScrollX, (ImageWidthTwips - 17700) / 15);
}

TEST_F(FramePosition, MovingDownOneLineInsideTheViewDoesNotScroll) {
    Calibrated(1500, 3000, 200.0F, 0.0F);
    ShowLine(39);
    F.View.ScrollCalls = 0;
    ShowLine(40); // 10800 + 900 is the view's last twip
    EXPECT_EQ(F.View.ScrollCalls, 0);
    EXPECT_FALSE(S.Box.ViewScrolled);
    EXPECT_EQ(S.Box.FormTop, 10800 + ControlTop);
    ShowLine(41);
    EXPECT_EQ(F.View.ScrollCalls, 1);
    EXPECT_EQ(F.View.State.ScrollY, 673); // (11000 - 900) / 15, rounded
    EXPECT_EQ(S.Box.FormTop, 11000 - 673 * 15 + ControlTop);
}

TEST_F(FramePosition, MovingDownOutOfTheViewKeepsTheBox900TwipsBelowItsTop) {
    FramePlacement placed = PlaceFrame(BoxAt(1500, 11400), FixtureView());
    EXPECT_TRUE(placed.Scrolled);
    EXPECT_EQ(placed.ScrollY, (11400 - 900) / 15);
}

TEST_F(FramePosition, MovingUpOutOfTheViewKeepsTheBox1800TwipsBelowItsTop) {
    ViewMetrics view = FixtureView();
    view.ScrollY = 700;
    FramePlacement placed = PlaceFrame(BoxAt(1500, 11100), view);
    EXPECT_EQ(placed.ScrollY, (11100 - 1800) / 15);
}

TEST_F(FramePosition, BoxNearTheTopScrollsTheViewToZero) {
    ViewMetrics view = FixtureView();
    view.ScrollY = 700;
    EXPECT_EQ(PlaceFrame(BoxAt(1500, 3900), view).ScrollY, 0); // above a third of the view
    view.Control.Height = 3000;
    view.ScrollY = 100;
    EXPECT_EQ(PlaceFrame(BoxAt(1500, 1700), view).ScrollY, 0); // above 1800 twips
    EXPECT_EQ(PlaceFrame(BoxAt(1500, 1950), view).ScrollY, 10);
}

TEST_F(FramePosition, BoxAtTheBottomScrollsToTheImageHeightLessTheVisibleHeight) {
    FramePlacement placed = PlaceFrame(BoxAt(1500, 45000), FixtureView());
    EXPECT_EQ(placed.ScrollY, (ImageHeightTwips - 11700) / 15);
}

TEST_F(FramePosition, ViewRefusingPartOfTheScrollLeavesTheBoxWhereTheViewReallyIs) {
    PlaceAt(1500, 45000); // asks for 2620 pixels; the view goes no further than 2600
    EXPECT_EQ(F.View.State.ScrollY, 2600);
    EXPECT_EQ(S.Box.BoxTop, 45000);
    EXPECT_EQ(S.Box.FormTop, 45000 - 2600 * 15 + ControlTop);
}

TEST_F(FramePosition, PlacingTheBoxHidesThePendingSecondFrame) {
    S.Box.BoxHidePending = true;
    PlaceAt(1500, 5000);
    EXPECT_FALSE(S.Box.BoxHidePending);
}

TEST_F(FramePosition, DroppedBoxIsReadBackThroughTheScrollOffsets) {
    F.View.State.ScrollX = 100;
    F.View.State.ScrollY = 200;
    S.DropBox(3000, 4000);
    EXPECT_EQ(S.Box.BoxLeft, 100 * 15 + 3000 - ControlLeft);
    EXPECT_EQ(S.Box.BoxTop, 200 * 15 + 4000 - ControlTop);
    EXPECT_EQ(S.Box.FormLeft, 3000);
    EXPECT_EQ(S.Box.FormTop, 4000);
    S.GetFramePosn();
    EXPECT_EQ(S.Box.BoxLeft, 3900);
    EXPECT_EQ(S.Box.BoxTop, 6400);
}

TEST_F(FramePosition, ReadingTheBoxBackTruncatesTowardsZero) {
    F.View.State.TwipsPerPixelX = 14.4;
    F.View.State.ScrollX = 1;
    S.Box.FormLeft = 500;
    S.Box.FormTop = 700;
    S.GetFramePosn();
    EXPECT_EQ(S.Box.BoxLeft, -85); // 14.4 + 500 - 600
    EXPECT_EQ(S.Box.BoxTop, 100);
}

TEST_F(FramePosition, ColumnButtonGoesToTheTopOfItsColumn) {
    Calibrated(1500, 3000, 200.0F, 0.0F);
    S.Scan.NumColumns = 2;
    S.Calib.ColumnTopLine[2] = 21;
    S.Calib.ColumnTopY[2] = 3100;
    S.Calib.ColumnTopX[2] = 13400;
    S.Table.CurrentLine = 5;
    S.TopCol_Click(2);
    EXPECT_EQ(S.Table.CurrentLine, 21);
    EXPECT_EQ(S.Box.BoxTop, 3100);
    EXPECT_EQ(S.Box.BoxLeft, 13400);
    EXPECT_NE(S.Content.NameLine.find("SURNAME21"), std::string::npos);
    EXPECT_EQ(S.Box.FormLeft, 13400 - F.View.State.ScrollX * 15 + ControlLeft);
}

TEST_F(FramePosition, BottomHalfScanStartsAtTheMiddleRecordOfTheFirstColumn) {
    S.Table.LineCount = 0;
    S.Table.RecordCount = 0;
    AddComment("#page 12");
    AddRecords(60);
    S.Scan.ScanTypeCode = 22;
    S.Calib.CalibrationStage = 1;
    S.CalcFramePosn();
    EXPECT_EQ(S.Table.LineRecNo[S.Table.CurrentLine], 10); // 60 / 3 / 2
    EXPECT_EQ(S.Table.CurrentLine, 11);
    EXPECT_EQ(S.Box.BoxTop, 3570);
}

// The start record is rounded as everywhere (halves to even), not cut: 45 / 3 / 2 = 7.5.
TEST_F(FramePosition, BottomHalfOf45RecordsInThreeColumnsStartsAtRecord8) {
    S.Table.LineCount = 0;
    S.Table.RecordCount = 0;
    AddRecords(45);
    S.Scan.ScanTypeCode = 22;
    S.Calib.CalibrationStage = 1;
    S.CalcFramePosn();
    EXPECT_EQ(S.Table.LineRecNo[S.Table.CurrentLine], 8);
    S.Scan.ScanTypeCode = 32; // 5
    S.CalcFramePosn();
    EXPECT_EQ(S.Table.LineRecNo[S.Table.CurrentLine], 5);
    S.Scan.ScanTypeCode = 33; // 10
    S.CalcFramePosn();
    EXPECT_EQ(S.Table.LineRecNo[S.Table.CurrentLine], 10);
}

TEST_F(FramePosition, OtherPartsOfAPageStartAtTheirFirstRecord) {
    const std::pair<int16_t, int16_t> starts[] = {{1, 1},   {21, 1}, {31, 1}, {32, 7},
                                                  {33, 13}, {40, 1}, {41, 1}, {42, 1}};
    for (auto [code, record] : starts) {
        S.Scan.ScanTypeCode = code;
        S.Table.CurrentLine = 50;
        S.Calib.CalibrationStage = 1;
        S.CalcFramePosn();
        EXPECT_EQ(S.Table.LineRecNo[S.Table.CurrentLine], record) << code; // 60 records
        EXPECT_EQ(S.Box.BoxTop, 3570) << code;
    }
}

TEST_F(FramePosition, LinesFromTopAddsTheLineJumpsAfterTheColumnTop) {
    S.Table.LineCount = 0;
    S.Table.RecordCount = 0;
    AddRecords(5);
    AddComment("#between");
    AddRecords(4);
    S.Table.LineJump[8] = 2;
    Calibrated(1500, 3000, 200.0F, 4.0F);
    S.Table.CurrentLine = 10;
    S.CalcFramePosn();
    EXPECT_EQ(S.Box.LinesFromTop, 9);
    EXPECT_EQ(S.Box.BoxTop, 4800);
    EXPECT_EQ(S.Box.BoxLeft, 1536);
}

TEST_F(FramePosition, TheLineIsPlacedFromTheLastColumnWhoseTopIsAtOrBeforeIt) {
    Calibrated(1500, 3000, 200.0F, 4.0F);
    S.Scan.NumColumns = 2;
    S.Calib.ColumnTopLine[2] = 21;
    S.Calib.ColumnTopY[2] = 3100;
    S.Calib.ColumnTopX[2] = 13400;
    S.Calib.ColumnTopLine[3] = 41; // beyond NumColumns: not a column of this scan
    S.Table.CurrentLine = 20;
    S.CalcFramePosn();
    EXPECT_EQ(S.Box.BoxTop, 3000 + 19 * 200);
    S.Table.CurrentLine = 45;
    S.CalcFramePosn();
    EXPECT_EQ(S.Box.LinesFromTop, 24);
    EXPECT_EQ(S.Box.BoxTop, 3100 + 24 * 200);
    EXPECT_EQ(S.Box.BoxLeft, 13400 + 24 * 4);
}

TEST_F(FramePosition, BoxPositionRoundsHalvesToEven) {
    Calibrated(1500, 3000, 200.5F, 0.0F);
    S.Table.CurrentLine = 2;
    S.CalcFramePosn();
    EXPECT_EQ(S.Box.BoxTop, 3200); // 3200.5
    S.Table.CurrentLine = 4;
    S.CalcFramePosn();
    EXPECT_EQ(S.Box.BoxTop, 3602); // 3601.5
}

TEST_F(FramePosition, BeforeAnyColumnTopTheBoxGoesToTheFirstEntryLine) {
    S.Table.CurrentLine = 30;
    S.Box.LinesFromTop = 7;
    S.CalcFramePosn();
    EXPECT_EQ(S.Table.CurrentLine, 30);
    EXPECT_EQ(S.Box.LinesFromTop, 0);
    EXPECT_EQ(S.Box.BoxTop, 3570);
}

} // namespace
} // namespace tv::test
