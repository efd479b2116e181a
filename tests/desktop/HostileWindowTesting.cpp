#include "HostileWindowTesting.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QTest>

#include <stdexcept>

namespace tv::test {

DesktopForms& HostileWindowTest::RunWithRealBoxes(const std::string& scan,
                                                  const std::string& transcription) {
    EndRun();
    DesktopServices services;
    services.SettingsPath = PathToQString(SettingsFile().string());
    services.Main.LayoutChooser = &Chooser;
    services.Main.ChooseFile = [this](FileKind, const FileRequest& request) {
        return NextFile(request);
    };
    Forms = std::make_unique<DesktopForms>(scan, transcription, services);
    Forms->Start();
    return *Forms;
}

void HostileWindowTest::WaitForTheMainWindow() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return !Forms->StartWindow()->isVisible(); }, 10000));
    WaitForMainWindow();
}

std::string HostileWindowTest::MakeBadImage(const std::string& name) {
    const QString script = QStringLiteral(TALLYVIEW_TEST_DATA "/../../scripts/make-bad-images.sh");
    const int status =
        QProcess::execute(script, {PathToQString(Dir.Path().string()), QString(name.c_str())});
    if (status != 0) throw std::runtime_error("make-bad-images.sh failed for " + name);
    return (Dir.Path() / name).string();
}

std::string HostileWindowTest::NameBoxText() const {
    const auto* box = Window->findChild<QLabel*>(QStringLiteral("NameBox"));
    return box != nullptr ? box->text().toStdString() : "(no name box)";
}

} // namespace tv::test
