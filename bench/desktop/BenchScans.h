#pragma once
// The scans the desktop benchmarks open: a births index page of September 1911 (two columns,
// the mother's surname as third field) drawn at 10 and 40 megapixels and written in the four
// forms volunteers download, with the transcription that goes with it. Where every entry
// stands on the scan is known, so that the box can be lined up with the page.
#include <QImage>
#include <QPointF>
#include <QSize>
#include <QString>

#include <array>
#include <string>
#include <vector>

namespace bench {

enum class ScanForm { GreyJpeg, ColourJpeg, BilevelG4, GreyLzw };

inline constexpr std::array<ScanForm, 4> AllForms = {ScanForm::GreyJpeg, ScanForm::ColourJpeg,
                                                     ScanForm::BilevelG4, ScanForm::GreyLzw};
inline constexpr std::array<int, 2> AllMegapixels = {10, 40};

// "grey JPEG", "colour JPEG", "bilevel TIFF G4", "grey TIFF LZW".
std::string FormTitle(ScanForm form);
// "GreyJpeg" and so on, for benchmark names.
std::string FormKey(ScanForm form);
ScanForm FormOfKey(const std::string& key);

// The page drawn at a size: two columns of entries one pitch apart.
struct BenchPage {
    QSize Size;
    double Pitch = 0.0; // pixels from one printed line to the next
    double FontPixels = 0.0;
    std::array<double, 2> ColumnX{};
    double FirstBaseline = 0.0;

    // The scan point where the top left corner of a box placed just below the entry of the
    // transcription's table line belongs.
    QPointF BoxPlace(int tableLine) const;
    // The table line of the first entry of a column (1 or 2).
    static int FirstLineOfColumn(int column);
};

inline constexpr int LinesPerColumn = 55;
inline constexpr int RecordCount = 2 * LinesPerColumn;

BenchPage PageOf(int megapixels);

struct ScanFile {
    ScanForm Form = ScanForm::GreyJpeg;
    int Megapixels = 0;
    BenchPage Page;
    QString Scan;
    QString Transcription;
};

// Where the scan of a form and size and its transcription are written under dir.
ScanFile ScanFileIn(ScanForm form, int megapixels, const QString& dir);
// Draws the page and writes it in the given form, with its transcription, into a folder of its
// own under dir (the scan's name carries the page's year, event, quarter and page).
ScanFile WriteScan(ScanForm form, int megapixels, const QString& dir);
// Every form at every size; each page is drawn once.
std::vector<ScanFile> WriteAllScans(const QString& dir, const std::vector<int>& megapixels);

} // namespace bench
