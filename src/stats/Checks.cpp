#include "stats/Checks.h"

#include "core/Checked.h"
#include "core/Numeric.h"
#include "core/Text.h"
#include "transcription/FileNames.h"
#include "transcription/TextConversion.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace tv {

namespace {

const char* CategoryTitle(int16_t category) {
    switch (category) {
    case CheckQueries:
        return "Queries";
    case CheckNamesOutOfSequence:
        return "Names out of sequence ...";
    case CheckSuspectAge:
        return "Suspect age at death ...";
    case CheckFlagged:
        return "Flagged records";
    case CheckMissingSurnames:
        return "Missing surnames ...";
    case CheckFileNames:
        return "File names ...";
    default:
        return "";
    }
}

// What the reader stores for a record without a surname. A view, so that the lengths are
// compared before any text: the check looks at every line.
constexpr std::string_view BlankSurname = "(blank)";

// Kept deliberately: the index prints only three digits, so line 1000 shows as "000".
std::string ResultLine(const RecordTable& table, int index) {
    const std::string& text = table.LineText[index];
    std::string line = AlignRight(index, 3);
    line.reserve(line.size() + 1 + text.size());
    line += ' ';
    line += text;
    return line;
}

// The first line from CheckIndex on that matches; the iterator stays on it.
template <typename Match>
bool FindLine(CheckIterator& it, const RecordTable& table, std::string& line, Match matches) {
    for (int i = it.CheckIndex; i <= table.LineCount; ++i) {
        if (matches(i)) {
            it.CheckIndex = To16(i);
            line = ResultLine(table, i);
            return true;
        }
    }
    return false;
}

// Each Windows-1252 byte as a name key has it: folded to a plain letter, then in lower case.
const std::array<char, 256> KeyLetters = [] {
    std::string all(256, ' ');
    for (std::size_t c = 0; c < all.size(); ++c)
        all[c] = static_cast<char>(c);
    std::string folded = ConvTo7BitASCII(all);
    std::array<char, 256> letters{};
    for (std::size_t c = 0; c < letters.size(); ++c) {
        char f = folded[c];
        letters[c] = f >= 'A' && f <= 'Z' ? static_cast<char>(f - 'A' + 'a') : f;
    }
    return letters;
}();

// A name as the sequence check compares it: folded to plain letters, in lower case, without the
// spaces around it. A surname loses every space, which is what its apostrophes and hyphens fold
// to: O'Brien, OBrien and O Brien compare equal, and Smith-Jones sorts as smithjones. Made into
// key in one pass, reusing its memory, as the check runs over every record of the file.
void MakeNameKey(const std::string& field, bool surname, std::string& key) {
    key.resize(field.size());
    char* out = key.data();
    std::size_t kept = 0;
    for (char c : field) {
        char letter = KeyLetters[static_cast<unsigned char>(c)];
        if (surname && letter == ' ') continue;
        out[kept++] = letter;
    }
    key.resize(kept);
    if (!surname) {
        key.erase(key.find_last_not_of(' ') + 1);
        key.erase(0, std::min(key.size(), key.find_first_not_of(' ')));
    }
}

// The forename keys of two neighbouring lines, kept for the whole run of the check so that each
// key is made in memory an earlier line already took.
struct ForenameKeys {
    std::string Previous;
    std::string Current;
};

// Line i under line i - 1, whose surnames' keys are given.
bool InSequence(const RecordTable& table, int i, const std::string& previousSurname,
                const std::string& surname, ForenameKeys& forenames) {
    int order = surname.compare(previousSurname);
    if (order != 0) return order > 0;
    MakeNameKey(table.Forenames[i], false, forenames.Current);
    MakeNameKey(table.Forenames[i - 1], false, forenames.Previous);
    // An unnamed child entered as "male" or "female" may stand anywhere under its surname.
    return forenames.Current >= forenames.Previous || forenames.Current == "male" ||
           forenames.Current == "female";
}

// A pair is handed out over two calls: its first line now, its second on the next call.
bool NextNameOutOfSequence(CheckIterator& it, bool fresh, const RecordTable& table,
                           std::string& line) {
    if (it.CheckPairPending) {
        it.CheckIndex = To16(it.CheckIndex - 1);
        it.CheckPairPending = false;
        line = ResultLine(table, it.CheckIndex);
        return true;
    }
    if (fresh) it.CheckIndex = 2;
    // Each surname's key is made once, as the line and then as the one before the next: the two
    // keys trade places by pointer, their memory staying put.
    std::string keyA;
    std::string keyB;
    std::string* previous = &keyA;
    std::string* surname = &keyB;
    ForenameKeys forenames;
    bool previousKnown = false;
    for (int i = it.CheckIndex; i <= table.LineCount; ++i) {
        // A header line between two records breaks the chain.
        if (!table.IsRecord(i - 1) || !table.IsRecord(i)) {
            previousKnown = false;
            continue;
        }
        if (!previousKnown) MakeNameKey(table.Surname[i - 1], true, *previous);
        MakeNameKey(table.Surname[i], true, *surname);
        if (!InSequence(table, i, *previous, *surname, forenames)) {
            it.CheckIndex = To16(i);
            it.CheckPairPending = true;
            line = ResultLine(table, i - 1);
            return true;
        }
        std::swap(previous, surname);
        previousKnown = true;
    }
    return false;
}

bool SuspectAge(const RecordTable& table, int i) {
    if (!table.IsRecord(i) || table.ExtraField[i].empty()) return false;
    std::optional<double> age = NumericValue(table.ExtraField[i]);
    return age && *age > 105;
}

bool PageOutsideHeader(const RecordTable& table, int16_t page) {
    return page >= 1 && table.HeaderPageCount >= 1 &&
           (page < table.HeaderPages[1] || page > table.HeaderPages[table.HeaderPageCount]);
}

// The mismatch list of one file name, each entry followed by ", ".
std::string FileNameMismatches(const CheckInputs& in, int step) {
    const RecordTable& table = in.Table;
    ParsedFileName name = ParseFileName(step == 1 ? in.GraphicsFile : in.TranscriptionFile);
    std::string mismatches;
    if (name.Year > 0 && table.HeaderYear >= 1 && name.Year != table.HeaderYear)
        mismatches += "Year, ";
    if (name.Quarter > 0 && table.HeaderQuarter >= 1 && name.Quarter != table.HeaderQuarter)
        mismatches += "Quarter, ";
    if (!name.Letter.empty() && table.HeaderEvent != "?" && name.Letter != table.HeaderEvent)
        mismatches += "BMorD, ";
    int16_t page = name.Page;
    // Deliberate: the images of scan type 42 are numbered one below the header's pages.
    if (step == 1 && page >= 1 && in.ScanTypeCode == 42) page = To16(page + 1);
    if (PageOutsideHeader(table, page)) mismatches += "Page, ";
    return mismatches;
}

// Steps instead of lines: 1 is the graphics file, 2 the transcription file.
bool NextFileNameLine(CheckIterator& it, const CheckInputs& in, std::string& line) {
    for (int step = it.CheckIndex; step <= 2; ++step) {
        std::string mismatches = FileNameMismatches(in, step);
        if (!mismatches.empty()) {
            it.CheckIndex = To16(step);
            line = mismatches.substr(0, mismatches.size() - 2) + " in " +
                   (step == 1 ? "graphics" : "transcription") +
                   " file name inconsistent with details in file header";
            return true;
        }
    }
    return false;
}

bool FindNext(CheckIterator& it, int16_t category, bool fresh, const CheckInputs& in,
              std::string& line) {
    const RecordTable& t = in.Table;
    switch (category) {
    case CheckQueries:
        return FindLine(it, t, line, [&](int i) { return t.IsRecord(i) && t.LineQuery[i]; });
    case CheckNamesOutOfSequence:
        return NextNameOutOfSequence(it, fresh, t, line);
    case CheckSuspectAge:
        return t.HasExtraField && FindLine(it, t, line, [&](int i) { return SuspectAge(t, i); });
    case CheckFlagged:
        return FindLine(it, t, line, [&](int i) { return t.LineFlagged[i]; });
    case CheckMissingSurnames:
        return FindLine(it, t, line, [&](int i) { return t.Surname[i] == BlankSurname; });
    case CheckFileNames:
        return NextFileNameLine(it, in, line);
    default:
        return false;
    }
}

} // namespace

bool GetNextCheckLine(CheckIterator& it, int16_t& category, std::string& title, std::string& line,
                      const CheckInputs& in) {
    bool fresh = category != it.CheckCategory || it.CheckIndex <= 0;
    if (fresh) {
        it.CheckCategory = category;
        it.CheckIndex = 1;
        it.CheckPairPending = false;
        title = CategoryTitle(category);
    } else {
        it.CheckIndex = To16(it.CheckIndex + 1);
        title = "";
    }
    line = "";
    if (FindNext(it, category, fresh, in, line)) return true;
    line = "";
    it.CheckCategory = -1;
    return false;
}

} // namespace tv
