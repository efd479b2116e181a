#include "transcription/SplitFields.h"

#include "core/Text.h"

#include <string_view>

namespace tv {

namespace {

constexpr std::string_view Ellipsis = "...";

void TellUnclosedQuote(const std::string& line, int16_t lineCount, Prompts& prompts) {
    prompts.Tell(std::string("Opening  ") + '"' + "  without a matching closing  " + '"' +
                 "  in line " + CR + std::to_string(lineCount) + " - " + line);
}

// A field in double quotes, appended to its cleared field; returns the rest of the line after the
// closing quote and the one character after it (normally the comma, skipped whatever it is).
std::string_view TakeQuoted(std::string_view rest, std::string& field, const std::string& line,
                            int16_t lineCount, Prompts& prompts) {
    std::size_t close = rest.find('"', 1);
    if (close == std::string_view::npos) {
        TellUnclosedQuote(line, lineCount, prompts);
        field.append(rest);
        return {};
    }
    std::string_view content = rest.substr(1, close - 1);
    // Kept deliberately: the three cutting limits differ. A quoted field is cut from 50
    // characters to 48 + "..." (51 characters).
    if (content.size() >= 50)
        field.append(content.substr(0, 48)).append(Ellipsis);
    else
        field.append(content);
    return close + 2 < rest.size() ? rest.substr(close + 2) : std::string_view{};
}

// A field up to the next comma, appended to its cleared field; returns the rest of the line after
// that comma.
std::string_view TakeUnquoted(std::string_view rest, std::string& field) {
    std::size_t comma = rest.find(',');
    if (comma == std::string_view::npos) {
        // The last field is cut only when it has more than 50 characters.
        if (rest.size() > 50)
            field.append(rest.substr(0, 47)).append(Ellipsis);
        else
            field.append(rest);
        return {};
    }
    // A field before a comma is cut from 50 characters to 47 + "..." (50 characters).
    if (comma >= 50)
        field.append(rest.substr(0, 47)).append(Ellipsis);
    else
        field.append(rest.substr(0, comma));
    return rest.substr(comma + 1);
}

} // namespace

// The fields are cleared, then filled in place: a line's fields reuse the memory of the line
// before, and filling an empty string is the cheaper string operation.
void SplitFields(const std::string& line, Fields& fields, int16_t lineCount, Prompts& prompts) {
    for (int k = 1; k <= MaxFields; ++k)
        fields[k].clear();
    std::string_view rest = line;
    for (int k = 1; !rest.empty() && k <= MaxFields; ++k) {
        if (rest.front() == '"')
            rest = TakeQuoted(rest, fields[k], line, lineCount, prompts);
        else
            rest = TakeUnquoted(rest, fields[k]);
    }
}

} // namespace tv
