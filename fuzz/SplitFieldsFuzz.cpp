// SplitFields on any line: fields are cut to their limits, a line without quotes splits at its
// commas, and only an unclosed quote is told to the user.
#include "FuzzSupport.h"
#include "support/FakePrompts.h"
#include "transcription/SplitFields.h"

#include <string>
#include <vector>

namespace {

std::vector<std::string> CommaPieces(const std::string& line) {
    std::vector<std::string> pieces(1);
    for (char c : line) {
        if (c == ',')
            pieces.emplace_back();
        else
            pieces.back() += c;
    }
    return pieces;
}

// A line without quotes, of at most 20 pieces each shorter than 50 characters, is split exactly
// at its commas.
void CheckPlainLine(const std::string& line, const tv::Fields& fields) {
    if (line.find('"') != std::string::npos) return;
    const std::vector<std::string> pieces = CommaPieces(line);
    if (pieces.size() > tv::MaxFields) return;
    for (const std::string& piece : pieces)
        if (piece.size() >= 50) return;
    for (int k = 1; k <= tv::MaxFields; ++k) {
        const std::size_t index = static_cast<std::size_t>(k - 1);
        const std::string expected = index < pieces.size() ? pieces[index] : "";
        tv::fuzz::Require(fields[k] == expected, "a plain line splits at its commas");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string line(reinterpret_cast<const char*>(data), size);
    tv::test::FakePrompts prompts;
    tv::Fields fields;
    tv::SplitFields(line, fields, 7, prompts);
    for (int k = 1; k <= tv::MaxFields; ++k)
        tv::fuzz::Require(fields[k].size() <= 51 ||
                              (fields[k].front() == '"' && line.ends_with(fields[k])),
                          "a field is at most 51 characters unless its quote is unclosed");
    tv::fuzz::Require(prompts.Shown.size() <= 1, "at most one message for a line");
    if (line.find('"') == std::string::npos)
        tv::fuzz::Require(prompts.Shown.empty(), "a line without quotes gives no message");
    CheckPlainLine(line, fields);
    return 0;
}
