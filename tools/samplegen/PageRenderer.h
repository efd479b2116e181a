#pragma once
// Draws a sample page as the scanner saw it: the paper, slightly turned, with the title, the
// column headings, the rules and every printed line of the layout.
#include "PageGeometry.h"

#include <QImage>

namespace samplegen {

// The clean scan in 8-bit grey, before the paper's texture and the scanner's noise.
QImage DrawPage(const KindSpec& kind, const PageLayout& layout, const PageGeometry& geometry);

} // namespace samplegen
