#include "RecordBoxTesting.h"

#include <string>

namespace tv {

using test::RecordFields;

// The fixed-pitch measure gives every character 120 twips at 10 points.
class BoxFittingTest : public test::RecordBoxTest {
  protected:
    // A Times box in which exactly the given number of characters fits (0.9 of the width).
    static int32_t TimesBoxFor(int characters) { return 1200 * characters / 9 + 50; }

    // The name line "  WAINWRIGHT, " and the forenames; the second line "10a 12345".
    void ShowWainwright(const std::string& forenames, int boxCharacters) {
        RecordFields f;
        f.Surname = "WAINWRIGHT";
        f.Forenames = forenames;
        f.District = "";
        f.Volume = "10a";
        f.Page = "12345";
        s.Box.BoxWidth = TimesBoxFor(boxCharacters);
        Show(AddRecord(f));
    }
};

TEST_F(BoxFittingTest, TextThatFitsIsLeftAsItIs) {
    AddRecord();
    s.Box.BoxWidth = TimesBoxFor(33); // "  SMITH, John", two spaces, "Bolton   8c    123"
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John");
    EXPECT_EQ(s.Content.SecondLine, "  Bolton   8c    123");
}

TEST_F(BoxFittingTest, StepACollapsesTheFirstDoubleSpaceOfTheSecondLineFirst) {
    AddRecord();
    s.Box.BoxWidth = TimesBoxFor(32);
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John");
    EXPECT_EQ(s.Content.SecondLine, "  Bolton  8c    123");
}

TEST_F(BoxFittingTest, StepARepeatsOnTheSecondLineWhileTheTextDoesNotFit) {
    AddRecord();
    s.Box.BoxWidth = TimesBoxFor(31);
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John");
    EXPECT_EQ(s.Content.SecondLine, "  Bolton 8c    123");
}

TEST_F(BoxFittingTest, StepAAlternatesBetweenTheSecondLineAndTheEndOfALongNameLine) {
    s.Scan.DistrictPad = 0; // "  SMITH, John    Bolton" and "8c    123"
    AddRecord();
    s.Box.BoxWidth = TimesBoxFor(31);
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John   Bolton");
    EXPECT_EQ(s.Content.SecondLine, "  8c  123");
}

TEST_F(BoxFittingTest, StepAAtSixteenCharactersCollapsesTheLeadingDoubleSpace) {
    ShowWainwright("Jo", 26); // "  WAINWRIGHT, Jo" and "10a 12345"
    EXPECT_EQ(s.Content.NameLine, " WAINWRIGHT, Jo");
    EXPECT_EQ(s.Content.SecondLine, "  10a 12345");
}

TEST_F(BoxFittingTest, AtFifteenCharactersTheLeadingDoubleSpaceIsKeptAndTheLinesAreCut) {
    ShowWainwright("J", 25); // "  WAINWRIGHT, J" and "10a 12345"
    EXPECT_EQ(s.Content.NameLine, "  WAINWRIGHT..");
    EXPECT_EQ(s.Content.SecondLine, "  .. 12345");
}

TEST_F(BoxFittingTest, StepBCollapsesADoubleSpaceEarlyInTheNameLine) {
    ShowWainwright("Ann  Elizabeth Mary Jane", 48);
    EXPECT_EQ(s.Content.NameLine, "  WAINWRIGHT, Ann Elizabeth Mary Jane");
    EXPECT_EQ(s.Content.SecondLine, "  10a 12345");
}

TEST_F(BoxFittingTest, StepBRepeatsWhileADoubleSpaceIsFound) {
    ShowWainwright("Ann  Liz  Mary Jane Louisa", 49);
    EXPECT_EQ(s.Content.NameLine, "  WAINWRIGHT, Ann Liz Mary Jane Louisa");
}

TEST_F(BoxFittingTest, StepBStopsAsSoonAsTheTextFits) {
    ShowWainwright("Ann  Liz  Mary Jane Louisa", 50);
    EXPECT_EQ(s.Content.NameLine, "  WAINWRIGHT, Ann Liz  Mary Jane Louisa");
}

TEST_F(BoxFittingTest, StepCCutsBothLinesDownToFiveCharactersInABoxTooNarrowForAnything) {
    AddRecord();
    s.Box.BoxWidth = 0;
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  S..");
    EXPECT_EQ(s.Content.SecondLine, "  ..123");
}

TEST_F(BoxFittingTest, StepCStopsCuttingOnceTheTextFits) {
    AddRecord("TAYLOR", "Elizabeth");
    t.District[1] = "";
    t.Volume[1] = "10a";
    t.Page[1] = "12345";
    s.Box.BoxWidth = TimesBoxFor(27); // "  TAYLOR, Elizabeth" and "10a 12345": 30 characters
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  TAYLOR, Eliza..");
    EXPECT_EQ(s.Content.SecondLine, "  ..12345");
}

TEST_F(BoxFittingTest, CourierBoxesUseNinetySevenHundredthsOfTheWidth) {
    UseCourier(23, 99, 0);
    t.HasExtraField = false;
    AddRecord(); // "  SMITH, John" and "Bolton  8c   123": 31 characters
    s.Box.BoxWidth = 4000;
    Show(1);
    EXPECT_EQ(s.Content.SecondLine, "  Bolton  8c   123");
    UseTimes1870Births(); // "Bolton   8c    123": 33 characters, 30 fit
    s.ShowRecord(0);
    EXPECT_EQ(s.Content.SecondLine, "  Bolton 8c   123");
}

TEST_F(BoxFittingTest, TheProportionalMeasureFitsByTheWidthsOfTheLetters) {
    test::ProportionalMeasure proportional;
    Session session(Platform{fake.Prompts, proportional, fake.View, fake.Chooser, fake.Time});
    session.Scan = s.Scan;
    session.Table.LineCount = 1;
    session.Table.RecordCount = 1;
    session.Table.Surname[1] = "SMITH";
    session.Table.Forenames[1] = "John";
    session.Table.District[1] = "Bolton";
    session.Table.Volume[1] = "8c";
    session.Table.Page[1] = "123";
    session.Table.LineRecNo[1] = 1;
    session.Table.CurrentLine = 1;
    // 1400 + 100 + 1530 twips; two collapsed spaces save 100 and 0.9 x 3270 is 2943.
    session.Box.BoxWidth = 3270;
    session.ShowRecord(0);
    EXPECT_EQ(session.Content.NameLine, "  SMITH, John");
    EXPECT_EQ(session.Content.SecondLine, "  Bolton 8c    123");
    EXPECT_EQ(session.Content.NameBoxWidth, 1400);
    EXPECT_EQ(session.Content.DistBoxLeft, 1400);
    EXPECT_EQ(session.Content.DistBoxWidth, 1870);
}

TEST_F(BoxFittingTest, TheFontSizeOfTheBoxIsUsedForMeasuring) {
    AddRecord();
    s.Box.BoxWidth = TimesBoxFor(33);
    s.Content.BoxFontSize = 11; // 30 characters of 11 points fit where 33 of 10 do
    Show(1);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John");
    EXPECT_EQ(s.Content.SecondLine, "  Bolton 8c   123");
}

// --- Label layout

TEST_F(BoxFittingTest, TheDistrictLabelStartsWhereTheNameLabelEnds) {
    AddRecord();
    Show(1);
    EXPECT_EQ(s.Content.NameBoxWidth, 13 * 120);
    EXPECT_EQ(s.Content.DistBoxLeft, 13 * 120);
    EXPECT_EQ(s.Content.DistBoxWidth, 20000 - 13 * 120);
}

TEST_F(BoxFittingTest, TheDistrictLabelWidthIsNeverNegative) {
    AddRecord();
    s.Box.BoxWidth = 0;
    Show(1);
    EXPECT_EQ(s.Content.NameBoxWidth, 5 * 120);
    EXPECT_EQ(s.Content.DistBoxWidth, 0);
}

TEST_F(BoxFittingTest, ResizeFrameStacksTheNotesBelowTheNameLine) {
    s.Box.BoxWidth = 5000;
    s.Content.BoxFontSize = 12;
    s.ResizeFrame();
    EXPECT_EQ(s.Content.NameBoxHeight, 23 * 12);
    EXPECT_EQ(s.Content.NotesBoxWidth, 5000 - 240);
    EXPECT_EQ(s.Content.NotesBoxHeight, 23 * 8);
    EXPECT_EQ(s.Box.BoxHeight, 23 * 12 + 23 * 8);
}

TEST_F(BoxFittingTest, TheNotesAreaGrowsWithTheNotesShown) {
    AddRecord();
    AddOther("# one");
    AddOther("# two");
    t.LineFlagged[1] = true;
    Show(1);
    EXPECT_EQ(s.Content.NotesBoxHeight, 3 * 23 * 8);
    EXPECT_EQ(s.Box.BoxHeight, 23 * 10 + 3 * 23 * 8);
}

TEST_F(BoxFittingTest, ResizeFrameMeasuresTheCurrentNameLine) {
    s.Content.NameLine = "  SMITH, John";
    s.Box.BoxWidth = 3000;
    s.ResizeFrame();
    EXPECT_EQ(s.Content.NameBoxWidth, 1560);
    EXPECT_EQ(s.Content.DistBoxLeft, 1560);
    EXPECT_EQ(s.Content.DistBoxWidth, 1440);
}

// --- Font size and colour

TEST_F(BoxFittingTest, FAtSize40StaysAt40AndShiftFAt8StaysAt8) {
    s.Content.BoxFontSize = 40;
    s.ChangeFontSize(+1);
    EXPECT_EQ(s.Content.BoxFontSize, 40);
    s.Content.BoxFontSize = 8;
    s.ChangeFontSize(-1);
    EXPECT_EQ(s.Content.BoxFontSize, 8);
}

TEST_F(BoxFittingTest, NotesUseHalfTheBoxFontSizeFrom17AndStayAt8UpTo16) {
    const int expected[] = {8,  8,  8,  8,  8,  8,  8,  8,  8,  8,  9,  9,  10, 10, 11, 11, 12,
                            12, 13, 13, 14, 14, 15, 15, 16, 16, 17, 17, 18, 18, 19, 19, 20};
    s.Content.BoxFontSize = 8;
    s.ResizeFrame();
    for (int size = 8; size <= 40; ++size) {
        if (size > 8) s.ChangeFontSize(+1);
        EXPECT_EQ(s.Content.BoxFontSize, size);
        EXPECT_EQ(s.Content.NotesFontSize, expected[size - 8]) << "box font " << size;
        EXPECT_EQ(s.Content.NameBoxHeight, 23 * size);
    }
    EXPECT_EQ(s.Content.NotesBoxHeight, 23 * 20);
}

TEST_F(BoxFittingTest, FontSizeStepsDownOneAtATime) {
    s.Content.BoxFontSize = 20;
    s.ChangeFontSize(-1);
    EXPECT_EQ(s.Content.BoxFontSize, 19);
    EXPECT_EQ(s.Content.NotesFontSize, 9);
}

TEST_F(BoxFittingTest, TheBoxColoursAreTheSevenOfTheColourMenu) {
    EXPECT_EQ(BoxColours[0], (Rgb{0, 0, 0}));
    EXPECT_EQ(BoxColours[1], (Rgb{255, 192, 128}));
    EXPECT_EQ(BoxColours[2], (Rgb{192, 192, 192}));
    EXPECT_EQ(BoxColours[3], (Rgb{192, 192, 255}));
    EXPECT_EQ(BoxColours[4], (Rgb{135, 181, 207}));
    EXPECT_EQ(BoxColours[5], (Rgb{103, 192, 116}));
    EXPECT_EQ(BoxColours[6], (Rgb{192, 158, 103}));
}

TEST_F(BoxFittingTest, ChoosingAColourSetsItAndLaysTheBoxOut) {
    s.Box.BoxWidth = 5000;
    for (int16_t i = 0; i <= 6; ++i) {
        s.Box.BoxHeight = 0;
        s.SetBoxColour(i);
        EXPECT_EQ(s.Content.BoxColourIndex, i);
        EXPECT_EQ(s.Box.BoxHeight, 23 * 10 + 23 * 8);
    }
}

TEST_F(BoxFittingTest, AColourOutsideTheMenuIsARunTimeError) {
    EXPECT_THROW(s.SetBoxColour(7), RunTimeError);
    EXPECT_THROW(s.SetBoxColour(-1), RunTimeError);
    EXPECT_EQ(s.Content.BoxColourIndex, 1);
}

// --- Column adjustment

class AdjColTest : public BoxFittingTest {
  protected:
    void SetUp() override {
        BoxFittingTest::SetUp();
        UseCourier(25, 36, 2); // births 1911 Q3
        RecordFields f;
        f.Extra = "JONES";
        Show(AddRecord(f));
        for (int i = 0; i <= 3; ++i)
            s.Commands.AdjCol[i] = true;
    }
};

TEST_F(AdjColTest, AWidensThePartCarryingTheThirdFieldAndRedrawsTheBox) {
    s.AdjCol_Click(1);
    EXPECT_EQ(s.Scan.ExtraPad, 26);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John" + Spaces(13) + "JONES" + Spaces(5) + "Bolton");
}

TEST_F(AdjColTest, SWidensThePartBeforeTheDistrict) {
    s.AdjCol_Click(3);
    EXPECT_EQ(s.Scan.DistrictPad, 37);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John" + Spaces(12) + "JONES" + Spaces(7) + "Bolton");
}

TEST_F(AdjColTest, ShiftAAndShiftSNarrowThem) {
    s.AdjCol_Click(0);
    s.AdjCol_Click(2);
    EXPECT_EQ(s.Scan.ExtraPad, 24);
    EXPECT_EQ(s.Scan.DistrictPad, 35);
    EXPECT_EQ(s.Content.NameLine, "  SMITH, John" + Spaces(11) + "JONES" + Spaces(6) + "Bolton");
}

TEST_F(AdjColTest, TheThirdFieldNarrowsDownTo12AndWidensUpTo50) {
    s.Scan.ExtraPad = 13;
    s.AdjCol_Click(0);
    EXPECT_EQ(s.Scan.ExtraPad, 12);
    s.AdjCol_Click(0);
    EXPECT_EQ(s.Scan.ExtraPad, 12);
    s.Scan.ExtraPad = 49;
    s.AdjCol_Click(1);
    EXPECT_EQ(s.Scan.ExtraPad, 50);
    s.AdjCol_Click(1);
    EXPECT_EQ(s.Scan.ExtraPad, 50);
}

TEST_F(AdjColTest, TheDistrictNarrowsDownTo16AndWidensUpTo80) {
    s.Scan.DistrictPad = 17;
    s.AdjCol_Click(2);
    EXPECT_EQ(s.Scan.DistrictPad, 16);
    s.AdjCol_Click(2);
    EXPECT_EQ(s.Scan.DistrictPad, 16);
    s.Scan.DistrictPad = 79;
    s.AdjCol_Click(3);
    EXPECT_EQ(s.Scan.DistrictPad, 80);
    s.AdjCol_Click(3);
    EXPECT_EQ(s.Scan.DistrictPad, 80);
}

TEST_F(AdjColTest, AnUnpaddedDistrictCanOnlyBeNarrowed) {
    s.Scan.DistrictPad = 99;
    s.AdjCol_Click(3);
    EXPECT_EQ(s.Scan.DistrictPad, 99);
    s.AdjCol_Click(2);
    EXPECT_EQ(s.Scan.DistrictPad, 98);
}

TEST_F(AdjColTest, ADisabledButtonDoesNothing) {
    s.Commands.AdjCol[1] = false;
    s.Content.NameLine = "unchanged";
    s.AdjCol_Click(1);
    EXPECT_EQ(s.Scan.ExtraPad, 25);
    EXPECT_EQ(s.Content.NameLine, "unchanged");
}

TEST_F(AdjColTest, TheBoxIsPlacedAgainInsideTheImage) {
    s.Box.BoxTop = -500;
    s.Box.BoxLeft = -500;
    s.AdjCol_Click(1);
    EXPECT_EQ(s.Box.BoxTop, 70);
    EXPECT_EQ(s.Box.BoxLeft, 65);
}

} // namespace tv
