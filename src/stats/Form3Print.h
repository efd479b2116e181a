#pragma once
// The printed report: lines of "Courier New" 10, headings in bold, on a printer or in a PDF file.
#include "stats/Statistics.h"

#include <QFont>
#include <QPagedPaintDevice>
#include <QPrinter>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QWidget;

namespace tv {

// "Courier New" 10, the font of the report and of the statistics screen's lists.
QFont ReportFont(bool bold);

// The printer to print on, or nothing when none is installed.
using PrinterSource = std::function<std::unique_ptr<QPrinter>()>;

// The printers the system offers, and which of them is its default.
class PrinterDirectory {
  public:
    virtual ~PrinterDirectory() = default;
    virtual QStringList Names() const = 0;
    // "" when no printer is the default.
    virtual QString DefaultName() const = 0;
};

// The printers the print system (CUPS) knows.
class SystemPrinters : public PrinterDirectory {
  public:
    QStringList Names() const override;
    QString DefaultName() const override;
};

// Asks the user which of the printers to print on; "" when the user cancels.
using PrinterPicker = std::function<QString(const QStringList& names)>;
QString AskWhichPrinter(QWidget* parent, const QStringList& names);

enum class PrinterChoiceKind { Chosen, NoneInstalled, Cancelled };
struct PrinterChoice {
    PrinterChoiceKind Kind;
    QString Name;
};
// The default printer; when none is the default, the only printer, or the one the user picks
// among several.
PrinterChoice ChoosePrinter(const PrinterDirectory& printers, const PrinterPicker& pick);
// The named printer, with the report's margins.
std::unique_ptr<QPrinter> NamedPrinter(const QString& name);

// Every margin of the page at least 15 mm, whatever the printer could print to: a printer that
// prints to the edge of the paper would otherwise put the report's text 3 mm from it.
inline constexpr double ReportMarginMillimetres = 15.0;
void SetReportMargins(QPrinter& printer);

// The index of the first line of each page for pages of linesPerPage lines. A heading never
// stands alone at the foot of a page: it goes over with the line after it.
std::vector<std::size_t> PageStarts(const std::vector<ReportLine>& lines, int linesPerPage);

// The lines of "Courier New" 10 that fit on a page of the printer.
int LinesPerPage(QPagedPaintDevice& printer);
// The characters of "Courier New" 10 that fit across a page of the printer.
int CharactersPerLine(QPagedPaintDevice& printer);
// A line wider than columns goes on in the lines below it, indented by eight spaces, instead of
// running off the page: a long folder name or transcription line is printed whole.
std::vector<ReportLine> WrapReportLines(const std::vector<ReportLine>& lines, int columns);

// Prints the lines as one document, within the report's margins; false when the printer cannot
// be opened.
bool PrintReport(const std::vector<ReportLine>& lines, QPrinter& printer);
// A printer that writes a PDF file at pdfPath.
std::unique_ptr<QPrinter> PdfPrinter(const QString& pdfPath);
// Writes the report as a PDF file at pdfPath, laid out as PdfPrinter lays it out. The file is
// written beside under another name and takes the name only when every byte is on the disk,
// so a full disk never leaves half a report in place of a good one; a pipe, a device or a
// folder is refused without being opened, and so is any of readFiles (by the file's identity,
// whatever the path). Returns the reason it failed, "" when written.
std::string PrintReportToPdf(const std::vector<ReportLine>& lines, const QString& pdfPath,
                             const std::vector<std::string>& readFiles = {});

// Asks the user where to save the report as a PDF file; "" when cancelled.
QString ChoosePdfFile(QWidget* parent);

} // namespace tv
