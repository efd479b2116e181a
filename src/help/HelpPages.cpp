#include "help/HelpPages.h"

#include "core/Checked.h"
#include "core/Numeric.h"

namespace tv {

namespace {

std::string Quoted(const std::string& text) {
    return "\"" + text + "\"";
}

// The characters that mark a query, as the user types them.
std::string QueryCharacters() {
    return Quoted("*") + ", " + Quoted("_") + ", " + Quoted("?") + ", " + " or " + Quoted("[");
}

// What can make a name look out of sequence; e acute and o diaeresis in Windows-1252.
std::string FalseWarningCauses() {
    return Quoted("*") + ", " + Quoted("_") + ", " + Quoted("[") + ", " + Quoted("]") + " and " +
           Quoted("foreign characters") + " such as " + "\xE9" + " and " + "\xF6" + ", ";
}

std::array<HelpPage, HelpPageCount> MakePages() {
    const std::string contact = ContactPointer();
    return {{
        {"Tallyview Commands Help",
         "Press the PREVIOUS and NEXT buttons to view the Help "
         "screens. If you have any problems or queries, or if you have any "
         "comments or suggestions for the program, please see the " +
             contact + " for contact details."},
        {"The Arrow Keys", "These move the box which displays a transcribed record "
                           "around the screen. If you press the SHIFT key and hold "
                           "it down, then press the arrow keys, the box will move "
                           "in larger jumps. You can also use the mouse or the 2/4/6/8 "
                           "keys on the numeric keypad (2 is down, 4 is left, 6 is right "
                           "and 8 is up)."},
        {"ALT plus Left and Right Arrow keys",
         "If you press the ALT button, hold it down and then press "
         "the left or right arrow keys, the width of the box changes. Pressing "
         "SHIFT at the same time changes the width of the box in larger jumps. "
         "You can also use ALT plus the 4 and 6 keys on the numeric keypad "
         "(4 is left and 6 is right)."},
        {"ENTER/RETURN key (or L key)", "This moves the box down one line against the index scan "
                                        "and also moves the transcribed record shown in the box "
                                        "on to the next one."},
        {"BACKSPACE key (or O key)", "This is the reverse of the ENTER key, i.e. "
                                     "it moves the box up one line against the index scan "
                                     "and also moves the transcribed record shown in the box "
                                     "back to the previous one."},
        {"+ and - keys", "This changes the transcribed record shown in the "
                         "box to the next or previous entry without changing "
                         "the position of the box."},
        {"PAGE UP, PAGE DOWN, HOME and END keys",
         "PAGE UP and PAGE DOWN moves the box and the "
         "transcribed record shown to the top of the previous or "
         "next column. HOME takes you to the top of the first "
         "column and END to the top of the last column."},
        {"M key", "This flags the current transcribed record "
                  "shown in the box (or if the record is already flagged, "
                  "it removes the flag). Flagged records can be viewed "
                  "or printed from the Statistics screen."},
        {"F key", "This changes the size of the font used to show "
                  "the transcribed record. Press the F key to increase the font size "
                  "and SHIFT plus the F key to decrease it. If you want to choose "
                  "the larger font sizes, you may need to increase "
                  "the width of the box by using ALT plus the Right Arrow key."},
        {"C key", "This displays a small form where you can change the "
                  "number of columns or the layout of the scan. You can only change "
                  "this during the first stage of calibration."},
        {"Zoom, in and out (F11/F12 keys, buttons or menu options)",
         "These change the size of the scan, zooming in or out."},
        {"Show Statistics (button or menu option)",
         "This displays a separate screen showing statistics "
         "about your transcription."},
        {"ReCalibrate (menu option)",
         "This repeats the process you have to go through "
         "when you start the program to line up the scan and to specify "
         "which QRL index record appears at the start of columns 2 and 3. "
         "You would normally only do this if you made a mistake in the original "
         "calibration."},
        {"R key or Reload transcription file (menu option)",
         "This reloads the transcription file you produced "
         "using Inkrow or Quillpad. You would use this "
         "option if you found a mistake, went into Inkrow "
         "or Quillpad to correct the mistake and saved the changes "
         "to disk. Tallyview may ask you to repeat the Calibration process."},
        {"Show Repeated Surnames (menu option)",
         "By default, where a surname is the same as the "
         "previous surname, a line is shown rather than the surname "
         "itself, in a similar style to the original QRL index. "
         "If you click on this menu option, then surnames are "
         "shown for all records."},
        // The first two pieces join without a space after "text box."; kept as it stands.
        {"B Key (or Text Box Colour menu option)",
         "This changes the background colour of the text box."
         "Press B again to cycle through all the colours. "
         "Use this if the text box is hard to read with the standard "
         "colour (or if you prefer one of the other colours!)."},
        {"Print button (on the Statistics Screen)",
         "The details shown on this screen are printed on your default "
         "printer and you can also choose to print out all the transcribed records."},
        // Names four of the five query characters; kept as it stands.
        {"Flagged Records etc buttons (on the Statistics Screen)",
         "This changes the information shown beneath the buttons. "
         "Note that they only affect what is displayed - if you click "
         "on the PRINT button, all the information is printed. "
         "The Queries button displays any records where you have entered a " +
             QueryCharacters() +
             " during transcription. The Warnings button "
             "displays any QRL records that appear to be out of sequence - however " +
             FalseWarningCauses() + "may create false warnings."},
        {"Restore Defaults button (on the Start Screen)",
         "Tallyview saves details of options you have selected "
         "and recent scans you have verified in the Windows Registry. "
         "Click on this button to clear all Tallyview details from the Registry."},
    }};
}

} // namespace

std::string ContactPointer() {
    const std::string homePage = TALLYVIEW_HOME_PAGE;
    if (homePage.empty())
        return "\"Reporting problems\" section of the README file that comes with Tallyview";
    return "program's web page, " + homePage + ",";
}

const std::array<HelpPage, HelpPageCount>& HelpPages() {
    static const std::array<HelpPage, HelpPageCount> pages = MakePages();
    return pages;
}

void HelpPageState::ShowPage(int offset) {
    int page = CInt(NumericValue(PageNumber).value_or(0.0)) + offset;
    if (page < 0) page = 0;
    if (page <= LastHelpPage) {
        Title = HelpPages()[static_cast<std::size_t>(page)].Title;
        Text = HelpPages()[static_cast<std::size_t>(page)].Text;
    }
    PageNumber = std::to_string(page);
    PreviousEnabled = page >= 1;
    NextEnabled = page < LastHelpPage;
}

} // namespace tv
