#pragma once
// The scan and the transcription of a command that reads both as the program does (no window,
// no settings): --locate and --compare. Messages go to standard error; a question is answered as
// its default suggests.
#include "core/Prompts.h"
#include "layout/ScanType.h"
#include "session/ScanHistory.h"
#include "transcription/RecordTable.h"
#include "view/ImageViewDecode.h"

#include <ostream>
#include <string>
#include <vector>

namespace tv {

class StandardErrorPrompts : public Prompts {
  public:
    explicit StandardErrorPrompts(std::ostream& err) : err_(err) {}
    Answer Ask(const Prompt& prompt) override;

  private:
    std::ostream& err_;
};

// The exit status of a command line that does not name a scan and a transcription.
inline constexpr int WrongCommandLine = 64;
// The exit status when a file cannot be read.
inline constexpr int Unreadable = 3;

// Checks that args are a scan and a transcription, and decodes the scan as the view does. 0 when
// it is decoded; else the exit status, with the reason (and for a wrong command line, usage)
// written to err.
int DecodeCommandScan(const std::vector<std::string>& args, const std::string& option,
                      const char* usage, std::ostream& err, DecodedScan& scan);

// Reads the transcription and chooses the scan's layout as the start does. 0 when read; else
// Unreadable, with the reason written to err.
int ReadCommandTranscription(const std::string& image, const std::string& transcription,
                             Prompts& prompts, std::ostream& err, RecordTable& table,
                             ScanType& scanType, ColumnTopLines& columnTops, ScanHistory& history);

} // namespace tv
