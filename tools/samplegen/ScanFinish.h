#pragma once
// What the camera and the years do to a clean page: a little blur, light that falls off
// towards the edges, the paper's mottled texture and the sensor's grain.
#include <QImage>

#include <cstdint>

namespace samplegen {

// A [1 2 1] smoothing of an 8-bit grey scan across and then down, in place: the softness of a
// lens slightly out of focus.
void Blur(QImage& scan);

// Ages an 8-bit grey scan in place; the same seed gives the same bytes.
void AgeScan(QImage& scan, uint32_t seed);

} // namespace samplegen
