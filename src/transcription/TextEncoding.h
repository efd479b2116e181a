#pragma once
// What the first bytes of a transcription say about how it was written. The transcription
// programs write 8-bit text in a Windows code page; a file saved again by another editor may
// begin with a byte-order mark or be in UTF-16 or UTF-32, whose bytes the reader's rules would
// silently take for something else.
#include <cstddef>
#include <string_view>

namespace tv {

enum class TextEncoding {
    Plain,   // 8-bit text, as the transcription programs write it
    Utf8Bom, // UTF-8 behind a byte-order mark, which the reader skips
    Utf16,   // two bytes a character, with or without a byte-order mark
    Utf32,   // four bytes a character, with or without a byte-order mark
};

// The encoding the file's first bytes (four, or all of a shorter file) show: a byte-order mark,
// or the NULs that the first character, a letter or a sign, has beside it in UTF-16 and UTF-32.
TextEncoding DetectEncoding(std::string_view firstBytes);

// The bytes of the mark that the reader skips: those of a UTF-8 byte-order mark, else none.
std::size_t SkippedMarkBytes(TextEncoding encoding);

// The reason of the "Suspect file " warning for a file in this encoding; nullptr for Plain.
const char* EncodingReason(TextEncoding encoding);

} // namespace tv
