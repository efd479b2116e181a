// The About box.
#include "help/AboutTallyview.h"
#include "help/HelpPages.h"

#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

namespace tv {
namespace {

TEST(AboutTallyview, ShowsTheVersionTextItIsGiven) {
    AboutTallyview about("Version 1.0.0 / 21-Jun-2022");
    EXPECT_EQ(about.VersionLabel()->text(), "Version 1.0.0 / 21-Jun-2022");
    EXPECT_EQ(about.Description()->text(), AboutText);
    EXPECT_EQ(about.windowTitle(), "About Tallyview");
    EXPECT_EQ(about.OK()->text(), "OK");
}

TEST(AboutTallyview, GivesTheReleaseDateAndWhereToReportProblems) {
    AboutTallyview about("Version 1.0.0 / 21-Jun-2022");
    const std::string homePage = TALLYVIEW_HOME_PAGE;
    EXPECT_EQ(about.Release()->text().toStdString(),
              "Released 2026-11-21. To report a problem, please see the " +
                  (homePage.empty() ? std::string("\"Reporting problems\" section of the README "
                                                  "file that comes with Tallyview")
                                    : "program's web page, " + homePage + ",") +
                  ".");
    // Help page 0 points to the same place.
    EXPECT_NE(HelpPages()[0].Text.find(ContactPointer()), std::string::npos);
}

TEST(AboutTallyview, OkClosesTheBox) {
    AboutTallyview about("Version 1.0.0 / 21-Jun-2022");
    about.show();
    about.OK()->click();
    EXPECT_FALSE(about.isVisible());
    EXPECT_EQ(about.result(), QDialog::Accepted);
}

} // namespace
} // namespace tv
