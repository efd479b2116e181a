#pragma once
// Scans written into a temporary folder and loaded into a shown image view, for the image view's
// tests.
#include "view/ImageView.h"

#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>

namespace tv::test {

// A white grey-scale scan with black pixels at the given points.
QImage WhiteWithDots(QSize size, std::initializer_list<QPoint> dots);
// A scan of alternating black and white pixels.
QImage Checkerboard(QSize size);
// A two-colour GIF of a black and white grey image (Qt writes no GIFs).
QByteArray GifOf(const QImage& blackAndWhite);
// The grey value of a grabbed pixel.
int Grey(const QImage& image, int x, int y);
// What the viewport shows once the smoothed frame of the last zoom or rotation step is there.
QImage Grab(ImageView& view);
// What the viewport shows at once.
QImage GrabNow(ImageView& view);
// Black pixels in a rectangle of a grabbed image.
int BlackPixels(const QImage& image, const QRect& area);

class ImageViewTest : public ::testing::Test {
  protected:
    QString PathOf(const QString& name) const { return dir_.filePath(name); }
    // Saves the image; compression -1 leaves the writer's default.
    QString Save(const QImage& image, const QString& name, int compression = -1) const;
    QString SaveBytes(const QByteArray& bytes, const QString& name) const;
    // A shown view with the file loaded and, when it loaded, its reduced copies made.
    static std::unique_ptr<ImageView> Loaded(const QString& path, QSize size = QSize(400, 300));

  private:
    QTemporaryDir dir_;
};

} // namespace tv::test
