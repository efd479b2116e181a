#pragma once
// What the camera and the years do to a clean page: a little blur, light that falls off
// towards the edges, the paper's mottled texture and the sensor's grain.
#include <QImage>

#include <cstdint>

namespace samplegen {

// Ages an 8-bit grey scan in place; the same seed gives the same bytes.
void AgeScan(QImage& scan, uint32_t seed);

} // namespace samplegen
