#include "app/CommandLine.h"

#include "app/CheckCommand.h"
#include "app/CompareCommand.h"
#include "app/DesktopApp.h"
#include "app/LocateCommand.h"
#include "core/QtPlatform.h"
#include "session/SessionFiles.h"

#include <QCommandLineParser>
#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <iostream>
#include <string>
#include <vector>

namespace tv {

namespace {

constexpr const char* DesktopUsageText = "Usage: tallyview [OPTIONS] [SCAN] [TRANSCRIPTION]\n";

constexpr const char* Description =
    "Checks a transcribed page of a births, marriages or deaths index against its scan.\n"
    "\n"
    "With no FILE, the start window leads through the four steps. A scan (JPG, JPE, JPEG, GIF,\n"
    "TIF, TIFF, PNG, BMP) and a transcription (QRL, SCA, BMD) named here, in any order, are\n"
    "taken in place of the open-file dialogs; with both, the four steps run at once.\n"
    "\n"
    "With --check, no window opens: each transcription FILE is read and its report written to\n"
    "standard output. The exit status is 0 when no report lists anything, 1 when a report\n"
    "lists a query, a warning or a flagged record, 2 when a file was refused, 3 when a file\n"
    "could not be read or the PDF file could not be written, 64 for a wrong command line.";

// The options that only the check command takes; they are listed in the help.
constexpr std::array<const char*, 4> CheckOnlyOptions = {"scan", "all-records", "answer",
                                                         "print-to"};

// Qt's own options for the windowed program, which the application object takes from the
// command line itself: with a value, then without.
constexpr std::array<const char*, 14> QtValueOptions = {
    "platform",    "platformpluginpath", "platformtheme", "plugin",  "qwindowgeometry",
    "qwindowicon", "qwindowtitle",       "session",       "display", "name",
    "style",       "stylesheet",         "geometry",      "title"};
constexpr std::array<const char*, 4> QtFlagOptions = {"reverse", "widgetcount", "nograb", "dograb"};

// GNU's form: the name and version, then the copyright and the licence.
std::string VersionText() {
    return "tallyview " + std::to_string(TALLYVIEW_VERSION_MAJOR) + "." +
           std::to_string(TALLYVIEW_VERSION_MINOR) + "." +
           std::to_string(TALLYVIEW_VERSION_REVISION) +
           "\n"
           "Released " TALLYVIEW_RELEASE_DATE ".\n"
           "Copyright (C) 2026 the Tallyview developers.\n"
           "License MIT (Expat): <https://opensource.org/licenses/MIT>.\n"
           "This is free software: you are free to change and redistribute it.\n"
           "There is NO WARRANTY, to the extent permitted by law.\n";
}

QCommandLineOption Hidden(const char* name, bool takesValue) {
    QCommandLineOption option(QString::fromLatin1(name), QString(),
                              takesValue ? QStringLiteral("value") : QString());
    option.setFlags(QCommandLineOption::HiddenFromHelp);
    return option;
}

void DescribeOptions(QCommandLineParser& parser) {
    // Qt's convention: its own options take one dash ("-platform offscreen").
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.setApplicationDescription(QString::fromLatin1(Description));
    parser.addOption({{"h", "help"}, "Displays this help."});
    parser.addOption({{"v", "version"}, "Displays the version."});
    parser.addOption({"check", "Checks the transcription FILEs without a window."});
    parser.addOption({"scan",
                      "With --check: the scan's file name, whose year, event and quarter are "
                      "checked against the file header.",
                      "IMAGE"});
    parser.addOption({"all-records", "With --check: the report lists every record."});
    parser.addOption(
        {"answer", "With --check: the answer to every question (yes by default).", "yes|no"});
    parser.addOption(
        {"print-to", "With --check: the report goes to this PDF file too.", "FILE.pdf"});
    parser.addOption({"locate",
                      "tallyview --locate IMAGE TRANSCRIPTION: without a window, finds the "
                      "printed lines of IMAGE and writes for each record of TRANSCRIPTION its "
                      "table line number and where the box lines up on it (X and Y in the "
                      "scan's pixels, or - when it cannot place the record)."});
    parser.addOption({"compare",
                      "tallyview --compare IMAGE TRANSCRIPTION: without a window, reads the "
                      "printed lines of IMAGE and writes each field of TRANSCRIPTION that "
                      "disagrees with them: table line number, field number, transcribed text "
                      "and the scan's reading, separated by tabs. Exit status 1 when any "
                      "disagrees."});
    for (const char* name : QtValueOptions)
        parser.addOption(Hidden(name, true));
    for (const char* name : QtFlagOptions)
        parser.addOption(Hidden(name, false));
    parser.addPositionalArgument("FILE",
                                 "The scan and the transcription to open; with --check, the "
                                 "transcriptions to check.",
                                 "[FILE...]");
}

int Usage(const std::string& error) {
    std::cerr << "tallyview: " << error << '\n'
              << DesktopUsageText << CheckUsageText << TryHelpText;
    return CheckUsage;
}

// Qt's parser words its errors its own way ("Unknown option 'x'."); they are told in the words
// the check command uses, with the option as the user typed it.
std::string ParseError(const QCommandLineParser& parser, const QStringList& arguments) {
    const QStringList unknown = parser.unknownOptionNames();
    if (!unknown.isEmpty()) {
        for (const QString& argument : arguments.mid(1)) {
            const QString name = argument.section('=', 0, 0);
            if (name == "--" + unknown.first() || name == "-" + unknown.first())
                return UnrecognizedOption(PathFromQString(argument));
        }
        return UnrecognizedOption("--" + PathFromQString(unknown.first()));
    }
    const QString error = parser.errorText();
    const QString missing = QStringLiteral("Missing value after '");
    if (error.startsWith(missing))
        return RequiresAnArgument(PathFromQString(error.mid(missing.size()).section('\'', 0, 0)));
    return PathFromQString(error);
}

// Qt's own notes and warnings (a runtime folder it had to choose, a painter that could not start)
// are not the check's messages: the check tells what failed in its own words. Only Qt's
// critical and fatal messages still reach standard error.
void QtMessagesForTheCheck(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::cerr << "tallyview: " << message.toStdString() << '\n';
}

// The headless check needs no display, so it never starts the windowed program. Only a PDF
// needs Qt (its fonts and painting): on the offscreen platform, which needs no display either.
int RunCheckCommand(char* program, const std::vector<std::string>& args) {
    CheckOptions options;
    std::string error;
    if (!ParseCheckArguments(args, options, error)) {
        std::cerr << "tallyview: " << error << '\n' << CheckUsageText << TryHelpText;
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

// The scan is decoded as the window decodes it, by Qt's image readers, which need an
// application object but no display.
int RunLocateCommand(char* program, const std::vector<std::string>& args) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(QtMessagesForTheCheck);
    int qtArgc = 1;
    char* qtArgv[] = {program, nullptr};
    QGuiApplication app(qtArgc, qtArgv);
    return RunLocate(args, std::cout, std::cerr);
}

// As --locate: the scan decoded by Qt's image readers without a display.
int RunCompareCommand(char* program, const std::vector<std::string>& args) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(QtMessagesForTheCheck);
    int qtArgc = 1;
    char* qtArgv[] = {program, nullptr};
    QGuiApplication app(qtArgc, qtArgv);
    return RunCompare(args, std::cout, std::cerr);
}

// The windowed program's command line is read before any window exists, so that --help,
// --version and a wrong command line need no display.
int RunDesktopCommand(int argc, char** argv) {
    QCommandLineParser parser;
    DescribeOptions(parser);
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    if (!parser.parse(arguments)) return Usage(ParseError(parser, arguments));
    if (parser.isSet(QStringLiteral("help"))) {
        // Without an application object Qt's first line cannot name the program: named here.
        QString help = parser.helpText();
        help.replace(0, help.indexOf('\n'), QStringLiteral("Usage: tallyview [OPTIONS] [FILE...]"));
        std::cout << help.toStdString();
        return 0;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        std::cout << VersionText();
        return 0;
    }
    for (const char* name : CheckOnlyOptions)
        if (parser.isSet(QString::fromLatin1(name)))
            return Usage("--" + std::string(name) + " is an option of --check");
    std::vector<std::string> paths;
    for (const QString& path : parser.positionalArguments())
        paths.push_back(PathFromQString(path));
    const std::optional<SessionFiles> files = CommandLineFiles(paths);
    if (!files) return Usage("give at most one scan and one transcription");
    return RunDesktop(argc, argv, files->Scan, files->Transcription);
}

} // namespace

int RunCommandLine(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    // --check anywhere before "--" makes the check command, which reads its own options.
    const auto optionsEnd = std::find(args.begin(), args.end(), "--");
    const auto check = std::find(args.begin(), optionsEnd, "--check");
    const auto locate = std::find(args.begin(), optionsEnd, "--locate");
    if (check == optionsEnd && locate != optionsEnd) {
        args.erase(locate);
        return RunLocateCommand(argv[0], args);
    }
    const auto compare = std::find(args.begin(), optionsEnd, "--compare");
    if (check == optionsEnd && compare != optionsEnd) {
        args.erase(compare);
        return RunCompareCommand(argv[0], args);
    }
    if (check == optionsEnd) return RunDesktopCommand(argc, argv);
    args.erase(check);
    return RunCheckCommand(argv[0], args);
}

} // namespace tv
