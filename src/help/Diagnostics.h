#pragma once
// The diagnostics panel (ALT+D): the screen, form, image and record box geometry, for support
// when the box does not line up with the scan.
#include "layout/BoxGeometry.h"

#include <cstdint>
#include <string>

namespace tv {

// Everything the panel lists; twips unless stated.
struct DiagnosticsInputs {
    int32_t ScreenHeight = 0;
    int32_t ScreenWidth = 0;
    float TwipsPerPixelY = 15.0F;
    float TwipsPerPixelX = 15.0F;
    TwipsRect Form;      // the main form on the screen
    TwipsRect Control;   // the scan view on the form
    int32_t ScrollY = 0; // the scan view's scroll position, pixels
    int32_t ScrollX = 0;
    TwipsRect Box; // the record box frame on the form
    int32_t NameBoxWidth = 0;
    int32_t DistBoxWidth = 0;
    int32_t ImagePixelHeight = 0; // the loaded image, pixels
    int32_t ImagePixelWidth = 0;
    double Zoom = 1.0;     // factor (1.0 = 100 %)
    double Rotation = 0.0; // degrees
    int32_t TabFname = 0;  // tab positions inside the record box
    int32_t TabAge = 0;
    int32_t TabDist = 0;
};

// The panel's caption: eighteen lines joined with CR.
std::string DiagnosticsText(const DiagnosticsInputs& in);

} // namespace tv
