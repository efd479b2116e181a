#pragma once
// Pictures for looking at a sample: the whole scan made small, and a full-size corner of it
// with the reported positions marked in red.
#include <QImage>
#include <QPointF>

#include <string>
#include <vector>

namespace samplegen {

// Writes base + "-preview.png" and base + "-detail.png".
void WritePreviews(const QImage& scan, const std::vector<QPointF>& points, const std::string& base);

} // namespace samplegen
