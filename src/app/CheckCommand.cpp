#include "app/CheckCommand.h"

#include "core/Clock.h"
#include "core/ControlPictures.h"
#include "core/QtPlatform.h"
#include "core/ReportTarget.h"
#include "core/Text.h"
#include "stats/Form3Print.h"
#include "stats/Statistics.h"
#include "transcription/ReadTranscription.h"
#include "transcription/ScanMatch.h"

#include <algorithm>
#include <optional>

namespace tv {

namespace {

// Messages and questions go to standard error; questions take the answer of --answer.
class TerminalPrompts : public Prompts {
  public:
    TerminalPrompts(std::ostream& err, bool answerYes) : err_(err), answerYes_(answerYes) {}

    Answer Ask(const Prompt& prompt) override {
        err_ << ShowControlCharacters(Cp1252ToUtf8(UnixLineEnds(prompt.Text)), true) << '\n';
        switch (prompt.Choice) {
        case Buttons::Ok:
            return Answer::Ok;
        case Buttons::OkCancel:
            return answerYes_ ? Answer::Ok : Answer::Cancel;
        case Buttons::YesNo:
        case Buttons::YesNoCancel:
            break;
        }
        return answerYes_ ? Answer::Yes : Answer::No;
    }

  private:
    std::ostream& err_;
    bool answerYes_;
};

// The report of one file on out; its lines are added to printed for the PDF file.
int CheckOneFile(const CheckOptions& options, const std::string& file, std::ostream& out,
                 std::ostream& err, std::vector<ReportLine>& printed) {
    TerminalPrompts prompts(err, options.AnswerYes);
    RecordTable table;
    ScanType scan;
    ColumnTopLines columnTops;
    ScanHistory history;
    SetScanCurrent(options.Scan, history);

    std::string fileName = file;
    ReaderContext context{table, scan, columnTops, options.Scan, prompts};
    try {
        ReadTranscription(fileName, context);
        if (fileName == QuitToken) return CheckRefused;
        if (!options.Scan.empty()) ChooseScanType(table, scan, columnTops, options.Scan, history);
    } catch (const FileError& e) {
        err << "tallyview: cannot read " << e.Path << ": " << e.Reason << '\n';
        return CheckUnreadable;
    } catch (const RunTimeError& e) {
        // Refused in the words a reload uses, naming the line.
        err << "tallyview: " << file << ": " << RefusalReason(e) << '\n';
        return CheckRefused;
    }

    CheckInputs inputs{table, scan.ScanTypeCode, Utf8ToCp1252(options.Scan), Utf8ToCp1252(file)};
    CheckIterator iterator;
    std::string description = ScanDescription(table);
    for (const ReportLine& line :
         ReportLines(options.AllRecords, description, iterator, inputs, SystemClock().Now())) {
        // A line of the file may hold any byte: control bytes are shown, never sent as they are.
        out << ShowControlCharacters(Cp1252ToUtf8(line.Text)) << '\n';
        printed.push_back(line);
    }
    return ReportHasFindings(iterator, inputs) ? CheckFindings : CheckClean;
}

// An option and the value written into it after "=", as in "--print-to=report.pdf".
struct OptionArgument {
    std::string Name;
    std::optional<std::string> Value;
};

OptionArgument SplitOption(const std::string& arg) {
    const std::size_t equals = arg.find('=');
    if (!arg.starts_with("--") || equals == std::string::npos) return {arg, std::nullopt};
    return {arg.substr(0, equals), arg.substr(equals + 1)};
}

// One of the options that take a value.
bool SetOption(const std::string& name, const std::string& value, CheckOptions& options,
               std::string& error) {
    if (name == "--scan") {
        options.Scan = value;
    } else if (name == "--print-to") {
        // An empty name would mean no PDF file at all, silently: the command line is wrong.
        if (value.empty()) {
            error = "--print-to needs a file name";
            return false;
        }
        options.PrintTo = value;
    } else if (value == "yes" || value == "no") {
        options.AnswerYes = value == "yes";
    } else {
        error = "--answer takes yes or no, not " + value;
        return false;
    }
    return true;
}

} // namespace

// The wordings of GNU getopt, which users of the command line know from other programs.
std::string UnrecognizedOption(const std::string& arg) {
    return "unrecognized option '" + arg + "'";
}

std::string RequiresAnArgument(const std::string& option) {
    return "option '" + option + "' requires an argument";
}

bool ParseCheckArguments(const std::vector<std::string>& args, CheckOptions& options,
                         std::string& error) {
    bool filesOnly = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (filesOnly || a.empty() || a[0] != '-' || a == "-") {
            options.Files.push_back(a);
            continue;
        }
        if (a == "--") {
            filesOnly = true;
            continue;
        }
        const auto [name, inlineValue] = SplitOption(a);
        if (name == "--all-records") {
            if (inlineValue) {
                error = "option '--all-records' doesn't allow an argument";
                return false;
            }
            options.AllRecords = true;
            continue;
        }
        if (name != "--scan" && name != "--answer" && name != "--print-to") {
            error = UnrecognizedOption(a);
            return false;
        }
        if (!inlineValue && i + 1 >= args.size()) {
            error = RequiresAnArgument(name);
            return false;
        }
        if (!SetOption(name, inlineValue ? *inlineValue : args[++i], options, error)) return false;
    }
    if (options.Files.empty()) {
        error = "no transcription file given";
        return false;
    }
    return true;
}

int RunCheck(const CheckOptions& options, std::ostream& out, std::ostream& err) {
    if (!options.PrintTo.empty()) {
        std::vector<std::string> inputs = options.Files;
        inputs.push_back(options.Scan);
        if (const std::optional<std::string> input = InputAtTarget(options.PrintTo, inputs)) {
            err << "tallyview: --print-to " << options.PrintTo << " is the file " << *input
                << ", which Tallyview only reads\n";
            return CheckUsage;
        }
    }
    int status = CheckClean;
    std::vector<ReportLine> printed;
    for (const std::string& file : options.Files) {
        status = std::max(status, CheckOneFile(options, file, out, err, printed));
        out.flush();
    }
    // No report, no file: every file was refused or could not be read.
    if (options.PrintTo.empty() || printed.empty()) return status;
    if (const std::string failure = PrintReportToPdf(printed, PathToQString(options.PrintTo));
        !failure.empty()) {
        err << "tallyview: cannot write the report to " << options.PrintTo << ": " << failure
            << '\n';
        status = std::max<int>(status, CheckUnreadable);
    }
    return status;
}

} // namespace tv
