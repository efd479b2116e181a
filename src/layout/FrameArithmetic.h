#pragma once
// The pure arithmetic of the box over the scan: clamping and scrolling, the conversions between
// the box on the form and the box in image space, the zoom steps, the narrowest box and the
// total rotation. The session applies the results through the scan view.
#include "layout/BoxGeometry.h"

#include <cstdint>

namespace tv {

// Where EnsureFrameVisible puts the box and the view.
struct FramePlacement {
    int32_t BoxTop = 0; // clamped to the image
    int32_t BoxLeft = 0;
    int32_t ScrollX = 0; // offsets to show, screen pixels
    int32_t ScrollY = 0;
    bool Scrolled = false; // either offset differs from the view's present one
};

struct TwipsPoint {
    int32_t Left = 0;
    int32_t Top = 0;
};

// Clamps the box inside the displayed image and scrolls the view when the box would leave it.
FramePlacement PlaceFrame(const BoxPlacement& box, const ViewMetrics& view);

// The box's place on the form for a box at this place in image space, at the view's offsets.
TwipsPoint BoxOnForm(int32_t boxLeft, int32_t boxTop, const ViewMetrics& view);

// The box's place in image space for a box standing at this place on the form (truncated).
TwipsPoint BoxInImage(int32_t formLeft, int32_t formTop, const ViewMetrics& view);

// The zoom percentage a zoom argument asks for: +1 one step in, -1 one step out, 10 or more a
// percentage of baseZoom; anything else (and a step out from the smallest) keeps viewZoom.
float ZoomResult(float argument, float currentZoom, float baseZoom, double viewZoom);

// The narrowest the box may be made with ALT+Left.
int32_t NarrowestBox(const ViewMetrics& view);

// The total rotation after turning by degrees, kept to 1/10000 of a degree so that turning back
// and forth by the same steps returns exactly to 0.
float AddRotation(float total, float degrees);

} // namespace tv
