#pragma once
// Code-page conversion of transcription lines into Windows-1252, and the folding of names to
// plain letters for comparing them.
#include <cstdint>
#include <string>

namespace tv {

// True when the platform can convert from this Windows code page ("CP" + number to iconv).
bool IsValidCodePage(int32_t codePage);

// A line read from a file written in codePage, as Windows-1252; 0 returns the line unchanged
// (moved, not copied, when the caller gives it up). A character Windows-1252 lacks becomes the
// bullet (149), never a look-alike letter.
std::string ConvToAnsi(std::string line, int32_t codePage);

// Every character through the folding table: accents dropped, punctuation to spaces.
std::string ConvTo7BitASCII(const std::string& text);

} // namespace tv
