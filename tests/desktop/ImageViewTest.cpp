// Loading scans into the image view: formats, compact storage, error codes and the wait.
#include "ImageViewTesting.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageReader>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <optional>

namespace tv::test {

namespace {

quint32 Crc32(const QByteArray& bytes) {
    quint32 crc = 0xFFFFFFFFU;
    for (char c : bytes) {
        crc ^= static_cast<uchar>(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xEDB88320U & (0U - (crc & 1U)));
    }
    return ~crc;
}

void Put32BigEndian(QByteArray& bytes, qsizetype at, quint32 value) {
    for (int i = 0; i < 4; ++i)
        bytes[at + i] = static_cast<char>((value >> (24 - 8 * i)) & 0xFF);
}

} // namespace

// A scan of 123 x 77 pixels with one black dot, loaded from the file.
class ImageViewFormatTest : public ImageViewTest {
  protected:
    const QImage grey_ = WhiteWithDots({123, 77}, {{3, 4}});

    static void ExpectSize(ImageView& view) {
        EXPECT_EQ(view.ErrorCode(), 0);
        EXPECT_EQ(view.Metrics().ImagePixelWidth, 123);
        EXPECT_EQ(view.Metrics().ImagePixelHeight, 77);
    }
};

TEST_F(ImageViewFormatTest, GreyJpegLoadsAsEightBitGrey) {
    auto view = Loaded(Save(grey_, "1911B30123.jpg"));
    ExpectSize(*view);
    EXPECT_EQ(view->PixelFormat(), QImage::Format_Grayscale8);
    EXPECT_TRUE(view->ImageInformation().contains("8 bits per pixel, 256 shades of grey"));
}

TEST_F(ImageViewFormatTest, GreyPngLoadsAsEightBitGrey) {
    auto view = Loaded(Save(grey_, "scan.png"));
    ExpectSize(*view);
    EXPECT_EQ(view->PixelFormat(), QImage::Format_Grayscale8);
}

TEST_F(ImageViewFormatTest, BmpLoadsWithEightBitsOrFewer) {
    auto view = Loaded(Save(grey_, "scan.bmp"));
    ExpectSize(*view);
    EXPECT_LE(QImage::toPixelFormat(view->PixelFormat()).bitsPerPixel(), 8);
}

TEST_F(ImageViewFormatTest, GifLoadsWithEightBitsOrFewer) {
    auto view = Loaded(SaveBytes(GifOf(grey_), "scan.gif"));
    ExpectSize(*view);
    EXPECT_LE(QImage::toPixelFormat(view->PixelFormat()).bitsPerPixel(), 8);
}

TEST_F(ImageViewFormatTest, LzwCompressedGreyTiffLoadsAsEightBitGrey) {
    auto view = Loaded(Save(grey_, "scan.tif", 1));
    ExpectSize(*view);
    EXPECT_EQ(view->PixelFormat(), QImage::Format_Grayscale8);
}

TEST_F(ImageViewFormatTest, BilevelTiffStaysOneBit) {
    auto view = Loaded(Save(grey_.convertToFormat(QImage::Format_Mono), "bilevel.tif", 1));
    ExpectSize(*view);
    const QImage::Format format = view->PixelFormat();
    EXPECT_TRUE(format == QImage::Format_Mono || format == QImage::Format_MonoLSB);
    EXPECT_TRUE(view->ImageInformation().contains("1 bit per pixel, black and white"));
}

TEST_F(ImageViewTest, TextFileNamedJpgIsNotAPicture) {
    auto view = Loaded(SaveBytes("Surname,Forenames,District\r\n", "notes.jpg"));
    EXPECT_TRUE(view->LoadComplete());
    EXPECT_EQ(view->ErrorCode(), -2);
    EXPECT_EQ(view->Metrics().ImagePixelWidth, 0);
    EXPECT_TRUE(view->ImageInformation().isEmpty());
}

TEST_F(ImageViewTest, MissingFileGivesAPositiveCode) {
    auto view = Loaded(PathOf("absent.jpg"));
    EXPECT_EQ(view->ErrorCode(), 1);
}

TEST_F(ImageViewTest, TruncatedJpegLoadsPartlyOrGivesACode) {
    QImage gradient(400, 300, QImage::Format_Grayscale8);
    for (int y = 0; y < 300; ++y)
        memset(gradient.scanLine(y), y % 256, 400);
    QFile whole(Save(gradient, "whole.jpg"));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    auto view = Loaded(SaveBytes(bytes.left(bytes.size() / 2), "cut.jpg"));
    EXPECT_TRUE(view->LoadComplete());
    if (view->ErrorCode() == 0)
        EXPECT_EQ(view->Metrics().ImagePixelWidth, 400);
    else
        EXPECT_EQ(view->Metrics().ImagePixelWidth, 0);
}

TEST_F(ImageViewTest, HeaderClaimingMoreThanTheAllocationLimitIsRefused) {
    QImage small(16, 16, QImage::Format_ARGB32);
    small.fill(Qt::white);
    QFile file(Save(small, "small.png"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray png = file.readAll();
    // The header chunk claims 20000 x 20000 colour pixels: 1.6 GB to decode.
    Put32BigEndian(png, 16, 20000);
    Put32BigEndian(png, 20, 20000);
    Put32BigEndian(png, 29, Crc32(png.mid(12, 17)));
    auto view = Loaded(SaveBytes(png, "huge.png"));
    EXPECT_EQ(view->ErrorCode(), 4);
}

TEST_F(ImageViewTest, ScanOverQtsDefaultLimitLoads) {
    // 144 million grey pixels: more than the 128 MiB Qt allows unless told otherwise.
    QImage large(12000, 12000, QImage::Format_Grayscale8);
    large.fill(230);
    auto view = Loaded(Save(large, "large.jpg"));
    EXPECT_EQ(view->ErrorCode(), 0);
    EXPECT_EQ(view->Metrics().ImagePixelHeight, 12000);
}

TEST_F(ImageViewTest, WaitForLoadKeepsTheEventLoopRunningWithABusyCursor) {
    QImage scan(5000, 4000, QImage::Format_Grayscale8);
    for (int y = 0; y < 4000; ++y)
        memset(scan.scanLine(y), (y * 7) % 256, 5000);
    const QString path = Save(scan, "twenty-megapixels.jpg");
    ImageView view;
    QSignalSpy finished(&view, &ImageView::loadFinished);
    int ticks = 0;
    bool busy = true;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        ++ticks;
        const QCursor* cursor = QGuiApplication::overrideCursor();
        busy = busy && cursor != nullptr && cursor->shape() == Qt::BusyCursor;
    });
    timer.start(1);
    view.BeginLoad(path);
    EXPECT_FALSE(view.LoadComplete());
    view.WaitForLoad();
    EXPECT_TRUE(view.LoadComplete());
    EXPECT_EQ(finished.count(), 1);
    EXPECT_GT(ticks, 0);
    EXPECT_TRUE(busy);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(view.Metrics().ImagePixelWidth, 5000);
}

TEST_F(ImageViewTest, LaterLoadSupersedesAnEarlierOne) {
    const QString first = Save(WhiteWithDots({50, 40}, {}), "first.png");
    const QString second = Save(WhiteWithDots({70, 60}, {}), "second.png");
    ImageView view;
    view.BeginLoad(first);
    view.BeginLoad(second);
    view.WaitForLoad();
    EXPECT_EQ(view.Metrics().ImagePixelWidth, 70);
}

TEST_F(ImageViewTest, SmallScanDecodesAtOnceLargeOrUnknownOnesAreLeftToTheWorker) {
    // As the view does before every load.
    QImageReader::setAllocationLimit(AllocationLimitMegabytes);
    const QImage grey = WhiteWithDots({123, 77}, {{3, 4}});
    const std::optional<DecodedScan> small = DecodeIfQuick(Save(grey, "small.png"));
    ASSERT_TRUE(small.has_value());
    EXPECT_EQ(small->ErrorCode, LoadOk);
    EXPECT_EQ(small->Pristine, DecodeScan(PathOf("small.png")).Pristine);
    EXPECT_EQ(small->Format, QByteArray("png"));
    // 40 megapixels in one bit each take about 5 MB; the same in grey, 40 MB.
    QImage bilevel(7300, 5500, QImage::Format_Mono);
    bilevel.fill(1);
    const std::optional<DecodedScan> pages = DecodeIfQuick(Save(bilevel, "bilevel.tif"));
    ASSERT_TRUE(pages.has_value());
    EXPECT_EQ(pages->Pristine.depth(), 1);
    QImage large(2600, 2600, QImage::Format_Grayscale8);
    large.fill(200);
    EXPECT_FALSE(DecodeIfQuick(Save(large, "large.png")).has_value());
    EXPECT_FALSE(DecodeIfQuick(SaveBytes("not a picture", "text.jpg")).has_value());
    // A path that cannot be a scan is refused at once, without a worker.
    const std::optional<DecodedScan> missing = DecodeIfQuick(PathOf("missing.png"));
    ASSERT_TRUE(missing.has_value());
    EXPECT_EQ(missing->ErrorCode, LoadFileNotFound);
    EXPECT_EQ(missing->Reason, QStringLiteral("No such file or directory"));
}

TEST_F(ImageViewTest, SmallScanStillFinishesLoadingFromTheEventLoop) {
    ImageView view;
    QSignalSpy finished(&view, &ImageView::loadFinished);
    view.BeginLoad(Save(WhiteWithDots({50, 40}, {}), "small.png"));
    EXPECT_FALSE(view.LoadComplete());
    EXPECT_EQ(finished.count(), 0);
    view.WaitForLoad();
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(view.Metrics().ImagePixelWidth, 50);
}

TEST_F(ImageViewTest, ScanReplacedIsFreedAfterTheNewScansFirstFrame) {
    auto view = Loaded(Save(Checkerboard({64, 48}), "first.png"));
    const QImage first = view->Scan();
    ASSERT_FALSE(first.isDetached()); // shared with the view
    bool keptForTheFrame = false;
    QObject::connect(view.get(), &ImageView::loadFinished,
                     [&] { keptForTheFrame = !first.isDetached(); });
    view->BeginLoad(Save(Checkerboard({80, 60}), "second.png"));
    view->WaitForLoad();
    EXPECT_TRUE(keptForTheFrame);
    Grab(*view);
    EXPECT_TRUE(QTest::qWaitFor([&] { return first.isDetached(); }));
    EXPECT_EQ(view->Scan().width(), 80);
}

// A hidden view paints no frame to wait for. (The reduced copies, made at once for a hidden
// view, may hold the scan a moment longer on their worker.)
TEST_F(ImageViewTest, HiddenViewFreesTheScanReplacedWithoutAFrame) {
    ImageView view;
    view.BeginLoad(Save(Checkerboard({64, 48}), "first.png"));
    view.WaitForLoad();
    const QImage first = view.Scan();
    int frames = 0;
    QObject::connect(&view, &ImageView::repainted, [&] { ++frames; });
    view.BeginLoad(Save(Checkerboard({80, 60}), "second.png"));
    view.WaitForLoad();
    EXPECT_TRUE(QTest::qWaitFor([&] { return first.isDetached(); }));
    EXPECT_EQ(frames, 0);
}

TEST(ImageViewHalfSize, BilevelScanHalvesToGreyAveragingEachTwoByTwoBlock) {
    // 3 x 3 pixels: black in the top left corner and the whole last row.
    const QImage bilevel = WhiteWithDots({3, 3}, {{0, 0}, {0, 2}, {1, 2}, {2, 2}})
                               .convertToFormat(QImage::Format_Mono);
    const QImage half = HalfSize(bilevel);
    ASSERT_EQ(half.size(), QSize(2, 2));
    EXPECT_EQ(half.format(), QImage::Format_Grayscale8);
    EXPECT_EQ(half.pixelColor(0, 0).red(), 191); // one black pixel in four
    EXPECT_EQ(half.pixelColor(1, 0).red(), 255); // the odd column alone
    EXPECT_EQ(half.pixelColor(0, 1).red(), 0);   // the odd row alone
    EXPECT_EQ(half.pixelColor(1, 1).red(), 0);
}

TEST(ImageViewHalfSize, BilevelScanHalvesThroughItsColourTableInEitherBitOrder) {
    // Black is the first colour and the bits run from the least significant: 2 x 2 pixels with
    // one white.
    QImage bilevel(2, 2, QImage::Format_MonoLSB);
    bilevel.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    bilevel.fill(0);
    bilevel.setPixel(1, 0, 1);
    const QImage half = HalfSize(bilevel);
    ASSERT_EQ(half.size(), QSize(1, 1));
    EXPECT_EQ(half.pixelColor(0, 0).red(), 64);
}

TEST_F(ImageViewTest, ReducedCopiesFollowTheLoadAndANewLoadStartsThemAgain) {
    const QString first = Save(Checkerboard({64, 48}), "first.png");
    ImageView view;
    EXPECT_FALSE(view.ReducedCopiesReady());
    view.BeginLoad(first);
    view.WaitForLoad();
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.ReducedCopiesReady(); }));
    view.BeginLoad(Save(Checkerboard({80, 60}), "second.png"));
    EXPECT_FALSE(view.ReducedCopiesReady());
    view.WaitForLoad();
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.ReducedCopiesReady(); }));
    view.BeginLoad(PathOf("missing.png"));
    view.WaitForLoad();
    EXPECT_FALSE(view.ReducedCopiesReady());
}

TEST_F(ImageViewTest, ImageInformationNamesFileFormatSizeResolutionAndFileSize) {
    QImage scan = WhiteWithDots({300, 200}, {});
    scan.setDotsPerMeterX(11811); // 300 DPI
    scan.setDotsPerMeterY(11811);
    const QString path = Save(scan, "1911B30123.png");
    auto view = Loaded(path);
    const QString info = view->ImageInformation();
    EXPECT_TRUE(info.contains("File: 1911B30123.png"));
    EXPECT_TRUE(info.contains("Format: PNG"));
    EXPECT_TRUE(info.contains("Size: 300 \u00D7 200 pixels"));
    EXPECT_TRUE(info.contains("Colour: 8 bits per pixel, 256 shades of grey"));
    EXPECT_TRUE(info.contains("Resolution: 300 \u00D7 300 DPI"));
    EXPECT_TRUE(info.contains(QStringLiteral("File size: %L1 bytes").arg(QFileInfo(path).size())));
}

} // namespace tv::test
