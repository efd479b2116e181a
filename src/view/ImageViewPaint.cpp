// Painting the scan: only the exposed part of the viewport is mapped back to the image and drawn,
// with the zoom, rotation and mirror in the painter's transform and the negative applied to the
// painted pixels alone.
#include "view/ImageView.h"
#include "view/ImageViewPixels.h"

#include <QPaintEvent>
#include <QPainter>
#include <QRegion>
#include <QScrollBar>

#include <cmath>

namespace tv {

namespace {

constexpr int LensDiameter = 200;
constexpr int LensBorder = 2;
constexpr double LensMagnification = 2.0;

} // namespace

QTransform ImageView::ImageToViewport(double zoom) const {
    const QSizeF rotated = RotatedSize();
    const QSizeF image = scan_.Pristine.size();
    QTransform t;
    t.translate(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
    t.scale(zoom, zoom);
    if (mirror_) {
        t.translate(rotated.width(), 0);
        t.scale(-1, 1);
    }
    // Turned about the image's centre, then moved so that the turned image's bounding box
    // starts at the origin. At 0 degrees no rotation is applied at all.
    if (rotation_ != 0.0) {
        t.translate(rotated.width() / 2, rotated.height() / 2);
        t.rotate(-rotation_);
        t.translate(-image.width() / 2, -image.height() / 2);
    }
    return t;
}

// The scan's pixels in the source rectangle, under the painter's transform.
void ImageView::DrawPixels(QPainter& painter, const QImage& image, const QRect& source,
                           const QRect& exposed) const {
    // Converting costs a pass over the source: worth it only where it is about the size of
    // what is painted.
    const qint64 painted = qint64(exposed.width()) * exposed.height();
    if (PixelStage::Needed(image) && qint64(source.width()) * source.height() <= 2 * painted)
        stage_.Draw(painter, image, source);
    else
        painter.drawImage(source.topLeft(), image, source);
}

void ImageView::PaintLayer(QPainter& painter, const QImage& image, const QTransform& transform,
                           const QRect& exposed, bool smooth, const QRect& cover) const {
    const QRectF needed = transform.inverted().mapRect(QRectF(exposed));
    const QRect source = needed.toAlignedRect().adjusted(-2, -2, 2, 2) & image.rect();
    const QColor ground = Ground();
    painter.save();
    painter.setTransform(transform);
    // Nearest neighbour unless smoothing a reduced view: handwriting's pixels stay sharp.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
    // Anti-aliasing changes only the pixels along the scan's own edges. The scan is drawn
    // without it, and the edges that show are drawn again with it.
    painter.setRenderHint(QPainter::Antialiasing, false);
    // A turned or scaled scan is written straight into the view's pixels, with the ground
    // around a turned one in the same pass; otherwise the ground goes first.
    const bool turned =
        !source.isEmpty() && transform.type() > QTransform::TxTranslate &&
        (cover.isEmpty() ? PixelStage::DrawTurned(painter, image, source)
                         : PixelStage::DrawTurned(painter, image, source, ground.rgb(), cover));
    if (!turned && !cover.isEmpty()) {
        painter.save();
        painter.resetTransform();
        painter.fillRect(cover, ground);
        painter.restore();
    }
    if (!turned && !source.isEmpty()) DrawPixels(painter, image, source, exposed);
    if (!source.isEmpty() && antiAlias_ && !QRectF(image.rect()).contains(needed))
        SmoothEdges(painter, image, transform, exposed);
    if (!source.isEmpty() && negative_) {
        // White in difference mode turns each painted pixel into its negative.
        painter.setCompositionMode(QPainter::CompositionMode_Difference);
        painter.fillRect(source, Qt::white);
    }
    painter.restore();
}

// Each edge of the scan in the exposed part, painted as anti-aliasing paints it: a band of a few
// pixels along the edge is drawn apart, the ground and then the scan with its edge smoothed, and
// put in place. Apart, the painter works on the band's pixels alone.
void ImageView::SmoothEdges(QPainter& painter, const QImage& image, const QTransform& transform,
                            const QRect& exposed) const {
    constexpr double HalfBand = 2.0;
    const QPolygonF corners = transform.map(QPolygonF(QRectF(image.rect())));
    const QTransform back = transform.inverted();
    for (qsizetype i = 0; i < 4; ++i) {
        const QRectF edge = QRectF(corners.at(i), corners.at((i + 1) % 4)).normalized();
        const QRect area =
            edge.adjusted(-HalfBand, -HalfBand, HalfBand, HalfBand).toAlignedRect() & exposed;
        if (area.isEmpty()) continue;
        const QRect source =
            back.mapRect(QRectF(area)).toAlignedRect().adjusted(-2, -2, 2, 2) & image.rect();
        band_ = QImage(area.size(), QImage::Format_RGB32);
        band_.fill(Ground());
        {
            QPainter apart(&band_);
            apart.setTransform(transform * QTransform::fromTranslate(-area.left(), -area.top()));
            apart.setRenderHint(QPainter::SmoothPixmapTransform,
                                painter.testRenderHint(QPainter::SmoothPixmapTransform));
            apart.setRenderHint(QPainter::Antialiasing, true);
            DrawPixels(apart, image, source, QRect(QPoint(0, 0), area.size()));
        }
        painter.save();
        painter.resetTransform();
        painter.drawImage(area.topLeft(), band_);
        painter.restore();
    }
}

void ImageView::PaintScan(QPainter& painter, const QRect& exposed) const {
    const bool smoothing = smoothing_ && zoom_ < 1.0;
    // Between quick steps the nearest pixels are taken, of the same copy.
    const bool smooth = smoothing && !quick_;
    // Smoothing a zoomed-out view starts from the box-filtered copy nearest above the zoom.
    int reduction = 1;
    if (smoothing && zoom_ <= 0.25 && !reduced_.Quarter.isNull())
        reduction = 4;
    else if (smoothing && zoom_ <= 0.5 && !reduced_.Half.isNull())
        reduction = 2;
    const QImage& image =
        reduction == 4 ? reduced_.Quarter : (reduction == 2 ? reduced_.Half : scan_.Pristine);
    QTransform transform = ImageToViewport(zoom_);
    transform.scale(reduction, reduction);
    // A turned scan paints its whole bounding box, the ground in its corners included.
    const QRect cover = rotation_ != 0.0 ? exposed & ContentRect() : QRect();
    PaintLayer(painter, image, transform, exposed, smooth, cover);
}

QRect ImageView::LensRect() const {
    if (!lensCentre_) return {};
    const QPoint corner = *lensCentre_ - QPoint(LensDiameter / 2, LensDiameter / 2);
    return {corner, QSize(LensDiameter, LensDiameter)};
}

void ImageView::PaintLens(QPainter& painter, const QRect& exposed) const {
    const QRect lens = LensRect();
    if (!magnifier_ || !lens.intersects(exposed)) return;
    const QPointF centre(*lensCentre_);
    // The image point at the pointer stays there, magnified twice the present zoom.
    const QTransform magnify = QTransform::fromTranslate(-centre.x(), -centre.y()) *
                               QTransform::fromScale(LensMagnification, LensMagnification) *
                               QTransform::fromTranslate(centre.x(), centre.y());
    const double lensZoom = zoom_ * LensMagnification;
    painter.save();
    painter.setClipRegion(QRegion(lens, QRegion::Ellipse), Qt::IntersectClip);
    painter.fillRect(lens, Ground());
    PaintLayer(painter, scan_.Pristine, ImageToViewport(zoom_) * magnify, lens & exposed,
               smoothing_ && lensZoom < 1.0);
    painter.restore();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Shadow), LensBorder));
    painter.drawEllipse(lens);
    painter.restore();
}

