#pragma once
// Reads the printed text of the found lines of a scan with the OCR reader on a thread of its
// own, at a lower priority than the user-interface thread, so that a key press never waits for
// it. Progress and the complete reading come back on the user-interface thread with the run
// number the caller gave. A newer reading, Cancel or the end of the reader's owner cancels the
// reading under way; a cancelled reading hands nothing over.
#include "layout/PrintedLines.h"
#include "reading/PageReading.h"
#include "reading/ScanReading.h"

#include <QFutureWatcher>
#include <QImage>
#include <QObject>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

namespace tv {

class QtScanReader : public QObject {
    Q_OBJECT

  public:
    using ProgressHandler = std::function<void(int run, int percent)>;
    using DoneHandler = std::function<void(int run, ScanReading reading)>;
    using ComparedHandler = std::function<void(int comparison, std::vector<Disagreement> found)>;

    QtScanReader(ProgressHandler progress, DoneHandler done, ComparedHandler compared,
                 QObject* parent = nullptr);
    ~QtScanReader() override;

    // Reads lines (found on scan turned by rotation degrees, as the view shows it) on scan
    // (implicitly shared, not copied).
    void Read(const QImage& scan, const PrintedLines& lines, float rotation, int run);
    // Compares the records with the reading on the reader's thread, after any reading under way.
    void Compare(ReadingComparison comparison);
    void Cancel();
    // A reading or a comparison is under way.
    bool Running() const;

  private:
    struct Job {
        std::atomic<bool> Cancelled{false};
        std::atomic<int> Reported{-1};
        int Run = 0;
        ScanReading Result;
    };
    void Reported(const std::shared_ptr<Job>& job, int percent);

    ProgressHandler progress_;
    DoneHandler done_;
    ComparedHandler compared_;
    QThreadPool pool_;
    std::shared_ptr<Job> job_;
    QFutureWatcher<void>* watcher_;
    // The comparison under way: its number, and what it found.
    QFutureWatcher<std::vector<Disagreement>>* comparer_;
    int comparison_ = 0;
    bool comparing_ = false;
};

} // namespace tv
