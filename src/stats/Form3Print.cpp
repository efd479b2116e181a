// PrintStats and the report on paper or in a PDF file.
#include "stats/Form3Print.h"

#include "core/QtPlatform.h"
#include "core/ReportTarget.h"
#include "core/Text.h"
#include "stats/Form3.h"

#include <QBuffer>
#include <QDir>
#include <QFileDialog>
#include <QFontMetricsF>
#include <QInputDialog>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>

#include <algorithm>
#include <cmath>

namespace tv {

namespace {

constexpr const char* ReportTitle = "Tallyview Report";

std::string PathText(const QString& path) {
    return Utf8ToCp1252(QDir::toNativeSeparators(path).toStdString());
}

} // namespace

QFont ReportFont(bool bold) {
    QFont font("Courier New", 10);
    font.setStyleHint(QFont::TypeWriter); // a fixed-pitch stand-in where Courier New is missing
    font.setFixedPitch(true);
    font.setBold(bold);
    return font;
}

QStringList SystemPrinters::Names() const {
    return QPrinterInfo::availablePrinterNames();
}

QString SystemPrinters::DefaultName() const {
    return QPrinterInfo::defaultPrinterName();
}

QString AskWhichPrinter(QWidget* parent, const QStringList& names) {
    bool ok = false;
    const QString name = QInputDialog::getItem(
        parent, QStringLiteral("Print the report"),
        QStringLiteral("No printer is set as the default. Print on:"), names, 0, false, &ok);
    return ok ? name : QString();
}

PrinterChoice ChoosePrinter(const PrinterDirectory& printers, const PrinterPicker& pick) {
    const QString preferred = printers.DefaultName();
    if (!preferred.isEmpty()) return {PrinterChoiceKind::Chosen, preferred};
    const QStringList names = printers.Names();
    if (names.isEmpty()) return {PrinterChoiceKind::NoneInstalled, {}};
    if (names.size() == 1) return {PrinterChoiceKind::Chosen, names.first()};
    const QString picked = pick ? pick(names) : QString();
    if (picked.isEmpty()) return {PrinterChoiceKind::Cancelled, {}};
    return {PrinterChoiceKind::Chosen, picked};
}

std::unique_ptr<QPrinter> NamedPrinter(const QString& name) {
    auto printer =
        std::make_unique<QPrinter>(QPrinterInfo::printerInfo(name), QPrinter::HighResolution);
    SetReportMargins(*printer);
    return printer;
}

void SetReportMargins(QPrinter& printer) {
    const QMarginsF now = printer.pageLayout().margins(QPageLayout::Millimeter);
    const auto atLeast = [](qreal margin) { return std::max(margin, ReportMarginMillimetres); };
    printer.setPageMargins(QMarginsF(atLeast(now.left()), atLeast(now.top()), atLeast(now.right()),
                                     atLeast(now.bottom())),
                           QPageLayout::Millimeter);
}

std::vector<std::size_t> PageStarts(const std::vector<ReportLine>& lines, int linesPerPage) {
    std::vector<std::size_t> starts;
    int row = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const int needed = lines[i].Bold && i + 1 < lines.size() ? 2 : 1;
        if (starts.empty() || (row > 0 && row + needed > linesPerPage)) {
            starts.push_back(i);
            row = 0;
        }
        ++row;
    }
    return starts;
}

int LinesPerPage(QPagedPaintDevice& printer) {
    const QFontMetricsF metrics(ReportFont(false), &printer);
    return std::max(1, static_cast<int>(std::floor(printer.height() / metrics.lineSpacing())));
}

int CharactersPerLine(QPagedPaintDevice& printer) {
    const QFontMetricsF metrics(ReportFont(false), &printer);
    const double advance = metrics.horizontalAdvance(QLatin1Char('M'));
    return std::max(1, static_cast<int>(std::floor(printer.width() / advance)));
}

std::vector<ReportLine> WrapReportLines(const std::vector<ReportLine>& lines, int columns) {
    constexpr std::size_t Indent = 8;
    const std::size_t width = std::max<std::size_t>(static_cast<std::size_t>(columns), 2 * Indent);
    std::vector<ReportLine> wrapped;
    for (const ReportLine& line : lines) {
        wrapped.push_back({line.Text.substr(0, width), line.Bold});
        for (std::size_t at = width; at < line.Text.size(); at += width - Indent)
            wrapped.push_back(
                {std::string(Indent, ' ') + line.Text.substr(at, width - Indent), line.Bold});
    }
    return wrapped;
}

