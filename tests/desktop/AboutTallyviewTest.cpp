// The About box.
#include "help/AboutTallyview.h"

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

TEST(AboutTallyview, OkClosesTheBox) {
    AboutTallyview about("Version 1.0.0 / 21-Jun-2022");
    about.show();
    about.OK()->click();
    EXPECT_FALSE(about.isVisible());
    EXPECT_EQ(about.result(), QDialog::Accepted);
}

} // namespace
} // namespace tv
