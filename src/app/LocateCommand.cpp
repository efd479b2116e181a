#include "app/LocateCommand.h"

#include "app/CommandFiles.h"

#include "core/Clock.h"
#include "linefind/FindPrintedLines.h"
#include "session/Session.h"
#include "view/QtLineFinder.h"

#include <cmath>

namespace tv {

namespace {

constexpr int TwipsPerPixel = 15;

// Text is measured as a fixed-pitch face would be: only the box's size depends on it.
class LocateMeasure : public TextMeasure {
  public:
    int32_t TextWidth(const std::string& text, const std::string&, int pointSize) const override {
        return static_cast<int32_t>(text.size()) * 12 * pointSize;
    }
    int32_t LineHeight(const std::string&, int pointSize) const override { return 23 * pointSize; }
};

// The whole scan at 100 %, in a view as large as the scan, so that nothing scrolls.
class WholeScanView : public ScanViewPort {
  public:
    WholeScanView(int width, int height) : width_(width), height_(height) {}
    ViewMetrics Metrics() const override {
        ViewMetrics m;
        m.ImageWidth = static_cast<double>(width_) * TwipsPerPixel;
        m.ImageHeight = static_cast<double>(height_) * TwipsPerPixel;
        m.TwipsPerPixelX = TwipsPerPixel;
        m.TwipsPerPixelY = TwipsPerPixel;
        m.Control = {0, 0, width_ * TwipsPerPixel + 300, height_ * TwipsPerPixel + 300};
        m.ImagePixelWidth = width_;
        m.ImagePixelHeight = height_;
        return m;
    }
    void SetScroll(int32_t, int32_t) override {}
    void SetZoom(double) override {}
    void SetRotation(double) override {}

  private:
    int width_;
    int height_;
};

// The layout the program would choose for the scan, as the options form preselects it.
class PreselectedLayout : public ScanLayoutChooser {
  public:
    ScanLayoutChoice Choose(const ScanLayoutChoice& preselected) override { return preselected; }
};

// Each record's line: the found line the box went to, or, where no found line lies within half
// a line of the place the calibration computes, the line the box stands just below there.
void WriteRecords(Session& s, std::ostream& out) {
    const bool calibrated = s.Calib.CalibrationStage == 0 && s.Calib.BoxLinedUp;
    for (int16_t line = 1; line <= s.Table.LineCount; ++line) {
        if (!s.Table.IsRecord(line)) continue;
        out << line << '\t';
        if (!calibrated) {
            out << "-\n";
            continue;
        }
        s.Table.CurrentLine = line;
        s.CalcFramePosn();
        const FoundLine place = s.Lines.LinedUp
                                    ? *s.Lines.LinedUp
                                    : FoundLine{static_cast<double>(s.Box.BoxLeft) / TwipsPerPixel,
                                                static_cast<double>(s.Box.BoxTop) / TwipsPerPixel -
                                                    JustBelowLine(*s.Lines.Found)};
        out << std::lround(place.X) << '\t' << std::lround(place.Y) << '\n';
    }
}

// Calibration by ENTER alone: the first stage, then one ENTER for the tenth entry and one for
// the top of every further column. A page too short for it leaves the records unplaced.
void CalibrateByEnter(Session& s) {
    try {
        s.CalibrateTextbox();
        for (int stage = 0; stage <= s.Scan.NumColumns && s.Calib.CalibrationStage != 0; ++stage)
            s.CalibrateTextbox();
    } catch (const RunTimeError&) {
        s.Calib.CalibrationStage = 0;
        s.Calib.BoxLinedUp = false;
    }
}

} // namespace

int RunLocate(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    DecodedScan scan;
    if (const int status = DecodeCommandScan(args, "locate", LocateUsageText, err, scan))
        return status;
    const std::string& image = args[0];
    StandardErrorPrompts prompts(err);
    LocateMeasure measure;
    WholeScanView view(scan.Pristine.width(), scan.Pristine.height());
    PreselectedLayout chooser;
    SystemClock clock;
    Session s(Platform{prompts, measure, view, chooser, clock});
    s.GraphicsFile = image;
    if (const int status = ReadCommandTranscription(image, args[1], prompts, err, s.Table, s.Scan,
                                                    s.Calib.ColumnTopLine, s.History))
        return status;
    s.Box.BoxWidth = scan.Pristine.width() * TwipsPerPixel / (2 * s.Scan.ColumnsAcross());
    const QImage& pixels = scan.Pristine;
    s.PrintedLinesFound(FindPrintedLines(GreyRowsOf(pixels),
                                         ColumnsToFind(s.Scan, pixels.width(), pixels.height())),
                        0.0F);
    if (!s.Lines.Found->Empty()) CalibrateByEnter(s);
    WriteRecords(s, out);
    return 0;
}

} // namespace tv
