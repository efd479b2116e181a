#include "app/CommandFiles.h"

#include "core/QtPlatform.h"
#include "core/Text.h"
#include "transcription/ReadTranscription.h"

#include <QImageReader>

namespace tv {

Answer StandardErrorPrompts::Ask(const Prompt& prompt) {
    err_ << Cp1252ToUtf8(UnixLineEnds(prompt.Text)) << '\n';
    return prompt.Choice == Buttons::Ok || prompt.Choice == Buttons::OkCancel ? Answer::Ok
                                                                              : Answer::Yes;
}

int DecodeCommandScan(const std::vector<std::string>& args, const std::string& option,
                      const char* usage, std::ostream& err, DecodedScan& scan) {
    if (args.size() != 2) {
        err << "tallyview: --" << option << " takes a scan and a transcription\n" << usage;
        return WrongCommandLine;
    }
    const std::string& image = args[0];
    // As the view reads a scan: a large scan exceeds Qt's default limit.
    QImageReader::setAllocationLimit(AllocationLimitMegabytes);
    scan = DecodeScan(PathToQString(image));
    if (scan.ErrorCode != LoadOk) {
        err << "tallyview: cannot read " << image << ": error " << scan.ErrorCode << '\n';
        return Unreadable;
    }
    return 0;
}

int ReadCommandTranscription(const std::string& image, const std::string& transcription,
                             Prompts& prompts, std::ostream& err, RecordTable& table,
                             ScanType& scanType, ColumnTopLines& columnTops, ScanHistory& history) {
    std::string file = transcription;
    try {
        ReaderContext context{table, scanType, columnTops, image, prompts};
        ReadTranscription(file, context);
        if (file == QuitToken) {
            err << "tallyview: cannot read " << transcription << ": refused\n";
            return Unreadable;
        }
        ChooseScanType(table, scanType, columnTops, image, history);
    } catch (const FileError& e) {
        err << "tallyview: cannot read " << e.Path << ": " << e.Reason << '\n';
        return Unreadable;
    } catch (const RunTimeError& e) {
        err << "tallyview: " << transcription << ": run-time error " << e.Number << ": " << e.what()
            << '\n';
        return Unreadable;
    }
    return 0;
}

} // namespace tv
