#include "view/ImageView.h"

#include "core/Checked.h"
#include "core/QtPlatform.h"

#include <QCursor>
#include <QMouseEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>
#include <QStyleFactory>
#include <QStyleOption>

#include <algorithm>
#include <cmath>

namespace tv {

namespace {

constexpr int ScrollStepPixels = 20;
// How long after the last zoom or rotation step the smoothed frame is painted: longer than the
// pause between two steps of a held or quickly pressed key.
constexpr int RefineAfterMs = 150;

RunTimeError InvalidCall() {
    return {5, "Invalid procedure call or argument"};
}

QColor Mixed(const QColor& a, const QColor& b) {
    return QColor((a.red() + b.red() + 1) / 2, (a.green() + b.green() + 1) / 2,
                  (a.blue() + b.blue() + 1) / 2);
}

// The Windows look fills a scroll bar's trough with a dither of two colours through a pattern
// brush, which on a bar as tall as the view cost more than painting the whole scan did. The same
// two colours mixed and filled flat look the same from a normal distance.
class FlatTroughStyle : public QProxyStyle {
  public:
    using QProxyStyle::QProxyStyle;

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        if (element != CE_ScrollBarAddPage && element != CE_ScrollBarSubPage) {
            QProxyStyle::drawControl(element, option, painter, widget);
            return;
        }
        const QPalette& palette = option->palette;
        const bool pressed = (option->state & State_Sunken) != 0;
        painter->fillRect(option->rect,
                          pressed ? Mixed(palette.shadow().color(), palette.dark().color())
                                  : Mixed(palette.light().color(), palette.window().color()));
    }
};

} // namespace

ImageView::ImageView(QWidget* parent) : QAbstractScrollArea(parent) {
    // The image's top left corner is the view's top left corner: the box is placed from it.
    setFrameShape(QFrame::NoFrame);
    // The scroll bars are always there, so the visible part never changes size under the box.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    // Keys must reach the main window's key handler, never the view.
    for (QWidget* w :
         {static_cast<QWidget*>(this), viewport(), static_cast<QWidget*>(horizontalScrollBar()),
          static_cast<QWidget*>(verticalScrollBar())})
        w->setFocusPolicy(Qt::NoFocus);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    horizontalScrollBar()->setSingleStep(ScrollStepPixels);
    verticalScrollBar()->setSingleStep(ScrollStepPixels);
    // Every zoom step and every press that scrolls the view changes the scroll bars, so they are
    // repainted as often as the scan; the plain Windows look, with its trough filled flat, paints
    // them at a fraction of the cost of the desktop style's gradients.
    if (QStyle* plain = QStyleFactory::create(QStringLiteral("Windows"))) {
        auto* flat = new FlatTroughStyle(plain);
        flat->setParent(this);
        horizontalScrollBar()->setStyle(flat);
        verticalScrollBar()->setStyle(flat);
    }
    refine_.setSingleShot(true);
    refine_.setInterval(RefineAfterMs);
    connect(&refine_, &QTimer::timeout, this, [this] {
        quick_ = false;
        viewport()->update();
    });
}

// A zoom or rotation step repaints the whole view. Smoothing it costs several times what taking
// the nearest pixels does, so the steps are painted with the nearest pixels and the smoothed
// frame follows once the steps stop.
void ImageView::BeginQuickFrames() {
    quick_ = true;
    repaintAll_ = true;
    refine_.start();
}

ViewMetrics ImageView::Metrics() const {
    ViewMetrics m;
    m.Zoom = zoom_;
    m.TwipsPerPixelX = ScreenTwipsPerPixel();
    m.TwipsPerPixelY = m.TwipsPerPixelX;
    const QSizeF rotated = RotatedSize();
    m.ImageWidth = rotated.width() * m.TwipsPerPixelX;
    m.ImageHeight = rotated.height() * m.TwipsPerPixelY;
    m.ScrollX = horizontalScrollBar()->value();
    m.ScrollY = verticalScrollBar()->value();
    m.MaxScrollX = horizontalScrollBar()->maximum();
    m.MaxScrollY = verticalScrollBar()->maximum();
    const QPoint origin = mapTo(window(), QPoint(0, 0));
    m.Control = {CLng(origin.x() * m.TwipsPerPixelX), CLng(origin.y() * m.TwipsPerPixelY),
                 CLng(width() * m.TwipsPerPixelX), CLng(height() * m.TwipsPerPixelY)};
    m.ImagePixelWidth = scan_.Pristine.width();
    m.ImagePixelHeight = scan_.Pristine.height();
    return m;
}

