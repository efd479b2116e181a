#include "view/ImageViewPixels.h"

#include <QPaintEngine>
#include <QPainter>
#include <QRegion>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

namespace tv {

namespace {

// Rows converted at a time when the image is only moved: 32 rows of a wide view fit in the
// processor's second-level cache.
constexpr int BandRows = 32;

using Colours = std::array<QRgb, 256>;

// 32-bit rows to convert into: row 0 and column 0 are the source rectangle's top left pixel.
struct Rows32 {
    uchar* Bits;
    qsizetype BytesPerLine;
    QRgb* operator[](int y) const { return reinterpret_cast<QRgb*>(Bits + y * BytesPerLine); }
};

// The colour table as the painter's 32-bit pixels; indices beyond it are opaque black.
Colours PaletteOf(const QImage& image, bool premultiplied) {
    Colours colours;
    colours.fill(qRgb(0, 0, 0));
    const QList<QRgb> table = image.colorTable();
    for (qsizetype i = 0; i < table.size() && i < 256; ++i)
        colours.at(static_cast<std::size_t>(i)) =
            premultiplied ? qPremultiply(table.at(i)) : (table.at(i) | 0xFF000000U);
    return colours;
}

// The eight pixels of every byte of a bilevel row, most significant bit first or last.
std::array<std::array<QRgb, 8>, 256> EightPixels(const Colours& colours, bool lsbFirst) {
    std::array<std::array<QRgb, 8>, 256> pixels{};
    for (std::size_t byte = 0; byte < 256; ++byte)
        for (std::size_t i = 0; i < 8; ++i) {
            const std::size_t bit = lsbFirst ? (byte >> i) & 1U : (byte >> (7 - i)) & 1U;
            pixels.at(byte).at(i) = colours.at(bit);
        }
    return pixels;
}

void StageBilevel(const QImage& image, const QRect& source, const Colours& colours, Rows32 out) {
    const bool lsbFirst = image.format() == QImage::Format_MonoLSB;
    const auto pixels = EightPixels(colours, lsbFirst);
    auto pixelAt = [&](const uchar* row, int x) {
        const int bit =
            lsbFirst ? (row[x >> 3] >> (x & 7)) & 1 : (row[x >> 3] >> (7 - (x & 7))) & 1;
        return colours.at(static_cast<std::size_t>(bit));
    };
    for (int y = 0; y < source.height(); ++y) {
        const uchar* row = image.constScanLine(source.top() + y);
        QRgb* to = out[y];
        int x = source.left();
        const int end = source.left() + source.width();
        for (; x < end && (x & 7) != 0; ++x)
            *to++ = pixelAt(row, x);
        for (; x + 8 <= end; x += 8, to += 8)
            std::memcpy(to, pixels.at(row[x >> 3]).data(), 8 * sizeof(QRgb));
        for (; x < end; ++x)
            *to++ = pixelAt(row, x);
    }
}

void StageGrey(const QImage& image, const QRect& source, Rows32 out) {
    for (int y = 0; y < source.height(); ++y) {
        const uchar* from = image.constScanLine(source.top() + y) + source.left();
        QRgb* to = out[y];
        for (int x = 0; x < source.width(); ++x)
            to[x] = 0xFF000000U | (from[x] * 0x010101U);
    }
}

void StageIndexed(const QImage& image, const QRect& source, const Colours& colours, Rows32 out) {
    for (int y = 0; y < source.height(); ++y) {
        const uchar* from = image.constScanLine(source.top() + y) + source.left();
        QRgb* to = out[y];
        for (int x = 0; x < source.width(); ++x)
            to[x] = colours.at(from[x]);
    }
}

void Convert(const QImage& image, const QRect& source, Rows32 out) {
    if (image.format() == QImage::Format_Grayscale8) return StageGrey(image, source, out);
    const Colours colours = PaletteOf(image, image.hasAlphaChannel());
    if (image.depth() == 1)
        StageBilevel(image, source, colours, out);
    else
        StageIndexed(image, source, colours, out);
}

// The whole-pixel move from the painter's coordinates to its device's, if that is all there is.
std::optional<QPoint> WholePixelMove(const QTransform& transform) {
    if (transform.type() > QTransform::TxTranslate) return std::nullopt;
    const QPoint move(qRound(transform.dx()), qRound(transform.dy()));
    if (move.x() != transform.dx() || move.y() != transform.dy()) return std::nullopt;
    return move;
}

} // namespace

bool PixelStage::Needed(const QImage& image, const QTransform& transform) {
    switch (image.format()) {
    case QImage::Format_Mono:
    case QImage::Format_MonoLSB:
    case QImage::Format_Indexed8:
        return true;
    case QImage::Format_Grayscale8:
        // Moved only, grey is copied to the screen fast enough; turned or scaled, Qt samples it
        // along its slowest path.
        return transform.type() > QTransform::TxTranslate;
    default:
        return false;
    }
}

void PixelStage::Draw(QPainter& painter, const QImage& image, const QRect& source) {
    if (DrawDirect(painter, image, source)) return;
    const int rows =
        painter.transform().type() <= QTransform::TxTranslate ? BandRows : source.height();
    for (int top = source.top(); top <= source.bottom(); top += rows) {
        const QRect band(source.left(), top, source.width(),
                         std::min(rows, source.bottom() + 1 - top));
        painter.drawImage(band.topLeft(), Part(image, band));
    }
}

// Only opaque pixels drawn over what is there, so that writing them is what the painter would do.
bool PixelStage::DrawDirect(QPainter& painter, const QImage& image, const QRect& source) {
    if (image.hasAlphaChannel() || painter.hasClipping() || painter.opacity() < 1.0 ||
        painter.compositionMode() != QPainter::CompositionMode_SourceOver)
        return false;
    QPaintEngine* engine = painter.paintEngine();
    QPaintDevice* device = engine != nullptr ? engine->paintDevice() : nullptr;
    if (engine == nullptr || engine->type() != QPaintEngine::Raster || device == nullptr ||
        device->devType() != QInternal::Image)
        return false;
    const auto* target = static_cast<const QImage*>(device);
    if (target->format() != QImage::Format_RGB32 &&
        target->format() != QImage::Format_ARGB32_Premultiplied)
        return false;
    const std::optional<QPoint> move = WholePixelMove(painter.deviceTransform());
    if (!move) return false;
    const QRect onDevice = source.translated(*move) & target->rect();
    const QRegion clip = engine->systemClip();
    const QRegion drawn = clip.isEmpty() ? QRegion(onDevice) : clip.intersected(onDevice);
    // The painter's own pixels, written where it would write them: no copy of the image is
    // made, shared or not.
    auto* bits = const_cast<uchar*>(target->constBits());
    const qsizetype bytesPerLine = target->bytesPerLine();
    for (const QRect& part : drawn)
        Convert(image, part.translated(-*move),
                Rows32{bits + part.top() * bytesPerLine + part.left() * qsizetype(sizeof(QRgb)),
                       bytesPerLine});
    return true;
}

QImage PixelStage::Part(const QImage& image, const QRect& source) {
    const auto pixels = static_cast<std::size_t>(source.width()) * source.height();
    if (buffer_.size() < pixels) buffer_.resize(pixels);
    QImage out(reinterpret_cast<uchar*>(buffer_.data()), source.width(), source.height(),
               source.width() * static_cast<int>(sizeof(QRgb)),
               image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                       : QImage::Format_RGB32);
    Convert(image, source, Rows32{out.bits(), out.bytesPerLine()});
    return out;
}

} // namespace tv
