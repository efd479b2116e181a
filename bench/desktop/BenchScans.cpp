#include "BenchScans.h"

#include <QDir>
#include <QFileInfo>
#include <QFont>
#include <QImageWriter>
#include <QPainter>

#include <tiffio.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <random>
#include <stdexcept>

namespace bench {

namespace {

// The page's proportions, taken from a 2400 x 3400 scan of such a page.
constexpr double ReferenceHeight = 3400.0;
constexpr double ReferencePitch = 50.0;
constexpr double ReferenceFont = 22.0;
constexpr double FirstBaselineShare = 0.11;
constexpr std::array<double, 2> ColumnShares = {0.07, 0.53};
constexpr double ColumnWidthShare = 0.42;
// Where each field starts, as a share of the column's width.
constexpr std::array<double, 6> FieldStops = {0.0, 0.21, 0.49, 0.71, 0.89, 0.95};
constexpr int Paper = 232;
constexpr int Ink = 35;
constexpr int JpegQuality = 85;
constexpr int BilevelThreshold = 128;
constexpr int HeaderLines = 3; // +INFO, +S, +PAGE

const char* const Surnames[] = {
    "ABBOTT",  "ADAMS",     "ALLEN",  "ARCHER", "ATKINSON", "BAILEY",  "BAKER",    "BARNES",
    "BELL",    "BENNETT",   "BROOKS", "BROWN",  "BURTON",   "CARTER",  "CLARKE",   "COLLINS",
    "COOK",    "COOPER",    "DAVIES", "DAVIS",  "EDWARDS",  "EVANS",   "FISHER",   "FOSTER",
    "GREEN",   "GRIFFITHS", "HALL",   "HARRIS", "HILL",     "HUGHES",  "JACKSON",  "JAMES",
    "JOHNSON", "JONES",     "KING",   "LEE",    "LEWIS",    "MARTIN",  "MASON",    "MILLER",
    "MOORE",   "MORGAN",    "MORRIS", "PARKER", "PRICE",    "ROBERTS", "ROBINSON", "SMITH",
    "TAYLOR",  "THOMAS",    "TURNER", "WALKER", "WARD",     "WATSON",  "WHITE"};
static_assert(std::size(Surnames) == LinesPerColumn);

// Sorted, so that the first half comes before the second.
const char* const Forenames[] = {"Ada",    "Albert", "Alfred", "Annie",   "Arthur",   "Charles",
                                 "Doris",  "Edith",  "Ernest", "Frank",   "George",   "Harold",
                                 "Harry",  "Ivy",    "Lilian", "Mabel",   "Nellie",   "Percy",
                                 "Thomas", "Violet", "Walter", "William", "Winifred", "Wilfred"};
const char* const Districts[] = {"Bolton",  "Bristol", "Cardiff", "Derby",  "Leeds",
                                 "Salford", "Wigan",   "Bury",    "Oldham", "Preston"};
const char* const Volumes[] = {"8c", "6a", "11a", "9b", "8d", "7a"};

struct Entry {
    std::string Surname, Forename, Mother, District, Volume, Page;
};

// The page's entries in index order, the same on every run.
std::vector<Entry> Entries() {
    std::minstd_rand rng(1911);
    std::vector<Entry> entries;
    for (int k = 0; k < LinesPerColumn; ++k)
        for (int half = 0; half < 2; ++half) {
            Entry e;
            e.Surname = Surnames[k];
            e.Forename = Forenames[half * 12 + (k * (5 + 2 * half)) % 12];
            e.Mother = Surnames[rng() % LinesPerColumn];
            e.District = Districts[rng() % std::size(Districts)];
            e.Volume = Volumes[rng() % std::size(Volumes)];
            e.Page = std::to_string(100 + rng() % 900);
            entries.push_back(e);
        }
    return entries;
}

QString Q(const std::string& text) {
    return QString::fromStdString(text);
}

QImage DrawPage(const BenchPage& page, const std::vector<Entry>& entries) {
    QImage image(page.Size, QImage::Format_Grayscale8);
    image.fill(QColor(Paper, Paper, Paper));
    QPainter painter(&image);
    painter.setPen(QColor(Ink, Ink, Ink));
    QFont heading(QStringLiteral("Liberation Serif"));
    heading.setPixelSize(static_cast<int>(page.FontPixels * 1.6));
    painter.setFont(heading);
    painter.drawText(QRectF(0, page.FirstBaseline - 4 * page.Pitch, page.Size.width(), page.Pitch),
                     Qt::AlignCenter,
                     QStringLiteral("BIRTHS REGISTERED IN JULY, AUGUST AND SEPTEMBER 1911.   456"));
    QFont face(QStringLiteral("Liberation Mono"));
    face.setPixelSize(static_cast<int>(page.FontPixels));
    painter.setFont(face);
    const double columnWidth = page.Size.width() * ColumnWidthShare;
    for (std::size_t r = 0; r < entries.size(); ++r) {
        const int line = static_cast<int>(r) + HeaderLines + 1;
        const QPointF place = page.BoxPlace(line);
        const double baseline = place.y() - page.FontPixels / 4;
        const Entry& e = entries[r];
        const std::string fields[] = {e.Surname,  e.Forename, e.Mother,
                                      e.District, e.Volume,   e.Page};
        for (std::size_t f = 0; f < std::size(fields); ++f)
            painter.drawText(QPointF(place.x() + FieldStops[f] * columnWidth, baseline),
                             Q(fields[f]));
    }
    painter.end();
    return image;
}

// What every scan of a filmed page shows besides the print: the ruled lines of the page, the
// dark film edges at the sides with their ragged border, and dust. The same on every run.
void AddScanMarks(QImage& grey, const BenchPage& page) {
    std::minstd_rand rng(1840);
    const double scale = page.Size.height() / ReferenceHeight;
    QPainter painter(&grey);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(Ink, Ink, Ink), 2.5 * scale));
    const double top = page.FirstBaseline - 2.5 * page.Pitch;
    const double bottom = page.FirstBaseline + LinesPerColumn * page.Pitch;
    painter.drawLine(QPointF(page.ColumnX[0], top), QPointF(page.Size.width() * 0.95, top));
    const double rule =
        (page.ColumnX[0] + page.Size.width() * ColumnWidthShare + page.ColumnX[1]) / 2;
    painter.drawLine(QPointF(rule, top), QPointF(rule, bottom));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(Ink / 2, Ink / 2, Ink / 2));
    const double edge = 0.02 * page.Size.width();
    for (int y = 0; y < page.Size.height(); y += 4) {
        const double ragged = edge * (0.8 + 0.4 * (rng() % 1000) / 1000.0);
        painter.drawRect(QRectF(0, y, ragged, 4));
        painter.drawRect(QRectF(page.Size.width() - ragged, y, ragged, 4));
    }
    const int specks = static_cast<int>(300.0 * page.Size.width() * page.Size.height() / 1e6);
    for (int i = 0; i < specks; ++i) {
        const QPointF at(rng() % page.Size.width(), rng() % page.Size.height());
        const double radius = scale * (0.6 + (rng() % 20) / 10.0);
        painter.drawEllipse(at, radius, radius * (0.5 + (rng() % 10) / 10.0));
    }
}

