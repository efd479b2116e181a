#pragma once
// Decoding a scan for the image view, a large one off the user-interface thread: the pristine
// image, kept compact (grey scans stay 8-bit, bilevel scans 1-bit), and, once it is shown, the
// reduced copies for zoomed-out views.
#include <QByteArray>
#include <QImage>
#include <QString>

#include <optional>

namespace tv {

// The largest picture the view decodes. Qt refuses images over 128 MiB by default, which a large
// scan exceeds; 1024 MB lets every real scan in, yet a corrupt header that claims an enormous
// picture cannot exhaust memory.
inline constexpr int AllocationLimitMegabytes = 1024;

// Load error codes, as the start step reports them ("Error n opening ..." unless -2), each
// cause its own (docs/RELIABILITY.md lists them):
//    0  loaded
//   -2  not a picture: no reader knows the file's format, or its header is not a picture's, or
//       the path is not a regular file (a folder, a named pipe, a device)
//    1  the file was not found
//    2  the file exists but could not be opened or read
//    3  the picture's data are invalid (the header was read, the pixels could not be)
//    4  the picture is larger than the allocation limit (a GIF's logical screen counts)
//    5  any other failure
enum LoadError : int {
    LoadOk = 0,
    LoadNotAPicture = -2,
    LoadFileNotFound = 1,
    LoadDeviceError = 2,
    LoadInvalidData = 3,
    LoadTooLarge = 4,
    LoadUnknownError = 5,
};

struct DecodedScan {
    QImage Pristine;
    QString Path;
    QByteArray Format; // the reader's name for the format ("jpeg", "tiff"...)
    qint64 FileSize = 0;
    int ErrorCode = LoadOk;
    // Why it failed, in a few words ("No such file or directory", "not a regular file").
    QString Reason;
};

// Called once at start: the memory a scan frees when the next one is opened is kept for that
// one, so that a scan of up to 32 MB decoded is not faulted in page by page on every open.
void KeepScanMemoryForTheNextScan();

// Reads the file with the picture's own orientation (EXIF) applied. Thread-safe.
DecodedScan DecodeScan(const QString& path);

// A scan whose decoded pixels take at most this many bytes (a bilevel scan of 40 megapixels, a
// grey one of 6) decodes in a few tens of milliseconds even on a slow machine: on the
// user-interface thread it costs less than handing it to a worker and back, and leaves its first
// rows in the cache the first frame is painted from.
inline constexpr qint64 QuickDecodeBytes = 6 * 1024 * 1024;

// Decodes the scan as DecodeScan does when its header shows it that small, or gives the refusal
// of a path that cannot be a scan (missing, not a regular file, unreadable) at once; nothing
// otherwise, or when the header does not tell its size. Never blocks: a named pipe is refused
// before it is opened, and the file is opened without waiting.
std::optional<DecodedScan> DecodeIfQuick(const QString& path);

// Box-filtered copies at half and quarter size, made once so that zoomed-out views paint fast
// and smooth; grey and bilevel scans reduce to 8-bit grey.
struct ReducedCopies {
    QImage Half;
    QImage Quarter;
};

// Thread-safe; the view makes them after the scan is first shown, so that opening a scan costs
// no more than decoding it.
ReducedCopies ReduceScan(const QImage& pristine);

// The average of each 2 x 2 block; an odd last row or column averages what it has.
QImage HalfSize(const QImage& image);

} // namespace tv
