#pragma once
// Reads a text file as lines in one pass, keeping only the start of each line and its length,
// so that a file of one huge line or of binary bytes costs no memory.
#include "transcription/TextEncoding.h"

#include <bit>
#include <cstddef>
#include <string>
#include <vector>

namespace tv {

struct RawLine {
    std::string Head;       // the first HeadBytes bytes of the line, as read
    std::size_t Length = 0; // the line's true length in bytes, without its line end
};

struct RawLines {
    std::vector<RawLine> Lines; // at most the maxLines asked for
    bool MoreLines = false;     // a further line starts after them (it was not read)
    TextEncoding Encoding = TextEncoding::Plain; // as the first bytes show it
};

inline constexpr std::size_t HeadBytes = 201;

// The most bytes a transcription can be. The reader keeps at most HeadBytes of a line; the same
// characters written four bytes each (UTF-32, the widest a text file comes in) take 804, room
// for a line that a transcriber's program could write is that rounded up to 1024, and sixteen
// times over for margin: 16384 bytes a line, 1000 lines. A file longer than that cannot be a
// transcription, whatever it holds: a sparse or endless file, a disk image, a line without end.
inline constexpr std::size_t MaxLineRoom = 16 * std::bit_ceil(4 * HeadBytes);
inline constexpr std::size_t MaxTranscriptionBytes = 1000 * MaxLineRoom;
static_assert(MaxTranscriptionBytes == 16384000);

// The reason given when a file is longer than MaxTranscriptionBytes.
inline constexpr const char* TooLongReason =
    "The file is longer than 16384000 bytes, far more than a transcription can hold";

// The lines of the file at path, read-only and in binary. A line ends at CR LF, at LF or at CR;
// a last line without a line end counts; the end of the file after a line end adds no line. A
// UTF-8 byte-order mark at the start is skipped, so that the first line reads as it was typed;
// every other byte is kept as it is.
// Throws FileError with the system's reason when the file cannot be opened or read, and with
// TooLongReason when the maxLines lines run past MaxTranscriptionBytes: no more than
// MaxTranscriptionBytes + 1 bytes are ever read. Room for maxLines lines is made at the
// start, so maxLines is a real limit, not "any number".
RawLines ReadLines(const std::string& path, std::size_t maxLines);

} // namespace tv
