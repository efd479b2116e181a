#include "DesktopTesting.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

namespace tv::test {

void AnswerFileDialog(const std::string& file,
                      const std::function<void(const QFileDialog&)>& seen) {
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, poll, [poll, file, seen] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) return;
        if (seen) seen(*dialog);
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (name == nullptr) ADD_FAILURE() << "the file dialog has no file name box";
        if (name != nullptr) name->setText(PathToQString(file));
        static_cast<QDialog*>(dialog)->accept();
        if (dialog->isVisible()) return;
        poll->stop();
        poll->deleteLater();
    });
    poll->start(10);
}

DesktopTest::~DesktopTest() {
    EndRun();
}

DesktopForms& DesktopTest::Run(const std::string& scan, const std::string& transcription) {
    EndRun();
    DesktopServices services;
    services.SettingsPath = PathToQString(SettingsFile().string());
    if (!RealPrompts) services.Main.Ask = &Prompts;
    if (!RealScanTypes) services.Main.LayoutChooser = &Chooser;
    services.Main.ChooseFile = [this](FileKind, const FileRequest& request) {
        return NextFile(request);
    };
    Forms = std::make_unique<DesktopForms>(scan, transcription, services);
    Forms->Start();
    return *Forms;
}

void DesktopTest::WaitForMainWindow() {
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return Forms->MainForm()->isVisible() && !Forms->StartWindow()->isVisible(); },
        10000));
    Window = Forms->MainForm();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
}

void DesktopTest::EndRun() {
    Window = nullptr;
    Forms.reset();
}

std::string DesktopTest::SettingsText() const {
    return std::filesystem::exists(SettingsFile()) ? ReadBytes(SettingsFile().string()) : "";
}

} // namespace tv::test
