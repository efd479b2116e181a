#include "transcription/TextConversion.h"

#include "core/Text.h"
#include "transcription/CodePageDecoder.h"

#include <string_view>

namespace tv {

namespace {

// One character per Windows-1252 code 0..255. Kept as it is: the small eth folds to "o", the
// thorns, the sharp s and the multiplication and division signs to spaces.
constexpr std::string_view FoldingTable =
    "                                                "                 // 0..47
    "0123456789      "                                                 // 48..63
    " ABCDEFGHIJKLMNOPQRSTUVWXYZ     "                                 // 64..95
    " abcdefghijklmnopqrstuvwxyz     "                                 // 96..127
    "                                                                " // 128..191
    "AAAAAAACEEEEIIIIDNOOOOO OUUUUY  "                                 // 192..223
    "aaaaaaaceeeeiiiionooooo ouuuuy y";                                // 224..255
static_assert(FoldingTable.size() == 256);

constexpr int32_t Windows1252 = 1252;

} // namespace

bool IsValidCodePage(int32_t codePage) {
    return CodePageDecoder(codePage).Valid();
}

std::string ConvToAnsi(std::string line, int32_t codePage) {
    if (codePage == 0 || codePage == Windows1252 || line.empty()) return line;
    std::u32string characters = CodePageDecoder(codePage).Decode(line);
    if (characters.empty()) return line;
    std::string out;
    out.reserve(characters.size());
    for (char32_t ch : characters) {
        int byte = UnicodeToCp1252(ch);
        out += byte < 0 ? Bullet : static_cast<char>(byte);
    }
    return out;
}

std::string ConvTo7BitASCII(const std::string& text) {
    std::string out(text.size(), ' ');
    for (std::size_t i = 0; i < text.size(); ++i)
        out[i] = FoldingTable[static_cast<unsigned char>(text[i])];
    return out;
}

} // namespace tv
