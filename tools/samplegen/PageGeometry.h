#pragma once
// Where things stand on the scan: the pages side by side, the columns, the printed lines, and
// the slight rotation of the page on the scanner that every drawn thing and every reported
// position go through alike.
#include "PageLayout.h"

#include <QPointF>
#include <QTransform>

namespace samplegen {

class PageGeometry {
  public:
    explicit PageGeometry(const KindSpec& kind);

    static constexpr int Margin = 150;   // paper edge to text, left and right
    static constexpr int ColumnGap = 60; // between the columns of one page
    static constexpr int TitleBaseline = 170;
    static constexpr int HeadingBaseline = 250;
    static constexpr int RuleY = 272; // the rule under the column headings

    int ScanWidth() const { return kind_.Pages * kind_.PageWidth; }
    int ScanHeight() const { return kind_.PageHeight; }
    int PageLeft(int page) const { return page * kind_.PageWidth; } // page 0 or 1
    int ColumnWidth() const;
    int ColumnLeft(int column) const;
    int Baseline(int line) const { return RuleY + kind_.Pitch * (line + 1); }
    // The top of a box just below an entry: the font's descent below the baseline.
    int BelowBaseline() const { return kind_.FontPixels / 4; }

    // The unrotated point of a record: the column's left edge, just below its last line.
    QPointF PagePoint(const Placement& place) const;
    // Page to scan: the rotation about the scan's centre.
    const QTransform& ScanTransform() const { return transform_; }
    QPointF ScanPoint(const Placement& place) const { return transform_.map(PagePoint(place)); }

  private:
    const KindSpec& kind_;
    QTransform transform_;
};

} // namespace samplegen
