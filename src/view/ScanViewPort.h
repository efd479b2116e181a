#pragma once
// What the model asks of the scan view: its metrics, scrolling, zoom and rotation. The desktop's
// image view implements it; tests use a fake with a known image size.
#include "layout/BoxGeometry.h"

#include <cstdint>

namespace tv {

class ScanViewPort {
  public:
    virtual ~ScanViewPort() = default;
    virtual ViewMetrics Metrics() const = 0;
    // Scrolls to the offsets in screen pixels; the view may refuse a part (Metrics tells).
    virtual void SetScroll(int32_t x, int32_t y) = 0;
    // The zoom factor (a percentage / 100).
    virtual void SetZoom(double factor) = 0;
    // Shows the pristine scan turned by the total angle in degrees (0: unrotated).
    virtual void SetRotation(double totalDegrees) = 0;
};

} // namespace tv
