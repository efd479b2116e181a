#include "FakePlatform.h"

#include <algorithm>
#include <cmath>

namespace tv::test {

FakeViewPort::FakeViewPort(int32_t imagePixelWidth, int32_t imagePixelHeight, TwipsRect control) {
    State.ImagePixelWidth = imagePixelWidth;
    State.ImagePixelHeight = imagePixelHeight;
    State.ImageWidth = imagePixelWidth * State.TwipsPerPixelX;
    State.ImageHeight = imagePixelHeight * State.TwipsPerPixelY;
    State.Control = control;
    UpdateLimits();
}

ViewMetrics FakeViewPort::Metrics() const {
    return State;
}

void FakeViewPort::UpdateLimits() {
    auto limit = [](double displayed, int32_t control, double tpp) {
        double pixels = std::floor(displayed / tpp) - std::floor(control / tpp);
        return static_cast<int32_t>(std::max(0.0, pixels));
    };
    State.MaxScrollX = limit(State.DisplayedWidth(), State.Control.Width, State.TwipsPerPixelX);
    State.MaxScrollY = limit(State.DisplayedHeight(), State.Control.Height, State.TwipsPerPixelY);
    State.ScrollX = std::clamp(State.ScrollX, 0, State.MaxScrollX);
    State.ScrollY = std::clamp(State.ScrollY, 0, State.MaxScrollY);
}

void FakeViewPort::SetScroll(int32_t x, int32_t y) {
    ++ScrollCalls;
    State.ScrollX = std::clamp(x, 0, State.MaxScrollX);
    State.ScrollY = std::clamp(y, 0, State.MaxScrollY);
}

void FakeViewPort::SetZoom(double factor) {
    State.Zoom = factor;
    UpdateLimits();
}

void FakeViewPort::SetRotation(double totalDegrees) {
    ++RotationCalls;
    Rotation = totalDegrees;
}

int32_t FixedPitchMeasure::TextWidth(const std::string& text, const std::string&,
                                     int pointSize) const {
    return static_cast<int32_t>(text.size()) * 12 * pointSize;
}

int32_t FixedPitchMeasure::LineHeight(const std::string&, int pointSize) const {
    return 23 * pointSize;
}

int32_t ProportionalMeasure::TextWidth(const std::string& text, const std::string&,
                                       int pointSize) const {
    int32_t units = 0;
    for (char c : text) {
        if (c == 'i' || c == 'l' || c == '.' || c == ',' || c == '\'' || c == ' ')
            units += 5;
        else if (c == 'M' || c == 'W' || c == 'm' || c == 'w')
            units += 17;
        else if (c >= 'A' && c <= 'Z')
            units += 14;
        else
            units += 11;
    }
    return units * pointSize;
}

int32_t ProportionalMeasure::LineHeight(const std::string&, int pointSize) const {
    return 23 * pointSize;
}

ScanLayoutChoice FakeLayoutChooser::Choose(const ScanLayoutChoice& preselected) {
    Preselections.push_back(preselected);
    if (Script.empty()) return preselected;
    ScanLayoutChoice c = Script.front();
    Script.pop_front();
    return c;
}

FakeSession::FakeSession(int32_t imagePixelWidth, int32_t imagePixelHeight, TwipsRect control)
    : View(imagePixelWidth, imagePixelHeight, control),
      S(Platform{Prompts, Measure, View, Chooser, Time}) {}

} // namespace tv::test
