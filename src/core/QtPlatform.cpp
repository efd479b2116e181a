#include "core/QtPlatform.h"

#include "core/Text.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QMessageBox>
#include <QScreen>

#include <cmath>

namespace tv {

QString ToQString(const std::string& ansi) {
    return QString::fromStdString(Cp1252ToUtf8(ansi));
}

std::string FromQString(const QString& text) {
    return Utf8ToCp1252(text.toStdString());
}

QString PathToQString(const std::string& path) {
    return QString::fromUtf8(path);
}

std::string PathFromQString(const QString& path) {
    return path.toUtf8().toStdString();
}

namespace {

QMessageBox::StandardButton ToButton(Answer a) {
    switch (a) {
    case Answer::Ok:
        return QMessageBox::Ok;
    case Answer::Cancel:
        return QMessageBox::Cancel;
    case Answer::Yes:
        return QMessageBox::Yes;
    case Answer::No:
        break;
    }
    return QMessageBox::No;
}

QMessageBox::StandardButtons ButtonsOf(Buttons b) {
    switch (b) {
    case Buttons::Ok:
        return QMessageBox::Ok;
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
        break;
    }
    return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
}

QMessageBox::Icon IconOf(PromptIcon icon) {
    switch (icon) {
    case PromptIcon::Information:
        return QMessageBox::Information;
    case PromptIcon::Question:
        return QMessageBox::Question;
    case PromptIcon::Exclamation:
        return QMessageBox::Warning;
    case PromptIcon::Critical:
        return QMessageBox::Critical;
    case PromptIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

Answer QtPrompts::Ask(const Prompt& prompt) {
    // A lone CR breaks a line in the documented texts; Qt wants LF.
    QMessageBox box(IconOf(prompt.Icon), ToQString(prompt.Title),
                    ToQString(UnixLineEnds(prompt.Text)), ButtonsOf(prompt.Choice), parent_);
    box.setDefaultButton(ToButton(prompt.Default));
    switch (box.exec()) {
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Cancel:
        return Answer::Cancel;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        break;
    }
    // Closing the box with Escape or its close button gives the safe answer.
    return prompt.Choice == Buttons::Ok         ? Answer::Ok
           : prompt.Choice == Buttons::OkCancel ? Answer::Cancel
           : prompt.Choice == Buttons::YesNo    ? Answer::No
                                                : Answer::Cancel;
}

QFont BoxFont(const std::string& fontName, int pointSize) {
    QFont font(QString::fromStdString(fontName.empty() ? "Times New Roman" : fontName));
    font.setPointSize(pointSize);
    return font;
}

int32_t QtTextMeasure::TextWidth(const std::string& text, const std::string& fontName,
                                 int pointSize) const {
    QFontMetrics metrics(BoxFont(fontName, pointSize));
    return static_cast<int32_t>(
        std::lround(metrics.horizontalAdvance(ToQString(text)) * twipsPerPixel_));
}

int32_t QtTextMeasure::LineHeight(const std::string& fontName, int pointSize) const {
    QFontMetrics metrics(BoxFont(fontName, pointSize));
    return static_cast<int32_t>(std::lround(metrics.height() * twipsPerPixel_));
}

double ScreenTwipsPerPixel() {
    QScreen* screen = QGuiApplication::primaryScreen();
    double dpi = screen != nullptr ? screen->logicalDotsPerInch() : 96.0;
    return dpi > 0 ? 1440.0 / dpi : 15.0;
}

} // namespace tv
