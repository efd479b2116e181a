// The commands help pages and the paging of the help form.
#include "help/HelpPages.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

TEST(HelpPages, HasNineteenPagesWithTheirTitlesInOrder) {
    const std::vector<std::string> titles = {
        "Tallyview Commands Help",
        "The Arrow Keys",
        "ALT plus Left and Right Arrow keys",
        "ENTER/RETURN key (or L key)",
        "BACKSPACE key (or O key)",
        "+ and - keys",
        "PAGE UP, PAGE DOWN, HOME and END keys",
        "M key",
        "F key",
        "C key",
        "Zoom, in and out (F11/F12 keys, buttons or menu options)",
        "Show Statistics (button or menu option)",
        "ReCalibrate (menu option)",
        "R key or Reload transcription file (menu option)",
        "Show Repeated Surnames (menu option)",
        "B Key (or Text Box Colour menu option)",
        "Print button (on the Statistics Screen)",
        "Flagged Records etc buttons (on the Statistics Screen)",
        "Restore Defaults button (on the Start Screen)"};
    ASSERT_EQ(HelpPages().size(), titles.size());
    for (std::size_t i = 0; i < titles.size(); ++i)
        EXPECT_EQ(HelpPages()[i].Title, titles[i]) << i;
}

TEST(HelpPages, PageFifteenJoinsItsFirstTwoSentencesWithoutASpace) {
    EXPECT_EQ(HelpPages()[15].Text,
              "This changes the background colour of the text box.Press B again to cycle through "
              "all the colours. Use this if the text box is hard to read with the standard colour "
              "(or if you prefer one of the other colours!).");
}

TEST(HelpPages, PageSeventeenListsTheQueryAndWarningCharacters) {
    EXPECT_EQ(HelpPages()[17].Text,
              "This changes the information shown beneath the buttons. Note that they only affect "
              "what is displayed - if you click on the PRINT button, all the information is "
              "printed. The Queries button displays any records where you have entered a \"*\", "
              "\"_\", \"?\",  or \"[\" during transcription. The Warnings button displays any QRL "
              "records that appear to be out of sequence - however \"*\", \"_\", \"[\", \"]\" and "
              "\"foreign characters\" such as \xE9 and \xF6, may create false warnings.");
}

TEST(HelpPages, EveryOtherPageHasItsText) {
    const std::string homePage = TALLYVIEW_HOME_PAGE;
    EXPECT_EQ(HelpPages()[0].Text,
              "Press the PREVIOUS and NEXT buttons to view the Help screens. If you have any "
              "problems or queries, or if you have any comments or suggestions for the program, "
              "please see the " +
                  (homePage.empty() ? std::string("\"Reporting problems\" section of the README "
                                                  "file that comes with Tallyview")
                                    : "program's web page, " + homePage + ",") +
                  " for contact details.");
    EXPECT_EQ(HelpPages()[3].Text, "This moves the box down one line against the index scan and "
                                   "also moves the transcribed record shown in the box on to the "
                                   "next one.");
    EXPECT_EQ(HelpPages()[10].Text, "These change the size of the scan, zooming in or out.");
    EXPECT_EQ(HelpPages()[16].Text,
              "The details shown on this screen are printed on your default printer and you can "
              "also choose to print out all the transcribed records.");
    EXPECT_EQ(HelpPages()[18].Text,
              "Tallyview saves details of options you have selected and recent scans you have "
              "verified in the Windows Registry. Click on this button to clear all Tallyview "
              "details from the Registry.");
    for (const HelpPage& page : HelpPages()) {
        EXPECT_FALSE(page.Text.empty()) << page.Title;
        EXPECT_NE(page.Text.back(), ' ') << page.Title;
    }
}

TEST(HelpPageState, FirstShowingIsPageZeroWithPreviousDisabled) {
    HelpPageState help;
    help.ShowPage(0);
    EXPECT_EQ(help.PageNumber, "0");
    EXPECT_EQ(help.Title, "Tallyview Commands Help");
    EXPECT_FALSE(help.PreviousEnabled);
    EXPECT_TRUE(help.NextEnabled);
}

TEST(HelpPageState, OnPageEighteenNextIsDisabled) {
    HelpPageState help;
    for (int i = 0; i < 18; ++i)
        help.ShowPage(+1);
    EXPECT_EQ(help.PageNumber, "18");
    EXPECT_EQ(help.Title, "Restore Defaults button (on the Start Screen)");
    EXPECT_TRUE(help.PreviousEnabled);
    EXPECT_FALSE(help.NextEnabled);
    help.ShowPage(-1);
    EXPECT_EQ(help.PageNumber, "17");
    EXPECT_TRUE(help.PreviousEnabled);
    EXPECT_TRUE(help.NextEnabled);
}

TEST(HelpPageState, AnOffsetBelowPageZeroStaysOnPageZero) {
    HelpPageState help;
    help.ShowPage(+1);
    help.ShowPage(-5);
    EXPECT_EQ(help.PageNumber, "0");
    EXPECT_EQ(help.Title, "Tallyview Commands Help");
    EXPECT_EQ(help.Text, HelpPages()[0].Text);
    EXPECT_FALSE(help.PreviousEnabled);
}

TEST(HelpPageState, ThePageIsTakenFromItsDecimalText) {
    HelpPageState help;
    help.PageNumber = "7";
    help.ShowPage(0);
    EXPECT_EQ(help.Title, "M key");
    help.PageNumber = "";
    help.ShowPage(+2);
    EXPECT_EQ(help.PageNumber, "2");
    EXPECT_EQ(help.Title, "ALT plus Left and Right Arrow keys");
}

} // namespace
} // namespace tv
