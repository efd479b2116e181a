#pragma once
// The colour of the box's text on each box colour, chosen so that the text stays readable:
// the contrast between text and box is measured as the accessibility guidelines do.
#include "view/RecordBox.h"

#include <cstdint>

namespace tv {

// The contrast ratio of two colours, 1 (none) to 21 (black on white): the lighter colour's
// relative luminance plus 0.05 over the darker one's plus 0.05.
double ContrastRatio(const Rgb& a, const Rgb& b);

// Black or white, whichever stands out more on box colour colourIndex (0..6): white on the
// black of colour 0, black on the six light colours.
Rgb BoxTextColour(int16_t colourIndex);

} // namespace tv
