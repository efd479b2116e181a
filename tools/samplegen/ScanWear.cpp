#include "ScanWear.h"

#include "SampleRandom.h"

#include <algorithm>
#include <vector>

namespace samplegen {

namespace {

// A [1 2 1] smoothing across and down, once more.
void Soften(QImage& scan) {
    const int w = scan.width();
    const int h = scan.height();
    std::vector<uint8_t> row(static_cast<std::size_t>(w));
    for (int y = 0; y < h; ++y) {
        uint8_t* line = scan.scanLine(y);
        std::copy(line, line + w, row.begin());
        for (int x = 1; x < w - 1; ++x)
            line[x] = static_cast<uint8_t>((row[x - 1] + 2 * row[x] + row[x + 1] + 2) >> 2);
    }
    std::vector<uint8_t> above(scan.constScanLine(0), scan.constScanLine(0) + w);
    for (int y = 1; y < h - 1; ++y) {
        uint8_t* line = scan.scanLine(y);
        const uint8_t* below = scan.constScanLine(y + 1);
        for (int x = 0; x < w; ++x) {
            const uint8_t here = line[x];
            line[x] = static_cast<uint8_t>((above[x] + 2 * here + below[x] + 2) >> 2);
            above[x] = here;
        }
    }
}

} // namespace

void WearScan(QImage& scan, uint32_t seed) {
    Soften(scan);
    for (int y = 0; y < scan.height(); ++y) {
        uint8_t* line = scan.scanLine(y);
        for (int x = 0; x < scan.width(); ++x) {
            // The ink fades: black comes up to a dark grey, the paper stays.
            int v = 90 + line[x] * (255 - 90) / 255;
            const uint32_t h = PixelHash(static_cast<uint32_t>(x), static_cast<uint32_t>(y), seed);
            v += static_cast<int>(h % 41) - 20;
            line[x] = static_cast<uint8_t>(std::clamp(v, 0, 255));
        }
    }
}

} // namespace samplegen
