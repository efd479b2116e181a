#include "app/CommandLine.h"

#include "app/CheckCommand.h"
#include "app/DesktopApp.h"

#include <QGuiApplication>

#include <iostream>
#include <string>
#include <vector>

namespace tv {

namespace {

constexpr const char* DesktopUsageText = "Usage: tallyview [SCAN TRANSCRIPTION]\n";

// Qt's own notes and warnings (a runtime folder it had to choose, a painter that could not start)
// are not the check's messages: the check tells what failed in its own words. Only Qt's
// critical and fatal messages still reach standard error.
void QtMessagesForTheCheck(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::cerr << "tallyview: " << message.toStdString() << '\n';
}

bool IsOption(const std::string& arg) {
    return !arg.empty() && arg[0] == '-';
}

// The headless check needs no display, so it never starts the windowed program. Only a PDF
// needs Qt (its fonts and painting): on the offscreen platform, which needs no display either.
int RunCheckCommand(char* program, const std::vector<std::string>& args) {
    CheckOptions options;
    std::string error;
    if (!ParseCheckArguments({args.begin() + 1, args.end()}, options, error)) {
        std::cerr << "tallyview: " << error << '\n' << CheckUsageText;
        return CheckUsage;
    }
    if (options.PrintTo.empty()) return RunCheck(options, std::cout, std::cerr);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(QtMessagesForTheCheck);
    // Qt sees the program's name alone: a file name is never taken for one of its options.
    int qtArgc = 1;
    char* qtArgv[] = {program, nullptr};
    QGuiApplication app(qtArgc, qtArgv);
    return RunCheck(options, std::cout, std::cerr);
}

} // namespace

int RunCommandLine(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (!args.empty() && args[0] == "--check") return RunCheckCommand(argv[0], args);
    if (args.empty()) return RunDesktop(argc, argv, "", "");
    if (args.size() == 2 && !IsOption(args[0]) && !IsOption(args[1]))
        return RunDesktop(argc, argv, args[0], args[1]);
    std::cerr << DesktopUsageText << CheckUsageText;
    return CheckUsage;
}

} // namespace tv
