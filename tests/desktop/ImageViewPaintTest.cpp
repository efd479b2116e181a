// What the image view paints: sharp pixels when zoomed in, smoothing when zoomed out, the
// effects, the magnifier and the repaint signal.
#include "ImageViewTesting.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

namespace tv::test {

namespace {

void MovePointer(ImageView& view, QPoint at) {
    QMouseEvent move(QEvent::MouseMove, QPointF(at), view.viewport()->mapToGlobal(QPointF(at)),
                     Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &move);
}

bool OnlyBlackAndWhite(const QImage& image, const QRect& area) {
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x) {
            const int grey = Grey(image, x, y);
            if (grey != 0 && grey != 255) return false;
        }
    return true;
}

// The largest grey difference between a part painted alone and the same part of the whole view.
int PartAgainstWhole(ImageView& view, const QRect& part) {
    const QImage whole = Grab(view);
    QImage painted(view.viewport()->size(), QImage::Format_RGB32);
    painted.fill(Qt::red);
    view.viewport()->render(&painted, part.topLeft(), QRegion(part));
    EXPECT_EQ(painted.pixel(part.right() + 1, part.top()), QColor(Qt::red).rgb());
    int worst = 0;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            worst = std::max(worst, std::abs(Grey(painted, x, y) - Grey(whole, x, y)));
    return worst;
}

} // namespace

TEST_F(ImageViewTest, ZoomFourPaintsAPixelAsASolidFourByFourBlock) {
    auto view = Loaded(Save(WhiteWithDots({60, 60}, {{10, 10}}), "dot.png"));
    view->SetZoom(4.0);
    const QImage shown = Grab(*view);
    EXPECT_EQ(BlackPixels(shown, QRect(40, 40, 4, 4)), 16);
    EXPECT_EQ(BlackPixels(shown, QRect(30, 30, 24, 24)), 16);
    EXPECT_EQ(Grey(shown, 39, 41), 255);
    EXPECT_EQ(Grey(shown, 44, 41), 255);
    EXPECT_EQ(Grey(shown, 41, 39), 255);
    EXPECT_EQ(Grey(shown, 41, 44), 255);
}

TEST_F(ImageViewTest, SmoothingAveragesAZoomedOutCheckerboard) {
    auto view = Loaded(Save(Checkerboard({200, 200}), "checks.png"));
    for (double zoom : {0.5, 0.25, 0.4}) {
        view->SetZoom(zoom);
        const QImage shown = Grab(*view);
        SCOPED_TRACE(zoom);
        for (QPoint p : {QPoint(5, 5), QPoint(20, 31), QPoint(44, 12)})
            EXPECT_NEAR(Grey(shown, p.x(), p.y()), 128, 3);
    }
}

// A zoom step is painted at once with the nearest pixels; the smoothed frame follows when the
// steps stop, and a further step in the meantime puts it off again. (Zooms above a half, where
// the scan itself is drawn rather than a reduced copy.)
TEST_F(ImageViewTest, AZoomStepIsPaintedAtOnceAndSmoothedWhenTheStepsStop) {
    auto view = Loaded(Save(Checkerboard({200, 200}), "checks.png"));
    const QRect area(10, 10, 60, 60);
    view->SetZoom(0.7);
    EXPECT_FALSE(view->Refined());
    EXPECT_TRUE(OnlyBlackAndWhite(GrabNow(*view), area));
    QTest::qWait(50);
    view->SetZoom(0.6);
    QTest::qWait(50);
    EXPECT_FALSE(view->Refined());
    EXPECT_TRUE(OnlyBlackAndWhite(GrabNow(*view), area));
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->Refined(); }, 1000));
    EXPECT_FALSE(OnlyBlackAndWhite(GrabNow(*view), area));
}

// A rotation step likewise.
TEST_F(ImageViewTest, ARotationStepIsSmoothedWhenTheStepsStop) {
    auto view = Loaded(Save(Checkerboard({200, 200}), "checks.png"));
    view->SetZoom(0.7);
    ASSERT_TRUE(QTest::qWaitFor([&] { return view->Refined(); }, 1000));
    view->SetRotation(0.4);
    EXPECT_TRUE(OnlyBlackAndWhite(GrabNow(*view), QRect(40, 40, 40, 40)));
    EXPECT_FALSE(view->Refined());
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->Refined(); }, 1000));
    EXPECT_FALSE(OnlyBlackAndWhite(GrabNow(*view), QRect(40, 40, 40, 40)));
}

TEST_F(ImageViewTest, WithoutSmoothingAZoomedOutViewKeepsPurePixels) {
    auto view = Loaded(Save(Checkerboard({200, 200}), "checks.png"));
    view->SetSmoothing(false);
    view->SetZoom(0.5);
    EXPECT_TRUE(OnlyBlackAndWhite(Grab(*view), QRect(0, 0, 100, 100)));
}

