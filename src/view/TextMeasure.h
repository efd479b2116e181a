#pragma once
// The width of a text in the box's font, for fitting the record box text.
#include <cstdint>
#include <string>

namespace tv {

class TextMeasure {
  public:
    virtual ~TextMeasure() = default;
    // Width in twips of Windows-1252 text in the font at the point size.
    virtual int32_t TextWidth(const std::string& text, const std::string& fontName,
                              int pointSize) const = 0;
    // Height in twips of one line of the font at the point size.
    virtual int32_t LineHeight(const std::string& fontName, int pointSize) const = 0;
};

} // namespace tv
