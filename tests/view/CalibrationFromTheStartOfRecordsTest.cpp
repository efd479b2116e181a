// The first entry confirmed after the - key has stepped off the start of the records: the box's
// column is column 1 all the same, so the tenth entry measures the spacing instead of dividing
// by zero. Found by the desktop monkey (tests/desktop/MonkeyTest.cpp).
#include "PageSessionTesting.h"

namespace tv::test {

namespace {

class CalibrationFromTheStartOfRecords : public PageSessionTest {
  protected:
    void SetUp() override {
        Load(BirthsPage1878(), GraphicsFile1878);
        S.CalibrateTextbox();
    }
};

} // namespace

TEST_F(CalibrationFromTheStartOfRecords,
       TheTenthEntryAfterAFirstEntryOnLineZeroMeasuresTheSpacing) {
    ASSERT_EQ(S.Calib.CalibrationStage, 1);
    while (S.Table.CurrentLine > 0)
        Press(KeyNumMinus);
    EXPECT_NE(S.Content.NotesText.find(" Reached start of records"), std::string::npos);
    Press(KeyEnter);
    ASSERT_EQ(S.Calib.CalibrationStage, 2);
    EXPECT_EQ(S.Calib.ColumnTopLine[1], 0);
    // Nine records on from line 0, past the three header lines: the ninth record.
    EXPECT_EQ(S.Table.CurrentLine, LineOf1878Record(9));
    EXPECT_GT(S.Box.LinesFromTop, 0);
    Press(KeyDown, true);
    EXPECT_NO_THROW(Press(KeyEnter));
    EXPECT_EQ(S.Calib.CalibrationStage, 3);
    EXPECT_GT(S.Calib.LineIncrTop, 0.0F);
}

TEST_F(CalibrationFromTheStartOfRecords, AFileOfOneRecordIsStillTheDocumentedFailure) {
    Load(
        {"+INFO,verifier@example.org,,SEQUENCED,BIRTHS", "+S,1878,Mar,,", "ABBOTT,Mary,Leeds,9a,1"},
        GraphicsFile1878);
    S.Calib = {};
    S.CalibrateTextbox();
    Press(KeyEnter); // there is no tenth entry: the box stays on the first
    ASSERT_EQ(S.Calib.CalibrationStage, 2);
    EXPECT_EQ(S.Box.LinesFromTop, 0);
    try {
        Press(KeyEnter);
        FAIL() << "no run-time error";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number, 11);
    }
}

} // namespace tv::test
