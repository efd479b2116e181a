#pragma once
// The platform's code-page service: bytes of a Windows code page to Unicode characters, through
// the C library's iconv on this platform.
#include <cstdint>
#include <string>
#include <string_view>

namespace tv {

class CodePageDecoder {
  public:
    explicit CodePageDecoder(int32_t codePage);
    ~CodePageDecoder();
    CodePageDecoder(const CodePageDecoder&) = delete;
    CodePageDecoder& operator=(const CodePageDecoder&) = delete;

    // False when the platform does not know the code page.
    bool Valid() const;
    // The characters of bytes; a byte that is not valid in the code page becomes U+FFFD.
    std::u32string Decode(std::string_view bytes);

  private:
    void* handle_;
};

} // namespace tv
