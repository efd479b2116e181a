#pragma once
// The printed report: lines of "Courier New" 10, headings in bold, on a printer or in a PDF file.
#include "stats/Statistics.h"

#include <QFont>
#include <QPagedPaintDevice>
#include <QPrinter>
#include <QString>

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
std::unique_ptr<QPrinter> DefaultPrinter();

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

// Prints the lines as one document; false when the printer cannot be opened.
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
