#include "core/Text.h"
#include "session/Session.h"

#include <algorithm>

namespace tv {
namespace {

// The width kept free at the right of the notes for the box's resize grip.
constexpr int32_t ResizeGripWidth = 240;

int16_t NotesFontSizeFor(int16_t boxFontSize) {
    return boxFontSize > 16 ? To16(boxFontSize / 2) : To16(MinFontSize);
}

int32_t NoteLineCount(const std::string& notes) {
    if (notes.empty()) return 1;
    return To32(1 + std::count(notes.begin(), notes.end(), CR));
}

} // namespace

void Session::ResizeFrame() {
    RecordBoxContent& c = Content;
    const std::string& font = Scan.FontName;
    c.NotesFontSize = NotesFontSizeFor(c.BoxFontSize);
    c.NameBoxHeight = P.Measure.LineHeight(font, c.BoxFontSize);
    c.NotesBoxWidth = std::max(0, To32(static_cast<int64_t>(Box.BoxWidth) - ResizeGripWidth));
    c.NotesBoxHeight = To32(static_cast<int64_t>(NoteLineCount(c.NotesText)) *
                            P.Measure.LineHeight(font, c.NotesFontSize));
    Box.BoxHeight = To32(static_cast<int64_t>(c.NameBoxHeight) + c.NotesBoxHeight);
    c.NameBoxWidth = P.Measure.TextWidth(c.NameLine, font, c.BoxFontSize);
    c.DistBoxLeft = c.NameBoxWidth;
    c.DistBoxWidth = std::max(0, To32(static_cast<int64_t>(Box.BoxWidth) - c.NameBoxWidth));
}

void Session::SetBoxColour(int16_t index) {
    if (index < 0 || index >= static_cast<int16_t>(BoxColours.size()))
        throw RunTimeError::SubscriptOutOfRange();
    Content.BoxColourIndex = index;
    ResizeFrame();
}

void Session::ChangeFontSize(int delta) {
    long long size = static_cast<long long>(Content.BoxFontSize) + delta;
    Content.BoxFontSize = To16(std::clamp<long long>(size, MinFontSize, MaxFontSize));
    ResizeFrame();
}

// The limits 13/50 and 17/80 are deliberate: a district pad of 99 from the layout tables can
// only be narrowed here, never widened back to 99.
void Session::AdjCol_Click(int16_t index) {
    if (!Commands.AdjCol[index]) return;
    switch (index) {
    case 0:
        if (Scan.ExtraPad >= 13) Scan.ExtraPad = To16(Scan.ExtraPad - 1);
        break;
    case 1:
        if (Scan.ExtraPad < 50) Scan.ExtraPad = To16(Scan.ExtraPad + 1);
        break;
    case 2:
        if (Scan.DistrictPad >= 17) Scan.DistrictPad = To16(Scan.DistrictPad - 1);
        break;
    default:
        if (Scan.DistrictPad < 80) Scan.DistrictPad = To16(Scan.DistrictPad + 1);
        break;
    }
    ShowRecord(0);
    EnsureFrameVisible();
}

} // namespace tv
