#include "view/RecordBoxWidget.h"

#include "core/QtPlatform.h"
#include "core/Text.h"
#include "view/BoxTextColour.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tv {

namespace {

// The size handle's square; the notes leave this much room for it at the box's right.
constexpr int HandlePixels = 16;

QLabel* BoxLabel(QWidget* parent, const char* name) {
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setContentsMargins(0, 0, 0, 0);
    label->setMargin(0);
    label->setIndent(0);
    label->setWordWrap(false);
    label->setAutoFillBackground(true);
    label->setCursor(Qt::SizeAllCursor);
    return label;
}

// A field's mark: a see-through yellow over its letters, so that they stay readable on every
// box colour, with a red line beneath them. Clicks and drags go through it to the label.
const QColor MarkFill(255, 225, 0, 130);
const QColor MarkLine(200, 0, 0);
constexpr int MarkLineWidth = 2;

class FieldMarker : public QWidget {
  public:
    explicit FieldMarker(QWidget* parent) : QWidget(parent) {
        setObjectName(QStringLiteral("FieldMark"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), MarkFill);
        painter.fillRect(0, height() - MarkLineWidth, width(), MarkLineWidth, MarkLine);
    }
};

int Pixels(int32_t twips, double twipsPerPixel) {
    return static_cast<int>(std::lround(twips / twipsPerPixel));
}

} // namespace

void PaintBoxColour(QWidget* widget, int16_t colourIndex) {
    const Rgb rgb = BoxColours.at(static_cast<std::size_t>(colourIndex));
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Window, QColor(rgb.Red, rgb.Green, rgb.Blue));
    const Rgb text = BoxTextColour(colourIndex);
    palette.setColor(QPalette::WindowText, QColor(text.Red, text.Green, text.Blue));
    widget->setPalette(palette);
}

void PaintMarkColour(QWidget* widget) {
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Window, QColor(MarkFill.red(), MarkFill.green(), MarkFill.blue()));
    palette.setColor(QPalette::WindowText, Qt::black);
    widget->setPalette(palette);
}

RecordBoxWidget::RecordBoxWidget(QWidget* parent)
    : QFrame(parent), NameBox(BoxLabel(this, "NameBox")), DistBox(BoxLabel(this, "DistBox")),
      NotesBox(BoxLabel(this, "NotesBox")), ResizeBox(BoxLabel(this, "ResizeBox")) {
    setObjectName(QStringLiteral("RdFrame"));
    setFrameShape(QFrame::NoFrame);
    setAutoFillBackground(true);
    setFocusPolicy(Qt::NoFocus);
    ResizeBox->setText(QString(QChar(0x25E2)));
    ResizeBox->setAlignment(Qt::AlignRight | Qt::AlignBottom);
    ResizeBox->setCursor(Qt::SizeHorCursor);
    ResizeBox->setToolTip(QStringLiteral("Drag to change the width of the box"));
    ResizeBox->setAccessibleName(QStringLiteral("Box width"));
    ResizeBox->setAutoFillBackground(false);
    NotesBox->setWordWrap(true);
    for (QLabel* label : {NameBox, DistBox, NotesBox, ResizeBox})
        label->installEventFilter(this);
}

