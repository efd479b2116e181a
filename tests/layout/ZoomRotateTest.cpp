// Zoom steps and the rescaling they bring, rotation and its hint, and the box's width.
#include "LayoutSessionTesting.h"
#include "layout/FrameArithmetic.h"

namespace tv::test {
namespace {

const std::string RotationHint =
    "Press the rotation key repeatedly until the scan is correctly aligned";
const std::string RecalibrateHint = "You may then need to recalibrate by pressing the C key";

class ZoomRotate : public LayoutSessionTest {
  protected:
    ZoomRotate() { AddRecords(60); }

    // Shows the zoom percentage through the view, as the zoom buttons find it.
    void ZoomTo(float percent) {
        S.Zoom(percent);
        ASSERT_FLOAT_EQ(S.Box.CurrentZoom, percent * S.Box.BaseZoom / 100.0F);
    }
};

TEST_F(ZoomRotate, ZoomInFrom100Gives125) {
    S.Zoom(1);
    EXPECT_FLOAT_EQ(S.Box.CurrentZoom, 125.0F);
    EXPECT_DOUBLE_EQ(F.View.State.Zoom, 1.25);
}

TEST_F(ZoomRotate, ZoomOutFrom100Gives90) {
    S.Zoom(-1);
    EXPECT_FLOAT_EQ(S.Box.CurrentZoom, 90.0F);
    EXPECT_DOUBLE_EQ(F.View.State.Zoom, 0.9);
}

TEST_F(ZoomRotate, ZoomOutFrom10ChangesNothing) {
    ZoomTo(10);
    S.Zoom(-1);
    EXPECT_FLOAT_EQ(S.Box.CurrentZoom, 10.0F);
    EXPECT_DOUBLE_EQ(F.View.State.Zoom, 0.1);
}

TEST_F(ZoomRotate, ZoomInFrom800StaysAt800) {
    ZoomTo(800);
    S.Zoom(1);
    EXPECT_FLOAT_EQ(S.Box.CurrentZoom, 800.0F);
}

TEST_F(ZoomRotate, ArgumentOf150IsAPercentageOfTheBaseZoom) {
    S.Zoom(150);
    EXPECT_FLOAT_EQ(S.Box.CurrentZoom, 150.0F);
    S.Box.BaseZoom = 50.0F;
    S.Zoom(150);
    EXPECT_FLOAT_EQ(S.Box.CurrentZoom, 75.0F);
    EXPECT_DOUBLE_EQ(F.View.State.Zoom, 0.75);
}

TEST_F(ZoomRotate, BaseZoomOf50ScalesTheStepTable) {
    S.Box.BaseZoom = 50.0F;
    ZoomTo(100); // 50 %
    S.Zoom(1);
    EXPECT_FLOAT_EQ(S.Box.CurrentZoom, 62.5F);
    S.Zoom(-1);
    S.Zoom(-1);
    EXPECT_FLOAT_EQ(S.Box.CurrentZoom, 45.0F);
    EXPECT_FLOAT_EQ(ZoomResult(1, 500.0F, 50.0F, 5.0), 400.0F); // the last step is 400 %
}

TEST_F(ZoomRotate, OtherArgumentsKeepTheViewsZoom) {
    F.View.State.Zoom = 1.5;
    S.Zoom(2);
    EXPECT_FLOAT_EQ(S.Box.CurrentZoom, 150.0F);
    EXPECT_FLOAT_EQ(ZoomResult(0, 100.0F, 100.0F, 0.8), 80.0F);
}

TEST_F(ZoomRotate, BoxStaysOnItsLineAfterZoomingInAndOut) {
    Calibrated(1500, 3000, 200.0F, 4.0F);
    S.Table.CurrentLine = 6;
    S.CalcFramePosn();
    ASSERT_EQ(S.Box.BoxTop, 4000);
    S.Zoom(1);
    EXPECT_EQ(S.Calib.ColumnTopY[1], 3750);
    EXPECT_FLOAT_EQ(S.Calib.LineIncrTop, 250.0F);
    EXPECT_EQ(S.Box.BoxTop, 3750 + 5 * 250);
    EXPECT_EQ(S.Box.BoxLeft, 1875 + 5 * 5);
    S.Zoom(-1);
    EXPECT_EQ(S.Box.BoxTop, 4000);
    EXPECT_EQ(S.Box.BoxLeft, 1520);
    const int32_t top = S.Box.BoxTop;
    S.CalcFramePosn();
    EXPECT_EQ(S.Box.BoxTop, top);
    EXPECT_EQ(S.Box.BoxTop, S.Calib.ColumnTopY[1] + S.Box.LinesFromTop * S.Calib.LineIncrTop);
}

TEST_F(ZoomRotate, ZoomLeavesUncalibratedColumnsAndAnUnmeasuredSpacingAlone) {
    S.Calib.ColumnTopLine[1] = 1;
    S.Calib.ColumnTopY[1] = 3000;
    S.Calib.ColumnTopY[2] = 777; // column 2 not calibrated
    S.Zoom(200);
    EXPECT_EQ(S.Calib.ColumnTopY[1], 6000);
    EXPECT_EQ(S.Calib.ColumnTopY[2], 777);
    EXPECT_FLOAT_EQ(S.Calib.LineIncrTop, -1.0F);
    EXPECT_FLOAT_EQ(S.Calib.LineIncrLeft, -1.0F);
}

TEST_F(ZoomRotate, RotatingThereAndBackLeavesNoRotationAndTheUnrotatedScan) {
    S.Rotate(0.4F);
    EXPECT_DOUBLE_EQ(F.View.Rotation, static_cast<double>(0.4F));
    S.Rotate(-0.4F);
    EXPECT_EQ(S.Box.ScanRotation, 0.0F);
    EXPECT_EQ(F.View.Rotation, 0.0); // a fresh unrotated copy, not a turn back
    EXPECT_EQ(F.View.RotationCalls, 2);
    for (int k = 0; k < 7; ++k)
        S.Rotate(0.4F);
    for (int k = 0; k < 7; ++k)
        S.Rotate(-0.4F);
    EXPECT_EQ(S.Box.ScanRotation, 0.0F);
}

TEST_F(ZoomRotate, RotationHintIsShownOnlyOnceForAScan) {
    S.Calib.CalibrationStage = 1;
    S.Rotate(0.4F);
    EXPECT_EQ(S.Content.NotesText, RotationHint);
    EXPECT_TRUE(S.Box.RotationHintShown);
    SetNote(S.Content, NoteKind::ClearAll, "", true);
    S.Rotate(0.4F);
    EXPECT_EQ(S.Content.NotesText, "");
}

TEST_F(ZoomRotate, RotationHintAsksForRecalibrationWhenCalibrated) {
    Calibrated(1500, 3000, 200.0F, 0.0F);
    S.Rotate(-0.4F);
    EXPECT_EQ(S.Content.NotesText, RotationHint + "\r" + RecalibrateHint);
}

TEST_F(ZoomRotate, WidenGrowsTheBoxWhileTheViewWidthLessTheStepExceedsIt) {
    S.Box.BoxWidth = 17500;
    S.WidenBox(300);
    EXPECT_EQ(S.Box.BoxWidth, 17800);
    S.WidenBox(300); // 18000 - 300 is not above 17800
    EXPECT_EQ(S.Box.BoxWidth, 17800);
}

TEST_F(ZoomRotate, NarrowStopsAtATenthOfTheDisplayedImage) {
    S.Box.BoxWidth = 4000;
    S.NarrowBox(300);
    EXPECT_EQ(S.Box.BoxWidth, 3700);
    S.NarrowBox(300); // 3400 is below 3600, a tenth of 36000
    EXPECT_EQ(S.Box.BoxWidth, 3700);
    S.NarrowBox(100);
    EXPECT_EQ(S.Box.BoxWidth, 3600);
}

TEST_F(ZoomRotate, NarrowLimitIsAtLeastAnInchAndAtMostFourFifthsOfTheView) {
    ViewMetrics view;
    view.ImageWidth = ImageWidthTwips;
    view.Control = {0, 0, 18000, 12000};
    EXPECT_EQ(NarrowestBox(view), 3600);
    view.Zoom = 0.1;
    EXPECT_EQ(NarrowestBox(view), 1440);
    view.Zoom = 8.0;
    EXPECT_EQ(NarrowestBox(view), 14400);
}

TEST_F(ZoomRotate, ChangingTheWidthLaysTheBoxOutAgain) {
    S.Box.BoxHeight = 0;
    S.SetBoxWidth(8000);
    EXPECT_EQ(S.Box.BoxWidth, 8000);
    EXPECT_GT(S.Box.BoxHeight, 0);
    S.Box.BoxHeight = 0;
    S.WidenBox(300);
    EXPECT_EQ(S.Box.BoxWidth, 8300);
    EXPECT_GT(S.Box.BoxHeight, 0);
}

} // namespace
} // namespace tv::test
