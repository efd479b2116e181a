#include "DesktopTesting.h"

#include <QTest>

namespace tv::test {

DesktopTest::~DesktopTest() {
    EndRun();
}

DesktopForms& DesktopTest::Run(const std::string& scan, const std::string& transcription) {
    EndRun();
    DesktopServices services;
    services.SettingsPath = PathToQString(SettingsFile().string());
    services.Main.Ask = &Prompts;
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