// The paper's grain: the same on every run.
void AddGrain(QImage& grey) {
    uint32_t state = 0x2545F491U;
    for (int y = 0; y < grey.height(); ++y) {
        uchar* row = grey.scanLine(y);
        for (int x = 0; x < grey.width(); ++x) {
            state ^= state << 13;
            state ^= state >> 17;
            state ^= state << 5;
            const int grain = static_cast<int>(state & 15U) - 7;
            row[x] = static_cast<uchar>(std::clamp(row[x] + grain, 0, 255));
        }
    }
}

// A page scanned in colour: the paper's yellowed tint.
QImage Tinted(const QImage& grey) {
    QImage colour(grey.size(), QImage::Format_RGB32);
    for (int y = 0; y < grey.height(); ++y) {
        const uchar* in = grey.constScanLine(y);
        auto* out = reinterpret_cast<QRgb*>(colour.scanLine(y));
        for (int x = 0; x < grey.width(); ++x)
            out[x] = qRgb(in[x], in[x] * 94 / 100, in[x] * 82 / 100);
    }
    return colour;
}

// One bit per pixel, 1 for ink: the order of a TIFF whose zero is white.
QImage Bilevel(const QImage& grey) {
    QImage bits(grey.size(), QImage::Format_Mono);
    bits.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    bits.fill(0);
    for (int y = 0; y < grey.height(); ++y) {
        const uchar* in = grey.constScanLine(y);
        uchar* out = bits.scanLine(y);
        for (int x = 0; x < grey.width(); ++x)
            if (in[x] < BilevelThreshold) out[x >> 3] |= static_cast<uchar>(0x80U >> (x & 7));
    }
    return bits;
}

