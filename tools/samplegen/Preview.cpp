#include "Preview.h"

#include <QPainter>

#include <stdexcept>

namespace samplegen {

namespace {

constexpr int PreviewWidth = 1200;
constexpr int DetailWidth = 1200;
constexpr int DetailHeight = 900;

void Save(const QImage& image, const std::string& path) {
    if (!image.save(QString::fromStdString(path), "PNG"))
        throw std::runtime_error("cannot write " + path);
}

} // namespace

void WritePreviews(const QImage& scan, const std::vector<QPointF>& points,
                   const std::string& base) {
    Save(scan.scaledToWidth(PreviewWidth, Qt::SmoothTransformation), base + "-preview.png");
    // The corner of the first column, where the first entries and their marks can be read.
    const QPointF first = points.front();
    const QRect area(static_cast<int>(first.x()) - 100, static_cast<int>(first.y()) - 250,
                     DetailWidth, DetailHeight);
    QImage detail = scan.copy(area).convertToFormat(QImage::Format_RGB32);
    QPainter painter(&detail);
    painter.setPen(QPen(QColor(220, 0, 0), 1));
    for (const QPointF& point : points) {
        const QPointF at = point - QPointF(area.topLeft());
        painter.drawLine(at, at + QPointF(160, 0));
        painter.drawLine(at - QPointF(0, 6), at + QPointF(0, 6));
    }
    painter.end();
    Save(detail, base + "-detail.png");
}

} // namespace samplegen
