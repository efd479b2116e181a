#pragma once
// The commands help: nineteen pages of a title and a text, shown one at a time on the help form.
#include <array>
#include <string>

namespace tv {

inline constexpr int HelpPageCount = 19;
inline constexpr int LastHelpPage = HelpPageCount - 1;

struct HelpPage {
    std::string Title;
    std::string Text; // Windows-1252
};

// Where the user finds how to report a problem: the project's home page when the build names
// one (TALLYVIEW_HOME_PAGE), otherwise the README's "Reporting problems" section. Page 0 and
// the About box both point there.
std::string ContactPointer();

// Pages 0 to 18.
const std::array<HelpPage, HelpPageCount>& HelpPages();

// What the help form shows. The page number is kept as decimal text, as the form keeps it
// between openings.
struct HelpPageState {
    std::string PageNumber = "0";
    std::string Title;
    std::string Text;
    bool PreviousEnabled = false;
    bool NextEnabled = false;

    // Moves by offset from the page shown (0 shows it again); a page below 0 becomes 0.
    void ShowPage(int offset);
};

} // namespace tv
