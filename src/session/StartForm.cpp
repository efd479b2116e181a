#include "session/StartForm.h"

#include "core/Prompts.h"
#include "session/Form1.h"
#include "session/QtDroppedFiles.h"
#include "session/Session.h"
#include "transcription/ReadTranscription.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tv {

StartForm::StartForm(MainFormFactory createMainForm, bool skipOpenScreen, QWidget* parent)
    : QWidget(parent), SkipSteps(new QCheckBox(this)), RestoreDefaults(new QPushButton(this)),
      Quit(new QPushButton(this)), Label3(new QLabel(this)),
      createMainForm_(std::move(createMainForm)) {
    setObjectName(QStringLiteral("StartForm"));
    setWindowTitle(QString::fromLatin1(AppTitle));
    Stage1 =
        StepButton("Stage1", "Step 1 - specify the scanned image file", &StartForm::Stage1_Click);
    Stage2 =
        StepButton("Stage2", "Step 2 - specify your transcription file", &StartForm::Stage2_Click);
    Stage3 = StepButton("Stage3", "Step 3 - line up the scanned image and your transcription",
                        &StartForm::Stage3_Click);
    Stage4 = StepButton("Stage4", "Step 4 - now ready to verify transcription",
                        &StartForm::Stage4_Click);
    for (QPushButton* later : {Stage2, Stage3, Stage4})
        later->setEnabled(false);

    SkipSteps->setObjectName(QStringLiteral("SkipSteps"));
    SkipSteps->setText(QStringLiteral("Go straight through steps 2 to 4 after step 1"));
    connect(SkipSteps, &QCheckBox::clicked, this, &StartForm::SkipSteps_Click);
    RestoreDefaults->setObjectName(QStringLiteral("RestoreDefaults"));
    RestoreDefaults->setText(QStringLiteral("Restore Defaults"));
    RestoreDefaults->setToolTip(
        QStringLiteral("Clear all of Tallyview's details from the settings"));
    connect(RestoreDefaults, &QPushButton::clicked, this, [this] {
        if (RestoreDefaultsClicked) RestoreDefaultsClicked();
    });
    Quit->setObjectName(QStringLiteral("Quit"));
    Quit->setText(QStringLiteral("Quit"));
    connect(Quit, &QPushButton::clicked, this, &StartForm::Quit_Click);
    Label3->setObjectName(QStringLiteral("Label3"));
    Label3->setText(QString::fromStdString(VersionLine()));

    LayOut();
    setAcceptDrops(true);

    // The stored setting ticks the box; that is not the user's click.
    InLoad = true;
    SkipSteps->setChecked(skipOpenScreen);
    InLoad = false;
    Stage1->setFocus();
}

void StartForm::LayOut() {
    auto* title = new QLabel(QString::fromLatin1(AppTitle), this);
    QFont big = title->font();
    big.setPointSize(big.pointSize() * 2);
    big.setBold(true);
    title->setFont(big);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(RestoreDefaults);
    bottom->addStretch();
    bottom->addWidget(Quit);
    auto* form = new QVBoxLayout(this);
    form->addWidget(title);
    for (QPushButton* step : {Stage1, Stage2, Stage3, Stage4})
        form->addWidget(step);
    form->addWidget(SkipSteps);
    form->addLayout(bottom);
    form->addWidget(Label3);
}

QPushButton* StartForm::StepButton(const char* name, const char* caption,
                                   void (StartForm::*handler)()) {
    auto* button = new QPushButton(QString::fromLatin1(caption), this);
    button->setObjectName(QString::fromLatin1(name));
    button->setStyleSheet(QStringLiteral("text-align: left; padding: 6px 12px"));
    // ENTER presses the step that has the focus, as SPACE does: each step passes the focus on
    // to the next, so the four steps are four presses of one key.
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, this, handler);
    return button;
}

void StartForm::SkipSteps_Click() {
    if (InLoad) return;
    if (SkipStepsChanged) SkipStepsChanged(SkipSteps->isChecked());
    Stage1->setFocus();
}

