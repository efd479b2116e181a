#include "core/ControlPictures.h"

namespace tv {

std::string ShowControlCharacters(std::string_view utf8, bool keepLineFeeds) {
    std::string out;
    out.reserve(utf8.size());
    for (char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte >= 0x20 && byte != 0x7F) || (keepLineFeeds && c == '\n')) {
            out += c; // a byte of a longer character is never below 0x80
            continue;
        }
        // U+2400 + code, and U+2421 for DEL: three bytes of UTF-8, E2 90 xx.
        const unsigned picture = byte == 0x7F ? 0x21 : byte;
        out += '\xE2';
        out += '\x90';
        out += static_cast<char>(0x80 + picture);
    }
    return out;
}

} // namespace tv
