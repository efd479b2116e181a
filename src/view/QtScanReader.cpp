#include "view/QtScanReader.h"

#include "view/QtLineFinder.h"
#include "view/QtScanReading.h"

#include <QtConcurrent/QtConcurrentRun>

#ifdef __linux__
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace tv {

namespace {

// The reader's thread, and the threads the OCR reader starts from it, which inherit it, yield
// to the user-interface thread: a key press is handled at once however long the reading takes.
constexpr int ReaderNiceness = 10;

void YieldToTheWindow() {
#ifdef __linux__
    setpriority(PRIO_PROCESS, static_cast<id_t>(syscall(SYS_gettid)), ReaderNiceness);
#endif
}

// The scan as the view shows it: the scan itself when unturned, else a grey copy of it turned as
// the view turns it, made here on the reader's thread (the lines were found on that copy).
QImage AsShown(const QImage& scan, float rotation, const std::atomic<bool>& cancelled) {
    if (rotation == 0.0F) return scan;
    const GreyRows rows = TurnedGreyRows(scan, rotation);
    QImage turned(rows.Width, rows.Height, QImage::Format_Grayscale8);
    for (int y = 0; y < rows.Height; ++y) {
        if (cancelled.load()) return {};
        rows.Row(y, turned.scanLine(y));
    }
    return turned;
}

} // namespace

QtScanReader::QtScanReader(ProgressHandler progress, DoneHandler done, ComparedHandler compared,
                           QObject* parent)
    : QObject(parent), progress_(std::move(progress)), done_(std::move(done)),
      compared_(std::move(compared)), watcher_(new QFutureWatcher<void>(this)),
      comparer_(new QFutureWatcher<std::vector<Disagreement>>(this)) {
    // One reading at a time: a cancelled one gives way within a line.
    pool_.setMaxThreadCount(1);
    connect(watcher_, &QFutureWatcher<void>::finished, this, [this] {
        std::shared_ptr<Job> job = job_;
        if (!job || job->Cancelled.load()) return;
        job_.reset();
        done_(job->Run, std::move(job->Result));
    });
    connect(comparer_, &QFutureWatcher<std::vector<Disagreement>>::finished, this, [this] {
        if (!comparing_) return;
        comparing_ = false;
        compared_(comparison_, comparer_->result());
    });
}

QtScanReader::~QtScanReader() {
    Cancel();
    pool_.waitForDone();
}

void QtScanReader::Read(const QImage& scan, const PrintedLines& lines, float rotation, int run) {
    Cancel();
    auto job = std::make_shared<Job>();
    job->Run = run;
    job_ = job;
    watcher_->setFuture(QtConcurrent::run(&pool_, [this, job, scan, lines, rotation] {
        YieldToTheWindow();
        const QImage shown = AsShown(scan, rotation, job->Cancelled);
        if (shown.isNull()) return;
        ReadOptions options;
        options.Cancelled = &job->Cancelled;
        options.Progress = [this, job](int percent) { Reported(job, percent); };
        // As tallyview --compare reads a scan.
        job->Result = ReadScan(shown, lines, options);
    }));
}

// From any reading thread: only a change of the share goes to the window.
void QtScanReader::Reported(const std::shared_ptr<Job>& job, int percent) {
    if (job->Reported.exchange(percent) == percent || job->Cancelled.load()) return;
    QMetaObject::invokeMethod(
        this,
        [this, job, percent] {
            if (job_ == job && !job->Cancelled.load()) progress_(job->Run, percent);
        },
        Qt::QueuedConnection);
}

// The matching of a long table with a page's lines takes far longer than a key press: never on
// the user-interface thread.
void QtScanReader::Compare(ReadingComparison comparison) {
    comparison_ = comparison.Id;
    comparing_ = true;
    comparer_->setFuture(QtConcurrent::run(&pool_, [comparison = std::move(comparison)] {
        YieldToTheWindow();
        return tv::Compare(comparison);
    }));
}

// A comparison under way is not stopped: its result is of a comparison the session no longer
// wants, and is dropped there.
void QtScanReader::Cancel() {
    if (job_) job_->Cancelled.store(true);
    job_.reset();
    comparing_ = false;
}

bool QtScanReader::Running() const {
    return job_ != nullptr || comparing_;
}

} // namespace tv
