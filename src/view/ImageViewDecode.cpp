#include "view/ImageViewDecode.h"

#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

namespace tv {

namespace {

// Rows converted to grey at a time when reducing a scan that is not stored as 8-bit grey, so
// that a bilevel scan is never expanded whole.
constexpr int StripRows = 256;

int ErrorCodeOf(QImageReader::ImageReaderError error, bool headerRead) {
    switch (error) {
    case QImageReader::FileNotFoundError:
        return LoadFileNotFound;
    case QImageReader::DeviceError:
        return LoadDeviceError;
    case QImageReader::UnsupportedFormatError:
        return LoadNotAPicture;
    case QImageReader::InvalidDataError:
        return headerRead ? LoadInvalidData : LoadNotAPicture;
    case QImageReader::UnknownError:
        break;
    }
    return LoadUnknownError;
}

bool ExceedsAllocationLimit(QSize size, QImage::Format format) {
    if (!size.isValid() || format == QImage::Format_Invalid) return false;
    const qint64 bitsPerPixel = QImage::toPixelFormat(format).bitsPerPixel();
    const qint64 bytesPerLine = (size.width() * bitsPerPixel + 31) / 32 * 4;
    return bytesPerLine * size.height() > qint64(AllocationLimitMegabytes) * 1024 * 1024;
}

QImage GreyStrip(const QImage& image, int top, int rows) {
    const QImage strip = image.copy(0, top, image.width(), rows);
    if (strip.format() == QImage::Format_Grayscale8) return strip;
    return strip.convertToFormat(QImage::Format_Grayscale8);
}

// Halves rows [top, top + strip height) of the source into the half-size grey image.
void HalveStrip(const QImage& strip, int top, QImage& half) {
    const int lastColumn = strip.width() - 1;
    for (int y = 0; y < strip.height(); y += 2) {
        const uchar* upper = strip.constScanLine(y);
        const uchar* lower = strip.constScanLine(std::min(y + 1, strip.height() - 1));
        uchar* out = half.scanLine((top + y) / 2);
        for (int x = 0; x < half.width(); ++x) {
            const int left = 2 * x;
            const int right = std::min(left + 1, lastColumn);
            const int sum = upper[left] + upper[right] + lower[left] + lower[right];
            out[x] = static_cast<uchar>((sum + 2) / 4);
        }
    }
}

QImage HalfSizeGrey(const QImage& image) {
    QImage half((image.width() + 1) / 2, (image.height() + 1) / 2, QImage::Format_Grayscale8);
    if (half.isNull()) return half;
    for (int top = 0; top < image.height(); top += StripRows) {
        const int rows = std::min(StripRows, image.height() - top);
        HalveStrip(GreyStrip(image, top, rows), top, half);
    }
    half.setDotsPerMeterX(image.dotsPerMeterX() / 2);
    half.setDotsPerMeterY(image.dotsPerMeterY() / 2);
    return half;
}

// Some readers (GIF among them) give 32 bits per pixel whatever the file holds; a grey scan is
// kept in 8.
QImage Compact(QImage image) {
    if (image.depth() <= 8 || image.hasAlphaChannel() || !image.allGray()) return image;
    return image.convertToFormat(QImage::Format_Grayscale8);
}

void Reduce(DecodedScan& scan) {
    scan.Half = HalfSize(scan.Pristine);
    if (!scan.Half.isNull()) scan.Quarter = HalfSize(scan.Half);
}

} // namespace

QImage HalfSize(const QImage& image) {
    if (image.isNull()) return {};
    if (image.allGray()) return HalfSizeGrey(image);
    // A colour scan is already stored in 32 bits; Qt's own box filter serves it.
    return image.scaled((image.width() + 1) / 2, (image.height() + 1) / 2, Qt::IgnoreAspectRatio,
                        Qt::SmoothTransformation);
}

DecodedScan DecodeScan(const QString& path) {
    DecodedScan scan;
    scan.Path = path;
    QImageReader reader(path);
    reader.setAutoTransform(true);
    scan.Format = reader.format();
    const QSize size = reader.size();
    if (ExceedsAllocationLimit(size, reader.imageFormat())) {
        scan.ErrorCode = LoadTooLarge;
        return scan;
    }
    QImage image = reader.read();
    if (image.isNull()) {
        scan.ErrorCode = ErrorCodeOf(reader.error(), size.isValid());
        return scan;
    }
    scan.Pristine = Compact(std::move(image));
    scan.FileSize = QFileInfo(path).size();
    Reduce(scan);
    return scan;
}

} // namespace tv
