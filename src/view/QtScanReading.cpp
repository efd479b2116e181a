#include "view/QtScanReading.h"

#include "view/QtLineFinder.h"

#include <vector>

namespace tv {

ScanReading ReadScan(const QImage& scan, const PrintedLines& lines, const ReadOptions& options) {
    GreyImage grey;
    grey.Width = scan.width();
    grey.Height = scan.height();
    if (scan.format() == QImage::Format_Grayscale8) {
        grey.Stride = static_cast<int>(scan.bytesPerLine());
        grey.Pixels = scan.constBits();
        return ReadScanLines(grey, lines, options);
    }
    // Any other format as grey rows, once.
    std::vector<uint8_t> pixels(static_cast<std::size_t>(grey.Width) *
                                static_cast<std::size_t>(grey.Height));
    const GreyRows rows = GreyRowsOf(scan);
    for (int y = 0; y < grey.Height; ++y)
        rows.Row(y, pixels.data() +
                        static_cast<std::size_t>(y) * static_cast<std::size_t>(grey.Width));
    grey.Stride = grey.Width;
    grey.Pixels = pixels.data();
    return ReadScanLines(grey, lines, options);
}

} // namespace tv
