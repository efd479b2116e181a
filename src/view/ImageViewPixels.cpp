#include "view/ImageViewPixels.h"

#include <QPaintEngine>
#include <QPainter>
#include <QRegion>
#include <QTransform>
#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tv {

namespace {

// Rows converted at a time when the image is only moved: 32 rows of a wide view fit in the
// processor's second-level cache.
constexpr int BandRows = 32;

// Moved pixels written straight into the painter's are shared with a second core from this many
// (a quarter of a 1920 x 1080 view): below, handing half over costs more than it saves.
constexpr qint64 SharedPixels = 512 * 1024;

using Colours = std::array<QRgb, 256>;

// 32-bit rows to convert into: row 0 and column 0 are the source rectangle's top left pixel.
struct Rows32 {
    uchar* Bits;
    qsizetype BytesPerLine;
    // Written past the processor's caches: a whole view's pixels, which would only push out
    // what is worth keeping there, and which then need not be read in before they are written.
    bool Stream = false;
    QRgb* operator[](int y) const { return reinterpret_cast<QRgb*>(Bits + y * BytesPerLine); }
};

#if defined(__SSE2__)
bool Aligned(const QRgb* to) {
    return (reinterpret_cast<std::uintptr_t>(to) & 15U) == 0;
}

// Four pixels; streamed only to an address the processor can stream to.
void StoreFour(QRgb* to, __m128i pixels, bool stream) {
    if (stream)
        _mm_stream_si128(reinterpret_cast<__m128i*>(to), pixels);
    else
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), pixels);
}
#endif

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
#if defined(__SSE2__)
        const bool stream = out.Stream && Aligned(to);
        for (; x + 8 <= end; x += 8, to += 8) {
            const QRgb* eight = pixels.at(row[x >> 3]).data();
            StoreFour(to, _mm_loadu_si128(reinterpret_cast<const __m128i*>(eight)), stream);
            StoreFour(to + 4, _mm_loadu_si128(reinterpret_cast<const __m128i*>(eight + 4)), stream);
        }
#endif
        for (; x + 8 <= end; x += 8, to += 8)
            std::memcpy(to, pixels.at(row[x >> 3]).data(), 8 * sizeof(QRgb));
        for (; x < end; ++x)
            *to++ = pixelAt(row, x);
    }
}

// Sixteen grey pixels at a time where the processor has SSE2 (every x86-64 one): each byte
// repeated into the three colour bytes of an opaque pixel. A whole 1920 x 1080 view converts in
// about half the time of the plain loop, which the compiler does not vectorise at -O2.
int StageGreySixteens(const uchar* from, QRgb* to, int width, bool stream) {
    int x = 0;
#if defined(__SSE2__)
    stream = stream && Aligned(to);
    const __m128i opaque = _mm_set1_epi32(static_cast<int>(0xFF000000U));
    for (; x + 16 <= width; x += 16) {
        const __m128i grey = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + x));
        const __m128i low = _mm_unpacklo_epi8(grey, grey);
        const __m128i high = _mm_unpackhi_epi8(grey, grey);
        auto store = [&](int at, __m128i pixels) {
            StoreFour(to + x + at, _mm_or_si128(pixels, opaque), stream);
        };
        store(0, _mm_unpacklo_epi16(low, low));
        store(4, _mm_unpackhi_epi16(low, low));
        store(8, _mm_unpacklo_epi16(high, high));
        store(12, _mm_unpackhi_epi16(high, high));
    }
#else
    (void)from;
    (void)to;
    (void)width;
    (void)stream;
#endif
    return x;
}

