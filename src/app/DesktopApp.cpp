#include "app/DesktopApp.h"

#include "app/QtApplication.h"
#include "help/HelpForm.h"
#include "stats/Form3.h"

#include <QApplication>
#include <QIcon>
#include <QTimer>

#include <utility>

namespace tv {

DesktopForms::DesktopForms(std::string scan, std::string transcription, DesktopServices services)
    : files_{std::move(scan), std::move(transcription)}, services_(std::move(services)) {
    const QString path =
        services_.SettingsPath.isEmpty() ? DefaultSettingsPath() : services_.SettingsPath;
    store_ = std::make_unique<QtSettingsStore>(Ask(), path);
    // Task bars and window lists show every window with the program's icon: the installed
    // theme's, or the one built into the program.
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("tallyview"),
                                                 QIcon(QStringLiteral(":/icons/tallyview.svg"))));
}

DesktopForms::~DesktopForms() = default;

Prompts& DesktopForms::Ask() {
    return services_.Main.Ask != nullptr ? *services_.Main.Ask : prompts_;
}

void DesktopForms::Start() {
    ShowStartForm();
    OpenFilesSoon(std::exchange(files_, {}));
}

// From inside the event loop, so that a run-time error is reported as anywhere else.
void DesktopForms::OpenFilesSoon(const SessionFiles& files) {
    if (files.Empty()) return;
    QTimer::singleShot(0, start_.get(), [start = start_.get(), files] { start->OpenFiles(files); });
}

Form1* DesktopForms::MainForm() {
    if (main_) return main_.get();
    Form1Services services = services_.Main;
    services.Settings = store_.get();
    main_ = std::make_unique<Form1>(services);
    Form1* main = main_.get();
    connect(main, &Form1::NewScanRequested, this, &DesktopForms::NewScan);
    connect(main, &Form1::Closing, this, &DesktopForms::MainFormClosing);
    connect(main, &Form1::ShowStatistics, this, &DesktopForms::ShowStats);
    connect(main, &Form1::StatisticsChanged, this, &DesktopForms::StatisticsChanged);
    connect(main, &Form1::OpenHelp, this, &DesktopForms::OpenHelp);
    connect(main, &Form1::OpenAbout, this, &DesktopForms::OpenAbout);
    return main;
}

void DesktopForms::ShowStartForm() {
    // A start window from an earlier scan may still be on the call stack of its own close.
    if (start_) start_.release()->deleteLater();
    start_ = std::make_unique<StartForm>([this] { return MainForm(); }, ReadSkipSteps(*store_));
    start_->SkipStepsChanged = [this](bool ticked) { WriteSkipSteps(*store_, ticked); };
    // A push button, not a tick box: nothing is left ticked to clear again afterwards.
    start_->RestoreDefaultsClicked = [this] { RestoreDefaults(*store_); };
    connect(start_.get(), &StartForm::Quitting, this, &DesktopForms::CloseOthers);
    start_->show();
}

void DesktopForms::SaveDefaults() {
    if (main_) main_->Model().SaveDefaults(*store_, main_->WindowState());
}

void DesktopForms::NewScan(const SessionFiles& files) {
    SaveDefaults();
    ShowStartForm();
    start_->NewScan(main_.get());
    OpenFilesSoon(files);
}

void DesktopForms::MainFormClosing() {
    SaveDefaults();
    if (start_) start_->CloseForGood();
    CloseOthers();
    QCoreApplication::quit();
}

void DesktopForms::CloseOthers() {
    if (form3_) {
        // "Die": the screen closes with the program and does not run its close action again.
        form3_->SetCommandCaption("Die");
        form3_->close();
    }
    if (help_ != nullptr) help_->hide();
}

int RunDesktop(int argc, char** argv, const std::string& scan, const std::string& transcription) {
    QtApplication app(argc, argv);
    DesktopForms forms(scan, transcription);
    forms.Start();
    return QtApplication::exec();
}

} // namespace tv