TEST_F(ImageViewTest, NegativeInvertsOnlyThePaintedScan) {
    auto view = Loaded(Save(WhiteWithDots({100, 50}, {{10, 20}}), "dot.png"));
    const QImage before = Grab(*view);
    view->ToggleNegative();
    const QImage after = Grab(*view);
    EXPECT_EQ(Grey(after, 0, 0), 0);
    EXPECT_EQ(Grey(after, 10, 20), 255);
    EXPECT_EQ(after.pixel(200, 100), before.pixel(200, 100));
    view->ToggleNegative();
    EXPECT_EQ(Grab(*view), before);
}

TEST_F(ImageViewTest, MirrorFlipsTheScanWithinItsWidth) {
    auto view = Loaded(Save(WhiteWithDots({100, 50}, {{10, 20}}), "dot.png"));
    view->ToggleMirror();
    const QImage shown = Grab(*view);
    EXPECT_EQ(Grey(shown, 89, 20), 0);
    EXPECT_EQ(Grey(shown, 10, 20), 255);
    EXPECT_EQ(BlackPixels(shown, QRect(0, 0, 100, 50)), 1);
}

TEST_F(ImageViewTest, BilevelScanPaintsBlackOnWhite) {
    const QImage bilevel = WhiteWithDots({64, 40}, {{7, 9}}).convertToFormat(QImage::Format_Mono);
    auto view = Loaded(Save(bilevel, "bilevel.tif", 1));
    const QImage shown = Grab(*view);
    EXPECT_EQ(Grey(shown, 7, 9), 0);
    EXPECT_EQ(Grey(shown, 8, 9), 255);
    EXPECT_EQ(BlackPixels(shown, QRect(0, 0, 64, 40)), 1);
}

TEST_F(ImageViewTest, PaletteScanPaintsThroughItsColourTable) {
    auto view = Loaded(SaveBytes(GifOf(WhiteWithDots({40, 30}, {{5, 6}})), "dot.gif"));
    const QImage shown = Grab(*view);
    EXPECT_EQ(Grey(shown, 5, 6), 0);
    EXPECT_EQ(Grey(shown, 6, 6), 255);
    EXPECT_EQ(BlackPixels(shown, QRect(0, 0, 40, 30)), 1);
}

TEST_F(ImageViewTest, TurnedAndZoomedBilevelScanPaintsLikeItsGreyTwin) {
    // The bilevel scan is painted from 32-bit pixels, which Qt interpolates with weights in
    // sixteenths; the grey one in finer steps. A pixel's worst case is a sixteenth of white.
    const QImage grey = Checkerboard({300, 200});
    auto bilevel = Loaded(Save(grey.convertToFormat(QImage::Format_Mono), "checks.tif", 1));
    auto twin = Loaded(Save(grey, "checks.png"));
    ASSERT_EQ(bilevel->PixelFormat(), QImage::Format_Mono);
    for (ImageView* view : {bilevel.get(), twin.get()}) {
        view->SetZoom(0.7);
        view->SetRotation(3.0);
    }
    const QImage shown = Grab(*bilevel);
    const QImage expected = Grab(*twin);
    int worst = 0;
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x)
            worst = std::max(worst, std::abs(Grey(shown, x, y) - Grey(expected, x, y)));
    EXPECT_LE(worst, 16);
}

TEST_F(ImageViewTest, RotatingThereAndBackPaintsTheUnrotatedPixels) {
    auto view = Loaded(Save(WhiteWithDots({300, 200}, {{50, 60}, {250, 150}}), "dots.png"));
    const QImage unrotated = Grab(*view);
    view->SetRotation(0.4);
    EXPECT_NE(Grab(*view), unrotated);
    view->SetRotation(0.0);
    EXPECT_EQ(Grab(*view), unrotated);
}

TEST_F(ImageViewTest, PaintingAPartGivesThePixelsOfTheWhole) {
    auto view = Loaded(Save(Checkerboard({500, 400}), "checks.png"));
    view->SetScroll(13, 17);
    for (double zoom : {1.0, 1.7, 4.0, 0.5, 0.3}) {
        view->SetZoom(zoom);
        EXPECT_EQ(PartAgainstWhole(*view, QRect(50, 40, 70, 60)), 0) << zoom;
    }
}