void StageGrey(const QImage& image, const QRect& source, Rows32 out) {
    for (int y = 0; y < source.height(); ++y) {
        const uchar* from = image.constScanLine(source.top() + y) + source.left();
        QRgb* to = out[y];
        for (int x = StageGreySixteens(from, to, source.width(), out.Stream); x < source.width();
             ++x)
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
    if (image.format() == QImage::Format_Grayscale8) {
        StageGrey(image, source, out);
    } else {
        const Colours colours = PaletteOf(image, image.hasAlphaChannel());
        if (image.depth() == 1)
            StageBilevel(image, source, colours, out);
        else
            StageIndexed(image, source, colours, out);
    }
#if defined(__SSE2__)
    // Streamed pixels are in memory, for the painter and for the other core, only after this.
    if (out.Stream) _mm_sfence();
#endif
}

// The whole-pixel move from the painter's coordinates to its device's, if that is all there is.
std::optional<QPoint> WholePixelMove(const QTransform& transform) {
    if (transform.type() > QTransform::TxTranslate) return std::nullopt;
    const QPoint move(qRound(transform.dx()), qRound(transform.dy()));
    if (move.x() != transform.dx() || move.y() != transform.dy()) return std::nullopt;
    return move;
}

// The 32-bit image a raster painter paints on, when opaque pixels may be written straight into
// it as the painter would draw them: no clip but the device's own, full opacity, drawn over.
const QImage* DirectTarget(QPainter& painter, const QImage& image) {
    if (image.hasAlphaChannel() || painter.hasClipping() || painter.opacity() < 1.0 ||
        painter.compositionMode() != QPainter::CompositionMode_SourceOver)
        return nullptr;
    QPaintEngine* engine = painter.paintEngine();
    QPaintDevice* device = engine != nullptr ? engine->paintDevice() : nullptr;
    if (engine == nullptr || engine->type() != QPaintEngine::Raster || device == nullptr ||
        device->devType() != QInternal::Image)
        return nullptr;
    const auto* target = static_cast<const QImage*>(device);
    if (target->format() != QImage::Format_RGB32 &&
        target->format() != QImage::Format_ARGB32_Premultiplied)
        return nullptr;
    return target;
}

// The kinds of image the turned drawing reads.
bool ReadsTurned(const QImage& image) {
    switch (image.format()) {
    case QImage::Format_Mono:
    case QImage::Format_MonoLSB:
    case QImage::Format_Indexed8:
    case QImage::Format_Grayscale8:
    case QImage::Format_RGB32:
        return true;
    default:
        return false;
    }
}

qint64 FloorDiv(qint64 a, qint64 b) {
    const qint64 q = a / b;
    return (a % b != 0 && (a < 0) != (b < 0)) ? q - 1 : q;
}

// The steps t in [0, count) at which value + t * step lies in [low, high), as [first, last).
std::pair<qint64, qint64> StepsWithin(qint64 value, qint64 step, qint64 low, qint64 high,
                                      qint64 count) {
    qint64 first = 0;
    qint64 last = count;
    if (step > 0) {
        first = FloorDiv(low - value + step - 1, step);
        last = FloorDiv(high - value + step - 1, step);
    } else if (step < 0) {
        first = FloorDiv(high - value, step) + 1;
        last = FloorDiv(low - value, step) + 1;
    } else if (value < low || value >= high) {
        last = 0;
    }
    first = std::clamp<qint64>(first, 0, count);
    last = std::clamp<qint64>(last, first, count);
    return {first, last};
}

// Where the device rows of a part find their pixels in the image: 16.16 fixed point, a step along
// a row adding the same amount to both coordinates.
struct TurnedRows {
    QTransform Back; // device to image
    QRect Source;
    QRect Part;
    Rows32 Out; // row 0 is the part's top row
    const uchar* Bits;
    qsizetype BytesPerLine;

    static constexpr double One = 65536.0;

    // Rows [top, bottom) of the part; pixels whose centre falls outside the source are left as
    // they are. Fetch(row, x) gives pixel x of an image row as the painter's 32-bit pixel.
    template <typename Fetch> void Draw(int top, int bottom, Fetch fetch) const {
        if (Back.m12() == 0.0 && Back.m21() == 0.0) return DrawUpright(top, bottom, fetch);
        const auto stepX = static_cast<qint64>(std::llround(Back.m11() * One));
        const auto stepY = static_cast<qint64>(std::llround(Back.m12() * One));
        for (int y = top; y < bottom; ++y) {
            const auto [fx, fy] = RowStart(y);
            const auto [first, last] = Within(fx, fy, stepX, stepY);
            QRgb* to = Out[y - Part.top()];
            qint64 px = fx + first * stepX;
            qint64 py = fy + first * stepY;
            for (qint64 t = first; t < last; ++t, px += stepX, py += stepY)
                to[t] = fetch(Bits + (py >> 16) * BytesPerLine, static_cast<int>(px >> 16));
        }
    }

  private:
    std::pair<qint64, qint64> RowStart(int y) const {
        const QPointF first = Back.map(QPointF(Part.left() + 0.5, y + 0.5));
        return {static_cast<qint64>(std::floor(first.x() * One)),
                static_cast<qint64>(std::floor(first.y() * One))};
    }

    // The steps along a row whose pixel centres fall within the source.
    std::pair<qint64, qint64> Within(qint64 fx, qint64 fy, qint64 stepX, qint64 stepY) const {
        const qint64 count = Part.width();
        const auto [x0, x1] = StepsWithin(fx, stepX, qint64(Source.left()) << 16,
                                          qint64(Source.right() + 1) << 16, count);
        const auto [y0, y1] = StepsWithin(fy, stepY, qint64(Source.top()) << 16,
                                          qint64(Source.bottom() + 1) << 16, count);
        const qint64 first = std::max(x0, y0);
        return {first, std::max(first, std::min(x1, y1))};
    }

    // Scaled or mirrored but not turned: every row takes its pixels from the same columns of
    // one image row, worked out once, each from its pixel's centre.
    template <typename Fetch> void DrawUpright(int top, int bottom, Fetch fetch) const {
        qint64 first = -1;
        std::vector<int> columns;
        for (int t = 0; t < Part.width(); ++t) {
            const double x = std::floor(Back.m11() * (Part.left() + t + 0.5) + Back.dx());
            if (x < Source.left() || x > Source.right()) continue;
            if (first < 0) first = t;
            columns.push_back(static_cast<int>(x));
        }
        if (first < 0) return;
        for (int y = top; y < bottom; ++y) {
            const double iy = std::floor(Back.m22() * (y + 0.5) + Back.dy());
            if (iy < Source.top() || iy > Source.bottom()) continue;
            const uchar* row = Bits + static_cast<qsizetype>(iy) * BytesPerLine;
            QRgb* to = Out[y - Part.top()] + first;
            for (int x : columns)
                *to++ = fetch(row, x);
        }
    }

  public:
    // Rows [top, bottom) read from the image, through one fetch made for its kind.
    void DrawFrom(const QImage& image, int top, int bottom) const {
        const Colours colours = PaletteOf(image, false);
        switch (image.format()) {
        case QImage::Format_Grayscale8:
            return Draw(top, bottom,
                        [](const uchar* row, int x) { return 0xFF000000U | (row[x] * 0x010101U); });
        case QImage::Format_RGB32:
            return Draw(top, bottom, [](const uchar* row, int x) {
                return reinterpret_cast<const QRgb*>(row)[x];
            });
        case QImage::Format_Indexed8:
            return Draw(top, bottom,
                        [&colours](const uchar* row, int x) { return colours[row[x]]; });
        case QImage::Format_Mono:
            return Draw(top, bottom, [&colours](const uchar* row, int x) {
                return colours[(row[x >> 3] >> (7 - (x & 7))) & 1];
            });
        default:
            return Draw(top, bottom, [&colours](const uchar* row, int x) {
                return colours[(row[x >> 3] >> (x & 7)) & 1];
            });
        }
    }
};

} // namespace

