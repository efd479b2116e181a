#include "core/Text.h"

#include <algorithm>
#include <array>

namespace tv {

namespace {

// Unicode characters of the bytes 0x80..0x9F; 0 marks the five bytes Windows-1252 leaves undefined.
constexpr std::array<char32_t, 32> kHigh = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void AppendUtf8(std::string& out, char32_t ch) {
    if (ch < 0x80) {
        out += static_cast<char>(ch);
    } else if (ch < 0x800) {
        out += static_cast<char>(0xC0 | (ch >> 6));
        out += static_cast<char>(0x80 | (ch & 0x3F));
    } else if (ch < 0x10000) {
        out += static_cast<char>(0xE0 | (ch >> 12));
        out += static_cast<char>(0x80 | ((ch >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (ch & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (ch >> 18));
        out += static_cast<char>(0x80 | ((ch >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((ch >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (ch & 0x3F));
    }
}

// Decodes one UTF-8 sequence at pos; returns its length, or 0 when it is not valid UTF-8.
std::size_t DecodeUtf8(std::string_view s, std::size_t pos, char32_t& ch) {
    auto b = static_cast<unsigned char>(s[pos]);
    std::size_t len = 0;
    if (b < 0x80) {
        ch = b;
        return 1;
    }
    if ((b & 0xE0) == 0xC0) {
        len = 2;
        ch = b & 0x1F;
    } else if ((b & 0xF0) == 0xE0) {
        len = 3;
        ch = b & 0x0F;
    } else if ((b & 0xF8) == 0xF0) {
        len = 4;
        ch = b & 0x07;
    } else {
        return 0;
    }
    if (pos + len > s.size()) return 0;
    for (std::size_t i = 1; i < len; ++i) {
        auto c = static_cast<unsigned char>(s[pos + i]);
        if ((c & 0xC0) != 0x80) return 0;
        ch = (ch << 6) | (c & 0x3F);
    }
    static constexpr std::array<char32_t, 5> kMin = {0, 0, 0x80, 0x800, 0x10000};
    if (ch < kMin[len] || ch > 0x10FFFF || (ch >= 0xD800 && ch <= 0xDFFF)) return 0;
    return len;
}

} // namespace

char32_t Cp1252ToUnicode(unsigned char byte) {
    if (byte >= 0x80 && byte <= 0x9F) {
        char32_t ch = kHigh[byte - 0x80];
        return ch != 0 ? ch : byte;
    }
    return byte;
}

int UnicodeToCp1252(char32_t ch) {
    if (ch < 0x80 || (ch >= 0xA0 && ch <= 0xFF)) return static_cast<int>(ch);
    for (std::size_t i = 0; i < kHigh.size(); ++i)
        if (kHigh[i] == ch && ch != 0) return static_cast<int>(0x80 + i);
    return -1;
}

std::string Cp1252ToUtf8(std::string_view ansi) {
    std::string out;
    out.reserve(ansi.size() + ansi.size() / 4);
    for (char c : ansi)
        AppendUtf8(out, Cp1252ToUnicode(static_cast<unsigned char>(c)));
    return out;
}

std::string Utf8ToCp1252(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    std::size_t pos = 0;
    while (pos < utf8.size()) {
        char32_t ch = 0;
        std::size_t len = DecodeUtf8(utf8, pos, ch);
        if (len == 0) {
            out += utf8[pos];
            ++pos;
            continue;
        }
        int byte = UnicodeToCp1252(ch);
        out += byte < 0 ? Bullet : static_cast<char>(byte);
        pos += len;
    }
    return out;
}

std::string Trim(std::string_view text) {
    std::size_t b = text.find_first_not_of(' ');
    if (b == std::string_view::npos) return {};
    std::size_t e = text.find_last_not_of(' ');
    return std::string(text.substr(b, e - b + 1));
}

std::string TrimRight(std::string_view text) {
    std::size_t e = text.find_last_not_of(' ');
    if (e == std::string_view::npos) return {};
    return std::string(text.substr(0, e + 1));
}

std::string UCase(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return out;
}

std::string LCase(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return out;
}

bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

std::string Left(std::string_view text, std::size_t n) {
    return std::string(text.substr(0, n));
}

std::string Right(std::string_view text, std::size_t n) {
    return n >= text.size() ? std::string(text) : std::string(text.substr(text.size() - n));
}

std::string PadRight(std::string_view text, std::size_t width) {
    std::string out(text);
    out.resize(width, ' ');
    return out;
}

// The rightmost width characters of width spaces then text, made without building that string.
std::string AlignRight(std::string_view text, std::size_t width) {
    if (text.size() >= width) return std::string(text.substr(text.size() - width));
    std::string out(width - text.size(), ' ');
    out += text;
    return out;
}

std::string AlignRight(long long number, std::size_t width) {
    return AlignRight(std::to_string(number), width);
}

std::string UnixLineEnds(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r') {
            out += '\n';
            if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
        } else {
            out += text[i];
        }
    }
    return out;
}

std::size_t LastFolderSeparator(std::string_view path) {
    return path.find_last_of("/\\");
}

std::string BareFileName(std::string_view path) {
    const std::size_t p = LastFolderSeparator(path);
    return std::string(p == std::string_view::npos ? path : path.substr(p + 1));
}

} // namespace tv
