#include "view/ImageViewDecode.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <memory>

#if defined(__GLIBC__)
#include <malloc.h>
#endif
#if defined(Q_OS_UNIX)
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
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

// The scan's file, open for reading, or why it cannot be: the load error code and the reason.
struct ScanFile {
    std::unique_ptr<QFile> File;
    int ErrorCode = LoadOk;
    QString Reason;
};

ScanFile Refused(int errorCode, const QString& reason) {
    return {nullptr, errorCode, reason};
}

const char* const NotARegularFile = "not a regular file";

#if defined(Q_OS_UNIX)
QString SystemReason(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

// Looked at before it is opened, and opened without waiting: a named pipe would otherwise hold
// the thread until something writes to it. The descriptor is looked at again, in case the path
// was changed in between.
ScanFile OpenScanFile(const QString& path) {
    const QByteArray native = QFile::encodeName(path);
    struct stat info {};
    if (::stat(native.constData(), &info) != 0) {
        const int error = errno;
        const bool missing = error == ENOENT || error == ENOTDIR;
        return Refused(missing ? LoadFileNotFound : LoadDeviceError, SystemReason(error));
    }
    if (!S_ISREG(info.st_mode)) return Refused(LoadNotAPicture, NotARegularFile);
    const int descriptor = ::open(native.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return Refused(LoadDeviceError, SystemReason(errno));
    if (::fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(descriptor);
        return Refused(LoadNotAPicture, NotARegularFile);
    }
    ScanFile opened{std::make_unique<QFile>(path), LoadOk, {}};
    if (!opened.File->open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return Refused(LoadDeviceError, opened.File->errorString());
    }
    return opened;
}
#else
// Elsewhere a path that is not a regular file cannot hold an open: only a file is opened.
ScanFile OpenScanFile(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists()) return Refused(LoadFileNotFound, QStringLiteral("No such file"));
    if (!info.isFile()) return Refused(LoadNotAPicture, NotARegularFile);
    ScanFile opened{std::make_unique<QFile>(path), LoadOk, {}};
    if (!opened.File->open(QIODevice::ReadOnly))
        return Refused(LoadDeviceError, opened.File->errorString());
    return opened;
}
#endif

DecodedScan RefusedScan(const QString& path, const ScanFile& file) {
    DecodedScan scan;
    scan.Path = path;
    scan.ErrorCode = file.ErrorCode;
    scan.Reason = file.Reason;
    return scan;
}

// A GIF's frames are drawn on its logical screen, which the reader allocates whole whatever
// size the frames are: the screen's size is in bytes 6 to 9 of the file.
QSize GifScreen(QIODevice& device) {
    const QByteArray head = device.peek(10);
    if (head.size() < 10 || !head.startsWith("GIF")) return {};
    auto word = [&head](int at) { return int(uchar(head[at])) | int(uchar(head[at + 1])) << 8; };
    return {word(6), word(8)};
}

QString TooLargeReason(QSize size) {
    return QStringLiteral("a picture of %1 x %2 pixels is larger than the %3 MB allowed")
        .arg(size.width())
        .arg(size.height())
        .arg(AllocationLimitMegabytes);
}

// The scan's file with a reader on it, and the logical screen of a GIF, read before the reader
// moves in the file.
struct ScanReader {
    explicit ScanReader(const QString& path) : File(OpenScanFile(path)) {
        if (!File.File) return;
        GifScreenSize = GifScreen(*File.File);
        Reader.setDevice(File.File.get());
        Reader.setAutoTransform(true);
    }
    ScanFile File;
    QSize GifScreenSize;
    QImageReader Reader;
};

DecodedScan DecodeWith(ScanReader& scanReader, const QString& path) {
    QImageReader& reader = scanReader.Reader;
    DecodedScan scan;
    scan.Path = path;
    scan.Format = reader.format();
    const QSize size = reader.size();
    const QSize screen = scanReader.GifScreenSize;
    if (ExceedsAllocationLimit(size, reader.imageFormat()) ||
        ExceedsAllocationLimit(screen, QImage::Format_ARGB32)) {
        scan.ErrorCode = LoadTooLarge;
        scan.Reason = TooLargeReason(screen.isValid() ? screen : size);
        return scan;
    }
    QImage image = reader.read();
    if (image.isNull()) {
        scan.ErrorCode = ErrorCodeOf(reader.error(), size.isValid());
        scan.Reason = reader.errorString();
        return scan;
    }
    scan.Pristine = Compact(std::move(image));
    scan.FileSize = scanReader.File.File->size();
    return scan;
}

} // namespace

DecodedScan DecodeScan(const QString& path) {
    ScanReader scan(path);
    if (!scan.File.File) return RefusedScan(path, scan.File);
    return DecodeWith(scan, path);
}

std::optional<DecodedScan> DecodeIfQuick(const QString& path) {
    ScanReader scan(path);
    if (!scan.File.File) return RefusedScan(path, scan.File);
    const QSize size = scan.Reader.size();
    const QImage::Format format = scan.Reader.imageFormat();
    if (!size.isValid() || format == QImage::Format_Invalid ||
        DecodedBytes(size, format) > QuickDecodeBytes)
        return std::nullopt;
    return DecodeWith(scan, path);
}

ReducedCopies ReduceScan(const QImage& pristine) {
    ReducedCopies copies;
    copies.Half = HalfSize(pristine);
    if (!copies.Half.isNull()) copies.Quarter = HalfSize(copies.Half);
    return copies;
}

} // namespace tv
