#pragma once
// Reads a text file as lines in one pass, keeping only the start of each line and its length,
// so that a file of one huge line or of binary bytes costs no memory.
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
};

inline constexpr std::size_t HeadBytes = 201;

// The lines of the file at path, read-only and in binary. A line ends at CR LF, at LF or at CR;
// a last line without a line end counts; the end of the file after a line end adds no line.
// Throws FileError with the system's reason when the file cannot be opened or read. Room for
// maxLines lines is made at the start, so maxLines is a real limit, not "any number".
RawLines ReadLines(const std::string& path, std::size_t maxLines);

} // namespace tv
