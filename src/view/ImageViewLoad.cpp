// Loading the scan (a large one on a worker thread), waiting for it with the window responsive,
// reducing it on a worker once it is shown, and the image information box's lines.
#include "view/ImageView.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QFutureWatcher>
#include <QGuiApplication>
#include <QImageReader>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStringList>
#include <QtConcurrent/QtConcurrentRun>

namespace tv {

void ImageView::BeginLoad(const QString& path) {
    // Deliberately above Qt's 128 MiB default, which a large scan exceeds; still bounded so that
    // a corrupt header cannot exhaust memory.
    QImageReader::setAllocationLimit(AllocationLimitMegabytes);
    loading_ = true;
    const quint64 load = ++loadNumber_;
    if (std::optional<DecodedScan> quick = DecodeIfQuick(path)) {
        // Finished from the event loop all the same, as a worker's decode is.
        QMetaObject::invokeMethod(
            this,
            [this, load, scan = std::move(*quick)] {
                if (load == loadNumber_) FinishLoad(scan);
            },
            Qt::QueuedConnection);
        return;
    }
    auto* watcher = new QFutureWatcher<DecodedScan>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, load] {
        watcher->deleteLater();
        // A load started later supersedes this one.
        if (load == loadNumber_) FinishLoad(watcher->result());
    });
    watcher->setFuture(QtConcurrent::run(DecodeScan, path));
}

void ImageView::FinishLoad(const DecodedScan& scan) {
    const QScopedValueRollback<bool> own(ownScroll_, true);
    // The scan replaced is freed after the new one's first frame: giving back a large scan's
    // memory takes milliseconds that need not come before it.
    replaced_.Pristine = std::move(scan_.Pristine);
    replaced_.Reduced = std::move(reduced_);
    scan_ = scan;
    reduced_ = {};
    errorCode_ = scan.ErrorCode;
    rotation_ = 0.0;
    mirror_ = false;
    negative_ = false;
    UpdateScrollRange();
    horizontalScrollBar()->setValue(0);
    verticalScrollBar()->setValue(0);
    viewport()->update();
    loading_ = false;
    // A reduction still under way belongs to the scan before; its copies are dropped.
    reducing_ = false;
    reductionPending_ = !scan_.Pristine.isNull();
    // A hidden view paints nothing until it is shown: its copies and the scan replaced need not
    // wait.
    if (!isVisible()) {
        BeginReduction();
        replaced_ = {};
    }
    emit loadFinished();
}

void ImageView::ReleaseReplaced() {
    if (replaced_.Pristine.isNull() && replaced_.Reduced.Half.isNull()) return;
    // Posted: run once the frame painted now is on the screen.
    QMetaObject::invokeMethod(
        this, [this] { replaced_ = {}; }, Qt::QueuedConnection);
}

// The reduced copies are a whole-image operation: they are made off the user-interface thread,
// after the scan's first frame, so that opening a scan costs no more than decoding it.
void ImageView::BeginReduction() {
    if (!reductionPending_) return;
    reductionPending_ = false;
    reducing_ = true;
    const quint64 load = loadNumber_;
    auto* watcher = new QFutureWatcher<ReducedCopies>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, load] {
        watcher->deleteLater();
        if (load == loadNumber_) FinishReduction(watcher->result());
    });
    watcher->setFuture(QtConcurrent::run(ReduceScan, scan_.Pristine));
}

void ImageView::FinishReduction(const ReducedCopies& copies) {
    reduced_ = copies;
    reducing_ = false;
    // Only a smoothed, zoomed-out view paints from them.
    if (smoothing_ && zoom_ <= 0.5) viewport()->update();
}

void ImageView::WaitForLoad() {
    if (LoadComplete()) return;
    QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    // The window may be closed meanwhile; the wait ends with it.
    const QPointer<ImageView> self(this);
    while (self && !self->LoadComplete())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    QGuiApplication::restoreOverrideCursor();
}

namespace {

QString ColourText(const QImage& image) {
    if (image.depth() == 1) return QStringLiteral("1 bit per pixel, black and white");
    if (image.format() == QImage::Format_Grayscale8)
        return QStringLiteral("8 bits per pixel, 256 shades of grey");
    if (image.colorCount() > 0)
        return QStringLiteral("%1 bits per pixel, %2 colours")
            .arg(image.depth())
            .arg(image.colorCount());
    return QStringLiteral("%1 bits per pixel, colour").arg(image.depth());
}

int DotsPerInch(int dotsPerMeter) {
    return qRound(dotsPerMeter * 0.0254);
}

} // namespace

QString ImageView::ImageInformation() const {
    const QImage& image = scan_.Pristine;
    if (image.isNull()) return {};
    const QChar times(0x00D7);
    QStringList lines;
    lines
        << QStringLiteral("File: %1").arg(QFileInfo(scan_.Path).fileName())
        << QStringLiteral("Folder: %1").arg(QFileInfo(scan_.Path).absolutePath())
        << QStringLiteral("Format: %1").arg(QString::fromLatin1(scan_.Format).toUpper())
        << QStringLiteral("Size: %1 %2 %3 pixels").arg(image.width()).arg(times).arg(image.height())
        << QStringLiteral("Colour: %1").arg(ColourText(image))
        << QStringLiteral("Resolution: %1 %2 %3 DPI")
               .arg(DotsPerInch(image.dotsPerMeterX()))
               .arg(times)
               .arg(DotsPerInch(image.dotsPerMeterY()))
        << QStringLiteral("File size: %L1 bytes").arg(scan_.FileSize);
    return lines.join(QLatin1Char('\n'));
}

} // namespace tv
