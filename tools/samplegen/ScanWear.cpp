#include "ScanWear.h"

#include "SampleRandom.h"
#include "ScanFinish.h"

#include <algorithm>

namespace samplegen {

namespace {} // namespace

void WearScan(QImage& scan, uint32_t seed) {
    // Once more, on a page already softened by the lens: the focus of a worn film.
    Blur(scan);
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
