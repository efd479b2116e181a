#include "view/ImageViewDecode.h"

#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace tv {

namespace {

// Rows converted to grey at a time when reducing a scan stored neither as 8-bit grey nor as
// bilevel, so that it is never expanded whole.
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

qint64 DecodedBytes(QSize size, QImage::Format format) {
    const qint64 bitsPerPixel = QImage::toPixelFormat(format).bitsPerPixel();
    const qint64 bytesPerLine = (size.width() * bitsPerPixel + 31) / 32 * 4;
    return bytesPerLine * size.height();
}

bool ExceedsAllocationLimit(QSize size, QImage::Format format) {
    if (!size.isValid() || format == QImage::Format_Invalid) return false;
    return DecodedBytes(size, format) > qint64(AllocationLimitMegabytes) * 1024 * 1024;
}

QImage GreyStrip(const QImage& image, int top, int rows) {
    return image.copy(0, top, image.width(), rows).convertToFormat(QImage::Format_Grayscale8);
}

// Rows [top, top + source height) of the scan halved into the half-size grey image: each pixel
// the average of a 2 x 2 block of the greys a row reader gives; the last column and row of an
// odd size stand in for their missing neighbours.
template <typename Grey>
void HalveRows(const QImage& source, int top, QImage& half, const Grey& grey) {
    const int lastColumn = source.width() - 1;
    const int rows = source.height();
    const int columns = half.width();
    for (int y = 0; y < rows; y += 2) {
        const uchar* upper = source.constScanLine(y);
        const uchar* lower = source.constScanLine(std::min(y + 1, rows - 1));
        uchar* out = half.scanLine((top + y) / 2);
        for (int x = 0; x < columns; ++x) {
            const int left = 2 * x;
            const int right = std::min(left + 1, lastColumn);
            const int sum =
                grey(upper, left) + grey(upper, right) + grey(lower, left) + grey(lower, right);
            out[x] = static_cast<uchar>((sum + 2) / 4);
        }
    }
}

void HalveGrey(const QImage& grey, int top, QImage& half) {
    HalveRows(grey, top, half, [](const uchar* row, int x) { return int(row[x]); });
}

// A bilevel scan is read bit by bit, through its two colours' greys, never expanded whole.
void HalveBilevel(const QImage& bits, QImage& half) {
    const int greys[2] = {qGray(bits.color(0)), qGray(bits.color(1))};
    if (bits.format() == QImage::Format_MonoLSB)
        HalveRows(bits, 0, half, [&greys](const uchar* row, int x) {
            return greys[(row[x >> 3] >> (x & 7)) & 1];
        });
    else
        HalveRows(bits, 0, half, [&greys](const uchar* row, int x) {
            return greys[(row[x >> 3] >> (7 - (x & 7))) & 1];
        });
}

QImage HalfSizeGrey(const QImage& image) {
    QImage half((image.width() + 1) / 2, (image.height() + 1) / 2, QImage::Format_Grayscale8);
    if (half.isNull()) return half;
    if (image.format() == QImage::Format_Grayscale8) {
        HalveGrey(image, 0, half);
    } else if (image.depth() == 1 && image.colorCount() == 2) {
        HalveBilevel(image, half);
    } else {
        for (int top = 0; top < image.height(); top += StripRows)
            HalveGrey(GreyStrip(image, top, std::min(StripRows, image.height() - top)), top, half);
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

} // namespace

QImage HalfSize(const QImage& image) {
    if (image.isNull()) return {};
    if (image.allGray()) return HalfSizeGrey(image);
    // A colour scan is already stored in 32 bits; Qt's own box filter serves it.
    return image.scaled((image.width() + 1) / 2, (image.height() + 1) / 2, Qt::IgnoreAspectRatio,
                        Qt::SmoothTransformation);
}

void KeepScanMemoryForTheNextScan() {
#if defined(__GLIBC__)
    // The platform's allocator gives large blocks back to the system when they are freed, and
    // lowers its own thresholds as it sees them: both are set here once. Elsewhere the platform's
    // allocator decides.
    constexpr int LargestHeapBlock = 32 * 1024 * 1024;
    constexpr int KeptWhenFreed = 256 * 1024 * 1024;
    mallopt(M_MMAP_THRESHOLD, LargestHeapBlock);
    mallopt(M_TRIM_THRESHOLD, KeptWhenFreed);
#endif
}

namespace {

DecodedScan DecodeWith(QImageReader& reader, const QString& path) {
    DecodedScan scan;
    scan.Path = path;
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
    return scan;
}

} // namespace

DecodedScan DecodeScan(const QString& path) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    return DecodeWith(reader, path);
}

std::optional<DecodedScan> DecodeIfQuick(const QString& path) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    const QImage::Format format = reader.imageFormat();
    if (!size.isValid() || format == QImage::Format_Invalid ||
        DecodedBytes(size, format) > QuickDecodeBytes)
        return std::nullopt;
    return DecodeWith(reader, path);
}

ReducedCopies ReduceScan(const QImage& pristine) {
    ReducedCopies copies;
    copies.Half = HalfSize(pristine);
    if (!copies.Half.isNull()) copies.Quarter = HalfSize(copies.Half);
    return copies;
}

} // namespace tv
