#pragma once
// What a camera does to a page that does not lie flat under it: the page turned further on the
// scanner, curved towards the binding, keystoned (photographed from below its middle), and a
// larger picture of the same page. The scan and every reported position go through the same
// change.
#include "PageGeometry.h"

#include <QImage>
#include <QPointF>

#include <string>

namespace samplegen {

enum class Shape { Flat, Curved, Keystoned };

struct PageShape {
    Shape Form = Shape::Flat;
    double Scale = 1.0; // 2.2: a 2400 x 3400 page becomes about 40 megapixels

    // The shape named on the command line ("flat", "curved", "keystoned"); false if unknown.
    bool Parse(const std::string& name);

    // The scan point of a point of the flat scan.
    QPointF Map(const QPointF& point, const KindSpec& kind) const;
    // The scan of the flat scan (8-bit grey), the same size times Scale.
    QImage Apply(const QImage& flat, const KindSpec& kind) const;
    // The pitch in the scan's pixels, for the positions file.
    int Pitch(const KindSpec& kind) const;
};

} // namespace samplegen
