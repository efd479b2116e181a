#include "BenchWindow.h"

#include "app/DesktopApp.h"
#include "core/QtPlatform.h"
#include "session/Form1.h"
#include "view/ImageView.h"
#include "view/RecordBoxWidget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>

#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace bench {

namespace {

void Require(bool holds, const std::string& what) {
    if (!holds) throw std::runtime_error(what);
}

} // namespace

tv::Answer QuietPrompts::Ask(const tv::Prompt& prompt) {
    ++Asked;
    std::fprintf(stderr, "tallyview_bench_desktop: the page asked: %s\n", prompt.Text.c_str());
    return prompt.Default;
}

void Settle() {
    // Twice: a paint may post more work (the box laid out again after the change watch).
    for (int pass = 0; pass < 2; ++pass)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void WaitFor(const std::function<bool()>& done) {
    while (!done())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

VerifyingWindow::VerifyingWindow(const ScanFile& file) : file_(file) {
    Require(settings_.isValid(), "no temporary folder for the settings");
    tv::DesktopServices services;
    // A settings file of its own: no remembered scan, so every page is calibrated afresh.
    services.SettingsPath = settings_.filePath(QStringLiteral("Tallyview.conf"));
    services.Main.Ask = &prompts_;
    forms_ = std::make_unique<tv::DesktopForms>(file.Scan.toStdString(),
                                                file.Transcription.toStdString(), services);
    forms_->Start();
    WaitFor(
        [this] { return forms_->MainForm()->isVisible() && !forms_->StartWindow()->isVisible(); });
    Main().setGeometry(QRect(QPoint(0, 0), WindowSize));
    Settle();
    Require(Model().Calib.CalibrationStage == 1, "the page did not open at calibration");
    Calibrate();
    Require(prompts_.Asked == 0, "the page asked a question");
    WaitFor([this] { return View().ReducedCopiesReady(); });
    // The window's own finding of the lines and reading of the page are over before anything
    // is timed: only the benchmark that asks for a reading under way has one.
    WaitFor([this] { return !Main().FindingLines() && !Main().ReadingScan(); });
}

VerifyingWindow::~VerifyingWindow() {
    forms_.reset();
    Settle();
}

tv::Form1& VerifyingWindow::Main() const {
    return *forms_->MainForm();
}

tv::ImageView& VerifyingWindow::View() const {
    return Main().View();
}

tv::Session& VerifyingWindow::Model() const {
    return Main().Model();
}

void VerifyingWindow::Key(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
    QWidget* target = QApplication::focusWidget();
    if (target == nullptr || target->window() != &Main())
        target = Main().findChild<QLineEdit*>(QStringLiteral("DummyBox"));
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers);
    QCoreApplication::sendEvent(target, &press);
    QCoreApplication::sendEvent(target, &release);
}

void VerifyingWindow::Click(const char* name) const {
    auto* button = Main().findChild<QToolButton*>(QString::fromLatin1(name));
    Require(button != nullptr, std::string("no button ") + name);
    button->click();
}

void VerifyingWindow::ZoomTo(int percent) const {
    Model().Zoom(static_cast<float>(percent));
    // A key the table does not know brings the window up to date, as any key does.
    Key(Qt::Key_Q);
    Settle();
}

void VerifyingWindow::Home() const {
    Key(Qt::Key_Home);
    Settle();
}

bool VerifyingWindow::AtLastRecord() const {
    return Model().Table.CurrentLine >= BenchPage::FirstLineOfColumn(1) + RecordCount - 1;
}

// As the volunteer does it: the box under the first entry of column 1, then under the tenth,
// then under the first entry of column 2, each confirmed with ENTER. The box is put there as
// a mouse drag drops it.
void VerifyingWindow::Calibrate() const {
    tv::Session& s = Model();
    for (int stage = 1; stage <= 3; ++stage) {
        Require(s.Calib.CalibrationStage == stage, "calibration skipped a stage");
        if (stage == 3) {
            const int line = BenchPage::FirstLineOfColumn(2);
            for (int k = 0; k < RecordCount && s.Table.CurrentLine != line; ++k)
                Key(s.Table.CurrentLine < line ? Qt::Key_Plus : Qt::Key_Minus);
        }
        DropBoxAt(file_.Page.BoxPlace(s.Table.CurrentLine));
        Key(Qt::Key_Return);
        Settle();
    }
    Require(s.Calib.CalibrationStage == 0, "calibration did not end after column 2");
}

void VerifyingWindow::DropBoxAt(QPointF scanPoint) const {
    const tv::ViewMetrics m = View().Metrics();
    const QPoint inView(static_cast<int>(std::lround(scanPoint.x() * m.Zoom - m.ScrollX)),
                        static_cast<int>(std::lround(scanPoint.y() * m.Zoom - m.ScrollY)));
    emit Main().RdFrame().dropped(View().viewport()->mapTo(Main().centralWidget(), inView));
    Settle();
}

} // namespace bench
