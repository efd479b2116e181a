#pragma once
// Fakes of the platform services for session tests: a scan view with a known image, text
// measures of a fixed-pitch and a proportional font, a scripted layout form and a fixed clock.
#include "FakePrompts.h"
#include "core/Clock.h"
#include "layout/ScanLayoutOptions.h"
#include "session/Session.h"
#include "view/ScanViewPort.h"
#include "view/TextMeasure.h"

#include <deque>
#include <memory>

namespace tv::test {

// A scan view showing an image of ImagePixels at 15 twips per pixel, in a control of the given
// size; scrolling is limited to the displayed image as a real view limits it.
class FakeViewPort : public ScanViewPort {
  public:
    FakeViewPort(int32_t imagePixelWidth, int32_t imagePixelHeight, TwipsRect control);

    ViewMetrics Metrics() const override;
    void SetScroll(int32_t x, int32_t y) override;
    void SetZoom(double factor) override;
    void SetRotation(double totalDegrees) override;

    ViewMetrics State;
    int ScrollCalls = 0;
    int RotationCalls = 0;
    double Rotation = 0.0;

  private:
    void UpdateLimits();
};

// Every character the same width: 120 twips at 10 points, scaled with the size.
class FixedPitchMeasure : public TextMeasure {
  public:
    int32_t TextWidth(const std::string& text, const std::string& fontName,
                      int pointSize) const override;
    int32_t LineHeight(const std::string& fontName, int pointSize) const override;
};

// Narrow and wide letters, as a proportional font has them.
class ProportionalMeasure : public TextMeasure {
  public:
    int32_t TextWidth(const std::string& text, const std::string& fontName,
                      int pointSize) const override;
    int32_t LineHeight(const std::string& fontName, int pointSize) const override;
};

// Answers the layout form with scripted selections; without a script, keeps the preselection.
class FakeLayoutChooser : public ScanLayoutChooser {
  public:
    ScanLayoutChoice Choose(const ScanLayoutChoice& preselected) override;
    std::deque<ScanLayoutChoice> Script;
    std::vector<ScanLayoutChoice> Preselections;
};

class FixedClock : public Clock {
  public:
    DateTime Now() const override { return When; }
    DateTime When{2026, 11, 20, 14, 5, 9};
};

// A session wired to fakes, with the fakes kept alive beside it.
struct FakeSession {
    explicit FakeSession(int32_t imagePixelWidth = 2400, int32_t imagePixelHeight = 3400,
                         TwipsRect control = {600, 600, 18000, 12000});
    FakePrompts Prompts;
    FixedPitchMeasure Measure;
    FakeViewPort View;
    FakeLayoutChooser Chooser;
    FixedClock Time;
    Session S;
};

} // namespace tv::test
