// Bringing the main window up to date with the session after every command: the box and its
// footer where the session placed them, the enabled buttons and menu items, the caption.
#include "session/Form1.h"

#include "core/Text.h"
#include "view/RecordBoxWidget.h"

#include <QLabel>
#include <QLineEdit>
#include <QStringList>
#include <QToolButton>

#include <cmath>

namespace tv {

namespace {

// Pixels between the box and the scan's reading beside it.
constexpr int ScanReadsGap = 4;

} // namespace

int Form1::Pixels(int32_t twips) const {
    return static_cast<int>(std::lround(twips / twipsPerPixel_));
}

void Form1::Sync() {
    SyncBox();
    SyncCommands();
    SyncMenuTicks();
    SyncReadingStatus();
    setWindowTitle(ToQString(session_->Caption));
    // The key catcher keeps the focus whatever was clicked.
    if (isVisible()) dummyBox_->setFocus();
    emit Synced();
}

void Form1::SyncBox() {
    const Session& s = *session_;
    rdFrame_->setVisible(boxShown_);
    footLabel_->setVisible(boxShown_ && !s.Content.FootLabel.empty());
    if (!boxShown_) {
        SyncReadingMarks();
        return;
    }
    rdFrame_->ShowContent(s.Content, s.Scan.FontName, s.Box.BoxWidth, s.Box.BoxHeight,
                          twipsPerPixel_);
    // The session places the box on the window; the box lives in the window's client area.
    const QPoint onForm(Pixels(s.Box.FormLeft), Pixels(s.Box.FormTop));
    const QPoint topLeft = centralWidget()->mapFrom(this, onForm);
    rdFrame_->move(topLeft);
    PaintBoxColour(footLabel_, s.Content.BoxColourIndex);
    footLabel_->setFont(BoxFont(s.Scan.FontName, s.Content.NotesFontSize));
    footLabel_->setText(ToQString(UnixLineEnds(s.Content.FootLabel)));
    footLabel_->adjustSize();
    footLabel_->move(topLeft + QPoint(0, rdFrame_->height()));
    SyncReadingMarks();
}

void Form1::SyncReadingStatus() {
    readingStatus_->setText(ToQString(session_->ReadingStatus()));
}

void Form1::SyncReadingMarks() {
    const Session& s = *session_;
    const std::vector<FieldMark> marks = boxShown_ ? s.BoxMarks() : std::vector<FieldMark>{};
    rdFrame_->ShowMarks(marks);
    if (marks.empty()) {
        scanReads_->hide();
        return;
    }
    QStringList reads;
    for (const FieldMark& mark : marks)
        reads << QStringLiteral("Scan reads: ") + ToQString(mark.Read);
    scanReads_->setText(reads.join(QLatin1Char('\n')));
    PaintMarkColour(scanReads_);
    scanReads_->setFont(BoxFont(s.Scan.FontName, s.Content.BoxFontSize));
    scanReads_->adjustSize();
    // At the box's right, or at its left when the window has no room there.
    const QRect box = rdFrame_->geometry();
    QPoint at(box.right() + 1 + ScanReadsGap, box.top());
    if (at.x() + scanReads_->width() > centralWidget()->width())
        at.setX(box.left() - ScanReadsGap - scanReads_->width());
    scanReads_->move(at);
    scanReads_->show();
}

void Form1::SyncCommands() {
    const Session& s = *session_;
    const CommandState& c = s.Commands;
    for (int column = 1; column <= 6; ++column) {
        QToolButton* top = topCol_.at(static_cast<std::size_t>(column - 1));
        top->setVisible(column <= s.Scan.NumColumns);
        top->setEnabled(c.TopCol[column]);
    }
    adjCols_->setVisible(c.AdjColsVisible);
    for (int index = 0; index <= 3; ++index)
        adjCol_.at(static_cast<std::size_t>(index))->setEnabled(c.AdjCol[index]);
    showStats_->setEnabled(c.ShowStats);
}

} // namespace tv
