// The help form paged with its buttons.
#include "help/HelpForm.h"
#include "core/QtPlatform.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace tv {
namespace {

TEST(HelpForm, OpensOnPageZeroWithPreviousDisabled) {
    HelpForm help;
    EXPECT_EQ(help.Label1()->text(), "Tallyview Commands Help");
    EXPECT_EQ(help.Text1()->toPlainText(), ToQString(HelpPages()[0].Text));
    EXPECT_TRUE(help.Text1()->isReadOnly());
    EXPECT_FALSE(help.Previous()->isEnabled());
    EXPECT_TRUE(help.Next()->isEnabled());
}

TEST(HelpForm, NextAndPreviousPageThroughAllNineteenPages) {
    HelpForm help;
    for (int page = 1; page <= 18; ++page) {
        help.Next()->click();
        EXPECT_EQ(help.Label1()->text(),
                  ToQString(HelpPages()[static_cast<std::size_t>(page)].Title));
        EXPECT_TRUE(help.Previous()->isEnabled());
    }
    EXPECT_FALSE(help.Next()->isEnabled());
    EXPECT_EQ(help.Page().PageNumber, "18");
    help.Previous()->click();
    EXPECT_EQ(help.Label1()->text(), "Flagged Records etc buttons (on the Statistics Screen)");
    EXPECT_TRUE(help.Text1()->toPlainText().endsWith(
        QString::fromUtf8("such as \xC3\xA9 and \xC3\xB6, may create false warnings.")));
    EXPECT_TRUE(help.Next()->isEnabled());
}

TEST(HelpForm, HideReturnsTheFocusAndThePageIsKeptForTheNextOpening) {
    HelpForm help;
    QSignalSpy hidden(&help, &HelpForm::hidden);
    help.show();
    help.Next()->click();
    help.Next()->click();
    help.Hide()->click();
    EXPECT_FALSE(help.isVisible());
    EXPECT_EQ(hidden.count(), 1);
    help.show();
    EXPECT_EQ(help.Label1()->text(), "ALT plus Left and Right Arrow keys");
    EXPECT_FALSE(help.close()); // closing the window hides it, as Hide does
    EXPECT_FALSE(help.isVisible());
    EXPECT_EQ(hidden.count(), 2);
}

} // namespace
} // namespace tv
