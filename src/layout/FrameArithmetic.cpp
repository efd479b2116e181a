// Clamping, scrolling, form and image positions, zoom steps, the narrowest box and rotation.
#include "layout/FrameArithmetic.h"

#include "core/Checked.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tv {

namespace {

// The margins differ on purpose: the box may come closer to the bottom and right edges than to
// the top and left ones.
constexpr int32_t TopMargin = 70;
constexpr int32_t BottomMargin = 20;
constexpr int32_t LeftMargin = 65;
constexpr int32_t RightMargin = 30;
// The scroll bars and borders take this much of the control.
constexpr int32_t ViewBorder = 300;
// The box is kept this far below the top of the view when moving down, twice as far moving up.
constexpr int32_t ScrollLead = 900;
constexpr int32_t ScrollLeadUp = 1800;

int32_t Clamp(int32_t position, int32_t low, double high) {
    if (position < low) return low;
    if (position > high) return CLng(high);
    return position;
}

// The new horizontal offset in twips when the box has left the view.
double ScrollAcross(int32_t boxLeft, double limit) {
    if (boxLeft < ScrollLead) return 0.0;
    if (boxLeft > limit) return limit;
    return boxLeft - ScrollLead;
}

// The new vertical offset in twips when the box has left the view.
double ScrollDown(int32_t boxTop, double offset, double limit, int32_t controlHeight) {
    if (boxTop < ScrollLeadUp || boxTop < controlHeight / 3.0) return 0.0;
    if (boxTop > limit) return limit;
    if (boxTop >= offset + ScrollLead) return boxTop - ScrollLead;
    return boxTop - ScrollLeadUp;
}

// 10, 20 .. 100, 125, 150 .. 250, 300, 350 .. 800: the 27 steps of the zoom buttons.
std::array<float, 27> ZoomSteps(float baseZoom) {
    std::array<float, 27> steps{};
    for (int i = 1; i <= 27; ++i) {
        int percent = i <= 10 ? 10 * i : i <= 16 ? 100 + 25 * (i - 10) : 250 + 50 * (i - 16);
        steps[static_cast<std::size_t>(i - 1)] = static_cast<float>(percent) * (baseZoom / 100.0F);
    }
    return steps;
}

} // namespace

FramePlacement PlaceFrame(const BoxPlacement& box, const ViewMetrics& view) {
    const double offsetX = view.ScrollX * view.TwipsPerPixelX;
    const double offsetY = view.ScrollY * view.TwipsPerPixelY;
    const double imageWidth = view.DisplayedWidth();
    const double imageHeight = view.DisplayedHeight();

    FramePlacement result;
    result.BoxTop = Clamp(box.BoxTop, TopMargin, imageHeight - box.BoxHeight - BottomMargin);
    result.BoxLeft = Clamp(box.BoxLeft, LeftMargin, imageWidth - box.BoxWidth - RightMargin);

    const int32_t visibleWidth = view.Control.Width - ViewBorder;
    const int32_t visibleHeight = view.Control.Height - ViewBorder;
    double newX = offsetX;
    if (result.BoxLeft < offsetX || result.BoxLeft + box.BoxWidth > offsetX + visibleWidth)
        newX = ScrollAcross(result.BoxLeft, imageWidth - visibleWidth);
    double newY = offsetY;
    if (result.BoxTop < offsetY + ScrollLead ||
        result.BoxTop + box.BoxHeight > offsetY + visibleHeight)
        newY = ScrollDown(result.BoxTop, offsetY, imageHeight - visibleHeight, view.Control.Height);

    result.Scrolled = newX != offsetX || newY != offsetY;
    result.ScrollX = result.Scrolled ? CLng(newX / view.TwipsPerPixelX) : view.ScrollX;
    result.ScrollY = result.Scrolled ? CLng(newY / view.TwipsPerPixelY) : view.ScrollY;
    return result;
}

TwipsPoint BoxOnForm(int32_t boxLeft, int32_t boxTop, const ViewMetrics& view) {
    return {CLng(boxLeft - view.ScrollX * view.TwipsPerPixelX + view.Control.Left),
            CLng(boxTop - view.ScrollY * view.TwipsPerPixelY + view.Control.Top)};
}

TwipsPoint BoxInImage(int32_t formLeft, int32_t formTop, const ViewMetrics& view) {
    auto truncated = [](double twips) { return To32(static_cast<long long>(std::trunc(twips))); };
    return {truncated(view.ScrollX * view.TwipsPerPixelX + formLeft - view.Control.Left),
            truncated(view.ScrollY * view.TwipsPerPixelY + formTop - view.Control.Top)};
}

float ZoomResult(float argument, float currentZoom, float baseZoom, double viewZoom) {
    const auto steps = ZoomSteps(baseZoom);
    if (argument >= 10.0F) return baseZoom * argument / 100.0F;
    if (argument == 1.0F) {
        auto larger = std::find_if(steps.begin(), steps.end(),
                                   [&](float step) { return step > currentZoom; });
        return larger != steps.end() ? *larger : steps.back();
    }
    if (argument == -1.0F) {
        auto smaller = std::find_if(steps.rbegin(), steps.rend(),
                                    [&](float step) { return step < currentZoom; });
        if (smaller != steps.rend()) return *smaller;
    }
    return static_cast<float>(viewZoom * 100.0);
}

// A tenth of the displayed image, but at least an inch so that a tiny zoom leaves room for the
// text, and never more than 0.8 of the view, so that a box in a small window can still shrink.
int32_t NarrowestBox(const ViewMetrics& view) {
    const double tenth = std::max(0.1 * view.DisplayedWidth(), 1440.0);
    return CLng(std::min(0.8 * view.Control.Width, tenth));
}

float AddRotation(float total, float degrees) {
    const double sum = static_cast<double>(total) + static_cast<double>(degrees);
    return static_cast<float>(RoundHalfEven(sum * 10000.0) / 10000.0);
}

} // namespace tv
