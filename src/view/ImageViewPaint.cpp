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

void ImageView::PaintLayer(QPainter& painter, const QImage& image, const QTransform& transform,
                           const QRect& exposed, bool smooth) const {
    const QRectF needed = transform.inverted().mapRect(QRectF(exposed));
    const QRect source = needed.toAlignedRect().adjusted(-2, -2, 2, 2) & image.rect();
    if (source.isEmpty()) return;
    painter.save();
    painter.setTransform(transform);
    painter.setRenderHint(QPainter::Antialiasing, antiAlias_);
    // Nearest neighbour unless smoothing a reduced view: handwriting's pixels stay sharp.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
    // Converting costs a pass over the source: worth it only where it is about the size of
    // what is painted.
    const qint64 painted = qint64(exposed.width()) * exposed.height();
    if (PixelStage::Needed(image, transform) &&
        qint64(source.width()) * source.height() <= 2 * painted)
        stage_.Draw(painter, image, source);
    else
        painter.drawImage(source.topLeft(), image, source);
    if (negative_) {
        // White in difference mode turns each painted pixel into its negative.
        painter.setCompositionMode(QPainter::CompositionMode_Difference);
        painter.fillRect(source, Qt::white);
    }
    painter.restore();
}

void ImageView::PaintScan(QPainter& painter, const QRect& exposed) const {
    const bool smooth = smoothing_ && zoom_ < 1.0;
    // Smoothing a zoomed-out view starts from the box-filtered copy nearest above the zoom.
    int reduction = 1;
    if (smooth && zoom_ <= 0.25 && !reduced_.Quarter.isNull())
        reduction = 4;
    else if (smooth && zoom_ <= 0.5 && !reduced_.Half.isNull())
        reduction = 2;
    const QImage& image =
        reduction == 4 ? reduced_.Quarter : (reduction == 2 ? reduced_.Half : scan_.Pristine);
    QTransform transform = ImageToViewport(zoom_);
    transform.scale(reduction, reduction);
    PaintLayer(painter, image, transform, exposed, smooth);
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
    painter.fillRect(lens, palette().color(QPalette::Dark));
    PaintLayer(painter, scan_.Pristine, ImageToViewport(zoom_) * magnify, lens & exposed,
               smoothing_ && lensZoom < 1.0);
    painter.restore();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Shadow), LensBorder));
    painter.drawEllipse(lens);
    painter.restore();
}

// The dark ground around the scan. Where an upright scan covers the view it is not painted
// first: that would write every pixel twice.
QRegion ImageView::Background(const QRect& exposed) const {
    if (scan_.Pristine.isNull() || rotation_ != 0.0) return exposed;
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
            painter.fillRect(ground, palette().color(QPalette::Dark));
        if (!scan_.Pristine.isNull()) {
            PaintScan(painter, exposed);
            PaintLens(painter, exposed);
        }
    }
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
