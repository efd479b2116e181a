#include "ScanFinish.h"

#include "SampleRandom.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace samplegen {

namespace {

constexpr int TileSize = 256;

// A coarse grid of values spread smoothly over the whole scan.
QImage Smoothed(const QImage& coarse, const QSize& size) {
    return coarse.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_Grayscale8);
}

// The light: brightest a little above and left of the centre, falling off by about a tenth.
QImage Lighting(const QSize& size) {
    QImage coarse(size.width() / 32 + 2, size.height() / 32 + 2, QImage::Format_Grayscale8);
    for (int y = 0; y < coarse.height(); ++y) {
        uint8_t* line = coarse.scanLine(y);
        for (int x = 0; x < coarse.width(); ++x) {
            const double dx = static_cast<double>(x) / coarse.width() - 0.42;
            const double dy = static_cast<double>(y) / coarse.height() - 0.40;
            const double fall = 0.16 * (dx * dx + dy * dy) + 0.03 * dx;
            line[x] = static_cast<uint8_t>(std::lround(255.0 * (1.0 - fall)));
        }
    }
    return Smoothed(coarse, size);
}

// Mottling of the paper around 128: soft blotches a few dozen pixels across.
QImage Mottling(const QSize& size, SampleRandom& rng) {
    QImage coarse(size.width() / 56 + 2, size.height() / 56 + 2, QImage::Format_Grayscale8);
    for (int y = 0; y < coarse.height(); ++y) {
        uint8_t* line = coarse.scanLine(y);
        for (int x = 0; x < coarse.width(); ++x)
            line[x] = static_cast<uint8_t>(rng.Between(124, 132));
    }
    return Smoothed(coarse, size);
}

// Grain around 0, summed from two draws so that small values are the commonest.
std::vector<int8_t> GrainTile(SampleRandom& rng) {
    std::vector<int8_t> tile(TileSize * TileSize);
    for (int8_t& g : tile)
        g = static_cast<int8_t>(rng.Between(-5, 5) + rng.Between(-4, 4));
    return tile;
}

} // namespace

void Blur(QImage& scan) {
    const int w = scan.width();
    const int h = scan.height();
    std::vector<uint8_t> row(static_cast<std::size_t>(w));
    for (int y = 0; y < h; ++y) {
        uint8_t* line = scan.scanLine(y);
        std::copy(line, line + w, row.begin());
        for (int x = 1; x < w - 1; ++x)
            line[x] = static_cast<uint8_t>((row[x - 1] + 2 * row[x] + row[x + 1] + 2) >> 2);
    }
    std::vector<uint8_t> above(static_cast<std::size_t>(w));
    std::copy(scan.constScanLine(0), scan.constScanLine(0) + w, above.begin());
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

void AgeScan(QImage& scan, uint32_t seed) {
    Blur(scan);
    SampleRandom rng(seed);
    const QImage light = Lighting(scan.size());
    const QImage mottle = Mottling(scan.size(), rng);
    const std::vector<int8_t> grain = GrainTile(rng);
    for (int y = 0; y < scan.height(); ++y) {
        uint8_t* line = scan.scanLine(y);
        const uint8_t* l = light.constScanLine(y);
        const uint8_t* m = mottle.constScanLine(y);
        // Each row reads the tile from its own offset, so the tile's repeat does not show.
        const int8_t* g =
            grain.data() + (PixelHash(0, static_cast<uint32_t>(y), seed) % TileSize) * TileSize;
        const int shift = static_cast<int>(PixelHash(1, static_cast<uint32_t>(y), seed) % TileSize);
        for (int x = 0; x < scan.width(); ++x) {
            const int v = line[x] * l[x] / 255 + m[x] - 128 + g[(x + shift) & (TileSize - 1)];
            line[x] = static_cast<uint8_t>(std::clamp(v, 0, 255));
        }
    }
}

} // namespace samplegen
