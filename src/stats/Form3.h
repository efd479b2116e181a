#pragma once
// The statistics screen: the summary of the transcription, one list at a time chosen with five
// option buttons, the Print button and the close button Command1 ("Exit" ends a
// statistics-only session, "Die" marks the screen as closing with the program).
#include "core/Prompts.h"
#include "stats/Form3Print.h"
#include "stats/Statistics.h"

#include <QString>
#include <QWidget>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace tv {

inline constexpr int StatsOptionCount = 5;

class Form3 : public QWidget {
    Q_OBJECT

  public:
    // The report for the answer to "all the QRL records" (true for Yes).
    using ReportSource = std::function<std::vector<ReportLine>(bool allRecords)>;
    // The name of a PDF file to save the report in; "" when the user gives none.
    using PdfFileChooser = std::function<QString()>;
    // The files the session reads (transcription and scan): a report never replaces them.
    using ReadFilesSource = std::function<std::vector<std::string>()>;

    explicit Form3(Prompts& prompts, QWidget* parent = nullptr);

    // The summary of UpdateStats and the list of the selected option (Windows-1252, CR LF).
    void Refresh(const std::string& summary, const std::string& list);
    int16_t SelectedOption() const { return selected_; }
    // Selects option and underlines it alone, without asking for its list again.
    void ShowOption(int16_t option);
    void SetOptionEnabled(int16_t option, bool enabled);
    void SetCommandCaption(const QString& caption);
    QString CommandCaption() const;
    // Centres the screen over the main window the first time it is called; later calls leave
    // the screen where the user put it. Returns whether it moved the screen.
    bool CentreOnFirstLoad(const QRect& mainWindow);

    void SetReportSource(ReportSource source) { reportSource_ = std::move(source); }
    void SetPrinterSource(PrinterSource source) { printerSource_ = std::move(source); }
    void SetPdfFileChooser(PdfFileChooser chooser) { pdfFileChooser_ = std::move(chooser); }
    // Where the default printer source finds the printers, and how it asks which one when
    // several are installed and none is the default: the system's and a list dialog by default.
    void SetPrinterDirectory(std::shared_ptr<const PrinterDirectory> printers) {
        printers_ = std::move(printers);
    }
    void SetPrinterPicker(PrinterPicker picker) { printerPicker_ = std::move(picker); }
    void SetReadFiles(ReadFilesSource source) { readFiles_ = std::move(source); }

    // Asks whether to print all the records, then prints the report on the default printer (or
    // the only one, or the one the user picks); without a printer, offers to save it as a PDF
    // file.
    void PrintStats();

    // The controls, by their names on the form.
    QPlainTextEdit* SummaryBox() const { return summaryBox_; }
    QPlainTextEdit* ListBox() const { return listBox_; }
    QRadioButton* Options(int index) const;
    QPushButton* PrintB() const { return printB_; }
    QPushButton* Command1() const { return command1_; }

  signals:
    // An option was clicked: the main window selects it (SelectOption) and calls Refresh.
    void optionSelected(int option);
    // "Exit" was clicked or the screen closed: the program ends.
    void exitProgram();
    // The screen hid itself: the focus goes back to the record box.
    void hidden();
    // The report was printed (or not): the focus goes back to the record box.
    void printed();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void Options_Click(int index);
    void PrintB_Click();
    void Command1_Click();
    void Underline(int index);
    void SaveAsPdf(const std::vector<ReportLine>& lines);
    std::unique_ptr<QPrinter> ChosenPrinter();

    Prompts& prompts_;
    QPlainTextEdit* summaryBox_;
    QPlainTextEdit* listBox_;
    std::array<QRadioButton*, StatsOptionCount> options_{};
    QPushButton* printB_;
    QPushButton* command1_;
    int16_t selected_ = 0;
    bool centred_ = false;
    bool exiting_ = false;
    ReportSource reportSource_;
    PrinterSource printerSource_;
    PdfFileChooser pdfFileChooser_;
    std::shared_ptr<const PrinterDirectory> printers_;
    PrinterPicker printerPicker_;
    bool printerChoiceCancelled_ = false;
    ReadFilesSource readFiles_;
};

} // namespace tv
