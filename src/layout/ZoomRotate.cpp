// Zooming and turning the scan, and the box's width. Zoom rescales every position held in
// displayed-image units, so the calibration stays valid at any magnification.
#include "layout/FrameArithmetic.h"
#include "session/Session.h"

namespace tv {

namespace {

const char* const RotationHint =
    "Press the rotation key repeatedly until the scan is correctly aligned";
const char* const RecalibrateHint = "You may then need to recalibrate by pressing the C key";

int32_t Rescaled(int32_t position, double ratio) {
    return CLng(position * ratio);
}

// Column tops of calibrated columns, the spacing when measured, and the box.
void RescalePositions(Session& s, double ratio) {
    for (int c = 1; c <= 6; ++c) {
        if (s.Calib.ColumnTopLine[c] < 1) continue;
        s.Calib.ColumnTopY[c] = Rescaled(s.Calib.ColumnTopY[c], ratio);
        s.Calib.ColumnTopX[c] = Rescaled(s.Calib.ColumnTopX[c], ratio);
    }
    if (s.Calib.LineIncrTop != -1.0F) {
        s.Calib.LineIncrTop = static_cast<float>(s.Calib.LineIncrTop * ratio);
        s.Calib.LineIncrLeft = static_cast<float>(s.Calib.LineIncrLeft * ratio);
    }
    s.Box.BoxTop = Rescaled(s.Box.BoxTop, ratio);
    s.Box.BoxLeft = Rescaled(s.Box.BoxLeft, ratio);
}

} // namespace

void Session::Zoom(float argument) {
    // Positions are in the units of the image as the view shows it now, so the ratio is taken
    // against the view's own zoom.
    const double oldFactor = P.View.Metrics().Zoom;
    const float result = ZoomResult(argument, Box.CurrentZoom, Box.BaseZoom, oldFactor);
    Box.CurrentZoom = result;
    const double newFactor = result / 100.0;
    P.View.SetZoom(newFactor);
    RescalePositions(*this, newFactor / oldFactor);
    EnsureFrameVisible();
}

void Session::Rotate(float degrees) {
    Box.ScanRotation = AddRotation(Box.ScanRotation, degrees);
    // The view turns a fresh copy of the pristine scan by the total, so small steps never
    // degrade it and turning back shows the original.
    P.View.SetRotation(Box.ScanRotation);
    EnsureFrameVisible();
    if (Box.RotationHintShown) return;
    const bool calibrated = Calib.CalibrationStage == 0 && Calib.BoxLinedUp;
    SetNote(Content, NoteKind::AddStatus, RotationHint, !calibrated);
    if (calibrated) SetNote(Content, NoteKind::AddStatus, RecalibrateHint, true);
    Box.RotationHintShown = true;
}

void Session::WidenBox(int16_t step) {
    if (P.View.Metrics().Control.Width - step <= Box.BoxWidth) return;
    Box.BoxWidth = To32(static_cast<long long>(Box.BoxWidth) + step);
    ResizeFrame();
    EnsureFrameVisible();
}

void Session::NarrowBox(int16_t step) {
    const long long narrower = static_cast<long long>(Box.BoxWidth) - step;
    if (narrower < NarrowestBox(P.View.Metrics())) return;
    Box.BoxWidth = To32(narrower);
    ResizeFrame();
    EnsureFrameVisible();
}

} // namespace tv
