#include "PageRenderer.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QLinearGradient>
#include <QPainter>

#include <stdexcept>
#include <utility>
#include <vector>

namespace samplegen {

namespace {

constexpr int Surround = 78; // what the scanner sees beyond the paper's edge
constexpr int PaperGrey = 236;
constexpr int InkGrey = 30;
constexpr int PaperInset = 12;

QString Text(const std::string& cp1252) {
    return QString::fromLatin1(cp1252.data(), static_cast<qsizetype>(cp1252.size()));
}

QFont Face(const KindSpec& kind, double scale, bool bold, bool italic = false) {
    const QString family = kind.IndexFont == 'C' ? "Liberation Mono" : "Liberation Serif";
    QFont font(family);
    font.setPixelSize(static_cast<int>(kind.FontPixels * scale + 0.5));
    font.setBold(bold);
    font.setItalic(italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    if (QFontInfo(font).family() != family)
        throw std::runtime_error("the font " + family.toStdString() + " is not installed");
    return font;
}

// A mother's surname too long for its place breaks after its hyphen onto the next line.
std::pair<std::string, std::string> SplitLong(const std::string& text) {
    std::size_t cut = text.find('-');
    cut = cut == std::string::npos ? text.size() / 2 : cut + 1;
    return {text.substr(0, cut), text.substr(cut)};
}

class PageDrawer {
  public:
    PageDrawer(QPainter& painter, const KindSpec& kind, const PageGeometry& geometry)
        : p_(painter), kind_(kind), g_(geometry), body_(Face(kind, 1.0, false)) {}

    void Paper();
    void Furniture(int page);
    void Line(const PrintedLine& line, const Entry& entry);

  private:
    int StopX(int column, double fraction) const {
        return g_.ColumnLeft(column) + static_cast<int>(fraction * g_.ColumnWidth());
    }
    // The field text at x, refused when it would run into the next field.
    void Put(const QString& text, int x, int limit, int baseline);
    void Headings(int column);
    void EntryFields(const PrintedLine& line, const Entry& entry, int baseline);
    QString SurnamePart(const PrintedLine& line, const Entry& entry) const;

    QPainter& p_;
    const KindSpec& kind_;
    const PageGeometry& g_;
    QFont body_;
};

void PageDrawer::Put(const QString& text, int x, int limit, int baseline) {
    if (x + QFontMetrics(p_.font()).horizontalAdvance(text) > limit)
        throw std::logic_error(kind_.Name + ": \"" + text.toStdString() + "\" is too wide");
    p_.drawText(x, baseline, text);
}

void PageDrawer::Paper() {
    const int w = g_.ScanWidth();
    const int h = g_.ScanHeight();
    p_.fillRect(p_.transform().inverted().mapRect(QRect(0, 0, w, h)).adjusted(-50, -50, 50, 50),
                QColor(Surround, Surround, Surround));
    QLinearGradient fold(0, 0, w, 0);
    fold.setColorAt(0.0, QColor(PaperGrey, PaperGrey, PaperGrey));
    if (kind_.Pages == 2) {
        // The shadow of the binding between two facing pages.
        fold.setColorAt(0.48, QColor(PaperGrey, PaperGrey, PaperGrey));
        fold.setColorAt(0.5, QColor(150, 150, 150));
        fold.setColorAt(0.52, QColor(PaperGrey, PaperGrey, PaperGrey));
    }
    fold.setColorAt(1.0, QColor(PaperGrey, PaperGrey, PaperGrey));
    p_.fillRect(QRect(PaperInset, PaperInset, w - 2 * PaperInset, h - 2 * PaperInset), fold);
}

void PageDrawer::Furniture(int page) {
    const int left = g_.PageLeft(page) + PageGeometry::Margin;
    const int right = g_.PageLeft(page) + kind_.PageWidth - PageGeometry::Margin;
    p_.setPen(QPen(QColor(InkGrey, InkGrey, InkGrey), 2));
    p_.setFont(Face(kind_, 1.2, true));
    const QString number = QString::number(kind_.FirstPage + page);
    const int numberWidth = QFontMetrics(p_.font()).horizontalAdvance(number);
    const bool outerLeft = kind_.Pages == 2 && page == 0;
    p_.drawText(outerLeft ? left : right - numberWidth, PageGeometry::TitleBaseline, number);
    const QString title = Text(kind_.Title());
    const int titleWidth = QFontMetrics(p_.font()).horizontalAdvance(title);
    Put(title, (left + right - titleWidth) / 2, right - numberWidth - 40,
        PageGeometry::TitleBaseline);
    p_.drawLine(left, PageGeometry::TitleBaseline + 26, right, PageGeometry::TitleBaseline + 26);
    p_.drawLine(left, PageGeometry::TitleBaseline + 32, right, PageGeometry::TitleBaseline + 32);
    p_.drawLine(left, PageGeometry::RuleY, right, PageGeometry::RuleY);
    const int foot = g_.Baseline(kind_.LinesPerColumn - 1) + kind_.Pitch / 2;
    p_.drawLine(left, foot, right, foot);
    for (int within = 0; within < kind_.ColumnsPerPage; ++within) {
        const int column = page * kind_.ColumnsPerPage + within + 1;
        Headings(column);
        if (within == 0) continue;
        const int x = g_.ColumnLeft(column) - PageGeometry::ColumnGap / 2;
        p_.drawLine(x, PageGeometry::RuleY, x, foot);
    }
}

void PageDrawer::Headings(int column) {
    p_.setFont(Face(kind_, 0.8, false, true));
    const std::vector<std::string>& h = kind_.Headings;
    const FieldStops& s = kind_.Stops;
    const QString page = Text(h[5]);
    const int pageX = StopX(column, 1.0) - QFontMetrics(p_.font()).horizontalAdvance(page);
    // Each caption over its field, up to the next caption; fields the layout lacks have none.
    std::vector<std::pair<double, std::string>> captions = {{0.0, h[0]}};
    if (s.Forenames > 0) captions.emplace_back(s.Forenames, h[1]);
    if (s.Extra > 0) captions.emplace_back(s.Extra, h[2]);
    captions.emplace_back(s.District, h[3]);
    const std::size_t references = h.size() > 6 ? h.size() - 6 : 0;
    for (std::size_t i = 0; i < references; ++i)
        captions.emplace_back(s.Reference + (s.Volume - s.Reference) * static_cast<double>(i) /
                                                static_cast<double>(references),
                              h[6 + i]);
    captions.emplace_back(s.Volume, h[4]);
    std::erase_if(captions, [](const auto& caption) { return caption.second.empty(); });
    for (std::size_t i = 0; i < captions.size(); ++i) {
        const int limit = i + 1 < captions.size() ? StopX(column, captions[i + 1].first) : pageX;
        Put(Text(captions[i].second), StopX(column, captions[i].first), limit - 8,
            PageGeometry::HeadingBaseline);
    }
    p_.drawText(pageX, PageGeometry::HeadingBaseline, page);
}

QString PageDrawer::SurnamePart(const PrintedLine& line, const Entry& entry) const {
    switch (kind_.Repeat) {
    case RepeatStyle::Full:
        return Text(entry.Surname);
    case RepeatStyle::Dash:
        return line.FullSurname ? Text(entry.Surname) : QString(3, QChar(0x2014));
    case RepeatStyle::Blank:
        return line.FullSurname ? Text(entry.Surname) : QString();
    case RepeatStyle::OwnLine:
        break;
    }
    return {};
}

void PageDrawer::EntryFields(const PrintedLine& line, const Entry& entry, int baseline) {
    const FieldStops& s = kind_.Stops;
    const int c = line.Column;
    const int gap = kind_.FontPixels / 2;
    const double afterNames = s.Extra > 0 ? s.Extra : s.District;
    QString surname = SurnamePart(line, entry);
    if (s.Forenames > 0) {
        Put(surname, StopX(c, 0.0), StopX(c, s.Forenames) - gap, baseline);
        Put(Text(entry.Forenames), StopX(c, s.Forenames), StopX(c, afterNames) - gap, baseline);
    } else {
        Put((surname.isEmpty() ? QString() : surname + ", ") + Text(entry.Forenames), StopX(c, 0.0),
            StopX(c, afterNames) - gap, baseline);
    }
    if (s.Extra > 0) {
        const std::string extra =
            IsLongEntry(kind_, entry) ? SplitLong(entry.Extra).first : entry.Extra;
        Put(Text(extra), StopX(c, s.Extra), StopX(c, s.District) - gap, baseline);
    }
    const double afterDistrict = s.Reference > 0 ? s.Reference : s.Volume;
    Put(Text(entry.District), StopX(c, s.District), StopX(c, afterDistrict) - gap, baseline);
    const std::size_t references = entry.References.size();
    for (std::size_t i = 0; i < references; ++i) {
        const double share = (s.Volume - s.Reference) / static_cast<double>(references);
        const double from = s.Reference + share * static_cast<double>(i);
        Put(Text(entry.References[i]), StopX(c, from), StopX(c, from + share) - gap, baseline);
    }
    const QString page = Text(entry.Page);
    const int pageX = StopX(c, 1.0) - QFontMetrics(body_).horizontalAdvance(page);
    if (!entry.Volume.empty()) Put(Text(entry.Volume), StopX(c, s.Volume), pageX - gap, baseline);
    p_.drawText(pageX, baseline, page);
}

void PageDrawer::Line(const PrintedLine& line, const Entry& entry) {
    const int baseline = g_.Baseline(line.Line);
    switch (line.Kind) {
    case LineKind::Gap:
        return;
    case LineKind::Heading:
        p_.setFont(Face(kind_, 1.0, true));
        Put(Text(entry.Surname), StopX(line.Column, 0.0), StopX(line.Column, kind_.Stops.District),
            baseline);
        return;
    case LineKind::Entry:
        p_.setFont(body_);
        EntryFields(line, entry, baseline);
        return;
    case LineKind::Continuation:
        p_.setFont(body_);
        Put(Text(SplitLong(entry.Extra).second), StopX(line.Column, kind_.Stops.Extra),
            StopX(line.Column, kind_.Stops.District), baseline);
        return;
    }
}

} // namespace

QImage DrawPage(const KindSpec& kind, const PageLayout& layout, const PageGeometry& geometry) {
    QImage scan(geometry.ScanWidth(), geometry.ScanHeight(), QImage::Format_Grayscale8);
    QPainter painter(&scan);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.setTransform(geometry.ScanTransform());
    PageDrawer drawer(painter, kind, geometry);
    drawer.Paper();
    for (int page = 0; page < kind.Pages; ++page)
        drawer.Furniture(page);
    painter.setPen(QColor(InkGrey, InkGrey, InkGrey));
    for (const PrintedLine& line : layout.Lines)
        drawer.Line(line, layout.Records[static_cast<std::size_t>(line.Record)]);
    painter.end();
    return scan;
}

} // namespace samplegen
