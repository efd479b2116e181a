// The lines of the diagnostics panel.
#include "help/Diagnostics.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

DiagnosticsInputs Sample() {
    DiagnosticsInputs in;
    in.ScreenHeight = 16200;
    in.ScreenWidth = 28800;
    in.TwipsPerPixelY = 15.0F;
    in.TwipsPerPixelX = 12.5F;
    in.Form = {250, 150, 14200, 12000};
    in.Control = {120, 600, 13800, 10500};
    in.ScrollY = 37;
    in.ScrollX = 3;
    in.Box = {1900, 2700, 6000, 900};
    in.NameBoxWidth = 4200;
    in.DistBoxWidth = 3900;
    in.ImagePixelHeight = 3401;
    in.ImagePixelWidth = 2400;
    in.Zoom = 0.625;
    in.Rotation = -1.255;
    in.TabFname = 1800;
    in.TabAge = 3600;
    in.TabDist = 4100;
    return in;
}

TEST(DiagnosticsText, GivesTheEighteenLinesJoinedWithCr) {
    EXPECT_EQ(DiagnosticsText(Sample()), "Diagnostics -\r"
                                         "Screen Height/Width    : 16200 28800\r"
                                         "-- TwipsPerPixel Y/X   : 15 12.5\r"
                                         "Main Form Height/Width : 12000 14200\r"
                                         "-- Top/Left            : 150 250\r"
                                         "Graphics Height/Width  : 10500 13800\r"
                                         "-- Top/Left            : 600 120\r"
                                         "im.ScrollY/X (pixels)  : 37 3\r"
                                         "--           (twips)   : 555 37.5\r"
                                         "Orange box Y/X (twips) : 2700 1900\r"
                                         "- relative to control  : 2100 1780\r"
                                         "- Height/Width         : 900 6000\r"
                                         "- width NameBox/DistBox: 4200 3900\r"
                                         "Image Height/Width     : 3401 2400\r"
                                         "-- modified by zoom    : 2126 1500\r"
                                         "Image Zoom / Rotation  : 0.62 -1.25\r"
                                         "tabFname/tabAge/tabDist: 1800 3600 4100\r"
                                         "Press ALT and D keys simultaneously to hide");
}

TEST(DiagnosticsText, EveryLabelIsTwentyFiveCharactersWide) {
    std::vector<std::string> rows;
    std::string text = DiagnosticsText(Sample());
    for (std::size_t start = 0, end = 0; end != std::string::npos; start = end + 1) {
        end = text.find('\r', start);
        rows.push_back(text.substr(start, end == std::string::npos ? end : end - start));
    }
    ASSERT_EQ(rows.size(), 18U);
    for (std::size_t i = 1; i + 1 < rows.size(); ++i) {
        EXPECT_EQ(rows[i].find(": "), 23U) << rows[i];
    }
}

TEST(DiagnosticsText, WholeZoomAndScrollValuesHaveNoDecimals) {
    DiagnosticsInputs in = Sample();
    in.Zoom = 2.0;
    in.Rotation = 90.0;
    in.ScrollX = 0;
    std::string text = DiagnosticsText(in);
    EXPECT_NE(text.find("-- modified by zoom    : 6802 4800\r"), std::string::npos);
    EXPECT_NE(text.find("Image Zoom / Rotation  : 2.00 90.00\r"), std::string::npos);
    EXPECT_NE(text.find("--           (twips)   : 555 0\r"), std::string::npos);
}

} // namespace
} // namespace tv
