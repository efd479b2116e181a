#include "layout/ScanTypesForm.h"

#include "core/Prompts.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <span>

namespace tv {

namespace {

constexpr const char* CloseCaption = "Close";
constexpr const char* ApplyCaption = "Apply";

QString Named(const char* name, int index) {
    return QString::fromLatin1(name) + QString::number(index);
}

// The options in index order, each with the label of the group it starts (nullptr when it
// carries on the group above it).
constexpr ScanTypesForm::Option ColumnOptions[] = {
    {"Single page", "1 column"}, {nullptr, "2 columns"},
    {nullptr, "3 columns"},      {"Double page (total of ...)", "2 columns"},
    {nullptr, "4 columns"},      {nullptr, "6 columns"}};
constexpr ScanTypesForm::Option PageOptions[] = {{nullptr, "Whole Page Scan"},
                                                 {"Half Page Scan", "Top Half"},
                                                 {nullptr, "Bottom Half"},
                                                 {"Third Page Scan", "Top Third"},
                                                 {nullptr, "Middle Third"},
                                                 {nullptr, "Bottom Third"},
                                                 {"Double Page Scan", "2 page transcription"},
                                                 {nullptr, "Left hand page transcription"},
                                                 {nullptr, "Right hand page transcription"}};

} // namespace

ScanTypesForm::ScanTypesForm(QWidget* parent)
    : QDialog(parent), Check1(new QCheckBox(this)), CloseButton(new QPushButton(this)),
      optCols_(new QButtonGroup(this)), optPages_(new QButtonGroup(this)) {
    setObjectName(QStringLiteral("ScanTypes"));
    setWindowTitle(QString::fromLatin1(AppTitle));
    setModal(true);
    auto* heading = new QLabel(QStringLiteral("Select type of scan"), this);
    heading->setObjectName(QStringLiteral("Heading"));
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);

    Check1->setObjectName(QStringLiteral("Check1"));
    Check1->setText(QStringLiteral("Surnames on a separate line in the scan"));
    Check1->setToolTip(QStringLiteral("This should normally only be ticked for 1963 Qtr 2 and "
                                      "later scans that have the surname on a separate line"));
    CloseButton->setObjectName(QStringLiteral("CloseButton"));
    // Captioned from the start, so that it is announced by its caption before the first opening.
    CloseButton->setText(QString::fromLatin1(CloseCaption));
    CloseButton->setDefault(true);
    connect(CloseButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(optCols_, &QButtonGroup::idClicked, this, &ScanTypesForm::OptCol_Click);

    auto* options = new QHBoxLayout;
    options->addLayout(OptionColumn(optCols_, "OptCol", ColumnOptions));
    options->addSpacing(24);
    options->addLayout(OptionColumn(optPages_, "OptPage", PageOptions));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(CloseButton);
    auto* form = new QVBoxLayout(this);
    form->addWidget(heading);
    form->addLayout(options);
    form->addWidget(Check1);
    form->addLayout(buttons);
}

QVBoxLayout* ScanTypesForm::OptionColumn(QButtonGroup* group, const char* name,
                                         std::span<const Option> options) {
    auto* column = new QVBoxLayout;
    int index = 0;
    for (const Option& option : options) {
        if (option.Group != nullptr) {
            auto* label = new QLabel(QString::fromLatin1(option.Group), this);
            label->setContentsMargins(0, 6, 0, 0);
            column->addWidget(label);
        }
        auto* button = new QRadioButton(QString::fromLatin1(option.Caption), this);
        button->setObjectName(Named(name, ++index));
        button->installEventFilter(this);
        group->addButton(button, index);
        column->addWidget(button);
    }
    column->addStretch();
    return column;
}

QRadioButton* ScanTypesForm::OptCol(int index) const {
    return static_cast<QRadioButton*>(optCols_->button(index));
}

QRadioButton* ScanTypesForm::OptPage(int index) const {
    return static_cast<QRadioButton*>(optPages_->button(index));
}

ScanLayoutChoice ScanTypesForm::Choose(const ScanLayoutChoice& preselected) {
    Preselect(preselected);
    // Closing the form in any way applies what it shows, as its unload always did.
    exec();
    // The keys of calibration go on to the window that asked, without a click on it: not every
    // window manager gives a closed dialogue's window the activation back.
    if (QWidget* window = parentWidget() ? parentWidget()->window() : nullptr)
        window->activateWindow();
    return Selection();
}

void ScanTypesForm::Preselect(const ScanLayoutChoice& preselected) {
    OptCol(preselected.OptCol)->setChecked(true);
    OptPage(preselected.OptPage)->setChecked(true);
    Check1->setChecked(preselected.SurnamesOnOwnLine);
    CloseButton->setText(QString::fromLatin1(CloseCaption));
    OptPageOpts(preselected.OptCol >= 4);
}

ScanLayoutChoice ScanTypesForm::Selection() const {
    return {static_cast<int16_t>(optCols_->checkedId()),
            static_cast<int16_t>(optPages_->checkedId()), Check1->isChecked()};
}

void ScanTypesForm::OptPageOpts(bool doublePage) {
    for (int16_t index = 1; index <= 9; ++index)
        OptPage(index)->setEnabled(PageOptionEnabled(index, doublePage));
    // A page option the column choice no longer allows gives way to the first one it allows.
    if (!optPages_->checkedButton()->isEnabled()) OptPage(doublePage ? 7 : 1)->setChecked(true);
}

// Column options 4..6 count the columns of two facing pages.
void ScanTypesForm::OptCol_Click(int index) {
    OptPageOpts(index >= 4);
}

bool ScanTypesForm::eventFilter(QObject* watched, QEvent* event) {
    // A press on a disabled option changes nothing, not even the caption.
    const auto* option = qobject_cast<const QWidget*>(watched);
    if (event->type() == QEvent::MouseButtonPress && option != nullptr && option->isEnabled() &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        CloseButton->setText(QString::fromLatin1(ApplyCaption));
    return QDialog::eventFilter(watched, event);
}

} // namespace tv
