#include "ImageViewTesting.h"

#include <QFile>
#include <QImageWriter>
#include <QTest>

namespace tv::test {

QImage WhiteWithDots(QSize size, std::initializer_list<QPoint> dots) {
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(255);
    for (const QPoint& dot : dots)
        image.scanLine(dot.y())[dot.x()] = 0;
    return image;
}

QImage Checkerboard(QSize size) {
    QImage image(size, QImage::Format_Grayscale8);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.scanLine(y)[x] = (x + y) % 2 == 0 ? 0 : 255;
    return image;
}

namespace {

void Append16(QByteArray& bytes, int value) {
    bytes.append(static_cast<char>(value & 0xFF));
    bytes.append(static_cast<char>(value >> 8));
}

// LZW codes of 3 bits, least significant bit first. Every pixel is a literal code and a clear
// code follows each pair, so the decoder's table never grows far enough to widen the codes.
QByteArray LiteralCodes(const QImage& image) {
    const int clear = 4;
    const int end = 5;
    QByteArray out;
    quint32 bits = 0;
    int count = 0;
    auto put = [&](int code) {
        bits |= static_cast<quint32>(code) << count;
        count += 3;
        for (; count >= 8; count -= 8, bits >>= 8)
            out.append(static_cast<char>(bits & 0xFF));
    };
    put(clear);
    int written = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x, ++written) {
            if (written > 0 && written % 2 == 0) put(clear);
            put(image.constScanLine(y)[x] < 128 ? 0 : 1);
        }
    put(end);
    if (count > 0) out.append(static_cast<char>(bits & 0xFF));
    return out;
}

} // namespace

QByteArray GifOf(const QImage& blackAndWhite) {
    QByteArray gif("GIF89a");
    Append16(gif, blackAndWhite.width());
    Append16(gif, blackAndWhite.height());
    gif.append(QByteArray("\x80\x00\x00", 3));             // two-entry global colour table
    gif.append(QByteArray("\x00\x00\x00\xFF\xFF\xFF", 6)); // black, white
    gif.append(',');
    Append16(gif, 0);
    Append16(gif, 0);
    Append16(gif, blackAndWhite.width());
    Append16(gif, blackAndWhite.height());
    gif.append('\0');
    gif.append('\2'); // minimum code size
    const QByteArray codes = LiteralCodes(blackAndWhite);
    for (qsizetype at = 0; at < codes.size(); at += 255) {
        const QByteArray block = codes.mid(at, 255);
        gif.append(static_cast<char>(block.size()));
        gif.append(block);
    }
    gif.append('\0');
    gif.append(';');
    return gif;
}

int Grey(const QImage& image, int x, int y) {
    return qGray(image.pixel(x, y));
}

int BlackPixels(const QImage& image, const QRect& area) {
    int black = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (Grey(image, x, y) < 64) ++black;
    return black;
}

QString ImageViewTest::Save(const QImage& image, const QString& name, int compression) const {
    const QString path = PathOf(name);
    QImageWriter writer(path);
    if (compression >= 0) writer.setCompression(compression);
    EXPECT_TRUE(writer.write(image)) << writer.errorString().toStdString();
    return path;
}

QString ImageViewTest::SaveBytes(const QByteArray& bytes, const QString& name) const {
    const QString path = PathOf(name);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return path;
}

std::unique_ptr<ImageView> ImageViewTest::Loaded(const QString& path, QSize size) {
    auto view = std::make_unique<ImageView>();
    view->resize(size);
    view->show();
    view->BeginLoad(path);
    view->WaitForLoad();
    // The reduced copies follow on a worker thread; a zoomed-out view is smoothed from them.
    if (view->ErrorCode() == LoadOk) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return view->ReducedCopiesReady(); }));
    }
    return view;
}

QImage GrabNow(ImageView& view) {
    return view.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QImage Grab(ImageView& view) {
    EXPECT_TRUE(QTest::qWaitFor([&view] { return view.Refined(); }));
    return GrabNow(view);
}

} // namespace tv::test
