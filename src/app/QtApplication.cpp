#include "app/QtApplication.h"

#include "core/Prompts.h"
#include "core/QtPlatform.h"
#include "view/ImageViewDecode.h"

#include <QMessageBox>

#include <cstdio>
#include <cstdlib>

namespace tv {

namespace {

// The number of the run-time error "Internal error", for failures that are not the model's own.
constexpr int InternalError = 51;

[[noreturn]] void ReportAndEnd(const RunTimeError& error) {
    QMessageBox::critical(nullptr, QString::fromLatin1(AppTitle), RunTimeErrorText(error));
    // The program ends here, from inside the failed handler: nothing of it may run on.
    std::fflush(nullptr);
    std::_Exit(1);
}

} // namespace

QtApplication::QtApplication(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName(QString::fromLatin1(AppTitle));
    // The desktop entry the windows belong to: the menus and the task bar show its name and icon.
    setDesktopFileName(QStringLiteral("tallyview"));
    KeepScanMemoryForTheNextScan();
}

bool QtApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const RunTimeError& error) {
        ReportAndEnd(error);
    } catch (const std::exception& error) {
        ReportAndEnd(AsRunTimeError(error));
    } catch (...) {
        ReportAndEnd(RunTimeError(InternalError, "Internal error"));
    }
}

QString RunTimeErrorText(const RunTimeError& error) {
    return QStringLiteral("Run-time error '%1':\n\n").arg(error.Number) + ToQString(error.what());
}

RunTimeError AsRunTimeError(const std::exception& error) {
    if (const auto* runTime = dynamic_cast<const RunTimeError*>(&error)) return *runTime;
    return {InternalError, "Internal error: " + std::string(error.what())};
}

} // namespace tv
