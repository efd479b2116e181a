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

std::vector<int> Pairs(const std::string& folded) {
    std::vector<int> p;
    if (folded.size() < 2) return p;
    p.reserve(folded.size() - 1);
    for (std::size_t k = 0; k + 1 < folded.size(); ++k)
        p.push_back(static_cast<unsigned char>(folded[k]) * 256 +
                    static_cast<unsigned char>(folded[k + 1]));
    std::sort(p.begin(), p.end());
    return p;
}

double Likeness(const std::vector<int>& a, const std::vector<int>& b) {
    if (a.empty() || b.empty()) return 0.0;
    std::size_t i = 0;
    std::size_t j = 0;
    int shared = 0;
    while (i < a.size() && j < b.size()) {
        if (a[i] == b[j]) {
            ++shared;
            ++i;
            ++j;
        } else if (a[i] < b[j]) {
            ++i;
        } else {
            ++j;
        }
    }
    return 2.0 * shared / static_cast<double>(a.size() + b.size());
}

double Likeness(const std::string& a, const std::string& b) {
    if (a.size() < 2 || b.size() < 2) return a == b && !a.empty() ? 1.0 : 0.0;
    return Likeness(Pairs(a), Pairs(b));
}

} // namespace tv
