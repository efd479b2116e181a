#include "reading/CompareRecords.h"

#include "reading/ReadText.h"
#include "transcription/SplitFields.h"

#include <algorithm>
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
};

struct LineText {
    const ReadLine* Line = nullptr;
    std::string Whole;    // folded
    bool Heading = false; // a surname on a line of its own
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
        records.push_back(std::move(r));
    }
    return records;
}

double Unlikeness(const RecordText& r, const std::string& read) {
    return 1.0 - std::max(Likeness(r.Whole, read), Likeness(r.WithoutSurname, read));
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
                const double c = Unlikeness(records[i], lines[j].Whole);
                if (c <= MostUnlike) relax(i + 1, j + 1, c, One);
            }
            if (i < nr && records[i].Long && j + 1 < nl && !lines[j].Whole.empty() &&
                !lines[j + 1].Whole.empty()) {
                const double c = Unlikeness(records[i], lines[j].Whole + lines[j + 1].Whole);
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

// The alignment of a record's folded characters with the read ones.
enum class Op : char { Same, Change, Missing, Extra };
struct AlignStep {
    Op Kind = Op::Same;
    int T = -1; // index into the transcribed characters
    int R = -1; // index into the read characters
};

// Costs of the character alignment: a surname may be left out by the print (a dash, a blank, a
// line of its own) for less than another field.
constexpr double ChangeCost = 1.0;
constexpr double MissingCost = 1.0;
constexpr double MissingSurnameCost = 0.45;
constexpr double ExtraCost = 1.0;

std::vector<AlignStep> Align(const std::vector<FoldedChar>& t, const std::vector<FoldedChar>& r) {
    const std::size_t nt = t.size();
    const std::size_t nr = r.size();
    std::vector<double> cost((nt + 1) * (nr + 1), 0.0);
    std::vector<char> from((nt + 1) * (nr + 1), 0);
    auto at = [nr](std::size_t i, std::size_t j) { return i * (nr + 1) + j; };
    auto missing = [&](std::size_t i) {
        return t[i].Source == 1 ? MissingSurnameCost : MissingCost;
    };
    for (std::size_t i = 1; i <= nt; ++i) {
        cost[at(i, 0)] = cost[at(i - 1, 0)] + missing(i - 1);
        from[at(i, 0)] = 'M';
    }
    for (std::size_t j = 1; j <= nr; ++j) {
        cost[at(0, j)] = cost[at(0, j - 1)] + ExtraCost;
        from[at(0, j)] = 'E';
    }
    for (std::size_t i = 1; i <= nt; ++i) {
        for (std::size_t j = 1; j <= nr; ++j) {
            double best = cost[at(i - 1, j - 1)] + (t[i - 1].Ch == r[j - 1].Ch ? 0.0 : ChangeCost);
            char f = 'D';
            const double m = cost[at(i - 1, j)] + missing(i - 1);
            if (m < best) {
                best = m;
                f = 'M';
            }
            const double e = cost[at(i, j - 1)] + ExtraCost;
            if (e < best) {
                best = e;
                f = 'E';
            }
            cost[at(i, j)] = best;
            from[at(i, j)] = f;
        }
    }
    std::vector<AlignStep> steps;
    std::size_t i = nt;
    std::size_t j = nr;
    while (i > 0 || j > 0) {
        const char f = from[at(i, j)];
        if (f == 'D') {
            --i;
            --j;
            steps.push_back({t[i].Ch == r[j].Ch ? Op::Same : Op::Change, static_cast<int>(i),
                             static_cast<int>(j)});
        } else if (f == 'M') {
            --i;
            steps.push_back({Op::Missing, static_cast<int>(i), -1});
        } else {
            --j;
            steps.push_back({Op::Extra, -1, static_cast<int>(j)});
        }
    }
    std::reverse(steps.begin(), steps.end());
    return steps;
}

// What the scan reads for one field: the parts of the words aligned with it.
struct FieldReading {
    bool Printed = false; // some of its characters were found on the line
    bool Differs = false;
    float Confidence = 100.0F;
    std::string Read;
};

std::vector<FieldReading> ReadFields(const RecordText& record, const ReadEntry& entry) {
    const int nf = static_cast<int>(record.Fields.size());
    std::vector<FoldedChar> t;
    for (int f = 1; f <= nf; ++f)
        AppendFolded(record.Fields[static_cast<std::size_t>(f - 1)], f, t);
    std::vector<FoldedChar> r;
    for (std::size_t w = 0; w < entry.Words.size(); ++w)
        AppendFolded(entry.Words[w]->Text, static_cast<int>(w), r);
    const std::vector<AlignStep> steps = Align(t, r);

    // Each read character's field: its aligned partner's; an extra character takes the field
    // most of its word's characters went to, and a word of nothing but extras the field before.
    std::vector<int> fieldOfRead(r.size(), 0);
    std::map<int, std::map<int, int>> wordFields; // word -> field -> characters
    for (const AlignStep& s : steps)
        if (s.R >= 0 && s.T >= 0) {
            fieldOfRead[static_cast<std::size_t>(s.R)] = t[static_cast<std::size_t>(s.T)].Source;
            ++wordFields[r[static_cast<std::size_t>(s.R)].Source]
                        [t[static_cast<std::size_t>(s.T)].Source];
        }
    int lastField = 1;
    for (std::size_t k = 0; k < r.size(); ++k) {
        if (fieldOfRead[k] != 0) {
            lastField = fieldOfRead[k];
            continue;
        }
        const auto word = wordFields.find(r[k].Source);
        if (word != wordFields.end()) {
            int best = 0;
            for (const auto& [field, count] : word->second)
                if (best == 0 || count > word->second.at(best)) best = field;
            fieldOfRead[k] = best;
        } else {
            fieldOfRead[k] = lastField;
        }
    }

    std::vector<FieldReading> fields(static_cast<std::size_t>(nf));
    for (const AlignStep& s : steps) {
        int field = 0;
        if (s.T >= 0)
            field = t[static_cast<std::size_t>(s.T)].Source;
        else
            field = fieldOfRead[static_cast<std::size_t>(s.R)];
        if (field < 1 || field > nf) continue;
        FieldReading& fr = fields[static_cast<std::size_t>(field - 1)];
        if (s.Kind == Op::Same || s.Kind == Op::Change) fr.Printed = true;
        if (s.Kind != Op::Same) fr.Differs = true;
    }
    // A field that is wholly missing was not printed on the line (or not read): not a finding.
    // Extra characters alone at a field's end are often the reader's specks; they count only
    // where the field was found.
    for (int f = 1; f <= nf; ++f) {
        FieldReading& fr = fields[static_cast<std::size_t>(f - 1)];
        // The read text: for each word, the stretch of its text this field's characters span.
        std::map<int, std::pair<int, int>> spans;
        for (std::size_t k = 0; k < r.size(); ++k) {
            if (fieldOfRead[k] != f) continue;
            auto [it, fresh] = spans.try_emplace(r[k].Source, r[k].From, r[k].To);
            if (!fresh) {
                it->second.first = std::min(it->second.first, r[k].From);
                it->second.second = std::max(it->second.second, r[k].To);
            }
        }
        for (const auto& [w, span] : spans) {
            const ReadWord& word = *entry.Words[static_cast<std::size_t>(w)];
            if (!fr.Read.empty()) fr.Read += ' ';
            fr.Read += word.Text.substr(static_cast<std::size_t>(span.first),
                                        static_cast<std::size_t>(span.second - span.first));
            fr.Confidence = std::min(fr.Confidence, word.Confidence);
        }
        if (spans.empty()) fr.Printed = false;
    }
    return fields;
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
        read.push_back(std::move(l));
    }
    const std::vector<std::pair<int, int>> matched = MatchLines(records, read);

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
        ReadEntry entry;
        for (const int k : {first, second})
            if (k >= 0)
                for (const ReadWord& w : read[static_cast<std::size_t>(k)].Line->Words)
                    entry.Words.push_back(&w);
        // The second line of a long entry carries on a field in that field's place: the words
        // of the two lines in the order of their places across the column.
        if (second >= 0)
            std::stable_sort(
                entry.Words.begin(), entry.Words.end(),
                [](const ReadWord* a, const ReadWord* b) { return a->Left < b->Left; });
        const std::vector<FieldReading> fields = ReadFields(record, entry);
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
            if (!fr.Printed || !fr.Differs || fr.Confidence < DoubtfulBelow) continue;
            if (Folded(fr.Read) == Folded(transcribed)) continue;
            found.push_back({record.Line, static_cast<int>(f + 1), transcribed, fr.Read});
        }
    }
    return found;
}

} // namespace tv
