#include "transcription/FileNames.h"

#include "core/Text.h"

#include <cctype>

namespace tv {

namespace {

// Walks a scan's name; the four full stops appended to it stop every scan before its end.
class NameCursor {
  public:
    explicit NameCursor(const std::string& path) : name_(BareFileName(path) + "....") {}

    char Peek() const { return name_[pos_]; }
    char Take() { return name_[pos_++]; }
    bool AtDigit() const { return std::isdigit(static_cast<unsigned char>(Peek())) != 0; }

    // The leading digits, taken while the number so far is at most 9999 (so a run can reach
    // five digits); -1 when there is no digit.
    int32_t Number() {
        if (!AtDigit()) return -1;
        int32_t number = 0;
        while (number <= 9999 && AtDigit())
            number = number * 10 + (Take() - '0');
        return number;
    }

    void SkipToDigitOrStop() {
        while (Peek() != '.' && !AtDigit())
            ++pos_;
    }

  private:
    std::string name_;
    std::size_t pos_ = 0;
};

// Two-digit years: 37 to 99 are the nineteenth century, 0 to 36 the twentieth.
int32_t FullYear(int32_t number) {
    if (number >= 100) return number;
    return number >= 37 ? 1800 + number : 1900 + number;
}

} // namespace

ParsedFileName ParseFileName(const std::string& path) {
    ParsedFileName result;
    NameCursor name(path);
    int32_t number = name.Number();
    if (number < 0) return result;
    int32_t year = FullYear(number);
    if (year < 1837 || year > 2000) return result;
    char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(name.Take())));
    if (letter != 'B' && letter != 'M' && letter != 'D') return result;
    result.Year = To16(year);
    result.Letter = std::string(1, letter);
    if (year < 1984) {
        char quarter = name.Take();
        if (quarter < '1' || quarter > '4') return result;
        result.Quarter = To16(quarter - '0');
    } else {
        result.Quarter = 0;
    }
    name.SkipToDigitOrStop();
    if (name.Peek() == '.') return result;
    int32_t page = name.Number();
    result.Page = page < 9999 ? To16(page) : int16_t{-1};
    return result;
}

} // namespace tv
