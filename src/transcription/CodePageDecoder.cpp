#include "transcription/CodePageDecoder.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <iconv.h>

namespace tv {

namespace {

constexpr std::size_t Failed = static_cast<std::size_t>(-1);
constexpr char32_t Replacement = U'\uFFFD';

iconv_t Handle(void* handle) {
    return static_cast<iconv_t>(handle);
}

// Appends the characters of little-endian UTF-32 bytes.
void AppendUtf32(std::u32string& out, const char* bytes, std::size_t size) {
    for (std::size_t i = 0; i + 4 <= size; i += 4) {
        char32_t ch = 0;
        for (std::size_t b = 4; b-- > 0;)
            ch = (ch << 8) | static_cast<unsigned char>(bytes[i + b]);
        out += ch;
    }
}

// Writes what a code page that combines characters still holds at the end of the input.
void Flush(iconv_t cd, std::u32string& out) {
    std::array<char, 64> buffer{};
    char* outPtr = buffer.data();
    std::size_t outLeft = buffer.size();
    iconv(cd, nullptr, nullptr, &outPtr, &outLeft);
    AppendUtf32(out, buffer.data(), static_cast<std::size_t>(outPtr - buffer.data()));
}

} // namespace

CodePageDecoder::CodePageDecoder(int32_t codePage)
    : handle_(iconv_open("UTF-32LE", ("CP" + std::to_string(codePage)).c_str())) {}

CodePageDecoder::~CodePageDecoder() {
    if (Valid()) iconv_close(Handle(handle_));
}

bool CodePageDecoder::Valid() const {
    // iconv_open reports failure as the handle (iconv_t)-1.
    return reinterpret_cast<std::intptr_t>(handle_) != -1;
}

std::u32string CodePageDecoder::Decode(std::string_view bytes) {
    std::u32string out;
    if (!Valid()) return out;
    iconv_t cd = Handle(handle_);
    iconv(cd, nullptr, nullptr, nullptr, nullptr);
    char* in = const_cast<char*>(bytes.data());
    std::size_t inLeft = bytes.size();
    std::array<char, 1024> buffer{};
    while (inLeft > 0) {
        char* outPtr = buffer.data();
        std::size_t outLeft = buffer.size();
        std::size_t result = iconv(cd, &in, &inLeft, &outPtr, &outLeft);
        int error = errno;
        AppendUtf32(out, buffer.data(), static_cast<std::size_t>(outPtr - buffer.data()));
        if (result == Failed && error != E2BIG) {
            // A byte the code page does not define, or a sequence cut off by the line's end.
            out += Replacement;
            ++in;
            --inLeft;
            iconv(cd, nullptr, nullptr, nullptr, nullptr);
        }
    }
    Flush(cd, out);
    return out;
}

} // namespace tv
