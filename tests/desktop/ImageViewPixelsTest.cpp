// The scan view's own drawing of a turned or scaled scan, straight into the painter's pixels,
// against Qt's painter drawing the same scan through the same transform.
#include "view/ImageViewPixels.h"

#include <QPainter>
#include <QRandomGenerator>
#include <QTransform>

#include <gtest/gtest.h>

#include <cmath>

namespace tv::test {
namespace {

QImage Noise(QImage::Format format) {
    QImage grey(301, 203, QImage::Format_Grayscale8);
    QRandomGenerator random(20261121U);
    for (int y = 0; y < grey.height(); ++y)
        for (int x = 0; x < grey.width(); ++x)
            grey.scanLine(y)[x] = static_cast<uchar>(random.bounded(256));
    if (format == QImage::Format_Grayscale8) return grey;
    if (format == QImage::Format_Indexed8) {
        QImage indexed = grey.convertToFormat(QImage::Format_Indexed8);
        QList<QRgb> table = indexed.colorTable();
        // Colours of their own, so that the table is really used.
        for (QRgb& colour : table)
            colour = qRgb(qRed(colour), 255 - qGreen(colour), qBlue(colour) / 2);
        indexed.setColorTable(table);
        return indexed;
    }
    return grey.convertToFormat(format, Qt::ThresholdDither);
}

QImage Target() {
    QImage target(420, 330, QImage::Format_RGB32);
    target.fill(qRgb(40, 90, 160));
    return target;
}

// Pixels that differ between two drawings.
int Differing(const QImage& a, const QImage& b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            count += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
    return count;
}

const QTransform Transforms[] = {
    QTransform().translate(20, 30).rotate(0.4),
    QTransform().translate(200, 10).rotate(3.0).scale(0.7, 0.7),
    QTransform().translate(40, 60).rotate(-7.0).scale(1.7, 1.7),
    QTransform().translate(350, 20).scale(-1.0, 1.0).rotate(1.2),
};

// Scaled but upright: Qt's painter picks the columns and rows it drops or doubles by its own
// rule, the scan view by the pixel centres, as for a turned scan.
const QTransform UprightTransforms[] = {
    QTransform().translate(10.25, 5.5).scale(0.9, 0.9),
    QTransform().translate(-30, -40).scale(2.0, 2.0),
    QTransform().translate(400, 0).scale(-0.7, 0.7),
};

// The pixel whose centre each device pixel's centre falls on, drawn by hand.
QImage ByPixelCentres(const QImage& scan, const QRect& source, const QTransform& transform) {
    const QImage colour = scan.convertToFormat(QImage::Format_RGB32);
    const QTransform back = transform.inverted();
    QImage out = Target();
    for (int y = 0; y < out.height(); ++y)
        for (int x = 0; x < out.width(); ++x) {
            const QPointF at = back.map(QPointF(x + 0.5, y + 0.5));
            const QPoint pixel(static_cast<int>(std::floor(at.x())),
                               static_cast<int>(std::floor(at.y())));
            if (source.contains(pixel)) out.setPixel(x, y, colour.pixel(pixel));
        }
    return out;
}

const QImage::Format Formats[] = {QImage::Format_Grayscale8, QImage::Format_RGB32,
                                  QImage::Format_Indexed8, QImage::Format_Mono,
                                  QImage::Format_MonoLSB};

TEST(TurnedDrawing, GivesThePixelsOfQtsPainterForEveryKindOfScan) {
    for (QImage::Format format : Formats) {
        const QImage scan = Noise(format);
        const QImage asColour = scan.convertToFormat(QImage::Format_RGB32);
        for (const QTransform& transform : Transforms) {
            QImage ours = Target();
            QImage qts = Target();
            const QRect source(3, 5, 290, 190);
            {
                QPainter painter(&ours);
                painter.setTransform(transform);
                ASSERT_TRUE(PixelStage::DrawTurned(painter, scan, source));
            }
            {
                QPainter painter(&qts);
                painter.setTransform(transform);
                painter.drawImage(source.topLeft(), asColour, source);
            }
            // Qt rounds the sampling point in its own fixed point: a pixel centre that falls
            // within a hair of a pixel's edge may take the neighbour.
            EXPECT_LE(Differing(ours, qts), ours.width() * ours.height() / 200)
                << format << " " << transform.m11() << " " << transform.m12();
            EXPECT_NE(ours, Target());
        }
    }
}

TEST(TurnedDrawing, TakesThePixelUnderEachPixelsCentreWhenOnlyScaled) {
    for (QImage::Format format : Formats) {
        const QImage scan = Noise(format);
        for (const QTransform& transform : UprightTransforms) {
            const QRect source(3, 5, 290, 190);
            QImage ours = Target();
            {
                QPainter painter(&ours);
                painter.setTransform(transform);
                ASSERT_TRUE(PixelStage::DrawTurned(painter, scan, source));
            }
            // The hand-made sampling works in floating point: a centre within a hair of an
            // edge may fall the other way.
            EXPECT_LE(Differing(ours, ByPixelCentres(scan, source, transform)),
                      ours.width() * ours.height() / 1000)
                << format << " " << transform.m11();
        }
    }
}

// Moved by whole pixels only, the scan's pixels are written as they are: exactly Qt's painter's
// pixels, at every start column (sixteen grey pixels are converted at a time, eight bilevel)
// and for every width, the last few pixels of a row included.
TEST(MovedDrawing, GivesExactlyThePixelsOfQtsPainterForEveryKindOfScan) {
    const QRect sources[] = {QRect(0, 0, 301, 203), QRect(1, 2, 16, 7),   QRect(3, 5, 290, 190),
                             QRect(7, 9, 15, 4),    QRect(17, 1, 33, 40), QRect(300, 0, 1, 203)};
    const QPoint moves[] = {QPoint(0, 0), QPoint(13, -4), QPoint(-5, 21)};
    // A colour scan is already in the painter's pixels: the view never stages it.
    for (QImage::Format format : {QImage::Format_Grayscale8, QImage::Format_Indexed8,
                                  QImage::Format_Mono, QImage::Format_MonoLSB}) {
        const QImage scan = Noise(format);
        const QImage asColour = scan.convertToFormat(QImage::Format_RGB32);
        for (const QRect& source : sources)
            for (const QPoint& move : moves) {
                QImage ours = Target();
                QImage qts = Target();
                PixelStage stage;
                {
                    QPainter painter(&ours);
                    painter.translate(move);
                    stage.Draw(painter, scan, source);
                }
                {
                    QPainter painter(&qts);
                    painter.translate(move);
                    painter.drawImage(source.topLeft(), asColour, source);
                }
                EXPECT_EQ(Differing(ours, qts), 0)
                    << format << " " << source.x() << "," << source.y() << " " << source.width()
                    << " x " << source.height() << " moved " << move.x() << "," << move.y();
            }
    }
}

// A whole view's pixels are written by two cores, each half of the rows: the same pixels, with
// the row where the halves meet and an odd number of rows.
TEST(MovedDrawing, WholeViewGivesExactlyThePixelsOfQtsPainter) {
    QImage grey(1100, 701, QImage::Format_Grayscale8);
    for (int y = 0; y < grey.height(); ++y)
        for (int x = 0; x < grey.width(); ++x)
            grey.scanLine(y)[x] = static_cast<uchar>((x * 7 + y * 13) % 256);
    for (const QImage& scan :
         {grey, grey.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither)}) {
        QImage ours(1030, 690, QImage::Format_RGB32);
        ours.fill(qRgb(40, 90, 160));
        QImage qts = ours;
        const QRect source(5, 3, 1021, 687);
        PixelStage stage;
        {
            QPainter painter(&ours);
            painter.translate(2, 1);
            stage.Draw(painter, scan, source);
        }
        {
            QPainter painter(&qts);
            painter.translate(2, 1);
            painter.drawImage(source.topLeft(), scan.convertToFormat(QImage::Format_RGB32), source);
        }
        EXPECT_EQ(Differing(ours, qts), 0) << scan.format();
    }
}

TEST(TurnedDrawing, LeavesThePixelsOutsideTheScanAsTheyWere) {
    const QImage scan = Noise(QImage::Format_Grayscale8);
    QImage ours = Target();
    {
        QPainter painter(&ours);
        painter.setTransform(QTransform().translate(100, 100).rotate(10.0).scale(0.5, 0.5));
        ASSERT_TRUE(PixelStage::DrawTurned(painter, scan, scan.rect()));
    }
    EXPECT_EQ(ours.pixel(0, 0), qRgb(40, 90, 160));
    EXPECT_EQ(ours.pixel(419, 329), qRgb(40, 90, 160));
    EXPECT_EQ(ours.pixel(95, 105), qRgb(40, 90, 160));
    EXPECT_NE(ours.pixel(110, 120), qRgb(40, 90, 160));
}

TEST(TurnedDrawing, LeavesToQtWhatAskForMore) {
    const QImage scan = Noise(QImage::Format_Grayscale8);
    QImage target = Target();
    QPainter painter(&target);
    painter.setTransform(QTransform().rotate(2.0));
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    EXPECT_FALSE(PixelStage::DrawTurned(painter, scan, scan.rect()));
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.setRenderHint(QPainter::Antialiasing);
    EXPECT_FALSE(PixelStage::DrawTurned(painter, scan, scan.rect()));
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setClipRect(QRect(0, 0, 50, 50));
    EXPECT_FALSE(PixelStage::DrawTurned(painter, scan, scan.rect()));
    painter.setClipping(false);
    EXPECT_FALSE(
        PixelStage::DrawTurned(painter, scan.convertToFormat(QImage::Format_ARGB32), scan.rect()));
    painter.setOpacity(0.5);
    EXPECT_FALSE(PixelStage::DrawTurned(painter, scan, scan.rect()));
    EXPECT_EQ(target, Target());
}

} // namespace
} // namespace tv::test
