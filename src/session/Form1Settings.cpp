// The main window and the settings (its load reads them, WindowState tells what to save of the
// window), and the diagnostics panel that ALT+D shows and hides.
#include "session/Form1.h"

#include "core/Text.h"
#include "help/SessionDiagnostics.h"
#include "session/QtWindowPlace.h"
#include "view/ImageView.h"

#include <QFontDatabase>
#include <QFrame>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

namespace tv {

namespace {

// The panel stands this far inside the scan's top right corner, in pixels.
constexpr int DiagMargin = 12;

} // namespace

int32_t Form1::Twips(int pixels) const {
    return CLng(pixels * twipsPerPixel_);
}

ScreenSize Form1::ScreenTwips() const {
    const QRect whole = screen()->geometry();
    return {Twips(whole.height()), Twips(whole.width())};
}

// The settings are read once, by the window's load; the size and place they give stand from
// then on, for every scan of the run.
void Form1::LoadSettings(SettingsStore& store) {
    const GlobalSettings g = GetDefaults(store, session_->P.Ask, session_->History, ScreenTwips());
    session_->ApplySettings(g);
    move(Pixels(g.FormLeft), Pixels(g.FormTop));
    resize(Pixels(g.FormWidth), Pixels(g.FormHeight));
    // The ranges read allow a window that reaches past the screen's free area.
    KeepWindowOnScreen(*this);
    placedFromSettings_ = true;
}

// The place kept is the window's frame position and its size, so that the next run's move and
// resize put it back exactly; a window left partly off the screen is saved as kept on it, so a
// negative top or left is never saved.
MainWindowState Form1::WindowState() const {
    const QRect frame = frameGeometry();
    const QRect kept = FrameKeptOnScreen(*this);
    const int keptWidth = width() - (frame.width() - kept.width());
    const int keptHeight = height() - (frame.height() - kept.height());
    return {{Twips(kept.left()), Twips(kept.top()), Twips(keptWidth), Twips(keptHeight)},
            FromQString(versionLine_->text())};
}

QFrame* Form1::BuildDiagFrame(QWidget* parent) {
    auto* frame = new QFrame(parent);
    frame->setObjectName(QStringLiteral("DiagFrame"));
    frame->setFrameShape(QFrame::Box);
    frame->setAutoFillBackground(true);
    diagBox_ = new QLabel(frame);
    diagBox_->setObjectName(QStringLiteral("DiagBox"));
    diagBox_->setTextFormat(Qt::PlainText);
    // The labels are padded to one width: a fixed-pitch font keeps the values in a column.
    diagBox_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(8, 6, 8, 6);
    layout->addWidget(diagBox_);
    frame->hide();
    return frame;
}

void Form1::DiagBoxRefresh() {
    const Session& s = *session_;
    diagFrame_->setVisible(s.DiagVisible);
    if (!s.DiagVisible) return;
    const DiagnosticsInputs in = DiagnosticsOf(s, ScreenTwips(), WindowState().Form);
    diagBox_->setText(ToQString(UnixLineEnds(DiagnosticsText(in))));
    diagFrame_->adjustSize();
    // Inside the top right corner of the scan, clear of the scroll bars.
    const QWidget* scan = view_->viewport();
    const QRect area(scan->mapTo(centralWidget(), QPoint(0, 0)), scan->size());
    diagFrame_->move(area.right() - diagFrame_->width() - DiagMargin, area.top() + DiagMargin);
    diagFrame_->raise();
}

} // namespace tv