TEST_F(ImageViewTest, BilevelScanGivesItsPixelsWrittenStraightOrThroughThePainter) {
    const QImage bilevel = Checkerboard({500, 400}).convertToFormat(QImage::Format_Mono);
    auto view = Loaded(Save(bilevel, "checks.tif", 1));
    ASSERT_EQ(view->PixelFormat(), QImage::Format_Mono);
    view->SetScroll(13, 17);
    // Into 32-bit pixels with a whole-pixel move the converted rows are written straight in.
    const QImage shown = Grab(*view);
    int wrong = 0;
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 100; ++x)
            wrong += Grey(shown, x, y) != ((x + 13 + y + 17) % 2 == 0 ? 0 : 255) ? 1 : 0;
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(PartAgainstWhole(*view, QRect(51, 40, 70, 60)), 0);
    // Into pixels of another kind the painter draws the converted rows itself.
    QImage unpremultiplied(view->viewport()->size(), QImage::Format_ARGB32);
    view->viewport()->render(&unpremultiplied);
    EXPECT_EQ(unpremultiplied.convertToFormat(QImage::Format_RGB32), shown);
}

TEST_F(ImageViewTest, PaintingAPartOfATurnedSmoothedViewDiffersByNoMoreThanASixteenthOfWhite) {
    // Qt steps its sampling positions in fixed point from where each painted span starts, and
    // weighs 32-bit pixels in sixteenths, so a repainted part of a turned and smoothly scaled
    // view may differ from the whole by one weight step: on this worst case of alternating black
    // and white pixels a sixteenth of white, on a scan nothing one could see.
    auto view = Loaded(Save(Checkerboard({500, 400}), "checks.png"));
    view->SetZoom(0.7);
    view->SetRotation(3.0);
    view->SetScroll(13, 17);
    EXPECT_LE(PartAgainstWhole(*view, QRect(50, 40, 70, 60)), 16);
}

TEST_F(ImageViewTest, MagnifierShowsTheScanTwiceAsLargeAtThePointer) {
    auto view = Loaded(Save(
        WhiteWithDots({400, 300}, {{100, 100}, {101, 100}, {100, 101}, {101, 101}}), "square.png"));
    const QRect around(90, 90, 20, 20);
    EXPECT_EQ(BlackPixels(Grab(*view), around), 4);
    view->SetMagnifier(true);
    MovePointer(*view, QPoint(100, 100));
    const QImage magnified = Grab(*view);
    EXPECT_EQ(BlackPixels(magnified, around), 16);
    EXPECT_EQ(BlackPixels(magnified, QRect(100, 100, 4, 4)), 16);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(view->viewport(), &leave);
    EXPECT_EQ(BlackPixels(Grab(*view), around), 4);
}

TEST_F(ImageViewTest, WithoutTheMagnifierThePointerChangesNothing) {
    auto view = Loaded(Save(WhiteWithDots({400, 300}, {{100, 100}}), "dot.png"));
    const QImage before = Grab(*view);
    MovePointer(*view, QPoint(100, 100));
    EXPECT_EQ(Grab(*view), before);
}

TEST_F(ImageViewTest, RepaintedIsEmittedOnEveryPaint) {
    auto view = Loaded(Save(WhiteWithDots({100, 50}, {}), "white.png"));
    QSignalSpy repainted(view.get(), &ImageView::repainted);
    Grab(*view);
    EXPECT_EQ(repainted.count(), 1);
    Grab(*view);
    EXPECT_EQ(repainted.count(), 2);
}

// The scroll bars' troughs are filled flat: a dither of two colours through a pattern brush
// cost a press that scrolled the view more than painting the scan did.
TEST_F(ImageViewTest, ScrollBarTroughsAreFilledFlat) {
    auto view = Loaded(Save(WhiteWithDots({3000, 3000}, {}), "tall.png"), QSize(400, 600));
    for (QScrollBar* bar : {view->verticalScrollBar(), view->horizontalScrollBar()}) {
        bar->setValue(bar->maximum() / 2);
        const QImage shown = bar->grab().toImage();
        // The troughs lie between the arrow buttons and the handle, along the bar's middle.
        const bool upright = bar->orientation() == Qt::Vertical;
        const int across = (upright ? shown.width() : shown.height()) / 2;
        const int length = upright ? shown.height() : shown.width();
        const int arrow = upright ? shown.width() : shown.height();
        auto at = [&](int along) {
            return upright ? shown.pixel(across, along) : shown.pixel(along, across);
        };
        // Two neighbouring pixels a little way past the first arrow, in the trough before the
        // handle in the middle.
        const int into = arrow + 4;
        ASSERT_LT(into + 1, length / 4);
        EXPECT_EQ(at(into), at(into + 1)) << (upright ? "vertical" : "horizontal");
        EXPECT_EQ(at(into), at(length - into - 1)) << (upright ? "vertical" : "horizontal");
    }
}

} // namespace tv::test
