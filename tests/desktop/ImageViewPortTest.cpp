// The image view as the model's scan view port: metrics, scrolling, zoom, rotation and focus.
#include "ImageViewTesting.h"

#include "core/Checked.h"
#include "core/QtPlatform.h"
#include "core/RunTimeError.h"

#include <QScrollBar>
#include <QSignalSpy>

namespace tv::test {

namespace {

void ExpectSameMetrics(const ViewMetrics& a, const ViewMetrics& b) {
    EXPECT_EQ(a.Zoom, b.Zoom);
    EXPECT_EQ(a.ImageWidth, b.ImageWidth);
    EXPECT_EQ(a.ImageHeight, b.ImageHeight);
    EXPECT_EQ(a.ScrollX, b.ScrollX);
    EXPECT_EQ(a.ScrollY, b.ScrollY);
    EXPECT_EQ(a.MaxScrollX, b.MaxScrollX);
    EXPECT_EQ(a.MaxScrollY, b.MaxScrollY);
    EXPECT_EQ(a.Control.Width, b.Control.Width);
    EXPECT_EQ(a.Control.Height, b.Control.Height);
    EXPECT_EQ(a.ImagePixelWidth, b.ImagePixelWidth);
    EXPECT_EQ(a.ImagePixelHeight, b.ImagePixelHeight);
}

} // namespace

// A 1000 x 800 scan in a 400 x 300 view.
class ImageViewPortTest : public ImageViewTest {
  protected:
    void SetUp() override { view_ = Loaded(Save(WhiteWithDots({1000, 800}, {}), "scan.png")); }
    QSize Port() const { return view_->viewport()->size(); }
    std::unique_ptr<ImageView> view_;
    const double tpp_ = ScreenTwipsPerPixel();
};

TEST_F(ImageViewPortTest, MetricsAtZoomOneGiveTheImageInTwipsAndTheScrollRange) {
    const ViewMetrics m = view_->Metrics();
    EXPECT_EQ(m.Zoom, 1.0);
    EXPECT_EQ(m.TwipsPerPixelX, tpp_);
    EXPECT_EQ(m.TwipsPerPixelY, tpp_);
    EXPECT_EQ(m.ImageWidth, 1000 * tpp_);
    EXPECT_EQ(m.ImageHeight, 800 * tpp_);
    EXPECT_EQ(m.ImagePixelWidth, 1000);
    EXPECT_EQ(m.ImagePixelHeight, 800);
    EXPECT_EQ(m.ScrollX, 0);
    EXPECT_EQ(m.ScrollY, 0);
    EXPECT_EQ(m.MaxScrollX, 1000 - Port().width());
    EXPECT_EQ(m.MaxScrollY, 800 - Port().height());
    EXPECT_EQ(m.Control.Left, 0);
    EXPECT_EQ(m.Control.Top, 0);
    EXPECT_EQ(m.Control.Width, CLng(400 * tpp_));
    EXPECT_EQ(m.Control.Height, CLng(300 * tpp_));
}

TEST_F(ImageViewPortTest, HalfZoomKeepsTheImageSizeAndHalvesTheDisplayedImage) {
    view_->SetZoom(0.5);
    const ViewMetrics m = view_->Metrics();
    EXPECT_EQ(m.Zoom, 0.5);
    EXPECT_EQ(m.ImageWidth, 1000 * tpp_);
    EXPECT_EQ(m.DisplayedWidth(), 500 * tpp_);
    EXPECT_EQ(m.MaxScrollX, std::max(0, 500 - Port().width()));
    EXPECT_EQ(m.MaxScrollY, std::max(0, 400 - Port().height()));
}

TEST_F(ImageViewPortTest, ZoomKeepsTheImagePointAtTheTopLeftCorner) {
    view_->SetScroll(100, 50);
    view_->SetZoom(2.0);
    EXPECT_EQ(view_->Metrics().ScrollX, 200);
    EXPECT_EQ(view_->Metrics().ScrollY, 100);
    EXPECT_EQ(view_->Metrics().MaxScrollX, 2000 - Port().width());
}

TEST_F(ImageViewPortTest, ZoomOfZeroIsARunTimeError) {
    try {
        view_->SetZoom(0.0);
        FAIL() << "a zoom of 0 was taken";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number, 5);
    }
    EXPECT_EQ(view_->Metrics().Zoom, 1.0);
}

TEST_F(ImageViewPortTest, ScrollBeyondTheRangeIsRefused) {
    view_->SetScroll(5000, -20);
    EXPECT_EQ(view_->Metrics().ScrollX, view_->Metrics().MaxScrollX);
    EXPECT_EQ(view_->Metrics().ScrollY, 0);
    view_->SetScroll(120, 90);
    EXPECT_EQ(view_->Metrics().ScrollX, 120);
    EXPECT_EQ(view_->Metrics().ScrollY, 90);
}

TEST_F(ImageViewPortTest, RotationReportsTheTurnedBoundingBox) {
    view_->SetRotation(90);
    EXPECT_NEAR(view_->Metrics().ImageWidth, 800 * tpp_, 1e-6);
    EXPECT_NEAR(view_->Metrics().ImageHeight, 1000 * tpp_, 1e-6);
    view_->SetRotation(0.4);
    EXPECT_GT(view_->Metrics().ImageWidth, 1000 * tpp_);
    EXPECT_GT(view_->Metrics().ImageHeight, 800 * tpp_);
    EXPECT_EQ(view_->Metrics().MaxScrollX,
              std::ceil(view_->Metrics().ImageWidth / tpp_) - Port().width());
    EXPECT_EQ(view_->Metrics().ImagePixelWidth, 1000);
}

TEST_F(ImageViewPortTest, RotatingBackToZeroGivesTheUnrotatedMetricsExactly) {
    view_->SetScroll(30, 40);
    const ViewMetrics before = view_->Metrics();
    view_->SetRotation(0.4);
    view_->SetRotation(0.0);
    ExpectSameMetrics(view_->Metrics(), before);
}

TEST_F(ImageViewPortTest, ControlIsTheViewsPlaceOnItsWindow) {
    QWidget window;
    window.resize(600, 500);
    ImageView view(&window);
    view.setGeometry(30, 40, 400, 300);
    window.show();
    const TwipsRect c = view.Metrics().Control;
    EXPECT_EQ(c.Left, CLng(30 * tpp_));
    EXPECT_EQ(c.Top, CLng(40 * tpp_));
    EXPECT_EQ(c.Width, CLng(400 * tpp_));
    EXPECT_EQ(c.Height, CLng(300 * tpp_));
}

TEST_F(ImageViewPortTest, ViewNeverTakesTheKeyboardFocus) {
    EXPECT_EQ(view_->focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(view_->viewport()->focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(view_->horizontalScrollBar()->focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(view_->verticalScrollBar()->focusPolicy(), Qt::NoFocus);
}

TEST_F(ImageViewPortTest, UserScrollingIsReportedButTheModelsOwnScrollIsNot) {
    QSignalSpy scrolled(view_.get(), &ImageView::scrolled);
    view_->SetScroll(50, 60);
    view_->SetZoom(1.5);
    view_->SetRotation(1.2);
    EXPECT_EQ(scrolled.count(), 0);
    view_->verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(scrolled.count(), 1);
    EXPECT_EQ(view_->Metrics().ScrollY, view_->verticalScrollBar()->value());
}

} // namespace tv::test
