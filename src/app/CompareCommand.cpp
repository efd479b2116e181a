#include "app/CompareCommand.h"

#include "core/QtPlatform.h"
#include "core/Text.h"
#include "layout/ScanType.h"
#include "linefind/FindPrintedLines.h"
#include "reading/CompareRecords.h"
#include "session/ScanHistory.h"
#include "transcription/ReadTranscription.h"
#include "view/ImageViewDecode.h"
#include "view/QtLineFinder.h"
#include "view/QtScanReading.h"

#include <QImageReader>

#include <thread>

namespace tv {

namespace {

// Messages go to standard error; every question is answered as its default suggests, yes.
class ComparePrompts : public Prompts {
  public:
    explicit ComparePrompts(std::ostream& err) : err_(err) {}
    Answer Ask(const Prompt& prompt) override {
        err_ << Cp1252ToUtf8(UnixLineEnds(prompt.Text)) << '\n';
        return prompt.Choice == Buttons::Ok || prompt.Choice == Buttons::OkCancel ? Answer::Ok
                                                                                  : Answer::Yes;
    }

  private:
    std::ostream& err_;
};

} // namespace

int RunCompare(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.size() != 2) {
        err << "tallyview: --compare takes a scan and a transcription\n" << CompareUsageText;
        return 64;
    }
    const std::string& image = args[0];
    QImageReader::setAllocationLimit(AllocationLimitMegabytes);
    const DecodedScan scan = DecodeScan(PathToQString(image));
    if (scan.ErrorCode != LoadOk) {
        err << "tallyview: cannot read " << image << ": error " << scan.ErrorCode << '\n';
        return 3;
    }
    ComparePrompts prompts(err);
    RecordTable table;
    ScanType scanType;
    ColumnTopLines columnTops;
    ScanHistory history;
    std::string file = args[1];
    try {
        ReaderContext context{table, scanType, columnTops, image, prompts};
        ReadTranscription(file, context);
        if (file == QuitToken) {
            err << "tallyview: cannot read " << args[1] << ": refused\n";
            return 3;
        }
        ChooseScanType(table, scanType, columnTops, image, history);
    } catch (const FileError& e) {
        err << "tallyview: cannot read " << e.Path << ": " << e.Reason << '\n';
        return 3;
    } catch (const RunTimeError& e) {
        err << "tallyview: " << args[1] << ": run-time error " << e.Number << ": " << e.what()
            << '\n';
        return 3;
    }
    const QImage& pixels = scan.Pristine;
    const PrintedLines lines = FindPrintedLines(
        GreyRowsOf(pixels), ColumnsToFind(scanType, pixels.width(), pixels.height()));
    ReadOptions options;
    options.Threads =
        static_cast<int>(std::max(1U, std::min(2U, std::thread::hardware_concurrency())));
    const ScanReading reading = ReadScan(pixels, lines, options);
    const std::vector<Disagreement> found = FindDisagreements(table, scanType, lines, reading);
    for (const Disagreement& d : found)
        out << d.Line << '\t' << d.Field << '\t' << Cp1252ToUtf8(d.Transcribed) << '\t'
            << Cp1252ToUtf8(d.Read) << '\n';
    return found.empty() ? 0 : 1;
}

} // namespace tv
