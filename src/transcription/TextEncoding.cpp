#include "transcription/TextEncoding.h"

namespace tv {

namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

bool Begins(std::string_view bytes, std::string_view start) {
    return bytes.substr(0, start.size()) == start;
}

// Whether byte i of bytes is NUL (false) or not (true), for each of the first four.
bool Pattern(std::string_view bytes, bool b0, bool b1, bool b2, bool b3) {
    return bytes.size() >= 4 && (bytes[0] != '\0') == b0 && (bytes[1] != '\0') == b1 &&
           (bytes[2] != '\0') == b2 && (bytes[3] != '\0') == b3;
}

} // namespace

TextEncoding DetectEncoding(std::string_view firstBytes) {
    using namespace std::string_view_literals;
    if (Begins(firstBytes, Utf8Mark)) return TextEncoding::Utf8Bom;
    // The UTF-32 marks first: the little-endian one begins as the UTF-16 one does.
    if (Begins(firstBytes, "\xFF\xFE\0\0"sv) || Begins(firstBytes, "\0\0\xFE\xFF"sv))
        return TextEncoding::Utf32;
    if (Begins(firstBytes, "\xFF\xFE"sv) || Begins(firstBytes, "\xFE\xFF"sv))
        return TextEncoding::Utf16;
    if (Pattern(firstBytes, true, false, false, false) ||
        Pattern(firstBytes, false, false, false, true))
        return TextEncoding::Utf32;
    if (Pattern(firstBytes, true, false, true, false) ||
        Pattern(firstBytes, false, true, false, true))
        return TextEncoding::Utf16;
    return TextEncoding::Plain;
}

std::size_t SkippedMarkBytes(TextEncoding encoding) {
    return encoding == TextEncoding::Utf8Bom ? Utf8Mark.size() : 0;
}

const char* EncodingReason(TextEncoding encoding) {
    switch (encoding) {
    case TextEncoding::Plain:
        break;
    case TextEncoding::Utf8Bom:
        return "The file begins with a UTF-8 byte-order mark, which was skipped";
    case TextEncoding::Utf16:
        return "The file is written in UTF-16, two bytes a character, not as 8-bit text";
    case TextEncoding::Utf32:
        return "The file is written in UTF-32, four bytes a character, not as 8-bit text";
    }
    return nullptr;
}

} // namespace tv
