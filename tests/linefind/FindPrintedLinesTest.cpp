#include "linefind/FindPrintedLines.h"
#include "support/SamplePages.h"

#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tv::test {

namespace {

GreyRows RowsOf(const QImage& grey) {
    GreyRows rows;
    rows.Width = grey.width();
    rows.Height = grey.height();
    rows.Row = [&grey](int y, uint8_t* out) {
        const uint8_t* line = grey.constScanLine(y);
        std::copy(line, line + grey.width(), out);
    };
    return rows;
}

// The share of the page's records whose baseline the finder found: a line of the record's
// column within a quarter of the pitch of the true baseline, starting within a pitch of the
// true column edge.
double FoundShare(const TruePage& page, const PrintedLines& lines) {
    int found = 0;
    for (const auto& [tableLine, place] : page.Places) {
        const int c = ColumnAt(lines, place.X);
        if (c < 0) continue;
        for (const FoundLine& line : lines.Columns[static_cast<size_t>(c)].Lines)
            if (std::abs(line.Y - place.Baseline) <= page.Pitch / 4 &&
                std::abs(line.X - place.X) <= page.Pitch) {
                ++found;
                break;
            }
    }
    return static_cast<double>(found) / static_cast<double>(page.Places.size());
}

PrintedLines Find(const TruePage& page) {
    const QImage scan = QImage(QString::fromStdString(page.Scan.string()))
                            .convertToFormat(QImage::Format_Grayscale8);
    EXPECT_FALSE(scan.isNull());
    return FindPrintedLines(RowsOf(scan), page.Columns);
}

class EveryKind : public ::testing::TestWithParam<const char*> {};

// The finder alone: a line near nearly every record's baseline. The figure for the records, where
// the box is lined up on each, is asserted through --locate (tests/app/LocateCommandTest.cpp).
TEST_P(EveryKind, FindsALineAtTheBaselineOfAtLeast95PercentOfTheRecords) {
    const TruePage& page = SamplePage(GetParam());
    const PrintedLines lines = Find(page);
    ASSERT_EQ(static_cast<int>(lines.Columns.size()), page.Columns);
    EXPECT_NEAR(lines.Pitch, page.Pitch, page.Pitch * 0.05);
    EXPECT_GE(FoundShare(page, lines), 0.95);
}

INSTANTIATE_TEST_SUITE_P(FindPrintedLines, EveryKind,
                         ::testing::Values("births1843", "births1872", "births1872double",
                                           "births1911", "births1965", "births1988", "births1995"));

TEST(FindPrintedLines, FindsNothingOnABlankPage) {
    QImage blank(2400, 3400, QImage::Format_Grayscale8);
    blank.fill(235);
    EXPECT_TRUE(FindPrintedLines(RowsOf(blank), 2).Empty());
}

TEST(FindPrintedLines, FindsNothingOnAPageThatIsMostlyDark) {
    QImage dark(1200, 1700, QImage::Format_Grayscale8);
    for (int y = 0; y < dark.height(); ++y)
        for (int x = 0; x < dark.width(); ++x)
            dark.scanLine(y)[x] = static_cast<uint8_t>((x * 7 + y * 3) % 97);
    EXPECT_TRUE(FindPrintedLines(RowsOf(dark), 2).Empty());
}

// A filmed page is flecked with dust, a few hundred specks a megapixel, in the white between
// the columns as everywhere: on a large scan the specks are large, and the columns are still
// told apart and their lines found.
TEST(FindPrintedLines, FindsTheColumnsOfADustyLargePage) {
    const double scale = 2.2;
    const TruePage& page = SamplePage("births1911", "--scale 2.2");
    // As the program reads a scan: a large one exceeds Qt's default limit.
    QImageReader::setAllocationLimit(0);
    QImage scan = QImage(QString::fromStdString(page.Scan.string()))
                      .convertToFormat(QImage::Format_Grayscale8);
    ASSERT_FALSE(scan.isNull());
    std::minstd_rand rng(1840);
    {
        QPainter painter(&scan);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(20, 20, 20));
        const int specks = static_cast<int>(300.0 * scan.width() * scan.height() / 1e6);
        for (int i = 0; i < specks; ++i) {
            const QPointF at(static_cast<double>(rng() % static_cast<unsigned>(scan.width())),
                             static_cast<double>(rng() % static_cast<unsigned>(scan.height())));
            const double radius = scale * (0.6 + static_cast<double>(rng() % 20) / 10.0);
            painter.drawEllipse(at, radius,
                                radius * (0.5 + static_cast<double>(rng() % 10) / 10.0));
        }
    }
    const PrintedLines lines = FindPrintedLines(RowsOf(scan), page.Columns);
    ASSERT_EQ(static_cast<int>(lines.Columns.size()), page.Columns);
    EXPECT_GE(FoundShare(page, lines), 0.95);
}

TEST(FindPrintedLines, FindsNothingWhenCancelled) {
    const TruePage& page = SamplePage("births1911");
    const QImage scan = QImage(QString::fromStdString(page.Scan.string()))
                            .convertToFormat(QImage::Format_Grayscale8);
    const std::atomic<bool> cancelled{true};
    EXPECT_TRUE(FindPrintedLines(RowsOf(scan), page.Columns, &cancelled).Empty());
}

} // namespace

} // namespace tv::test
