#pragma once
// The files written beside a sample scan: the transcription a volunteer would have typed from
// it, and the positions of its printed lines.
#include "PageGeometry.h"
#include "PageShape.h"

#include <string>
#include <vector>

namespace samplegen {

struct Transcription {
    std::vector<std::string> Lines; // Windows-1252, without line ends
    std::vector<int> RecordLines;   // the file's line number (from 1) of each record
};

Transcription BuildTranscription(const KindSpec& kind, const PageLayout& layout);

// The lines with CR LF ends.
void WriteTranscription(const Transcription& transcription, const std::string& path);

// "# pitch", "# columns" and "# column" lines, then "<line> <column> <x> <y>" per record in
// scan pixels, x and y with two decimals.
// The positions on the scan as shaped (PageShape: curved, keystoned, larger).
void WritePositions(const KindSpec& kind, const PageLayout& layout, const PageGeometry& geometry,
                    const Transcription& transcription, const std::string& path,
                    const PageShape& shape = {});

} // namespace samplegen
