#include "help/SessionDiagnostics.h"

#include "core/Text.h"

namespace tv {

namespace {

// Where the third field begins in the box: its padded column measured in the box font. The box
// lays its text out with spaces rather than tab stops, so a third field that is not padded to a
// column has no tab, and neither has a transcription without the third field: 0 for both.
int32_t AgeTab(const Session& s) {
    if (!s.Table.HasExtraField || s.Scan.ExtraPad < 1) return 0;
    const std::string before = Left(s.Content.NameLine, static_cast<std::size_t>(s.Scan.ExtraPad));
    return s.P.Measure.TextWidth(before, s.Scan.FontName, s.Content.BoxFontSize);
}

} // namespace

DiagnosticsInputs DiagnosticsOf(const Session& s, ScreenSize screen, const TwipsRect& form) {
    const ViewMetrics m = s.P.View.Metrics();
    DiagnosticsInputs in;
    in.ScreenHeight = screen.Height;
    in.ScreenWidth = screen.Width;
    in.TwipsPerPixelY = static_cast<float>(m.TwipsPerPixelY);
    in.TwipsPerPixelX = static_cast<float>(m.TwipsPerPixelX);
    in.Form = form;
    in.Control = m.Control;
    in.ScrollY = m.ScrollY;
    in.ScrollX = m.ScrollX;
    in.Box = {s.Box.FormLeft, s.Box.FormTop, s.Box.BoxWidth, s.Box.BoxHeight};
    in.NameBoxWidth = s.Content.NameBoxWidth;
    in.DistBoxWidth = s.Content.DistBoxWidth;
    in.ImagePixelHeight = m.ImagePixelHeight;
    in.ImagePixelWidth = m.ImagePixelWidth;
    in.Zoom = m.Zoom;
    in.Rotation = s.Box.ScanRotation;
    // The box pads its text with spaces and has no tab stops; in their place the panel shows
    // the name label's width, the third field's column and the district label's left.
    in.TabFname = s.Content.NameBoxWidth;
    in.TabAge = AgeTab(s);
    in.TabDist = s.Content.DistBoxLeft;
    return in;
}

} // namespace tv
