#include "Slips.h"

#include "SampleRandom.h"

#include <cctype>
#include <fstream>
#include <stdexcept>

namespace samplegen {

namespace {

std::vector<std::string> Split(const std::string& line) {
    std::vector<std::string> fields;
    std::string field;
    for (const char c : line) {
        if (c == ',') {
            fields.push_back(field);
            field.clear();
        } else {
            field += c;
        }
    }
    fields.push_back(field);
    return fields;
}

std::string Join(const std::vector<std::string>& fields) {
    std::string line;
    for (std::size_t k = 0; k < fields.size(); ++k)
        line += (k == 0 ? "" : ",") + fields[k];
    return line;
}

bool Letter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

// Letters a slip of the finger gives, none of them a shape the eye or a reader takes for
// another (no i, l, o, m, n, r).
char OtherLetter(char was, SampleRandom& rng) {
    static const std::string pool = "abcdefghkpstuwy";
    for (;;) {
        char c = pool[static_cast<std::size_t>(rng.Between(0, static_cast<int>(pool.size()) - 1))];
        if (std::isupper(static_cast<unsigned char>(was)) != 0)
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        if (std::tolower(static_cast<unsigned char>(c)) !=
            std::tolower(static_cast<unsigned char>(was)))
            return c;
    }
}

// A slip in the letters of a word; false when the word has too few letters for it.
bool SlipLetters(std::string& text, int how, SampleRandom& rng, std::string& kind) {
    std::vector<std::size_t> letters;
    for (std::size_t k = 0; k < text.size(); ++k)
        if (Letter(text[k])) letters.push_back(k);
    if (letters.size() < 4) return false;
    // Not the first letter: a volunteer's eye keeps that.
    const std::size_t at =
        letters[static_cast<std::size_t>(rng.Between(1, static_cast<int>(letters.size()) - 2))];
    switch (how) {
    case 0:
        text[at] = OtherLetter(text[at], rng);
        kind = "changed";
        return true;
    case 1:
        text.erase(at, 1);
        kind = "dropped";
        return true;
    case 2:
        text.insert(at, 1, text[at]);
        kind = "doubled";
        return true;
    default:
        if (at + 1 >= text.size() || !Letter(text[at + 1]) ||
            std::tolower(static_cast<unsigned char>(text[at])) ==
                std::tolower(static_cast<unsigned char>(text[at + 1])))
            return false;
        std::swap(text[at], text[at + 1]);
        kind = "swapped";
        return true;
    }
}

// A page number one digit out, or a volume with another number.
bool SlipNumber(std::string& text, SampleRandom& rng, std::string& kind) {
    for (std::size_t k = text.size(); k-- > 0;) {
        if (std::isdigit(static_cast<unsigned char>(text[k])) == 0) continue;
        const char was = text[k];
        if (was == '0' || was == '1') continue; // read as O and l alike
        char c = was;
        while (c == was)
            c = static_cast<char>('0' + rng.Between(2, 9));
        text[k] = c;
        kind = "number";
        return true;
    }
    return false;
}

} // namespace

std::vector<Slip> MakeSlips(const KindSpec& kind, Transcription& transcription) {
    SampleRandom rng(kind.Seed * 7919U + 17U);
    std::vector<Slip> slips;
    const std::size_t n = transcription.RecordLines.size();
    const int extra = kind.HasExtra() ? 1 : 0;
    const int district = 3 + extra;
    for (std::size_t r = 1; r < n; ++r) {
        if (rng.Between(1, 7) != 1) continue;
        const int line = transcription.RecordLines[r];
        std::string& text = transcription.Lines[static_cast<std::size_t>(line - 1)];
        std::vector<std::string> fields = Split(text);
        std::string what;
        const int choice = rng.Between(0, 9);
        if (choice == 9) {
            // The record's fields typed from the line above.
            const int above = transcription.RecordLines[r - 1];
            const std::vector<std::string> before =
                Split(transcription.Lines[static_cast<std::size_t>(above - 1)]);
            if (before.size() != fields.size()) continue;
            bool any = false;
            for (std::size_t f = 0; f < fields.size(); ++f)
                if (before[f] != fields[f]) {
                    slips.push_back({line, static_cast<int>(f + 1), "above"});
                    any = true;
                }
            if (any) text = Join(before);
            continue;
        }
        int field = 0;
        if (choice <= 6) {
            field = choice <= 1 ? 1 : choice <= 4 ? 2 : district;
            std::string& target = fields[static_cast<std::size_t>(field - 1)];
            if (!SlipLetters(target, rng.Between(0, 3), rng, what)) continue;
        } else {
            field = choice == 7 ? district + 1 : district + 2;
            if (!SlipNumber(fields[static_cast<std::size_t>(field - 1)], rng, what)) continue;
        }
        text = Join(fields);
        slips.push_back({line, field, what});
    }
    return slips;
}

void WriteSlips(const std::vector<Slip>& slips, const std::string& path) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    for (const Slip& s : slips)
        out << s.Line << ' ' << s.Field << ' ' << s.Kind << '\n';
    out.close();
    if (!out) throw std::runtime_error("cannot write " + path);
}

} // namespace samplegen
