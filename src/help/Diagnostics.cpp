#include "help/Diagnostics.h"

#include "core/Text.h"
#include "session/Settings.h"

#include <array>
#include <cstdio>
#include <initializer_list>

namespace tv {

namespace {

// A number with a fixed count of decimals ("0" and "0.00"); a tie goes to the even digit.
std::string Fixed(double value, int decimals) {
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals, value);
    return buffer.data();
}

std::string Line(const char* label, std::initializer_list<std::string> values) {
    std::string line = label;
    bool first = true;
    for (const std::string& value : values) {
        if (!first) line += ' ';
        line += value;
        first = false;
    }
    return line;
}

std::string Whole(int32_t value) {
    return std::to_string(value);
}

} // namespace

std::string DiagnosticsText(const DiagnosticsInputs& in) {
    const std::array<std::string, 18> lines = {
        "Diagnostics -",
        Line("Screen Height/Width    : ", {Whole(in.ScreenHeight), Whole(in.ScreenWidth)}),
        Line("-- TwipsPerPixel Y/X   : ",
             {DecimalText(in.TwipsPerPixelY), DecimalText(in.TwipsPerPixelX)}),
        Line("Main Form Height/Width : ", {Whole(in.Form.Height), Whole(in.Form.Width)}),
        Line("-- Top/Left            : ", {Whole(in.Form.Top), Whole(in.Form.Left)}),
        Line("Graphics Height/Width  : ", {Whole(in.Control.Height), Whole(in.Control.Width)}),
        Line("-- Top/Left            : ", {Whole(in.Control.Top), Whole(in.Control.Left)}),
        Line("im.ScrollY/X (pixels)  : ", {Whole(in.ScrollY), Whole(in.ScrollX)}),
        Line("--           (twips)   : ",
             {DecimalText(static_cast<float>(in.ScrollY) * in.TwipsPerPixelY),
              DecimalText(static_cast<float>(in.ScrollX) * in.TwipsPerPixelX)}),
        Line("Orange box Y/X (twips) : ", {Whole(in.Box.Top), Whole(in.Box.Left)}),
        Line("- relative to control  : ",
             {Whole(in.Box.Top - in.Control.Top), Whole(in.Box.Left - in.Control.Left)}),
        Line("- Height/Width         : ", {Whole(in.Box.Height), Whole(in.Box.Width)}),
        Line("- width NameBox/DistBox: ", {Whole(in.NameBoxWidth), Whole(in.DistBoxWidth)}),
        Line("Image Height/Width     : ", {Whole(in.ImagePixelHeight), Whole(in.ImagePixelWidth)}),
        Line("-- modified by zoom    : ",
             {Fixed(in.ImagePixelHeight * in.Zoom, 0), Fixed(in.ImagePixelWidth * in.Zoom, 0)}),
        Line("Image Zoom / Rotation  : ", {Fixed(in.Zoom, 2), Fixed(in.Rotation, 2)}),
        Line("tabFname/tabAge/tabDist: ",
             {Whole(in.TabFname), Whole(in.TabAge), Whole(in.TabDist)}),
        "Press ALT and D keys simultaneously to hide",
    };
    std::string text;
    for (const std::string& line : lines) {
        if (!text.empty()) text += CR;
        text += line;
    }
    return text;
}

} // namespace tv
