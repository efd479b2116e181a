#include "PageShape.h"

#include <QPainter>
#include <QPolygonF>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace samplegen {

namespace {

// The lines sink towards the binding by up to this many pitches: the right edge of a single
// (left-hand) page, the middle of a double page.
constexpr double SagPitches = 0.9;
// The part of a page's width over which they bend.
constexpr double BendWidth = 0.45;
// Keystone: the top edge of the picture is this much narrower than the foot, each side.
constexpr double Inset = 0.025;

double Sag(double x, const KindSpec& kind) {
    // A single page is the left-hand one, bound on its right; a double page in its middle.
    const double binding = kind.PageWidth;
    const double reach = BendWidth * kind.PageWidth;
    const double near = std::max(0.0, 1.0 - std::abs(x - binding) / reach);
    return SagPitches * kind.Pitch * near * near;
}

QTransform Keystone(const KindSpec& kind) {
    const double w = kind.Pages * kind.PageWidth;
    const double h = kind.PageHeight;
    QPolygonF flat({QPointF(0, 0), QPointF(w, 0), QPointF(w, h), QPointF(0, h)});
    QPolygonF seen(
        {QPointF(Inset * w, 0), QPointF((1 - Inset) * w, 0), QPointF(w, h), QPointF(0, h)});
    QTransform t;
    QTransform::quadToQuad(flat, seen, t);
    return t;
}

} // namespace

bool PageShape::Parse(const std::string& name) {
    if (name == "flat")
        Form = Shape::Flat;
    else if (name == "curved")
        Form = Shape::Curved;
    else if (name == "keystoned")
        Form = Shape::Keystoned;
    else
        return false;
    return true;
}

QPointF PageShape::Map(const QPointF& point, const KindSpec& kind) const {
    QPointF p = point;
    if (Form == Shape::Curved) p.ry() += Sag(p.x(), kind);
    if (Form == Shape::Keystoned) p = Keystone(kind).map(p);
    return p * Scale;
}

QImage PageShape::Apply(const QImage& flat, const KindSpec& kind) const {
    QImage shaped = flat;
    if (Form == Shape::Curved) {
        // Each upright strip of pixels sinks by the sag at its x: the source row lies above.
        shaped = QImage(flat.size(), QImage::Format_Grayscale8);
        for (int y = 0; y < flat.height(); ++y) {
            uchar* out = shaped.scanLine(y);
            for (int x = 0; x < flat.width(); ++x) {
                const int from = y - static_cast<int>(std::lround(Sag(x + 0.5, kind)));
                out[x] = from >= 0 ? flat.constScanLine(from)[x] : flat.constScanLine(0)[x];
            }
        }
    }
    if (Form == Shape::Keystoned) {
        shaped = QImage(flat.size(), QImage::Format_Grayscale8);
        shaped.fill(40); // the dark surround the narrower top uncovers
        QPainter painter(&shaped);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.setTransform(Keystone(kind));
        painter.drawImage(0, 0, flat);
    }
    if (Scale != 1.0)
        shaped =
            shaped.scaled(shaped.size() * Scale, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return shaped.convertToFormat(QImage::Format_Grayscale8);
}

int PageShape::Pitch(const KindSpec& kind) const {
    return static_cast<int>(std::lround(kind.Pitch * Scale));
}

} // namespace samplegen
