#pragma once
// Drawing the scan's pixels that the painter converts slowly (one bit per pixel, palettes and
// grey): the part a paint needs is converted to 32 bits, straight into the painter's own pixels
// where it can be, otherwise first and then drawn at memory speed.
#include <QImage>
#include <QRect>
#include <QRgb>

#include <optional>
#include <vector>

class QPainter;

namespace tv {

class PixelStage {
  public:
    // True for grey, one bit per pixel and palettes: every scan not stored in the painter's own
    // 32-bit pixels.
    static bool Needed(const QImage& image);
    // Draws the source rectangle of the image at its place under the painter's transform. When
    // the transform only moves the image, a band of rows at a time, drawn while the converted
    // rows are still in the processor's cache.
    void Draw(QPainter& painter, const QImage& image, const QRect& source);
    // Draws the source rectangle turned, scaled or mirrored by the painter's transform, each
    // pixel of the device taking the image pixel under its centre, straight into the 32-bit
    // image the painter paints on. With a ground colour, every pixel of the area (in the
    // painter's coordinates before its transform) is written, the ground where the centre falls
    // outside the source; without, only the source's pixels. False, with nothing drawn, when
    // the painter or the image asks for more (smoothing, anti-aliasing, a clip, transparency,
    // another kind of device or of image).
    static bool DrawTurned(QPainter& painter, const QImage& image, const QRect& source,
                           std::optional<QRgb> ground = std::nullopt, const QRect& area = {});

  private:
    // When the painter paints on a 32-bit image (a window's backing store, a widget rendered to
    // an image) and the transform moves by whole pixels only, the pixels are converted straight
    // into it, within its clip: one pass over them instead of converting and then copying.
    // False, with nothing drawn, otherwise.
    bool DrawDirect(QPainter& painter, const QImage& image, const QRect& source);
    // The rectangle in 32 bits per pixel (premultiplied when the image has an alpha channel),
    // converted through the colour table or from grey; valid until the next call.
    QImage Part(const QImage& image, const QRect& source);

    // Kept from one paint to the next: fresh memory would cost the page faults of megabytes on
    // every paint.
    std::vector<QRgb> buffer_;
};

} // namespace tv
