#pragma once
// The content of the box that floats over the scan: its two text lines, the notes, the footer,
// the font size and colour, and the widths of its labels.
#include "core/Checked.h"

#include <array>
#include <cstdint>
#include <string>

namespace tv {

enum class NoteKind : int { ClearAll = 0, AddStatus = 1, AddComment = 2, RemoveStatus = 3 };

struct Rgb {
    int Red = 0;
    int Green = 0;
    int Blue = 0;
    bool operator==(const Rgb&) const = default;
};

// The box colours 0..6; entry 0 is black, which only the colour menu can choose.
inline constexpr std::array<Rgb, 7> BoxColours = {
    Rgb{0, 0, 0},       Rgb{255, 192, 128}, Rgb{192, 192, 192}, Rgb{192, 192, 255},
    Rgb{135, 181, 207}, Rgb{103, 192, 116}, Rgb{192, 158, 103}};

inline constexpr int MinFontSize = 8;
inline constexpr int MaxFontSize = 40;

struct RecordBoxContent {
    std::string NameLine;   // NameBox caption
    std::string SecondLine; // DistBox caption (with its two leading spaces)
    std::string NotesText;  // NotesBox caption, lines joined with CR
    std::string FootLabel;  // FootLabel caption, two lines joined with CR
    BoundedArray<std::string, 1, 3> StatusNotes;
    BoundedArray<std::string, 1, 3> CommentNotes;
    int16_t BoxFontSize = 10;
    int16_t NotesFontSize = 8;
    int16_t BoxColourIndex = 1;
    // Label layout inside the box (twips), as ResizeFrame last computed it.
    int32_t NameBoxWidth = 0;
    int32_t DistBoxLeft = 0;
    int32_t DistBoxWidth = 0;
    int32_t NameBoxHeight = 0;
    int32_t NotesBoxWidth = 0;
    int32_t NotesBoxHeight = 0;
};

// Adds, removes or clears the notes; redraw rebuilds NotesText.
void SetNote(RecordBoxContent& box, NoteKind kind, const std::string& text, bool redraw);

} // namespace tv
