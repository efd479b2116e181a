// Reading the settings at start-up: the version check, section "Global" with its ranges, and
// the ten scan sections.
#include "session/MemorySettingsStore.h"
#include "session/Settings.h"
#include "support/FakePrompts.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::FakePrompts;
using test::MemorySettingsStore;

constexpr ScreenSize FullHd{16200, 28800};

struct Start {
    MemorySettingsStore Store;
    FakePrompts Prompts;
    ScanHistory History;

    GlobalSettings Run(ScreenSize screen = FullHd) {
        return GetDefaults(Store, Prompts, History, screen);
    }
    void Global(const std::string& key, const std::string& value) {
        Store.Sections["Global"][key] = value;
    }
};

TEST(ValidateDefault, TrimsSpacesAndAcceptsBothEndsOfTheRange) {
    EXPECT_EQ(ValidateDefault("  9000  ", 6000, 11400, 1), 9000.0F);
    EXPECT_EQ(ValidateDefault("6000", 6000, 11400, 1), 6000.0F);
    EXPECT_EQ(ValidateDefault("11400", 6000, 11400, 1), 11400.0F);
    EXPECT_EQ(ValidateDefault("0.1", 0.1F, 1.0F, 0.3F), 0.1F);
}

TEST(ValidateDefault, NonNumericMissingOrOutOfRangeTextGivesTheDefault) {
    EXPECT_EQ(ValidateDefault("", 1, 6, 1), 1.0F);
    EXPECT_EQ(ValidateDefault("abc", 1, 6, 2), 2.0F);
    EXPECT_EQ(ValidateDefault("5999", 6000, 11400, 7), 7.0F);
    EXPECT_EQ(ValidateDefault("11401", 6000, 11400, 7), 7.0F);
    EXPECT_EQ(ValidateDefault("1e300", -9999, 9999, 0), 0.0F);
    EXPECT_EQ(ValidateDefault("-0.5", -9999, 9999, 0), -0.5F);
}

TEST(DecimalText, WritesNumbersWithoutNeedlessDigits) {
    EXPECT_EQ(DecimalText(0.3F), "0.3");
    EXPECT_EQ(DecimalText(27.5F), "27.5");
    EXPECT_EQ(DecimalText(-1.0F), "-1");
    EXPECT_EQ(DecimalText(100.0F), "100");
    EXPECT_EQ(DecimalText(1000000.0F), "1000000");
}

TEST(GetDefaults, FirstRunComputesTheSizeButOpensTheWindow100TwipsFromTheCorner) {
    Start start;
    GlobalSettings g = start.Run();
    EXPECT_TRUE(start.Prompts.Shown.empty());
    EXPECT_EQ(g.TextBoxColour, 1);
    EXPECT_FALSE(g.ShowRptSurnames);
    EXPECT_FALSE(g.Magnifier);
    EXPECT_EQ(g.FormHeight, 12000);
    EXPECT_EQ(g.FormWidth, 14200);
    EXPECT_EQ(g.FormTop, 100);
    EXPECT_EQ(g.FormLeft, 100);
    for (int k = 1; k <= HistorySize; ++k)
        EXPECT_TRUE(start.History.Entries[k].Empty());
}

TEST(GetDefaults, FormHeight9000WithSpacesOnAScreen12000HighIsAccepted) {
    Start start;
    start.Global("FormHeight", "  9000 ");
    EXPECT_EQ(start.Run({12000, 28800}).FormHeight, 9000);
}

TEST(GetDefaults, FormHeight11500OnAScreen12000HighIsRejectedForScreenHeightLess600) {
    Start start;
    start.Global("FormHeight", "11500");
    EXPECT_EQ(start.Run({12000, 28800}).FormHeight, 11400);
}

TEST(GetDefaults, NarrowScreenAcceptsUpToWidthLess200AndDefaultsToWidthLess600) {
    Start start;
    EXPECT_EQ(start.Run({16200, 15000}).FormWidth, 14400);
    start.Global("FormWidth", "14800");
    EXPECT_EQ(start.Run({16200, 15000}).FormWidth, 14800);
    start.Global("FormWidth", "14801");
    EXPECT_EQ(start.Run({16200, 15000}).FormWidth, 14400);
}

TEST(GetDefaults, TextBoxColourSixPointFourPassesAndIsRoundedSixPointFiveGivesOne) {
    Start start;
    start.Global("TextBoxColour", "6.4");
    EXPECT_EQ(start.Run().TextBoxColour, 6);
    start.Global("TextBoxColour", "6.5");
    EXPECT_EQ(start.Run().TextBoxColour, 1);
    start.Global("TextBoxColour", "5.5");
    EXPECT_EQ(start.Run().TextBoxColour, 6);
    start.Global("TextBoxColour", "4.5");
    EXPECT_EQ(start.Run().TextBoxColour, 4);
    start.Global("TextBoxColour", "6");
    EXPECT_EQ(start.Run().TextBoxColour, 6);
}