void StartForm::Stage1_Click() {
    RestoreDefaults->hide();
    SkipSteps->hide();
    Stage1->setEnabled(false);
    if (FirstScan)
        main_ = createMainForm_();
    else
        main_->Form_Load2();
    if (!given_.Scan.empty()) main_->GiveFile(FileKind::Image, given_.Scan);
    if (!given_.Transcription.empty())
        main_->GiveFile(FileKind::Transcription, given_.Transcription);
    given_ = {};
    main_->SetVersionLine(Label3->text());
    ImageFileChosen = main_->LoadFiles("J");
    // The scan could not be loaded: the main window has closed and the program ends.
    if (main_->Ended()) return CloseForGood();
    if (!SkipSteps->isChecked() && !skipThisTime_) {
        Stage2->setEnabled(true);
        Stage2->setFocus();
        return;
    }
    Stage2_Click();
    if (ImageFileChosen.empty() || TranscriptionChosen == QuitToken) return;
    Stage3_Click();
    Stage4_Click();
}

void StartForm::Stage2_Click() {
    Stage2->setEnabled(false);
    TranscriptionChosen = main_->LoadFiles("S");
    if (TranscriptionChosen == QuitToken) return Quit_Click();
    if (!ImageFileChosen.empty()) {
        Stage3->setEnabled(true);
        Stage3->setFocus();
        return;
    }
    // No scan: a check of the transcription only, which ends in the statistics screen.
    main_->StatisticsOnly();
    Proceeding = true;
    close();
}

void StartForm::Stage3_Click() {
    Stage3->setEnabled(false);
    // Step 4 is this window's own focus for when the user comes back to it; the keys of
    // calibration go to the main window, which InitialiseForm1 makes the active one.
    Stage4->setEnabled(true);
    Stage4->setFocus();
    main_->InitialiseForm1();
    Proceeding = true;
}

void StartForm::Stage4_Click() {
    Stage4->setEnabled(false);
    main_->StartVerifying();
    Proceeding = true;
    close();
}

void StartForm::QuitOthers() {
    emit Quitting();
    if (main_ != nullptr) main_->close();
    Proceeding = true;
}

void StartForm::Quit_Click() {
    QuitOthers();
    close();
}

void StartForm::NewScan(Form1* mainForm) {
    FirstScan = false;
    main_ = mainForm;
    main_->hide();
}

bool StartForm::TakesFiles(const SessionFiles& files) const {
    if (Stage1->isEnabled()) return !files.Empty();
    return Stage2->isEnabled() && !files.Transcription.empty();
}

void StartForm::OpenFiles(const SessionFiles& files) {
    if (!TakesFiles(files)) return;
    if (!Stage1->isEnabled()) {
        main_->GiveFile(FileKind::Transcription, files.Transcription);
        return Stage2_Click();
    }
    given_ = files;
    if (!files.Scan.empty() && !files.Transcription.empty()) skipThisTime_ = true;
    Stage1_Click();
    if (!files.Transcription.empty() && Stage2->isEnabled()) Stage2_Click();
}

void StartForm::CloseForGood() {
    Proceeding = true;
    close();
}

// Closing this window before the user has gone on to the main window means quitting.
void StartForm::closeEvent(QCloseEvent* event) {
    if (!Proceeding) QuitOthers();
    event->accept();
}

void StartForm::dragEnterEvent(QDragEnterEvent* event) {
    if (TakesFiles(DroppedFiles(*event->mimeData()))) event->acceptProposedAction();
}

void StartForm::dropEvent(QDropEvent* event) {
    const SessionFiles files = DroppedFiles(*event->mimeData());
    if (!TakesFiles(files)) return;
    event->acceptProposedAction();
    // Once the drop is over: the steps may open a dialog and wait for the scan to load.
    QMetaObject::invokeMethod(
        this, [this, files] { OpenFiles(files); }, Qt::QueuedConnection);
}

} // namespace tv