void Write(const QImage& image, const QString& path, const char* format, int quality,
           int compression) {
    QImageWriter writer(path, format);
    if (quality >= 0) writer.setQuality(quality);
    if (compression >= 0) writer.setCompression(compression);
    if (!writer.write(image))
        throw std::runtime_error("cannot write " + path.toStdString() + ": " +
                                 writer.errorString().toStdString());
}

// Qt's TIFF writer compresses bilevel images with LZW only; Group 4, what scanners write for
// black and white pages, goes through the TIFF library Qt itself reads with.
void WriteGroup4(const QImage& bits, const QString& path) {
    TIFF* tiff = TIFFOpen(path.toLocal8Bit().constData(), "w");
    if (tiff == nullptr) throw std::runtime_error("cannot write " + path.toStdString());
    const auto width = static_cast<uint32_t>(bits.width());
    const auto height = static_cast<uint32_t>(bits.height());
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    TIFFSetField(tiff, TIFFTAG_FILLORDER, FILLORDER_MSB2LSB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, height);
    TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    const float dpi = static_cast<float>(bits.dotsPerMeterX() * 0.0254);
    TIFFSetField(tiff, TIFFTAG_XRESOLUTION, dpi);
    TIFFSetField(tiff, TIFFTAG_YRESOLUTION, dpi);
    bool written = true;
    for (uint32_t y = 0; y < height && written; ++y)
        written = TIFFWriteScanline(
                      tiff, const_cast<uchar*>(bits.constScanLine(static_cast<int>(y))), y, 0) == 1;
    TIFFClose(tiff);
    if (!written) throw std::runtime_error("cannot write " + path.toStdString());
}

void WriteTranscription(const std::vector<Entry>& entries, const QString& path) {
    std::ofstream out(path.toStdString(), std::ios::binary | std::ios::trunc);
    out << "+INFO,volunteer@example.org,password,SEQUENCED,BIRTHS,cp1252\r\n"
        << "+S,1911,Sep,BX1911C3,12/03/2024\r\n+PAGE,0456\r\n";
    for (const Entry& e : entries)
        out << e.Surname << ',' << e.Forename << ',' << e.Mother << ',' << e.District << ','
            << e.Volume << ',' << e.Page << "\r\n";
    out.close();
    if (!out) throw std::runtime_error("cannot write " + path.toStdString());
}

QString Extension(ScanForm form) {
    return form == ScanForm::GreyJpeg || form == ScanForm::ColourJpeg ? QStringLiteral("jpg")
                                                                      : QStringLiteral("tif");
}

void WriteForm(const QImage& grey, ScanForm form, const QString& path) {
    switch (form) {
    case ScanForm::GreyJpeg:
        return Write(grey, path, "jpeg", JpegQuality, -1);
    case ScanForm::ColourJpeg:
        return Write(Tinted(grey), path, "jpeg", JpegQuality, -1);
    case ScanForm::BilevelG4: {
        QImage bits = Bilevel(grey);
        bits.setDotsPerMeterX(grey.dotsPerMeterX());
        bits.setDotsPerMeterY(grey.dotsPerMeterY());
        return WriteGroup4(bits, path);
    }
    case ScanForm::GreyLzw:
        return Write(grey, path, "tiff", -1, 1);
    }
}

QImage DrawnPage(int megapixels) {
    const BenchPage page = PageOf(megapixels);
    QImage grey = DrawPage(page, Entries());
    AddScanMarks(grey, page);
    AddGrain(grey);
    // The page is about 11 inches high.
    const int dotsPerMeter = qRound(page.Size.height() / 11.0 / 0.0254);
    grey.setDotsPerMeterX(dotsPerMeter);
    grey.setDotsPerMeterY(dotsPerMeter);
    return grey;
}

