#pragma once
// Runs the line finder on a worker thread of Qt's pool, once per scan and again after a turn,
// and hands the lines (in the scan's pixels) to the user-interface thread. A newer run, or the
// end of the finder's owner, cancels the run under way; a cancelled run hands over nothing.
#include "layout/PrintedLines.h"
#include "linefind/FindPrintedLines.h"

#include <QFutureWatcher>
#include <QImage>
#include <QObject>
#include <QTransform>

#include <atomic>
#include <functional>
#include <memory>

namespace tv {

// The scan's pixels as grey rows, whatever its format (bilevel, palette, grey, colour); the
// image must outlive the rows.
GreyRows GreyRowsOf(const QImage& scan);

// The scan turned by degrees as the view shows it (anticlockwise for a positive angle, on the
// bounding rectangle of the turned scan), each pixel the scan's pixel under its centre and white
// outside the scan: a turned grey copy of the scan is never made.
GreyRows TurnedGreyRows(const QImage& scan, double degrees);

class QtLineFinder : public QObject {
    Q_OBJECT

  public:
    // found runs on the user-interface thread with the lines of the latest run and its tag.
    explicit QtLineFinder(std::function<void(PrintedLines, float)> found,
                          QObject* parent = nullptr);
    ~QtLineFinder() override;

    // Finds the lines of scan (implicitly shared, not copied) turned by rotation degrees, with
    // columnsAcross columns expected; the rotation comes back with the lines.
    void Find(const QImage& scan, int columnsAcross, float rotation);
    // Cancels the run under way, if any; nothing is handed over from it.
    void Cancel();
    bool Running() const;

  private:
    struct Run {
        std::atomic<bool> Cancelled{false};
        PrintedLines Lines;
    };
    std::function<void(PrintedLines, float)> found_;
    std::shared_ptr<Run> run_;
    QFutureWatcher<void>* watcher_;
    float tag_ = 0.0F;
};

} // namespace tv
