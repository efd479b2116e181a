#include "stats/Form3.h"

#include "core/QtPlatform.h"
#include "core/Text.h"
#include "session/QtWindowPlace.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace tv {

namespace {

constexpr std::array<const char*, StatsOptionCount> OptionCaptions = {
    "File header", "Queries", "Warnings", "Flagged records", "History"};

QPlainTextEdit* ReadOnlyBox(const QString& name, QWidget* parent) {
    auto* box = new QPlainTextEdit(parent);
    box->setObjectName(name);
    box->setReadOnly(true);
    return box;
}

// The model's CR LF texts in a text box.
QString BoxText(const std::string& text) {
    return ToQString(UnixLineEnds(text));
}

} // namespace

Form3::Form3(Prompts& prompts, QWidget* parent)
    : QWidget(parent, Qt::Window), prompts_(prompts), summaryBox_(ReadOnlyBox("SummaryBox", this)),
      listBox_(ReadOnlyBox("ListBox", this)), printB_(new QPushButton("Print", this)),
      command1_(new QPushButton("Close", this)),
      printerSource_([this] { return ChosenPrinter(); }) {
    setWindowTitle("Tallyview - Statistics");
    listBox_->setFont(ReportFont(false));
    listBox_->setLineWrapMode(QPlainTextEdit::NoWrap);
    summaryBox_->setMaximumHeight(summaryBox_->fontMetrics().lineSpacing() * 7);
    // The two text boxes have no caption for a screen reader to announce.
    summaryBox_->setAccessibleName("Summary");
    listBox_->setAccessibleName("List");
    printB_->setObjectName("PrintB");
    command1_->setObjectName("Command1");

    auto* optionRow = new QHBoxLayout;
    for (std::size_t i = 0; i < options_.size(); ++i) {
        auto* option = new QRadioButton(OptionCaptions[i], this);
        const int index = static_cast<int>(i);
        option->setObjectName(QString("Options%1").arg(index));
        optionRow->addWidget(option);
        connect(option, &QRadioButton::clicked, this, [this, index] { Options_Click(index); });
        options_[i] = option;
    }
    auto* buttonRow = new QHBoxLayout;
    buttonRow->addStretch();
    buttonRow->addWidget(printB_);
    buttonRow->addWidget(command1_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(summaryBox_);
    layout->addLayout(optionRow);
    layout->addWidget(listBox_, 1);
    layout->addLayout(buttonRow);
    resize(680, 520);

    connect(printB_, &QPushButton::clicked, this, &Form3::PrintB_Click);
    connect(command1_, &QPushButton::clicked, this, &Form3::Command1_Click);
    pdfFileChooser_ = [this] { return ChoosePdfFile(this); };
    ShowOption(0);
}

QRadioButton* Form3::Options(int index) const {
    return options_.at(static_cast<std::size_t>(index));
}

void Form3::Refresh(const std::string& summary, const std::string& list) {
    summaryBox_->setPlainText(BoxText(summary));
    listBox_->setPlainText(BoxText(list));
}

void Form3::ShowOption(int16_t option) {
    selected_ = option;
    Options(option)->setChecked(true);
    Underline(option);
}

void Form3::SetOptionEnabled(int16_t option, bool enabled) {
    Options(option)->setEnabled(enabled);
}

void Form3::SetCommandCaption(const QString& caption) {
    command1_->setText(caption);
}

QString Form3::CommandCaption() const {
    return command1_->text();
}

bool Form3::CentreOnFirstLoad(const QRect& mainWindow) {
    if (centred_) return false;
    centred_ = true;
    move(mainWindow.left() + (mainWindow.width() - frameGeometry().width()) / 2,
         mainWindow.top() + (mainWindow.height() - frameGeometry().height()) / 2);
    // A main window near the screen's edge would put the centred screen past it.
    KeepWindowOnScreen(*this);
    return true;
}

void Form3::Options_Click(int index) {
    selected_ = static_cast<int16_t>(index);
    emit optionSelected(index);
    Underline(index);
}

// The selected list is shown by its underlined caption.
void Form3::Underline(int index) {
    for (int i = 0; i < StatsOptionCount; ++i) {
        QFont font = Options(i)->font();
        font.setUnderline(i == index);
        Options(i)->setFont(font);
    }
}

void Form3::PrintB_Click() {
    PrintStats();
    if (CommandCaption() != "Exit") {
        emit printed();
        return;
    }
    // The print's dialogs are gone: the screen, the last window of the session, takes the
    // activation back and stays in front rather than leaving the desktop without an active
    // window.
    raise();
    activateWindow();
}

void Form3::Command1_Click() {
    if (CommandCaption() == "Exit") {
        exiting_ = true;
        emit exitProgram();
        return;
    }
    hide();
    emit hidden();
}

// Closing the window is a click on Command1, unless the screen is closing with the program.
void Form3::closeEvent(QCloseEvent* event) {
    if (CommandCaption() == "Die" || exiting_) {
        event->accept();
        return;
    }
    if (CommandCaption() == "Exit") {
        event->accept();
        exiting_ = true;
        emit exitProgram();
        return;
    }
    event->ignore();
    Command1_Click();
}

} // namespace tv
