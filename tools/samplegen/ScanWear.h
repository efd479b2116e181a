#pragma once
// A worn scan: ink faded to grey, a lens further out of focus and a coarse grain, as the worst
// scans of an old index look.
#include <QImage>

#include <cstdint>

namespace samplegen {

void WearScan(QImage& scan, uint32_t seed);

} // namespace samplegen
