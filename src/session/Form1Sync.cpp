// Bringing the main window up to date with the session after every command: the box and its
// footer where the session placed them, the enabled buttons and menu items, the caption.
#include "session/Form1.h"

#include "core/Text.h"
#include "view/ImageView.h"
#include "view/QtScanReader.h"
#include "view/RecordBoxWidget.h"

#include <QLabel>
#include <QLineEdit>
#include <QStringList>
#include <QToolButton>

#include <algorithm>
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
    FindLinesForLayout();
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

// A comparison the session asks for (a reading completed, the transcription reloaded) starts
// here, after the command that asked for it.
void Form1::SyncReadingStatus() {
    if (session_->Reading.Comparing && comparisonStarted_ != session_->Reading.Comparison) {
        std::optional<ReadingComparison> wanted = session_->ComparisonWanted();
        if (wanted) {
            comparisonStarted_ = wanted->Id;
            scanReader_->Compare(std::move(*wanted));
        }
    }
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
    // At the box's right; at its left when the scan's view has no room there; else under the box,
    // at its right end and clear of the footer.
    const QRect box = rdFrame_->geometry();
    const int width = scanReads_->width();
    QPoint at(box.right() + 1 + ScanReadsGap, box.top());
    const QWidget* scan = view_->viewport();
    const int room = scan->mapTo(centralWidget(), QPoint(scan->width(), 0)).x();
    if (at.x() + width > room) at.setX(box.left() - ScanReadsGap - width);
    if (at.x() < 0) {
        const int clearOfFooter =
            footLabel_->isVisible() ? footLabel_->geometry().right() + 1 + ScanReadsGap : 0;
        at = QPoint(std::max({0, clearOfFooter, box.right() + 1 - width}), box.bottom() + 1);
    }
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
