#include "reading/ReadText.h"

#include "transcription/TextConversion.h"

#include <algorithm>
#include <cctype>

namespace tv {

namespace {

// Shapes that print alike: the reader's commonest confusions made one character.
char Alike(char c) {
    switch (c) {
    case '1':
    case 'l':
    case 'i':
    case 'I':
        return 'I';
    case '0':
    case 'o':
        return 'O';
    case '5':
        return 'S';
    case '8':
        return 'B';
    default:
        return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
}

} // namespace

void AppendFolded(const std::string& text, int source, std::vector<FoldedChar>& out) {
    const std::string plain = ConvTo7BitASCII(text);
    const int n = static_cast<int>(plain.size());
    for (int k = 0; k < n; ++k) {
        const char c = plain[static_cast<std::size_t>(k)];
        if (c == ' ') continue;
        // rn printed close together reads as m, and m as rn.
        if (c == 'r' && k + 1 < n && plain[static_cast<std::size_t>(k + 1)] == 'n') {
            out.push_back({'M', source, k, k + 2});
            ++k;
            continue;
        }
        out.push_back({Alike(c), source, k, k + 1});
    }
}

std::string Folded(const std::string& text) {
    std::vector<FoldedChar> chars;
    AppendFolded(text, 0, chars);
    std::string s;
    s.reserve(chars.size());
    for (const FoldedChar& c : chars)
        s += c.Ch;
    return s;
}

double Likeness(const std::string& a, const std::string& b) {
    if (a.size() < 2 || b.size() < 2) return a == b && !a.empty() ? 1.0 : 0.0;
    auto pairs = [](const std::string& s) {
        std::vector<int> p;
        p.reserve(s.size());
        for (std::size_t k = 0; k + 1 < s.size(); ++k)
            p.push_back(static_cast<unsigned char>(s[k]) * 256 +
                        static_cast<unsigned char>(s[k + 1]));
        std::sort(p.begin(), p.end());
        return p;
    };
    const std::vector<int> pa = pairs(a);
    const std::vector<int> pb = pairs(b);
    std::size_t i = 0;
    std::size_t j = 0;
    int shared = 0;
    while (i < pa.size() && j < pb.size()) {
        if (pa[i] == pb[j]) {
            ++shared;
            ++i;
            ++j;
        } else if (pa[i] < pb[j]) {
            ++i;
        } else {
            ++j;
        }
    }
    return 2.0 * shared / static_cast<double>(pa.size() + pb.size());
}

} // namespace tv
