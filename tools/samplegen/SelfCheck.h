#pragma once
// The sample checked by the program's own rules: its transcription read by the program's
// reader without a question, its layout taken from the program's tables, and the distance
// between every two neighbouring entries equal to the printed lines the program counts.
#include "TranscriptionWriter.h"

#include <string>

namespace samplegen {

// Throws std::runtime_error naming the first disagreement.
void CheckWithModel(const KindSpec& kind, const PageLayout& layout, const PageGeometry& geometry,
                    const Transcription& transcription, const std::string& transcriptionPath);

} // namespace samplegen
