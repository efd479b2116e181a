#include "reading/CompareRecords.h"

#include "core/Text.h"
#include "reading/ReadText.h"
#include "transcription/SplitFields.h"
#include "transcription/TextConversion.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>
#include <map>

namespace tv {

namespace {

// Below this confidence (0..100) a read word is doubtful: a field that differs only there is
// not reported.
constexpr float DoubtfulBelow = 75.0F;

// The costs of matching records to read lines, in the units of unlikeness (0 alike, 1 nothing
// shared). A line no record stands for (a title, the column headings, a surname on a line of
// its own, a speck) is passed over for less than a record is; a record passed over (not read,
// or read beyond recognition) costs more than a poor match, so that only a line that shares
// almost nothing with the record is refused.
constexpr double PassLine = 0.45;
constexpr double PassRecord = 0.6;
constexpr double SecondLine = 0.1; // an entry carried over two printed lines
// A line that shares less than this with a record is not its line, whatever the order says:
// a record left without a line takes one only where the order leaves exactly one for it.
constexpr double MostUnlike = 0.55;

class SilentPrompts : public Prompts {
  public:
    Answer Ask(const Prompt& prompt) override {
        return prompt.Choice == Buttons::YesNo || prompt.Choice == Buttons::YesNoCancel
                   ? Answer::Yes
                   : Answer::Ok;
    }
};

struct RecordText {
    int16_t Line = 0;
    std::vector<std::string> Fields; // 1..n at [0..n-1]
    std::string Whole;               // folded, all fields
    std::string WithoutSurname;      // folded, fields 2 on
    bool Long = false;               // printed over two lines
    std::vector<int> WholePairs;
    std::vector<int> WithoutSurnamePairs;
};

struct LineText {
    const ReadLine* Line = nullptr;
    std::string Whole;    // folded
    bool Heading = false; // a surname on a line of its own
    std::vector<int> WholePairs;
};

// One printed entry as read: the words of one or two lines.
struct ReadEntry {
    std::vector<const ReadWord*> Words;
};

// A line that holds nothing but a surname: the heading of the entries below it in the layouts
// that print surnames on lines of their own.
bool SurnameOnly(const ReadLine& line) {
    if (line.Words.empty() || line.Words.size() > 2) return false;
    std::string folded;
    for (const ReadWord& w : line.Words)
        folded += Folded(w.Text);
    return folded.size() >= 2;
}

std::vector<RecordText> Records(const RecordTable& table, const ScanType& scan) {
    SilentPrompts silent;
    std::vector<RecordText> records;
    for (int16_t line = 1; line <= table.LineCount; ++line) {
        if (!table.IsRecord(line)) continue;
        Fields fields;
        SplitFields(table.LineText[line], fields, line, silent);
        RecordText r;
        r.Line = line;
        int last = 0;
        for (int f = 1; f <= MaxFields; ++f)
            if (!fields[f].empty()) last = f;
        for (int f = 1; f <= last; ++f) {
            r.Fields.push_back(fields[f]);
            const std::string folded = Folded(fields[f]);
            r.Whole += folded;
            if (f > 1) r.WithoutSurname += folded;
        }
        // An entry whose forenames or third field is too long for one printed line takes two.
        r.Long = static_cast<int>(table.Forenames[line].size()) >= scan.LongForenamesLen ||
                 (table.HasExtraField &&
                  static_cast<int>(table.ExtraField[line].size()) >= scan.LongExtraLen);
        r.WholePairs = Pairs(r.Whole);
        r.WithoutSurnamePairs = Pairs(r.WithoutSurname);
        records.push_back(std::move(r));
    }
    return records;
}

double Unlikeness(const RecordText& r, const std::vector<int>& read) {
    return 1.0 - std::max(Likeness(r.WholePairs, read), Likeness(r.WithoutSurnamePairs, read));
}

// Each record's read lines (-1: none), by the cheapest order-keeping pairing of records with
// lines: a record with one line, or with two for an entry carried over, or with none; a line
// with one record or with none.
std::vector<std::pair<int, int>> MatchLines(const std::vector<RecordText>& records,
                                            const std::vector<LineText>& lines) {
    const std::size_t nr = records.size();
    const std::size_t nl = lines.size();
    const double inf = std::numeric_limits<double>::infinity();
    enum Step : char { None, SkipLine, SkipRecord, One, Two };
    std::vector<double> cost((nr + 1) * (nl + 1), inf);
    std::vector<char> step((nr + 1) * (nl + 1), None);
    auto at = [nl](std::size_t i, std::size_t j) { return i * (nl + 1) + j; };
    cost[at(0, 0)] = 0.0;
    for (std::size_t i = 0; i <= nr; ++i) {
        for (std::size_t j = 0; j <= nl; ++j) {
            const double here = cost[at(i, j)];
            if (here == inf) continue;
            auto relax = [&](std::size_t i2, std::size_t j2, double c, Step s) {
                if (here + c < cost[at(i2, j2)]) {
                    cost[at(i2, j2)] = here + c;
                    step[at(i2, j2)] = s;
                }
            };
            if (j < nl) relax(i, j + 1, lines[j].Whole.empty() ? 0.0 : PassLine, SkipLine);
            if (i < nr) relax(i + 1, j, PassRecord, SkipRecord);
            if (i < nr && j < nl && !lines[j].Whole.empty()) {
                const double c = Unlikeness(records[i], lines[j].WholePairs);
                if (c <= MostUnlike) relax(i + 1, j + 1, c, One);
            }
            if (i < nr && records[i].Long && j + 1 < nl && !lines[j].Whole.empty() &&
                !lines[j + 1].Whole.empty()) {
                const double c = Unlikeness(records[i], Pairs(lines[j].Whole + lines[j + 1].Whole));
                if (c <= MostUnlike) relax(i + 1, j + 2, c + SecondLine, Two);
            }
        }
    }
    std::vector<std::pair<int, int>> matched(nr, {-1, -1});
    std::size_t i = nr;
    std::size_t j = nl;
    while (i > 0 || j > 0) {
        switch (step[at(i, j)]) {
        case SkipLine:
            --j;
            break;
        case SkipRecord:
            --i;
            break;
        case One:
            --i;
            --j;
            matched[i] = {static_cast<int>(j), -1};
            break;
        case Two:
            --i;
            j -= 2;
            matched[i] = {static_cast<int>(j), static_cast<int>(j + 1)};
            break;
        default:
            return matched;
        }
    }
    // A single record left out between two matched ones, where a single line with words is left
    // between their lines (not a surname alone where surnames have lines of their own): that
    // line is its line, however unlike (the record was typed from another line, say).
    for (std::size_t r = 0; r < nr; ++r) {
        if (matched[r].first >= 0) continue;
        const int before = r == 0 ? -1 : std::max(matched[r - 1].first, matched[r - 1].second);
        if (r > 0 && before < 0) continue;
        const int after = r + 1 < nr ? matched[r + 1].first : static_cast<int>(nl);
        if (after < 0) continue;
        int free = -1;
        int count = 0;
        for (int k = before + 1; k < after; ++k)
            if (!lines[static_cast<std::size_t>(k)].Whole.empty() &&
                !lines[static_cast<std::size_t>(k)].Heading) {
                free = k;
                ++count;
            }
        if (count == 1) matched[r] = {free, -1};
    }
    return matched;
}

// What the scan reads for one field: the words that went to it.
struct FieldReading {
    bool Printed = false; // some words of the line went to it
    float Confidence = 100.0F;
    std::string Read;
    double Offset = std::numeric_limits<double>::quiet_NaN(); // of its first word, as placed
};

// Edits (a letter changed, left out or added) from one folded text to the other.
int Edits(const std::string& a, const std::string& b) {
    std::vector<int> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = static_cast<int>(j);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        int diagonal = row[0];
        row[0] = static_cast<int>(i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const int above = row[j];
            row[j] =
                std::min({above + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

// The costs of giving words to fields, in letters: a field the line does not show costs its
// letters (a surname under a dash, a blank or a heading less: the print leaves it out by
// rule), a word no field takes costs its letters.
constexpr double SurnameLeftOut = 0.8;
constexpr int MostWordsAField = 4;
// Each word a field takes beyond its first: of two sharings as near, the one that splits the
// words more evenly.
constexpr double ExtraWord = 0.5;

// The read words of an entry given to the record's fields in order, each field taking none,
// one or a few neighbouring words, and words no field takes passed over: the cheapest such
// sharing by the edits from each field to its words.
enum class Surname { Either, Printed, LeftOut };

// Where a field starts across its column, where the page prints its fields at fixed places (a
// typewritten or table-like index): its distance from the line's left edge on the lines read
// alike, and how far those lines spread about it.
struct FieldPlace {
    bool Known = false;
    double At = 0.0;
    // Where the next field of known place starts: a word there or beyond is not this field's.
    double Until = std::numeric_limits<double>::infinity();
};

// A field of fixed place needs this many of the page's entries read alike to be known, and
// those entries within this many pitches of their middle (a field whose place varies with the
// words before it, as in a printed line of proportional type, has none).
constexpr std::size_t EntriesToPlaceAField = 5;
constexpr double MostPlaceSpread = 0.5;
// A field's first word away from its place by more than half a pitch costs this many letters
// for each further pitch, up to the most: a record typed from another line still shares its
// words field by field, by where they stand.
constexpr double PlaceTolerance = 0.5;
constexpr double LettersAPitchOffPlace = 4.0;
constexpr double MostOffPlace = 8.0;

double OffPlace(const FieldPlace& place, double offset, double pitch, bool first) {
    if (!place.Known || std::isnan(offset) || pitch <= 0.0) return 0.0;
    const double off = first ? std::abs(offset - place.At) : offset - place.Until;
    const double pitches = off / pitch + (first ? -PlaceTolerance : PlaceTolerance);
    return pitches <= 0.0 ? 0.0 : std::min(MostOffPlace, LettersAPitchOffPlace * pitches);
}

// The words of an entry with, for each, its distance from its line's left edge (NaN for a word
// of an entry's second line, which is placed by the first).
struct PlacedEntry {
    const ReadEntry* Entry = nullptr;
    std::vector<double> Offsets;
    std::vector<FieldPlace> Places; // by field; empty where the page has none
    double Pitch = 0.0;
};

std::vector<FieldReading> ReadFields(const RecordText& record, const PlacedEntry& placed,
                                     Surname surname) {
    const ReadEntry& entry = *placed.Entry;
    // The first word a field takes stands at the field's place, the others before the next
    // field's.
    auto offPlace = [&placed](std::size_t f, std::size_t w, std::size_t k) {
        if (f >= placed.Places.size()) return 0.0;
        double c = 0.0;
        for (std::size_t j = w; j < w + k && j < placed.Offsets.size(); ++j)
            c += OffPlace(placed.Places[f], placed.Offsets[j], placed.Pitch, j == w);
        return c;
    };
    const std::size_t nf = record.Fields.size();
    const std::size_t nw = entry.Words.size();
    std::vector<std::string> fields(nf);
    for (std::size_t f = 0; f < nf; ++f)
        fields[f] = Folded(record.Fields[f]);
    std::vector<std::string> words(nw);
    for (std::size_t w = 0; w < nw; ++w)
        words[w] = Folded(entry.Words[w]->Text);
    const double inf = std::numeric_limits<double>::infinity();
    std::vector<double> cost((nf + 1) * (nw + 1), inf);
    std::vector<int> taken((nf + 1) * (nw + 1), -1); // words the last field took; -1 a word passed
    auto at = [nw](std::size_t f, std::size_t w) { return f * (nw + 1) + w; };
    cost[at(0, 0)] = 0.0;
    for (std::size_t f = 0; f <= nf; ++f) {
        for (std::size_t w = 0; w <= nw; ++w) {
            const double here = cost[at(f, w)];
            if (here == inf) continue;
            if (w < nw && here + static_cast<double>(words[w].size()) < cost[at(f, w + 1)]) {
                cost[at(f, w + 1)] = here + static_cast<double>(words[w].size());
                taken[at(f, w + 1)] = -1;
            }
            if (f == nf) continue;
            std::string joined;
            for (std::size_t k = 0; k <= MostWordsAField && w + k <= nw; ++k) {
                if (k > 0) joined += words[w + k - 1];
                if (f == 0 && (k == 0 ? surname == Surname::Printed : surname == Surname::LeftOut))
                    continue;
                const double c =
                    k == 0 ? static_cast<double>(fields[f].size()) * (f == 0 ? SurnameLeftOut : 1.0)
                           : Edits(fields[f], joined) + ExtraWord * static_cast<double>(k - 1) +
                                 offPlace(f, w, k);
                // Ties go to the reading that gives the field more words.
                if (here + c <= cost[at(f + 1, w + k)]) {
                    cost[at(f + 1, w + k)] = here + c;
                    taken[at(f + 1, w + k)] = static_cast<int>(k);
                }
            }
        }
    }
    std::vector<FieldReading> read(nf);
    std::size_t f = nf;
    std::size_t w = nw;
    while (f > 0 || w > 0) {
        const int k = taken[at(f, w)];
        if (k < 0) {
            if (w == 0) break;
            --w;
            continue;
        }
        --f;
        FieldReading& fr = read[f];
        if (k > 0 && w - static_cast<std::size_t>(k) < placed.Offsets.size())
            fr.Offset = placed.Offsets[w - static_cast<std::size_t>(k)];
        for (std::size_t j = w - static_cast<std::size_t>(k); j < w; ++j) {
            const ReadWord& word = *entry.Words[j];
            std::string text = word.Text;
            while (!text.empty() && text.back() == ',')
                text.pop_back();
            fr.Read += (fr.Read.empty() ? "" : " ") + text;
            fr.Confidence = std::min(fr.Confidence, word.Confidence);
            fr.Printed = true;
        }
        w -= static_cast<std::size_t>(k);
    }
    return read;
}

// The left edge of a read line as the line finder found it (NaN for a line it does not know).
double LineLeft(const PrintedLines& lines, const ReadLine& line) {
    if (line.Column < 0 || line.Column >= static_cast<int>(lines.Columns.size()))
        return std::numeric_limits<double>::quiet_NaN();
    const FoundColumn& column = lines.Columns[static_cast<std::size_t>(line.Column)];
    if (line.Index < 0 || line.Index >= static_cast<int>(column.Lines.size()))
        return std::numeric_limits<double>::quiet_NaN();
    return column.Lines[static_cast<std::size_t>(line.Index)].X;
}

// Whether an entry's line prints its surname: the line's first word stands at the column's
// left edge, where a surname starts; an entry whose surname is a dash or a blank, or stands on
// the line above, starts with its forenames further right (a dash reads as no letters).
Surname SurnameOnLine(const PrintedLines& lines, const ReadLine& line) {
    const double left = LineLeft(lines, line);
    if (std::isnan(left)) return Surname::Either;
    for (const ReadWord& w : line.Words) {
        if (Folded(w.Text).empty()) continue;
        return w.Left - left < lines.Pitch ? Surname::Printed : Surname::LeftOut;
    }
    return Surname::Either;
}

// The index prints forenames with a capital to each name in every period, where surnames stand
// in capitals in some periods and not in others: a forename typed with a small first letter
// where the print has a capital (or the other way) differs, when the letter's two forms do not
// look alike (c, k, o, p, s, u, v, w, x, z read either way).
bool CapitalsDiffer(const std::string& typed, const std::string& read) {
    auto initials = [](const std::string& text) {
        std::vector<char> first;
        bool start = true;
        for (const char c : text) {
            const bool letter = std::isalpha(static_cast<unsigned char>(c)) != 0;
            if (letter && start) first.push_back(c);
            start = c == ' ' || c == '-';
        }
        return first;
    };
    const std::vector<char> a = initials(typed);
    const std::vector<char> b = initials(read);
    if (a.size() != b.size()) return false;
    static const std::string alike = "ckopsuvwxz";
    for (std::size_t k = 0; k < a.size(); ++k) {
        const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(a[k])));
        if (alike.find(lower) != std::string::npos) continue;
        if (lower != std::tolower(static_cast<unsigned char>(b[k]))) continue;
        if ((std::isupper(static_cast<unsigned char>(a[k])) != 0) !=
            (std::isupper(static_cast<unsigned char>(b[k])) != 0))
            return true;
    }
    return false;
}

// The references of an entry (volume, page, register) are printed with digits where a name has
// letters; a reader that takes a digit for the letter of its shape (1 for t or l, 0 for O, 5 for
// S) is read as the digit where the transcription has a digit. The other way round, a register
// that starts with a letter (D36, B49) read with the digit of the letter's shape (036, 849) is
// read as the letter. A reference typed with another digit or letter still differs, and the
// reading shown is the corrected one.
std::string ShapesWhereTyped(const std::string& typed, const std::string& read) {
    const bool reference = std::any_of(typed.begin(), typed.end(), [](char c) {
        return std::isdigit(static_cast<unsigned char>(c)) != 0;
    });
    if (!reference) return read;
    // A letter and the digit of its shape.
    static const std::pair<char, char> alike[] = {{'t', '1'}, {'l', '1'}, {'I', '1'}, {'i', '1'},
                                                  {'|', '1'}, {'O', '0'}, {'o', '0'}, {'D', '0'},
                                                  {'Q', '0'}, {'S', '5'}, {'s', '5'}, {'B', '8'},
                                                  {'Z', '2'}, {'z', '2'}, {'G', '6'}};
    std::string shapes = read;
    for (std::size_t k = 0; k < shapes.size() && k < typed.size(); ++k) {
        const bool digitTyped = std::isdigit(static_cast<unsigned char>(typed[k])) != 0;
        for (const auto& [letter, digit] : alike) {
            if (digitTyped && shapes[k] == letter) {
                shapes[k] = digit;
                break;
            }
            if (!digitTyped && shapes[k] == digit && typed[k] == letter) {
                shapes[k] = letter;
                break;
            }
        }
    }
    return shapes;
}

// On a grainy scan a digit of a closed loop (0, 6, 8, 9) read as another of them is the faded
// print, not the volunteer: measured on worn pages, 10d read as 16d and 0795 as 9795 with full
// confidence. A field that differs only there is doubtful; any other difference still counts.
bool OnlyLoopsDiffer(const std::string& transcribed, const std::string& read) {
    const std::string typed = UCase(ConvTo7BitASCII(transcribed));
    const std::string shown = UCase(ConvTo7BitASCII(read));
    if (typed.size() != shown.size() || typed == shown) return false;
    auto loop = [](char c) { return c == '0' || c == '6' || c == '8' || c == '9'; };
    for (std::size_t k = 0; k < typed.size(); ++k)
        if (typed[k] != shown[k] && !(loop(typed[k]) && loop(shown[k]))) return false;
    return true;
}

} // namespace

std::vector<Disagreement> FindDisagreements(const RecordTable& table, const ScanType& scan,
                                            const PrintedLines& lines, const ScanReading& reading) {
    std::vector<Disagreement> found;
    if (lines.Empty() || reading.Lines.empty()) return found;
    const std::vector<RecordText> records = Records(table, scan);
    std::vector<LineText> read;
    read.reserve(reading.Lines.size());
    for (const ReadLine& line : reading.Lines) {
        LineText l;
        l.Line = &line;
        for (const ReadWord& w : line.Words)
            l.Whole += Folded(w.Text);
        l.Heading = scan.SurnameOwnLine && SurnameOnly(line);
        l.WholePairs = Pairs(l.Whole);
        read.push_back(std::move(l));
    }
    const std::vector<std::pair<int, int>> matched = MatchLines(records, read);

    // Each matched record's entry: its words in the order of their places, each with its
    // distance from its line's left edge, and whether its line prints the surname.
    std::vector<ReadEntry> entries(records.size());
    std::vector<PlacedEntry> placed(records.size());
    std::vector<Surname> surnames(records.size(), Surname::Either);
    for (std::size_t i = 0; i < records.size(); ++i) {
        const auto [first, second] = matched[i];
        if (first < 0) continue;
        ReadEntry& entry = entries[i];
        const ReadLine* firstLine = read[static_cast<std::size_t>(first)].Line;
        for (const int k : {first, second})
            if (k >= 0)
                for (const ReadWord& w : read[static_cast<std::size_t>(k)].Line->Words)
                    entry.Words.push_back(&w);
        auto onFirst = [firstLine](const ReadWord* w) {
            return w >= firstLine->Words.data() &&
                   w < firstLine->Words.data() + firstLine->Words.size();
        };
        // The second line of a long entry carries on a field in that field's place: the words
        // of the two lines in the order of their places across the column.
        // A word carried to the second line starts where the field starts on the first (a
        // double surname broken at its hyphen), so it goes after the words of the first line that
        // start less than half a pitch to its right.
        if (second >= 0) {
            const double carried = 0.5 * lines.Pitch;
            auto place = [&onFirst, carried](const ReadWord* w) {
                return onFirst(w) ? w->Left : w->Left + carried;
            };
            std::stable_sort(
                entry.Words.begin(), entry.Words.end(),
                [&place](const ReadWord* a, const ReadWord* b) { return place(a) < place(b); });
        }
        PlacedEntry& p = placed[i];
        p.Entry = &entry;
        p.Pitch = lines.Pitch;
        const double left = LineLeft(lines, *firstLine);
        for (const ReadWord* w : entry.Words)
            p.Offsets.push_back(onFirst(w) && !std::isnan(left)
                                    ? w->Left - left
                                    : std::numeric_limits<double>::quiet_NaN());
        // Where surnames stand on lines of their own, an entry's line never prints it.
        surnames[i] = scan.SurnameOwnLine ? Surname::LeftOut : SurnameOnLine(lines, *firstLine);
    }

    // Where the page prints its fields at fixed places: learnt from the entries that read as
    // they were typed, then used to share out the words of every entry.
    std::map<std::pair<int, std::size_t>, std::vector<double>> alike;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (placed[i].Entry == nullptr) continue;
        const std::vector<FieldReading> fields = ReadFields(records[i], placed[i], surnames[i]);
        const int column = read[static_cast<std::size_t>(matched[i].first)].Line->Column;
        for (std::size_t f = 0; f < fields.size(); ++f)
            if (fields[f].Printed && !std::isnan(fields[f].Offset) &&
                Folded(fields[f].Read) == Folded(records[i].Fields[f]))
                alike[{column, f}].push_back(fields[f].Offset);
    }
    std::map<int, std::vector<FieldPlace>> places;
    for (auto& [key, offsets] : alike) {
        if (offsets.size() < EntriesToPlaceAField) continue;
        std::sort(offsets.begin(), offsets.end());
        const double middle = offsets[offsets.size() / 2];
        const auto near = std::count_if(offsets.begin(), offsets.end(), [&](double o) {
            return std::abs(o - middle) <= MostPlaceSpread * lines.Pitch;
        });
        // Four in five of them where the middle one is.
        if (5 * static_cast<std::size_t>(near) < 4 * offsets.size()) continue;
        std::vector<FieldPlace>& column = places[key.first];
        if (column.size() <= key.second) column.resize(key.second + 1);
        column[key.second].Known = true;
        column[key.second].At = middle;
    }
    for (auto& [column, fields] : places) {
        double until = std::numeric_limits<double>::infinity();
        for (auto field = fields.rbegin(); field != fields.rend(); ++field) {
            field->Until = until;
            if (field->Known) until = field->At;
        }
    }

    // The surname in force: the last one printed in full, by an entry or on a line of its own;
    // an entry whose surname is a dash or a blank stands under it.
    std::string surname;
    float surnameConfidence = 0.0F;
    int previousLine = -1;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const RecordText& record = records[i];
        const auto [first, second] = matched[i];
        if (first < 0) continue;
        if (scan.SurnameOwnLine)
            for (int k = previousLine + 1; k < first; ++k) {
                if (!read[static_cast<std::size_t>(k)].Heading) continue;
                const ReadLine& between = *read[static_cast<std::size_t>(k)].Line;
                surname.clear();
                surnameConfidence = 100.0F;
                for (const ReadWord& w : between.Words) {
                    surname += (surname.empty() ? "" : " ") + w.Text;
                    surnameConfidence = std::min(surnameConfidence, w.Confidence);
                }
            }
        previousLine = second >= 0 ? second : first;
        const auto column = places.find(read[static_cast<std::size_t>(first)].Line->Column);
        if (column != places.end()) placed[i].Places = column->second;
        const std::vector<FieldReading> fields = ReadFields(record, placed[i], surnames[i]);
        for (std::size_t f = 0; f < fields.size(); ++f) {
            const FieldReading& fr = fields[f];
            const std::string& transcribed = record.Fields[f];
            if (f == 0 && !fr.Printed) {
                // Not printed on the entry's line: the surname in force stands for it.
                if (!surname.empty() && surnameConfidence >= DoubtfulBelow &&
                    Folded(surname) != Folded(transcribed))
                    found.push_back({record.Line, 1, transcribed, surname});
                continue;
            }
            if (f == 0) {
                surname = fr.Read;
                surnameConfidence = fr.Confidence;
            }
            if (!fr.Printed || fr.Confidence < DoubtfulBelow) continue;
            const std::string readText = ShapesWhereTyped(transcribed, fr.Read);
            if (Folded(readText) == Folded(transcribed) &&
                !(f == 1 && CapitalsDiffer(transcribed, readText)))
                continue;
            if (reading.Grainy && OnlyLoopsDiffer(transcribed, readText)) continue;
            found.push_back({record.Line, static_cast<int>(f + 1), transcribed, readText});
        }
    }
    return found;
}

} // namespace tv
