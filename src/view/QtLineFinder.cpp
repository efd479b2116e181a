#include "view/QtLineFinder.h"

#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>
#include <cmath>

namespace tv {

GreyRows GreyRowsOf(const QImage& scan) {
    GreyRows rows;
    rows.Width = scan.width();
    rows.Height = scan.height();
    if (scan.format() == QImage::Format_Grayscale8) {
        rows.Row = [&scan](int y, uint8_t* out) {
            const uchar* line = scan.constScanLine(y);
            std::copy(line, line + scan.width(), out);
        };
        return rows;
    }
    if (scan.format() == QImage::Format_Mono || scan.format() == QImage::Format_MonoLSB) {
        // Bilevel: each bit through the two-colour table, eight pixels a byte.
        const QList<QRgb> table = scan.colorTable();
        const uint8_t zero = table.size() > 0 ? static_cast<uint8_t>(qGray(table[0])) : 0;
        const uint8_t one = table.size() > 1 ? static_cast<uint8_t>(qGray(table[1])) : 255;
        const bool msb = scan.format() == QImage::Format_Mono;
        rows.Row = [&scan, zero, one, msb](int y, uint8_t* out) {
            const uchar* line = scan.constScanLine(y);
            for (int x = 0; x < scan.width(); ++x) {
                const int bit = msb ? 7 - (x & 7) : (x & 7);
                out[x] = ((line[x >> 3] >> bit) & 1) != 0 ? one : zero;
            }
        };
        return rows;
    }
    // Any other format a row at a time, so that no grey copy of the whole scan is made.
    rows.Row = [&scan](int y, uint8_t* out) {
        const QImage row =
            scan.copy(0, y, scan.width(), 1).convertToFormat(QImage::Format_Grayscale8);
        const uchar* line = row.constScanLine(0);
        std::copy(line, line + scan.width(), out);
    };
    return rows;
}

GreyRows TurnedGreyRows(const QImage& scan, double degrees) {
    const QTransform turn = QTransform().rotate(-degrees);
    const QRectF bounds = turn.mapRect(QRectF(scan.rect()));
    const QTransform back = turn.inverted();
    GreyRows rows;
    rows.Width = static_cast<int>(std::ceil(bounds.width() - 1e-9));
    rows.Height = static_cast<int>(std::ceil(bounds.height() - 1e-9));
    const bool grey = scan.format() == QImage::Format_Grayscale8;
    rows.Row = [&scan, back, bounds, grey, width = rows.Width](int y, uint8_t* out) {
        const QPointF start = back.map(QPointF(bounds.left() + 0.5, bounds.top() + y + 0.5));
        const QPointF next = back.map(QPointF(bounds.left() + 1.5, bounds.top() + y + 0.5));
        const QPointF step = next - start;
        for (int x = 0; x < width; ++x) {
            const int sx = static_cast<int>(std::floor(start.x() + step.x() * x));
            const int sy = static_cast<int>(std::floor(start.y() + step.y() * x));
            if (sx < 0 || sy < 0 || sx >= scan.width() || sy >= scan.height())
                out[x] = 255;
            else
                out[x] = grey ? scan.constScanLine(sy)[sx]
                              : static_cast<uint8_t>(qGray(scan.pixel(sx, sy)));
        }
    };
    return rows;
}

QtLineFinder::QtLineFinder(std::function<void(PrintedLines, float)> found, QObject* parent)
    : QObject(parent), found_(std::move(found)), watcher_(new QFutureWatcher<void>(this)) {
    connect(watcher_, &QFutureWatcher<void>::finished, this, [this] {
        std::shared_ptr<Run> run = run_;
        if (!run || run->Cancelled.load()) return;
        run_.reset();
        found_(std::move(run->Lines), tag_);
    });
}

QtLineFinder::~QtLineFinder() {
    Cancel();
    watcher_->waitForFinished();
}

void QtLineFinder::Find(const QImage& scan, int columnsAcross, float rotation) {
    Cancel();
    auto run = std::make_shared<Run>();
    run_ = run;
    tag_ = rotation;
    watcher_->setFuture(QtConcurrent::run([run, scan, columnsAcross, rotation] {
        const GreyRows rows = rotation == 0.0F ? GreyRowsOf(scan) : TurnedGreyRows(scan, rotation);
        run->Lines = FindPrintedLines(rows, columnsAcross, &run->Cancelled);
    }));
}

void QtLineFinder::Cancel() {
    if (run_) run_->Cancelled.store(true);
    run_.reset();
}

bool QtLineFinder::Running() const {
    return run_ != nullptr && watcher_->isRunning();
}

} // namespace tv
