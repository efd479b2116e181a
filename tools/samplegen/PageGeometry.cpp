#include "PageGeometry.h"

#include <stdexcept>

namespace samplegen {

PageGeometry::PageGeometry(const KindSpec& kind) : kind_(kind) {
    const double cx = ScanWidth() / 2.0;
    const double cy = ScanHeight() / 2.0;
    transform_.translate(cx, cy);
    transform_.rotate(kind.RotationDegrees);
    transform_.translate(-cx, -cy);
    if (Baseline(kind.LinesPerColumn - 1) + Margin > kind.PageHeight)
        throw std::logic_error(kind.Name + ": the columns run off the foot of the page");
}

int PageGeometry::ColumnWidth() const {
    const int across = kind_.ColumnsPerPage;
    return (kind_.PageWidth - 2 * Margin - (across - 1) * ColumnGap) / across;
}

int PageGeometry::ColumnLeft(int column) const {
    const int page = (column - 1) / kind_.ColumnsPerPage;
    const int within = (column - 1) % kind_.ColumnsPerPage;
    return PageLeft(page) + Margin + within * (ColumnWidth() + ColumnGap);
}

QPointF PageGeometry::PagePoint(const Placement& place) const {
    return {static_cast<double>(ColumnLeft(place.Column)),
            static_cast<double>(Baseline(place.Line) + BelowBaseline())};
}

} // namespace samplegen