bool PixelStage::Needed(const QImage& image) {
    switch (image.format()) {
    case QImage::Format_Mono:
    case QImage::Format_MonoLSB:
    case QImage::Format_Indexed8:
    // Grey is staged sixteen pixels at a time in about 60 % of the time Qt's painter takes to
    // copy it, and turned or scaled Qt samples it along its slowest path.
    case QImage::Format_Grayscale8:
        return true;
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
    const QImage* target = DirectTarget(painter, image);
    if (target == nullptr) return false;
    QPaintEngine* engine = painter.paintEngine();
    const std::optional<QPoint> move = WholePixelMove(painter.deviceTransform());
    if (!move) return false;
    const QRect onDevice = source.translated(*move) & target->rect();
    const QRegion clip = engine->systemClip();
    const QRegion drawn = clip.isEmpty() ? QRegion(onDevice) : clip.intersected(onDevice);
    // The painter's own pixels, written where it would write them: no copy of the image is
    // made, shared or not.
    auto* bits = const_cast<uchar*>(target->constBits());
    const qsizetype bytesPerLine = target->bytesPerLine();
    auto convert = [&](const QRect& rows, bool stream) {
        Convert(image, rows.translated(-*move),
                Rows32{bits + rows.top() * bytesPerLine + rows.left() * qsizetype(sizeof(QRgb)),
                       bytesPerLine, stream});
    };
    for (const QRect& part : drawn) {
        if (qint64(part.width()) * part.height() < SharedPixels) {
            convert(part, false);
            continue;
        }
        // Writing a whole view's pixels is bound by how fast one core gets them to memory: a
        // second core writes the lower half meanwhile. Not yet started when the upper half is
        // done, it is taken back and written here.
        const int upper = part.height() / 2;
        const QRect lower = part.adjusted(0, upper, 0, 0);
        QFuture<void> other = QtConcurrent::run([&convert, lower] { convert(lower, true); });
        convert(QRect(part.topLeft(), QSize(part.width(), upper)), true);
        other.waitForFinished();
    }
    return true;
}

bool PixelStage::DrawTurned(QPainter& painter, const QImage& image, const QRect& source,
                            std::optional<QRgb> ground, const QRect& area) {
    if (painter.testRenderHint(QPainter::SmoothPixmapTransform) ||
        painter.testRenderHint(QPainter::Antialiasing) || !ReadsTurned(image))
        return false;
    const QImage* target = DirectTarget(painter, image);
    const QTransform toDevice = painter.deviceTransform();
    if (target == nullptr || !toDevice.isAffine() || !toDevice.isInvertible()) return false;
    // The area is in the painter's coordinates before its transform.
    const QTransform areaToDevice = painter.transform().inverted() * toDevice;
    const QRect covered = ground ? areaToDevice.mapRect(QRectF(area)).toAlignedRect()
                                 : toDevice.mapRect(QRectF(source)).toAlignedRect();
    const QRect onDevice = covered & target->rect();
    const QRegion clip = painter.paintEngine()->systemClip();
    const QRegion drawn = clip.isEmpty() ? QRegion(onDevice) : clip.intersected(onDevice);
    auto* bits = const_cast<uchar*>(target->constBits());
    const qsizetype bytesPerLine = target->bytesPerLine();
    for (const QRect& part : drawn) {
        const TurnedRows rows{
            toDevice.inverted(),
            source,
            part,
            Rows32{bits + part.top() * bytesPerLine + part.left() * qsizetype(sizeof(QRgb)),
                   bytesPerLine},
            image.constBits(),
            image.bytesPerLine()};
        rows.DrawFrom(image, part.top(), part.bottom() + 1);
    }
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
