// Calibration by ENTER alone: once the printed lines of a clean generated page are found, ENTER
// pressed once per column and once more lines the box up, and the stored column tops and
// spacing agree with the page's truth.
#include "SessionFormsTesting.h"

#include "layout/ScanTypesForm.h"
#include "session/Form1.h"
#include "view/ImageView.h"

#include <QAction>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <cmath>

namespace tv::test {
namespace {

class LineUpByEnter : public FormsTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(LineUpByEnter, EnterAloneStoresTheColumnTopsAndSpacingOfThePage) {
    const SamplePage page = GeneratePage(GetParam(), Dir.Path());
    OpenPage(page);
    Session& s = S();
    ASSERT_TRUE(QTest::qWaitFor([&] { return s.Lines.Found.has_value(); }, 20000));
    ASSERT_FALSE(s.Lines.Found->Empty());
    // Nothing but ENTER: once for the first entry, once for the tenth, once per further column.
    for (int press = 0; press <= s.Scan.NumColumns; ++press)
        Press(Qt::Key_Return);
    ASSERT_EQ(s.Calib.CalibrationStage, 0);
    const ViewMetrics m = Window->View().Metrics();
    const double twips = m.TwipsPerPixelY * m.Zoom; // per scan pixel
    const double tolerance = page.Pitch / 4.0 * twips;
    for (int c = 1; c <= s.Scan.NumColumns; ++c) {
        const int first = page.FirstLineOfColumn(c);
        EXPECT_EQ(s.Calib.ColumnTopLine[c], first) << "column " << c;
        const SamplePage::Place& place = page.Places.at(first);
        EXPECT_NEAR(s.Calib.ColumnTopY[c], place.Y * twips, tolerance) << "column " << c;
        EXPECT_NEAR(s.Calib.ColumnTopX[c], place.X * twips, page.Pitch * twips) << "column " << c;
    }
    // The spacing down a column: the printed lines from the first entry to the tenth.
    const double truePitch = page.Pitch * twips;
    EXPECT_NEAR(s.Calib.LineIncrTop, truePitch, truePitch * 0.03);
}

INSTANTIATE_TEST_SUITE_P(EveryKind, LineUpByEnter,
                         ::testing::Values("births1843", "births1872", "births1872double",
                                           "births1911", "births1965", "births1988", "births1995"));

class LineUpMenu : public FormsTest {};

TEST_F(LineUpMenu, TheScanMenuItemsAreTickedAtFirstAndUntickingThemStopsTheLiningUp) {
    const SamplePage page = GeneratePage("births1911", Dir.Path());
    OpenPage(page);
    Session& s = S();
    ASSERT_TRUE(QTest::qWaitFor([&] { return s.Lines.Found.has_value(); }, 20000));
    auto* lineUp = Find<QAction>("MenuLineUpAutomatically");
    auto* follow = Find<QAction>("MenuFollowPrintedLines");
    ASSERT_NE(lineUp, nullptr);
    ASSERT_NE(follow, nullptr);
    EXPECT_EQ(lineUp->text(), "Line Up Automatically");
    EXPECT_EQ(follow->text(), "Follow Printed Lines");
    EXPECT_TRUE(lineUp->isChecked());
    EXPECT_TRUE(follow->isChecked());
    lineUp->trigger();
    follow->trigger();
    EXPECT_FALSE(s.Lines.LineUpAutomatically);
    EXPECT_FALSE(s.Lines.FollowPrintedLines);
    EXPECT_FALSE(lineUp->isChecked());
    Press(Qt::Key_Return);
    // The tenth entry by the calibration's own estimate: no printed line was used.
    EXPECT_EQ(s.Calib.CalibrationStage, 2);
    EXPECT_FALSE(s.Lines.LinedUp.has_value());
    EXPECT_TRUE(QTest::qWaitForWindowActive(Window));
}

// C in the first stage chooses the layout again: with another number of columns the lines are
// found again for it (and read again), and ENTER alone still calibrates the page.
TEST_F(LineUpMenu, ALayoutWithOtherColumnsChosenByCFindsTheLinesAgain) {
    RealScanTypes = true;
    const SamplePage page = GeneratePage("births1872", Dir.Path());
    OpenPage(page);
    Session& s = S();
    ASSERT_TRUE(QTest::qWaitFor([&] { return s.Lines.Found.has_value(); }, 20000));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Window->FindingLines(); }, 20000));
    ASSERT_EQ(s.Scan.NumColumns, 3);
    EXPECT_EQ(s.Lines.Found->Columns.size(), 3U);
    auto choose = [](int columns) {
        WhenScanTypesShown([columns](ScanTypesForm& form) {
            form.OptCol(columns)->click();
            form.OptPage(1)->click();
            form.CloseButton->click();
        });
    };
    choose(2);
    Press(Qt::Key_C);
    ASSERT_EQ(s.Scan.NumColumns, 2);
    EXPECT_TRUE(Window->FindingLines());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Window->FindingLines(); }, 20000));
    choose(3);
    Press(Qt::Key_C);
    ASSERT_EQ(s.Scan.NumColumns, 3);
    EXPECT_TRUE(Window->FindingLines());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Window->FindingLines(); }, 20000));
    ASSERT_EQ(s.Lines.Found->Columns.size(), 3U);
    for (int press = 0; press <= s.Scan.NumColumns; ++press)
        Press(Qt::Key_Return);
    ASSERT_EQ(s.Calib.CalibrationStage, 0);
    const ViewMetrics m = Window->View().Metrics();
    const double twips = m.TwipsPerPixelY * m.Zoom;
    for (int c = 1; c <= s.Scan.NumColumns; ++c) {
        const SamplePage::Place& place = page.Places.at(page.FirstLineOfColumn(c));
        EXPECT_NEAR(s.Calib.ColumnTopY[c], place.Y * twips, page.Pitch / 4.0 * twips)
            << "column " << c;
    }
    EXPECT_TRUE(QTest::qWaitForWindowActive(Window));
}

} // namespace
} // namespace tv::test
