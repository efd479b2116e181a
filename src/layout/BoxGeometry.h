#pragma once
// The arithmetic that ties the box to the scan. Positions are twips in the space of the image
// as displayed at the present zoom, origin at the image's top left corner when not scrolled.
#include <cstdint>

namespace tv {

struct TwipsRect {
    int32_t Left = 0;
    int32_t Top = 0;
    int32_t Width = 0;
    int32_t Height = 0;
};

// What the scan view reports: the platform side of every geometry operation.
struct ViewMetrics {
    double Zoom = 1.0;       // zoom factor (1.0 = 100 %)
    double ImageWidth = 0.0; // loaded image size in twips at zoom 1 (pixels x twips per pixel)
    double ImageHeight = 0.0;
    int32_t ScrollX = 0; // scroll offsets, screen pixels
    int32_t ScrollY = 0;
    int32_t MaxScrollX = 0; // the most the view can scroll, screen pixels
    int32_t MaxScrollY = 0;
    double TwipsPerPixelX = 15.0;
    double TwipsPerPixelY = 15.0;
    TwipsRect Control;           // the scan view on the form
    int32_t ImagePixelWidth = 0; // the loaded image in pixels (diagnostics)
    int32_t ImagePixelHeight = 0;

    double DisplayedWidth() const { return Zoom * ImageWidth; }
    double DisplayedHeight() const { return Zoom * ImageHeight; }
};

// The box's state in image space and its size; BoxTop/BoxLeft are never saved.
struct BoxPlacement {
    int32_t BoxTop = 0;
    int32_t BoxLeft = 0;
    int32_t BoxWidth = 0;
    int32_t BoxHeight = 0;
    int16_t LinesFromTop = 0;
    float CurrentZoom = 100.0F; // percent
    float BaseZoom = 100.0F;    // percent that the zoom step table is relative to
    float ScanRotation = 0.0F;  // degrees since the scan was loaded
    bool RotationHintShown = false;
    bool BoxHidePending = false;
    // A placement waits to be done: the next key only places the box.
    bool BoxPlacementPending = false;
    // The box on the form, as EnsureFrameVisible last put it.
    int32_t FormLeft = 0;
    int32_t FormTop = 0;
    bool ViewScrolled = false; // the last EnsureFrameVisible scrolled the view
};

} // namespace tv