void ImageView::SetScroll(int32_t x, int32_t y) {
    const QScopedValueRollback<bool> own(ownScroll_, true);
    // The scroll bars refuse what lies beyond their range; Metrics reads back what they took.
    horizontalScrollBar()->setValue(x);
    verticalScrollBar()->setValue(y);
}

void ImageView::SetZoom(double factor) {
    if (!(factor > 0.0) || !std::isfinite(factor)) throw InvalidCall();
    const QScopedValueRollback<bool> own(ownScroll_, true);
    // The image point at the top left corner stays there.
    const double ratio = factor / zoom_;
    const QPointF scroll(horizontalScrollBar()->value(), verticalScrollBar()->value());
    zoom_ = factor;
    BeginQuickFrames();
    UpdateScrollRange();
    horizontalScrollBar()->setValue(qRound(scroll.x() * ratio));
    verticalScrollBar()->setValue(qRound(scroll.y() * ratio));
    viewport()->update();
}

void ImageView::SetRotation(double totalDegrees) {
    if (!std::isfinite(totalDegrees)) throw InvalidCall();
    const QScopedValueRollback<bool> own(ownScroll_, true);
    rotation_ = totalDegrees;
    BeginQuickFrames();
    UpdateScrollRange();
    viewport()->update();
}

QSizeF ImageView::RotatedSize() const {
    const QRectF image(scan_.Pristine.rect());
    if (rotation_ == 0.0) return image.size();
    return QTransform().rotate(-rotation_).mapRect(image).size();
}

QSize ImageView::ContentSize() const {
    // A fraction of a pixel still needs scrolling to; the tolerance keeps exact sizes exact.
    const QSizeF displayed = RotatedSize() * zoom_;
    return {static_cast<int>(std::ceil(displayed.width() - 1e-9)),
            static_cast<int>(std::ceil(displayed.height() - 1e-9))};
}

void ImageView::UpdateScrollRange() {
    const QSize content = ContentSize();
    const QSize port = viewport()->size();
    horizontalScrollBar()->setRange(0, std::max(0, content.width() - port.width()));
    verticalScrollBar()->setRange(0, std::max(0, content.height() - port.height()));
    horizontalScrollBar()->setPageStep(port.width());
    verticalScrollBar()->setPageStep(port.height());
}

void ImageView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    UpdateScrollRange();
}

void ImageView::scrollContentsBy(int dx, int dy) {
    // The lens stays under the pointer while the scan moves, so it needs a full repaint; after a
    // zoom or rotation step the whole view is painted anew, and moving the old pixels first
    // would be wasted.
    if (lensCentre_ || repaintAll_)
        viewport()->update();
    else
        viewport()->scroll(dx, dy);
    if (!ownScroll_) emit scrolled();
}

void ImageView::SetAntiAlias(bool on) {
    antiAlias_ = on;
    viewport()->update();
}

void ImageView::SetSmoothing(bool on) {
    smoothing_ = on;
    viewport()->update();
}

void ImageView::ToggleMirror() {
    mirror_ = !mirror_;
    viewport()->update();
}

void ImageView::ToggleNegative() {
    negative_ = !negative_;
    viewport()->update();
}

void ImageView::SetMagnifier(bool on) {
    magnifier_ = on;
    const QPoint pointer = viewport()->mapFromGlobal(QCursor::pos());
    const bool under = on && viewport()->rect().contains(pointer);
    MoveLens(under ? std::optional<QPoint>(pointer) : std::nullopt);
}

void ImageView::mouseMoveEvent(QMouseEvent* event) {
    if (magnifier_) MoveLens(event->position().toPoint());
    // Not consumed: the window's mouse handling sees the move too.
    QAbstractScrollArea::mouseMoveEvent(event);
}

bool ImageView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave) MoveLens(std::nullopt);
    return QAbstractScrollArea::viewportEvent(event);
}

} // namespace tv