TEST(GetDefaults, TopAndLeftAreCheckedAgainstTheHeightAndWidthJustRead) {
    Start start;
    start.Global("FormHeight", "8000");
    start.Global("FormWidth", "10000");
    start.Global("FormTop", "5");
    start.Global("FormLeft", "28000");
    GlobalSettings g = start.Run();
    EXPECT_EQ(g.FormTop, (16200 - 8000) / 2);
    EXPECT_EQ(g.FormLeft, (28800 - 10000) / 2);
}

TEST(GetDefaults, MenuTicksAreReadAsYOrN) {
    Start start;
    start.Global("ShowRptSurnames", "Y");
    start.Global("Magnifier", "y");
    GlobalSettings g = start.Run();
    EXPECT_TRUE(g.ShowRptSurnames);
    EXPECT_FALSE(g.Magnifier);
}

TEST(GetDefaults, TheLineOptionsAreOnUnlessSwitchedOffAndAnInvalidValueIsY) {
    EXPECT_TRUE(Start().Run().LineUpAutomatically);
    EXPECT_TRUE(Start().Run().FollowPrintedLines);
    Start off;
    off.Global("LineUpAutomatically", "N");
    off.Global("FollowPrintedLines", "N");
    EXPECT_FALSE(off.Run().LineUpAutomatically);
    EXPECT_FALSE(off.Run().FollowPrintedLines);
    Start invalid;
    invalid.Global("LineUpAutomatically", "no");
    invalid.Global("FollowPrintedLines", "");
    EXPECT_TRUE(invalid.Run().LineUpAutomatically);
    EXPECT_TRUE(invalid.Run().FollowPrintedLines);
}

TEST(GetDefaults, SettingsOfAnEarlierLayoutAreWipedAfterTheMessage) {
    Start start;
    start.Global("Version", "0.9.1 / 01-Jan-2019");
    start.Global("FormHeight", "9000");
    start.Store.Sections["Scan0"]["ImgFile"] = "1911B30123.jpg";
    GlobalSettings g = start.Run();
    ASSERT_EQ(start.Prompts.Shown.size(), 1U);
    const Prompt& p = start.Prompts.Shown[0];
    EXPECT_EQ(p.Text, "The version of Tallyview you are about to run is different from \r"
                      "the last time you ran it.\r"
                      "Usually Tallyview remembers certain settings and preferences\r"
                      "but because you are running a different version, you may need\r"
                      "to reselect or respecify them.");
    EXPECT_EQ(p.Title, "Tallyview");
    EXPECT_EQ(p.Choice, Buttons::Ok);
    EXPECT_EQ(p.Icon, PromptIcon::Information);
    EXPECT_TRUE(start.Store.Sections.empty());
    EXPECT_EQ(g.FormHeight, 12000);
    EXPECT_TRUE(start.History.Entries[1].Empty());
}

TEST(GetDefaults, SettingsOfThisLayoutOrNoneAtAllAreKeptWithoutAMessage) {
    Start start;
    start.Global("RegVersion", "B");
    start.Global("Version", "0.9.1 / 01-Jan-2019");
    start.Global("FormHeight", "9000");
    EXPECT_EQ(start.Run().FormHeight, 9000);
    EXPECT_TRUE(start.Prompts.Shown.empty());

    Start noVersion;
    noVersion.Global("RegVersion", "A");
    noVersion.Global("FormHeight", "9000");
    EXPECT_EQ(noVersion.Run().FormHeight, 9000);
    EXPECT_TRUE(noVersion.Prompts.Shown.empty());
}

TEST(GetDefaults, ScanType0And43GiveType1) {
    Start start;
    start.Store.Sections["Scan0"] = {{"ImgFile", "a.jpg"}, {"ScanType", "0"}};
    start.Store.Sections["Scan1"] = {{"ImgFile", "b.jpg"}, {"ScanType", "43"}};
    start.Store.Sections["Scan2"] = {{"ImgFile", "c.jpg"}, {"ScanType", "42"}};
    start.Run();
    EXPECT_EQ(start.History.Entries[1].ScanType, 1);
    EXPECT_EQ(start.History.Entries[2].ScanType, 1);
    EXPECT_EQ(start.History.Entries[3].ScanType, 42);
}

// A whole number is accepted when minimum <= value <= maximum, and only then rounded: a value
// that would round into the range from outside it is not taken.
TEST(GetDefaults, WholeNumbersOutsideTheirRangeAreRejectedEvenWhenTheyWouldRoundIntoIt) {
    Start start;
    start.Store.Sections["Scan0"] = {{"ImgFile", "a.jpg"}, {"NumColumns", "0.6"}};
    start.Store.Sections["Scan1"] = {{"ImgFile", "b.jpg"}, {"NumColumns", "6.4"}};
    start.Store.Sections["Scan2"] = {{"ImgFile", "c.jpg"}, {"FrameFontSize", "7.6"}};
    start.Store.Sections["Scan3"] = {{"ImgFile", "d.jpg"}, {"FrameFontSize", "40.4"}};
    start.Store.Sections["Scan4"] = {{"ImgFile", "e.jpg"}, {"NumColumns", "5.6"}};
    start.Run();
    EXPECT_EQ(start.History.Entries[1].NumColumns, 3);
    EXPECT_EQ(start.History.Entries[2].NumColumns, 3);
    EXPECT_EQ(start.History.Entries[3].FrameFontSize, 10);
    EXPECT_EQ(start.History.Entries[4].FrameFontSize, 10);
    EXPECT_EQ(start.History.Entries[5].NumColumns, 6);
}