// The dark ground around the scan, in its corners when turned and in the magnifier.
QColor ImageView::Ground() const {
    return palette().color(QPalette::Dark);
}

// The turned or upright scan's bounding box in the view, with every pixel it touches.
QRect ImageView::ContentRect() const {
    return ImageToViewport(zoom_).mapRect(QRectF(scan_.Pristine.rect())).toAlignedRect();
}

// The dark ground around the scan. Where an upright scan covers the view it is not painted
// first: that would write every pixel twice. A turned scan paints the ground within its
// bounding box itself.
QRegion ImageView::Background(const QRect& exposed) const {
    if (scan_.Pristine.isNull()) return exposed;
    if (rotation_ != 0.0) return QRegion(exposed).subtracted(ContentRect());
    const QRectF image = ImageToViewport(zoom_).mapRect(QRectF(scan_.Pristine.rect()));
    const QRect covered(
        QPoint(static_cast<int>(std::ceil(image.left())), static_cast<int>(std::ceil(image.top()))),
        QPoint(static_cast<int>(std::floor(image.right())) - 1,
               static_cast<int>(std::floor(image.bottom())) - 1));
    return QRegion(exposed).subtracted(covered);
}

void ImageView::paintEvent(QPaintEvent* event) {
    const QRect exposed = event->rect();
    {
        QPainter painter(viewport());
        for (const QRect& ground : Background(exposed))
            painter.fillRect(ground, Ground());
        if (!scan_.Pristine.isNull()) {
            PaintScan(painter, exposed);
            PaintLens(painter, exposed);
        }
    }
    repaintAll_ = false;
    ReleaseReplaced();
    BeginReduction();
    emit repainted();
}

void ImageView::MoveLens(std::optional<QPoint> centre) {
    const int margin = LensBorder + 1;
    if (lensCentre_) viewport()->update(LensRect().adjusted(-margin, -margin, margin, margin));
    lensCentre_ = centre;
    if (lensCentre_) viewport()->update(LensRect().adjusted(-margin, -margin, margin, margin));
}

} // namespace tv