namespace {

// Paints the lines as one document on the pages of printer; false when it cannot be begun.
bool PaintReport(const std::vector<ReportLine>& report, QPagedPaintDevice& printer) {
    const std::vector<ReportLine> lines = WrapReportLines(report, CharactersPerLine(printer));
    const std::vector<std::size_t> starts = PageStarts(lines, LinesPerPage(printer));
    QPainter painter;
    if (!painter.begin(&printer)) return false;
    const QFontMetricsF metrics(ReportFont(false), &printer);
    const double lineHeight = metrics.lineSpacing();
    std::size_t page = 0;
    int row = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (page + 1 < starts.size() && i == starts[page + 1]) {
            printer.newPage();
            ++page;
            row = 0;
        }
        painter.setFont(ReportFont(lines[i].Bold));
        painter.drawText(QPointF(0, row * lineHeight + metrics.ascent()), ToQString(lines[i].Text));
        ++row;
    }
    return painter.end();
}

} // namespace

bool PrintReport(const std::vector<ReportLine>& report, QPrinter& printer) {
    printer.setDocName(ReportTitle);
    SetReportMargins(printer);
    return PaintReport(report, printer);
}

std::unique_ptr<QPrinter> PdfPrinter(const QString& pdfPath) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(pdfPath);
    SetReportMargins(*printer);
    return printer;
}

std::string PrintReportToPdf(const std::vector<ReportLine>& lines, const QString& pdfPath,
                             const std::vector<std::string>& readFiles) {
    const std::string target = PathFromQString(pdfPath);
    if (std::string refusal = ReportTargetRefusal(target); !refusal.empty()) return refusal;
    if (const std::optional<std::string> input = InputAtTarget(target, readFiles))
        return "It is the file " + *input + ", which Tallyview only reads";
    // Painted in memory first (a report is a few hundred kilobytes at most): every failure of
    // the disk then comes from the one file written below, with the system's reason.
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    {
        const std::unique_ptr<QPrinter> layout = PdfPrinter(pdfPath);
        QPdfWriter writer(&pdf);
        writer.setTitle(ReportTitle);
        writer.setResolution(layout->resolution());
        writer.setPageLayout(layout->pageLayout());
        if (!PaintReport(lines, writer)) return "The report could not be laid out";
    }
    QSaveFile file(pdfPath);
    if (!file.open(QIODevice::WriteOnly) || file.write(pdf.data()) != pdf.data().size() ||
        !file.commit())
        return file.errorString().toStdString();
    return "";
}

QString ChoosePdfFile(QWidget* parent) {
    return QFileDialog::getSaveFileName(parent, "Save the report as a PDF file",
                                        QDir::homePath() + "/Tallyview Report.pdf",
                                        "PDF files (*.pdf)");
}

void Form3::PrintStats() {
    const Answer answer = prompts_.Ask({"Do you want a print of all the QRL records ?", AppTitle,
                                        Buttons::YesNoCancel, PromptIcon::Question, Answer::Yes});
    if (answer == Answer::Cancel || !reportSource_) return;
    const std::vector<ReportLine> lines = reportSource_(answer == Answer::Yes);
    printerChoiceCancelled_ = false;
    const std::unique_ptr<QPrinter> printer = printerSource_ ? printerSource_() : nullptr;
    if (printerChoiceCancelled_) return;
    if (printer == nullptr) {
        SaveAsPdf(lines);
    } else if (!PrintReport(lines, *printer)) {
        prompts_.Tell("Tallyview could not print the report on " +
                          FromQString(printer->printerName()),
                      PromptIcon::Exclamation);
    }
}

// The printer ChoosePrinter gives; nothing when none is installed or the user cancelled the
// choice among several.
std::unique_ptr<QPrinter> Form3::ChosenPrinter() {
    const SystemPrinters system;
    const PrinterPicker askHere = [this](const QStringList& names) {
        return AskWhichPrinter(this, names);
    };
    const PrinterChoice choice =
        ChoosePrinter(printers_ ? *printers_ : system, printerPicker_ ? printerPicker_ : askHere);
    printerChoiceCancelled_ = choice.Kind == PrinterChoiceKind::Cancelled;
    if (choice.Kind != PrinterChoiceKind::Chosen) return nullptr;
    return NamedPrinter(choice.Name);
}

// Without a printer the user would be left with nothing; a PDF file can be printed elsewhere.
void Form3::SaveAsPdf(const std::vector<ReportLine>& lines) {
    const std::string offer =
        std::string("No printer is installed, so the report cannot be printed.") + CR +
        "Do you want to save it as a PDF file instead?";
    if (prompts_.Ask({offer, AppTitle, Buttons::YesNo, PromptIcon::Question, Answer::Yes}) !=
        Answer::Yes)
        return;
    const QString path = pdfFileChooser_ ? pdfFileChooser_() : QString();
    if (path.isEmpty()) return;
    const std::vector<std::string> readFiles =
        readFiles_ ? readFiles_() : std::vector<std::string>{};
    if (const std::string failure = PrintReportToPdf(lines, path, readFiles); !failure.empty())
        prompts_.Tell("Tallyview could not write the report to " + PathText(path) + CR +
                          Utf8ToCp1252(failure),
                      PromptIcon::Exclamation);
}

} // namespace tv
