#include "help/HelpForm.h"

#include "core/QtPlatform.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tv {

namespace {

QPushButton* Button(const QString& caption, const QString& name, QWidget* parent) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    return button;
}

} // namespace

HelpForm::HelpForm(QWidget* parent)
    : QWidget(parent, Qt::Window), label1_(new QLabel(this)), text1_(new QPlainTextEdit(this)),
      previous_(Button("Previous", "Previous", this)), next_(Button("Next", "Next", this)),
      hide_(Button("Hide", "Hide", this)) {
    setWindowTitle("Tallyview - Commands Help");
    label1_->setObjectName("Label1");
    QFont titleFont = label1_->font();
    titleFont.setBold(true);
    label1_->setFont(titleFont);
    label1_->setWordWrap(true);
    text1_->setObjectName("Text1");
    text1_->setReadOnly(true);
    // The text box has no caption for a screen reader to announce.
    text1_->setAccessibleName("Help text");

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(previous_);
    buttons->addWidget(next_);
    buttons->addStretch();
    buttons->addWidget(hide_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label1_);
    layout->addWidget(text1_, 1);
    layout->addLayout(buttons);
    resize(460, 300);

    connect(previous_, &QPushButton::clicked, this, [this] { ShowPage(-1); });
    connect(next_, &QPushButton::clicked, this, [this] { ShowPage(+1); });
    connect(hide_, &QPushButton::clicked, this, &HelpForm::Hide_Click);
    ShowPage(0);
}

void HelpForm::ShowPage(int offset) {
    page_.ShowPage(offset);
    label1_->setText(ToQString(page_.Title));
    text1_->setPlainText(ToQString(page_.Text));
    previous_->setEnabled(page_.PreviousEnabled);
    next_->setEnabled(page_.NextEnabled);
}

void HelpForm::Hide_Click() {
    hide();
    emit hidden();
}

void HelpForm::closeEvent(QCloseEvent* event) {
    event->ignore();
    Hide_Click();
}

} // namespace tv
