// The scan layout options form: its captions, the preselection, the page options a column choice
// allows, the Apply caption and the selection it hands to the session when it closes.
#include "SessionFormsTesting.h"

#include "layout/ScanTypesForm.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace tv::test {
namespace {

// A point on an option's indicator, where a click takes (not beyond its caption).
QPoint OnCaption(const QRadioButton* option) {
    return {8, option->height() / 2};
}

class ScanTypesFormTest : public ::testing::Test {
  protected:
    ScanTypesForm Form;

    bool HasLabel(const QString& text) const {
        for (const QLabel* label : Form.findChildren<QLabel*>())
            if (label->text() == text) return true;
        return false;
    }

    // Opens the form modally for the scan type, lets the user act, and applies the selection.
    ScanType ChooseFor(ScanType scan, const std::function<void(ScanTypesForm&)>& user) {
        WhenScanTypesShown(user);
        RecordTable table;
        ColumnTopLines tops;
        ApplyScanLayout(Form.Choose(PreselectScanLayout(scan)), scan, table, tops);
        return scan;
    }
};

TEST_F(ScanTypesFormTest, CaptionsAreThoseOfTheForm) {
    EXPECT_EQ(Form.windowTitle(), "Tallyview");
    EXPECT_TRUE(HasLabel("Select type of scan"));
    const char* columns[] = {"1 column",  "2 columns", "3 columns",
                             "2 columns", "4 columns", "6 columns"};
    for (int i = 1; i <= 6; ++i)
        EXPECT_EQ(Form.OptCol(i)->text(), columns[i - 1]) << i;
    const char* pages[] = {"Whole Page Scan",
                           "Top Half",
                           "Bottom Half",
                           "Top Third",
                           "Middle Third",
                           "Bottom Third",
                           "2 page transcription",
                           "Left hand page transcription",
                           "Right hand page transcription"};
    for (int i = 1; i <= 9; ++i)
        EXPECT_EQ(Form.OptPage(i)->text(), pages[i - 1]) << i;
    for (const char* group : {"Single page", "Double page (total of ...)", "Half Page Scan",
                              "Third Page Scan", "Double Page Scan"})
        EXPECT_TRUE(HasLabel(group)) << group;
    EXPECT_EQ(Form.Check1->text(), "Surnames on a separate line in the scan");
    EXPECT_EQ(Form.Check1->toolTip(), "This should normally only be ticked for 1963 Qtr 2 and "
                                      "later scans that have the surname on a separate line");
    EXPECT_EQ(Form.OptCol(4)->objectName(), "OptCol4");
    EXPECT_EQ(Form.OptPage(9)->objectName(), "OptPage9");
}

TEST_F(ScanTypesFormTest, OpensWithTheCurrentLayoutSelected) {
    ScanType scan;
    scan.NumColumns = 3;
    scan.ScanTypeCode = 33;
    scan.SurnameOwnLine = true;
    Form.Preselect(PreselectScanLayout(scan));
    EXPECT_TRUE(Form.OptCol(3)->isChecked());
    EXPECT_TRUE(Form.OptPage(6)->isChecked());
    EXPECT_TRUE(Form.Check1->isChecked());
    EXPECT_EQ(Form.CloseButton->text(), "Close");
}

TEST_F(ScanTypesFormTest, DoublePageColumnsAllowOnlyTheDoublePageOptions) {
    Form.Preselect({3, 2, false});
    for (int i = 1; i <= 9; ++i)
        EXPECT_EQ(Form.OptPage(i)->isEnabled(), i <= 6) << i;
    QTest::mouseClick(Form.OptCol(5), Qt::LeftButton, {}, OnCaption(Form.OptCol(5)));
    for (int i = 1; i <= 9; ++i)
        EXPECT_EQ(Form.OptPage(i)->isEnabled(), i >= 7) << i;
    EXPECT_TRUE(Form.OptPage(7)->isChecked());
    QTest::mouseClick(Form.OptCol(2), Qt::LeftButton, {}, OnCaption(Form.OptCol(2)));
    EXPECT_TRUE(Form.OptPage(1)->isEnabled());
    EXPECT_TRUE(Form.OptPage(1)->isChecked());
    EXPECT_FALSE(Form.OptPage(8)->isEnabled());
}

TEST_F(ScanTypesFormTest, PressingAnOptionCaptionsTheButtonApply) {
    Form.Preselect({3, 1, false});
    EXPECT_EQ(Form.CloseButton->text(), "Close");
    QTest::mousePress(Form.OptPage(2), Qt::LeftButton, {}, OnCaption(Form.OptPage(2)));
    EXPECT_EQ(Form.CloseButton->text(), "Apply");
    Form.Preselect({3, 1, false}); // opened again
    EXPECT_EQ(Form.CloseButton->text(), "Close");
    QTest::mousePress(Form.Check1, Qt::LeftButton);
    EXPECT_EQ(Form.CloseButton->text(), "Close");
}

TEST_F(ScanTypesFormTest, PressingADisabledPageOptionChangesNothingNotEvenTheCaption) {
    Form.Preselect({3, 1, false});
    ASSERT_FALSE(Form.OptPage(8)->isEnabled());
    QTest::mousePress(Form.OptPage(8), Qt::LeftButton, {}, OnCaption(Form.OptPage(8)));
    QTest::mouseRelease(Form.OptPage(8), Qt::LeftButton, {}, OnCaption(Form.OptPage(8)));
    EXPECT_EQ(Form.CloseButton->text(), "Close");
    EXPECT_TRUE(Form.OptPage(1)->isChecked());
    EXPECT_FALSE(Form.OptPage(8)->isChecked());
}

TEST_F(ScanTypesFormTest, FourColumnsLeftHandPageGivesTwoColumnsOfCode41) {
    ScanType chosen = ChooseFor(ScanType{}, [](ScanTypesForm& form) {
        QTest::mouseClick(form.OptCol(5), Qt::LeftButton, {}, OnCaption(form.OptCol(5)));
        QTest::mouseClick(form.OptPage(8), Qt::LeftButton, {}, OnCaption(form.OptPage(8)));
        EXPECT_EQ(form.CloseButton->text(), "Apply");
        QTest::mouseClick(form.CloseButton, Qt::LeftButton);
    });
    EXPECT_EQ(chosen.NumColumns, 2);
    EXPECT_EQ(chosen.ScanTypeCode, 41);
}

TEST_F(ScanTypesFormTest, ThreeColumnsBottomThirdGivesCode33) {
    ScanType chosen = ChooseFor(ScanType{}, [](ScanTypesForm& form) {
        QTest::mouseClick(form.OptCol(3), Qt::LeftButton, {}, OnCaption(form.OptCol(3)));
        QTest::mouseClick(form.OptPage(6), Qt::LeftButton, {}, OnCaption(form.OptPage(6)));
        QTest::mouseClick(form.CloseButton, Qt::LeftButton);
    });
    EXPECT_EQ(chosen.NumColumns, 3);
    EXPECT_EQ(chosen.ScanTypeCode, 33);
}

TEST_F(ScanTypesFormTest, ClosingUntouchedAppliesThePreselection) {
    ScanType scan;
    scan.NumColumns = 2;
    scan.ScanTypeCode = 22;
    ScanType chosen = ChooseFor(scan, [](ScanTypesForm& form) { form.CloseButton->click(); });
    EXPECT_EQ(chosen.NumColumns, 2);
    EXPECT_EQ(chosen.ScanTypeCode, 22);
}

TEST_F(ScanTypesFormTest, ClosingTheWindowAppliesWhatItShows) {
    ScanType chosen = ChooseFor(ScanType{}, [](ScanTypesForm& form) {
        QTest::mouseClick(form.OptCol(1), Qt::LeftButton, {}, OnCaption(form.OptCol(1)));
        form.close();
    });
    EXPECT_EQ(chosen.NumColumns, 1);
}

} // namespace
} // namespace tv::test
