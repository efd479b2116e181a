#pragma once
// The scan view: shows the scan at the present zoom and rotation with its effects, and is the
// model's scan view port. It keeps the pristine decoded scan once and paints only the exposed
// part of the viewport from it (or from a reduced copy when zoomed out), so neither a key press
// nor a rotation step ever costs a whole-image operation. The reduced copies are made on a
// worker thread once the loaded scan has been painted (at once when the view is hidden); until
// they are there a zoomed-out view is smoothed from the pristine scan.
#include "view/ImageViewDecode.h"
#include "view/ImageViewPixels.h"
#include "view/ScanViewPort.h"

#include <QAbstractScrollArea>
#include <QPoint>
#include <QRect>
#include <QRegion>
#include <QTimer>
#include <QTransform>

#include <optional>

namespace tv {

class ImageView : public QAbstractScrollArea, public ScanViewPort {
    Q_OBJECT

  public:
    explicit ImageView(QWidget* parent = nullptr);

    // Decodes the file on a worker thread, or at once when it is small (see QuickDecodeBytes);
    // either way loadFinished() follows from the event loop. A new load resets the
    // rotation, mirror and negative (they act on the loaded scan) and scrolls to the top left;
    // zoom, anti-aliasing, smoothing and the magnifier are the view's and stay.
    void BeginLoad(const QString& path);
    // False while a load is under way.
    bool LoadComplete() const { return !loading_; }
    // The last load's result (see LoadError).
    int ErrorCode() const { return errorCode_; }
    // Why the last load failed, in a few words; empty when it did not.
    const QString& ErrorReason() const { return scan_.Reason; }
    // Lets the user interface process its events until the load is complete.
    void WaitForLoad();
    // True once the reduced copies of the loaded scan are made (false while a load or the
    // reduction is under way, and when no scan is loaded).
    bool ReducedCopiesReady() const {
        return !loading_ && !reductionPending_ && !reducing_ && !scan_.Pristine.isNull();
    }

    // False for a moment after a zoom or rotation step: the step is painted at once with the
    // nearest pixels, and the smoothed frame follows when no further step came for a while.
    bool Refined() const { return !quick_; }

    ViewMetrics Metrics() const override;
    void SetScroll(int32_t x, int32_t y) override;
    void SetZoom(double factor) override;
    // Positive angles turn the scan anticlockwise (RotateLeft passes +0.4).
    void SetRotation(double totalDegrees) override;

    void SetAntiAlias(bool on);
    void SetSmoothing(bool on);
    void ToggleMirror();
    void ToggleNegative();
    void SetMagnifier(bool on);
    // The loaded scan as decoded (null when none is loaded).
    const QImage& Scan() const { return scan_.Pristine; }
    // How the loaded scan is stored (Format_Invalid when none is loaded).
    QImage::Format PixelFormat() const { return scan_.Pristine.format(); }
    // Lines for the image information box; empty when no scan is loaded.
    QString ImageInformation() const;

  signals:
    void loadFinished();
    // The user scrolled (scroll bars, wheel) or a resize moved the view: re-place the box.
    void scrolled();
    // Emitted at the end of every paint of the viewport.
    void repainted();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;

  private:
    void FinishLoad(const DecodedScan& scan);
    void ReleaseReplaced();
    void BeginReduction();
    void FinishReduction(const ReducedCopies& copies);
    // The image's bounding box after rotation, in image pixels.
    QSizeF RotatedSize() const;
    QSize ContentSize() const;
    void UpdateScrollRange();
    // Maps image pixels to viewport pixels at the given zoom.
    QTransform ImageToViewport(double zoom) const;
    QRegion Background(const QRect& exposed) const;
    QRect ContentRect() const;
    QColor Ground() const;
    // Paints the scan in the exposed part; cover, when not empty, is the part it paints whole,
    // the ground where the scan is not.
    void PaintLayer(QPainter& painter, const QImage& image, const QTransform& transform,
                    const QRect& exposed, bool smooth, const QRect& cover = {}) const;
    void DrawPixels(QPainter& painter, const QImage& image, const QRect& source,
                    const QRect& exposed) const;
    void SmoothEdges(QPainter& painter, const QImage& image, const QTransform& transform,
                     const QRect& exposed) const;
    void PaintScan(QPainter& painter, const QRect& exposed) const;
    void PaintLens(QPainter& painter, const QRect& exposed) const;
    QRect LensRect() const;
    void MoveLens(std::optional<QPoint> centre);

    DecodedScan scan_;
    ReducedCopies reduced_;
    // The scan a load replaced, kept until the new one's first frame.
    struct Replaced {
        QImage Pristine;
        ReducedCopies Reduced;
    } replaced_;
    // The band along an edge of the scan that anti-aliasing paints apart, kept between paints.
    mutable QImage band_;
    bool loading_ = false;
    // The reduced copies wait for the scan's first frame, then are made on a worker thread.
    bool reductionPending_ = false;
    bool reducing_ = false;
    quint64 loadNumber_ = 0;
    int errorCode_ = LoadOk;
    double zoom_ = 1.0;
    double rotation_ = 0.0;
    bool antiAlias_ = true;
    bool smoothing_ = true;
    bool mirror_ = false;
    bool negative_ = false;
    bool magnifier_ = false;
    std::optional<QPoint> lensCentre_;
    // The conversion buffer of the paints; painting leaves the view as it was.
    mutable PixelStage stage_;
    // Steps in quick succession are painted quickly; the refinement timer ends that.
    void BeginQuickFrames();
    bool quick_ = false;
    // Set from a zoom or rotation step to the next paint: the whole view is painted anew.
    bool repaintAll_ = false;
    QTimer refine_;
    // Set while the model moves the view itself, so that scrolled() reports only other moves.
    bool ownScroll_ = false;
};

} // namespace tv
