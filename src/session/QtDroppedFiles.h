#pragma once
// The files of a drop on a window, taken as the scan and the transcription by their kind.
#include "session/SessionFiles.h"

class QMimeData;

namespace tv {

// The local files among the dropped data's URLs, sorted as DroppedFiles sorts paths.
SessionFiles DroppedFiles(const QMimeData& data);

} // namespace tv