TEST(GetDefaults, TextBoxColourBelowOneIsRejectedThoughItWouldRoundToOne) {
    Start start;
    start.Global("TextBoxColour", "0.6");
    EXPECT_EQ(start.Run().TextBoxColour, 1);
    start.Global("TextBoxColour", "1.6");
    EXPECT_EQ(start.Run().TextBoxColour, 2);
}

TEST(GetDefaults, ScanSectionIsReadWithItsRangesAndDefaults) {
    Start start;
    start.Store.Sections["Scan4"] = {{"ImgFile", "1911B30123.jpg"},
                                     {"SCAFile", "1911B30123.QRL"},
                                     {"ImgFileDir", "/home/u/scans/"},
                                     {"SCAFileDir", "/home/u/qrl/"},
                                     {"NumColumns", "7"},
                                     {"LastChecked", "05 Nov 2026 09:07"},
                                     {"LineIncrTop", "27.5"},
                                     {"LineIncrLeft", "-0.25"},
                                     {"FrameFontSize", "41"},
                                     {"BoxPerCent", "0.05"},
                                     {"Scale", "80"},
                                     {"RecNo", "1001"},
                                     {"AntiAlias", "N"},
                                     {"Negative", "Y"},
                                     {"SurnameOwnLine", "Y"},
                                     {"Col1Top", "1520"},
                                     {"Col1Left", "300"},
                                     {"Col1First", "1"},
                                     {"Col2Top", "100001"},
                                     {"Col2Left", " 4500 "}};
    start.Run();
    const ScanHistoryEntry& e = start.History.Entries[5];
    EXPECT_EQ(e.ImgFile, "1911B30123.jpg");
    EXPECT_EQ(e.SCAFile, "1911B30123.QRL");
    EXPECT_EQ(e.ImgFileDir, "/home/u/scans/");
    EXPECT_EQ(e.SCAFileDir, "/home/u/qrl/");
    EXPECT_EQ(e.NumColumns, 3);
    EXPECT_EQ(e.ScanType, 1);
    EXPECT_EQ(e.LastChecked, "05 Nov 2026 09:07");
    EXPECT_EQ(e.LineIncrTop, 27.5F);
    EXPECT_EQ(e.LineIncrLeft, -0.25F);
    EXPECT_EQ(e.FrameFontSize, 10);
    EXPECT_EQ(e.BoxPerCent, 0.3F);
    EXPECT_EQ(e.Scale, 80.0F);
    EXPECT_EQ(e.RecNo, 0);
    EXPECT_FALSE(e.AntiAlias);
    EXPECT_TRUE(e.Negative);
    EXPECT_TRUE(e.Smoothing);
    EXPECT_EQ(e.SurnameOwnLine, "Y");
    EXPECT_EQ(e.ColTop[1], 1520);
    EXPECT_EQ(e.ColLeft[1], 300);
    EXPECT_EQ(e.ColFirst[1], 1);
    EXPECT_EQ(e.ColTop[2], -1);
    EXPECT_EQ(e.ColLeft[2], 4500);
    EXPECT_EQ(e.ColFirst[6], -1);
    for (int k : {1, 2, 3, 4, 6, 7, 8, 9, 10})
        EXPECT_TRUE(start.History.Entries[k].Empty()) << k;
}

TEST(GetDefaults, AnEmptyImageFileEndsThatEntry) {
    Start start;
    start.Store.Sections["Scan0"] = {{"ImgFile", ""}, {"SCAFile", "x.QRL"}, {"RecNo", "5"}};
    start.Store.Sections["Scan1"] = {{"ImgFile", "b.jpg"}, {"RecNo", "5"}};
    start.Run();
    EXPECT_TRUE(start.History.Entries[1].Empty());
    EXPECT_EQ(start.History.Entries[1].SCAFile, "");
    EXPECT_EQ(start.History.Entries[1].RecNo, 0);
    EXPECT_EQ(start.History.Entries[2].RecNo, 5);
}

TEST(GetDefaults, UncalibratedScanKeepsItsSpacingUnknown) {
    Start start;
    start.Store.Sections["Scan0"] = {{"ImgFile", "a.jpg"}, {"LineIncrTop", "0.5"}};
    start.Run();
    EXPECT_EQ(start.History.Entries[1].LineIncrTop, -1.0F);
    EXPECT_EQ(start.History.Entries[1].LineIncrLeft, 0.0F);
}

} // namespace
} // namespace tv
