#include "app/DesktopApp.h"

#include "app/QtApplication.h"

#include <QTimer>

namespace tv {

DesktopForms::DesktopForms(std::string scan, std::string transcription)
    : scan_(std::move(scan)), transcription_(std::move(transcription)) {}

DesktopForms::~DesktopForms() = default;

void DesktopForms::Start() {
    ShowStartForm();
    if (scan_.empty() || transcription_.empty()) return;
    // From inside the event loop, so that a run-time error is reported as anywhere else.
    QTimer::singleShot(0, start_.get(), [this] { start_->RunAllSteps(); });
}

Form1* DesktopForms::MainForm() {
    if (main_) return main_.get();
    Form1Services services;
    services.ChooseFile = [this](FileKind kind, const FileRequest& request) {
        return ChooseFile(kind, request);
    };
    main_ = std::make_unique<Form1>(services);
    connect(main_.get(), &Form1::NewScanRequested, this, &DesktopForms::NewScan);
    connect(main_.get(), &Form1::Closing, this, &DesktopForms::MainFormClosing);
    return main_.get();
}

void DesktopForms::ShowStartForm() {
    // A start window from an earlier scan may still be on the call stack of its own close.
    if (start_) start_.release()->deleteLater();
    start_ = std::make_unique<StartForm>([this] { return MainForm(); }, false);
    start_->show();
}

void DesktopForms::NewScan() {
    ShowStartForm();
    start_->NewScan(main_.get());
}

void DesktopForms::MainFormClosing() {
    if (start_) start_->CloseForGood();
    QCoreApplication::quit();
}

// The command line's files stand in for the dialog once each; later scans use the dialog.
std::string DesktopForms::ChooseFile(FileKind kind, const FileRequest& request) {
    std::string& given = kind == FileKind::Image ? scan_ : transcription_;
    if (given.empty()) return OpenFileDialog(request);
    return std::exchange(given, "");
}

int RunDesktop(int argc, char** argv, const std::string& scan, const std::string& transcription) {
    QtApplication app(argc, argv);
    DesktopForms forms(scan, transcription);
    forms.Start();
    return QtApplication::exec();
}

} // namespace tv
