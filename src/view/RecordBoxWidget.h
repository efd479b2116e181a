#pragma once
// The box that floats over the scan (RdFrame): the record's two lines side by side (NameBox,
// DistBox), the notes below them (NotesBox) and the size handle (ResizeBox) in the bottom right
// corner. It draws the model's box content and turns mouse drags on its labels into a drop
// place and drags on its handle into a width; the main window hands both to the session.
#include "reading/PageReading.h"
#include "view/RecordBox.h"

#include <QFrame>
#include <QPoint>

#include <optional>
#include <string>
#include <vector>

class QLabel;

namespace tv {

// Gives a widget the background of box colour colourIndex (0..6) with the text colour that
// stays readable on it (BoxTextColour).
void PaintBoxColour(QWidget* widget, int16_t colourIndex);

// Gives a widget the colour that marks a field where the scan reads something else, as the
// scan's reading beside the box shows it.
void PaintMarkColour(QWidget* widget);

class RecordBoxWidget : public QFrame {
    Q_OBJECT

  public:
    explicit RecordBoxWidget(QWidget* parent);

    // Shows the content at the box size, the label layout taken from the content (all twips).
    void ShowContent(const RecordBoxContent& content, const std::string& fontName, int32_t boxWidth,
                     int32_t boxHeight, double twipsPerPixel);

    // Marks the fields of the record where the scan reads something else: each is drawn over
    // its part of the label's text, which stays as it is.
    void ShowMarks(const std::vector<FieldMark>& marks);
    // The marks shown, each a child of the label whose text it covers.
    std::vector<QWidget*> ShownMarks() const;

    QLabel* NameBox;
    QLabel* DistBox;
    QLabel* NotesBox;
    QLabel* ResizeBox;

  signals:
    // The user let go of the box dragged by one of its labels: its top left corner in the
    // parent's coordinates.
    void dropped(QPoint topLeft);
    // The user dragged the size handle: the width the box should have, in pixels.
    void resized(int width);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool DragEvent(QWidget* label, QEvent* event);
    bool ResizeEvent(QEvent* event);

    // Where in the box the pointer took hold of it, while dragging.
    std::optional<QPoint> grab_;
    // How far right of the pointer the box's right edge stood, while resizing.
    std::optional<int> resizeOffset_;
    std::vector<QWidget*> marks_;
};

} // namespace tv
