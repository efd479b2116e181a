#pragma once
// The scan and the transcription of a session when they come without the open-file dialog:
// dropped on a window or named on the command line. A file is taken by its kind, which its
// extension tells, whatever order the files come in.
#include "session/Session.h"

#include <optional>
#include <string>
#include <vector>

namespace tv {

// A scan and a transcription, each "" when not given.
struct SessionFiles {
    std::string Scan;
    std::string Transcription;

    bool Empty() const { return Scan.empty() && Transcription.empty(); }
    bool operator==(const SessionFiles&) const = default;
};

// A scan for a file ending in .jpg, .jpe, .jpeg, .gif, .tif, .tiff, .png or .bmp; a
// transcription for .sca, .qrl or .bmd, in capitals or not; nothing for any other file.
std::optional<FileKind> KindOfFile(const std::string& path);

// Files dropped on a window: the first scan and the first transcription among them; files of
// no known kind are left out.
SessionFiles DroppedFiles(const std::vector<std::string>& paths);

// Files named on the command line. Each known kind takes its own place; a file of no known kind
// takes the first place still free, the scan's before the transcription's, so that
// "tallyview SCAN TRANSCRIPTION" opens any two files. Nothing when they do not fit the two
// places (more than two files, or two of one kind).
std::optional<SessionFiles> CommandLineFiles(const std::vector<std::string>& paths);

} // namespace tv
