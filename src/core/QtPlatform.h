#pragma once
// The desktop's side of the model's platform interfaces: message boxes, text measure, and the
// one place where Windows-1252 text becomes QString and back.
#include "core/Prompts.h"
#include "view/TextMeasure.h"

#include <QFont>
#include <QString>

class QWidget;

namespace tv {

QString ToQString(const std::string& ansi);
std::string FromQString(const QString& text);
// A native path (UTF-8 bytes on this platform) and back.
QString PathToQString(const std::string& path);
std::string PathFromQString(const QString& path);

// Modal message boxes owned by a parent window.
class QtPrompts : public Prompts {
  public:
    explicit QtPrompts(QWidget* parent = nullptr) : parent_(parent) {}
    void SetParent(QWidget* parent) { parent_ = parent; }
    Answer Ask(const Prompt& prompt) override;

  private:
    QWidget* parent_;
};

// Widths and heights of text in the box's font on this screen, in twips.
class QtTextMeasure : public TextMeasure {
  public:
    explicit QtTextMeasure(double twipsPerPixel) : twipsPerPixel_(twipsPerPixel) {}
    int32_t TextWidth(const std::string& text, const std::string& fontName,
                      int pointSize) const override;
    int32_t LineHeight(const std::string& fontName, int pointSize) const override;

  private:
    double twipsPerPixel_;
};

// The font of the box: the family the tables name at the point size.
QFont BoxFont(const std::string& fontName, int pointSize);
// Twips per pixel from the screen's logical DPI (15 at 96 DPI).
double ScreenTwipsPerPixel();

} // namespace tv
