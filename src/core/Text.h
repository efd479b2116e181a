#pragma once
// Text in the model is Windows-1252 ("ANSI"), one byte per character. These helpers do the
// string work that the documented rules are written in, and the conversion to and from UTF-8
// at the edges (terminal, file names, the desktop).
#include <cstdint>
#include <string>
#include <string_view>

namespace tv {

inline constexpr char CR = '\r';
inline constexpr char LF = '\n';
inline constexpr const char* CRLF = "\r\n";

// Each Windows-1252 byte as its Unicode character; the five undefined bytes (0x81, 0x8D, 0x8F,
// 0x90, 0x9D) as the control characters of the same number.
std::string Cp1252ToUtf8(std::string_view ansi);
char32_t Cp1252ToUnicode(unsigned char byte);
// The Windows-1252 byte of a Unicode character, or -1 when it has none.
int UnicodeToCp1252(char32_t ch);
// UTF-8 to Windows-1252; a character Windows-1252 lacks becomes the bullet (149), and a byte
// that is not valid UTF-8 is taken as the Windows-1252 character of that byte.
std::string Utf8ToCp1252(std::string_view utf8);

inline constexpr char Bullet = static_cast<char>(149);

std::string Trim(std::string_view text);      // leading and trailing spaces
std::string TrimRight(std::string_view text); // trailing spaces
std::string UCase(std::string_view text);     // ASCII letters
std::string LCase(std::string_view text);     // ASCII letters
bool StartsWith(std::string_view text, std::string_view prefix);
// The same for a one-character prefix, made inline: the reader tests every line with it.
inline bool StartsWith(std::string_view text, char first) {
    return !text.empty() && text.front() == first;
}
// The first n characters (all of them when shorter).
std::string Left(std::string_view text, std::size_t n);
// The last n characters (all of them when shorter).
std::string Right(std::string_view text, std::size_t n);
// Text then spaces, cut to width: the padding of the record box and the reader.
std::string PadRight(std::string_view text, std::size_t width);
// Spaces then text, keeping the rightmost width characters.
std::string AlignRight(std::string_view text, std::size_t width);
// A number right-aligned in width characters; only the rightmost width characters are kept.
std::string AlignRight(long long number, std::size_t width);
// Replaces every CR LF, CR or LF by "\n" (for messages shown on a terminal).
std::string UnixLineEnds(std::string_view text);
// The place of a path's last folder separator, "/" or "\" alike, npos when it has none: the one
// rule by which the settings store a file's name and folder and the scan history matches it.
std::size_t LastFolderSeparator(std::string_view path);
// The part of a path after its last folder separator, the whole path without one.
std::string BareFileName(std::string_view path);

} // namespace tv