ScanFile WriteDrawn(const QImage& grey, ScanForm form, int megapixels, const QString& dir) {
    const ScanFile file = ScanFileIn(form, megapixels, dir);
    const QString folder = QFileInfo(file.Scan).path();
    if (!QDir().mkpath(folder)) throw std::runtime_error("cannot make " + folder.toStdString());
    WriteForm(grey, form, file.Scan);
    WriteTranscription(Entries(), file.Transcription);
    return file;
}

} // namespace

namespace {

struct FormNames {
    ScanForm Form;
    const char* Key;
    const char* Title;
};

constexpr FormNames Names[] = {{ScanForm::GreyJpeg, "GreyJpeg", "grey JPEG"},
                               {ScanForm::ColourJpeg, "ColourJpeg", "colour JPEG"},
                               {ScanForm::BilevelG4, "BilevelG4", "bilevel TIFF G4"},
                               {ScanForm::GreyLzw, "GreyLzw", "grey TIFF LZW"}};

const FormNames& NamesOf(ScanForm form) {
    for (const FormNames& names : Names)
        if (names.Form == form) return names;
    throw std::invalid_argument("no such scan form");
}

} // namespace

std::string FormTitle(ScanForm form) {
    return NamesOf(form).Title;
}

std::string FormKey(ScanForm form) {
    return NamesOf(form).Key;
}

ScanForm FormOfKey(const std::string& key) {
    for (ScanForm form : AllForms)
        if (FormKey(form) == key) return form;
    throw std::invalid_argument("no scan form " + key);
}

QPointF BenchPage::BoxPlace(int tableLine) const {
    const int record = tableLine - HeaderLines - 1;
    if (record < 0 || record >= RecordCount)
        throw std::out_of_range("no entry on line " + std::to_string(tableLine));
    const int column = record / LinesPerColumn;
    const int row = record % LinesPerColumn;
    return {ColumnX.at(static_cast<std::size_t>(column)),
            FirstBaseline + row * Pitch + FontPixels / 4};
}

int BenchPage::FirstLineOfColumn(int column) {
    return HeaderLines + 1 + (column - 1) * LinesPerColumn;
}

BenchPage PageOf(int megapixels) {
    // Three by four, as cameras and scanners give them: 2739 x 3652 is 10.0 megapixels.
    const int unit = static_cast<int>(std::lround(std::sqrt(megapixels * 1e6 / 12.0)));
    BenchPage page;
    page.Size = QSize(3 * unit, 4 * unit);
    const double scale = page.Size.height() / ReferenceHeight;
    page.Pitch = ReferencePitch * scale;
    page.FontPixels = ReferenceFont * scale;
    page.FirstBaseline = FirstBaselineShare * page.Size.height();
    for (std::size_t c = 0; c < ColumnShares.size(); ++c)
        page.ColumnX.at(c) = ColumnShares.at(c) * page.Size.width();
    return page;
}

ScanFile ScanFileIn(ScanForm form, int megapixels, const QString& dir) {
    ScanFile file;
    file.Form = form;
    file.Megapixels = megapixels;
    file.Page = PageOf(megapixels);
    // The name carries the page's year, event, quarter and page, as the program checks.
    const QDir folder(
        QDir(dir).filePath(Q(FormKey(form)) + QStringLiteral("-%1MP").arg(megapixels)));
    file.Scan = folder.filePath(QStringLiteral("1911B30456.") + Extension(form));
    file.Transcription = folder.filePath(QStringLiteral("1911B30456.QRL"));
    return file;
}

ScanFile WriteScan(ScanForm form, int megapixels, const QString& dir) {
    return WriteDrawn(DrawnPage(megapixels), form, megapixels, dir);
}

std::vector<ScanFile> WriteAllScans(const QString& dir, const std::vector<int>& megapixels) {
    std::vector<ScanFile> files;
    for (int size : megapixels) {
        const QImage grey = DrawnPage(size);
        for (ScanForm form : AllForms)
            files.push_back(WriteDrawn(grey, form, size, dir));
    }
    return files;
}

} // namespace bench