void RecordBoxWidget::ShowContent(const RecordBoxContent& content, const std::string& fontName,
                                  int32_t boxWidth, int32_t boxHeight, double twipsPerPixel) {
    auto px = [twipsPerPixel](int32_t twips) { return Pixels(twips, twipsPerPixel); };
    const QFont lineFont = BoxFont(fontName, content.BoxFontSize);
    const QFont notesFont = BoxFont(fontName, content.NotesFontSize);
    for (QWidget* w : std::initializer_list<QWidget*>{this, NameBox, DistBox, NotesBox, ResizeBox})
        PaintBoxColour(w, content.BoxColourIndex);
    NameBox->setFont(lineFont);
    DistBox->setFont(lineFont);
    NotesBox->setFont(notesFont);
    NameBox->setText(ToQString(content.NameLine));
    DistBox->setText(ToQString(content.SecondLine));
    NotesBox->setText(ToQString(UnixLineEnds(content.NotesText)));
    // A screen reader announces the box by the record it shows, and its notes as its description.
    setAccessibleName((NameBox->text() + ' ' + DistBox->text()).trimmed());
    setAccessibleDescription(NotesBox->text());

    const int width = px(boxWidth);
    const int lineHeight = px(content.NameBoxHeight);
    const int notesWidth = px(content.NotesBoxWidth);
    // A note longer than the box is wide wraps at its words, and the box grows to show it all,
    // as a label that sizes itself to its caption does.
    const int notesHeight =
        std::max(px(content.NotesBoxHeight),
                 content.NotesText.empty() ? 0 : NotesBox->heightForWidth(notesWidth));
    resize(width, std::max(px(boxHeight), lineHeight + notesHeight));
    // The name line's measured width is rounded up, so that its last letter is never cut.
    const int nameWidth = static_cast<int>(std::ceil(content.NameBoxWidth / twipsPerPixel));
    NameBox->setGeometry(0, 0, nameWidth, lineHeight);
    DistBox->setGeometry(px(content.DistBoxLeft), 0, px(content.DistBoxWidth), lineHeight);
    NotesBox->setGeometry(0, lineHeight, notesWidth, notesHeight);
    ResizeBox->setGeometry(width - HandlePixels, height() - HandlePixels, HandlePixels,
                           HandlePixels);
    ResizeBox->raise();
}

void RecordBoxWidget::ShowMarks(const std::vector<FieldMark>& marks) {
    std::size_t shown = 0;
    for (const FieldMark& mark : marks) {
        if (!mark.Line) continue;
        QLabel* label = *mark.Line == BoxLine::Name ? NameBox : DistBox;
        const QString text = label->text();
        const auto start = static_cast<qsizetype>(mark.Start);
        const auto length = static_cast<qsizetype>(mark.Length);
        if (start + length > text.size()) continue;
        if (shown == marks_.size()) marks_.push_back(new FieldMarker(label));
        QWidget* marker = marks_[shown++];
        marker->setParent(label);
        const QFontMetrics metrics(label->font());
        const QRect inside = label->contentsRect();
        marker->setGeometry(inside.left() + metrics.horizontalAdvance(text.left(start)),
                            inside.top(), metrics.horizontalAdvance(text.mid(start, length)),
                            inside.height());
        marker->show();
        marker->raise();
    }
    for (std::size_t i = shown; i < marks_.size(); ++i)
        marks_[i]->hide();
}

std::vector<QWidget*> RecordBoxWidget::ShownMarks() const {
    std::vector<QWidget*> shown;
    for (QWidget* marker : marks_)
        if (!marker->isHidden()) shown.push_back(marker);
    return shown;
}

bool RecordBoxWidget::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ResizeBox) return ResizeEvent(event);
    if (watched == NameBox || watched == DistBox || watched == NotesBox)
        return DragEvent(static_cast<QWidget*>(watched), event);
    return QFrame::eventFilter(watched, event);
}

bool RecordBoxWidget::DragEvent(QWidget* label, QEvent* event) {
    const auto type = event->type();
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove &&
        type != QEvent::MouseButtonRelease)
        return false;
    auto* mouse = static_cast<QMouseEvent*>(event);
    const QPoint inBox = label->mapTo(this, mouse->position().toPoint());
    if (type == QEvent::MouseButtonPress) {
        if (mouse->button() != Qt::LeftButton) return false;
        grab_ = inBox;
        return true;
    }
    if (!grab_) return false;
    const QPoint topLeft = mapToParent(inBox) - *grab_;
    move(topLeft);
    if (type == QEvent::MouseButtonRelease) {
        grab_.reset();
        emit dropped(topLeft);
    }
    return true;
}

bool RecordBoxWidget::ResizeEvent(QEvent* event) {
    const auto type = event->type();
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove &&
        type != QEvent::MouseButtonRelease)
        return false;
    auto* mouse = static_cast<QMouseEvent*>(event);
    const int x = ResizeBox->mapTo(this, mouse->position().toPoint()).x();
    if (type == QEvent::MouseButtonPress) {
        if (mouse->button() != Qt::LeftButton) return false;
        resizeOffset_ = width() - x;
        return true;
    }
    if (!resizeOffset_) return false;
    // Never narrower than the handle itself, so that it can always be taken hold of again.
    emit resized(std::max(2 * HandlePixels, x + *resizeOffset_));
    if (type == QEvent::MouseButtonRelease) resizeOffset_.reset();
    return true;
}

} // namespace tv
