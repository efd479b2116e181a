#include "core/Text.h"
#include "view/RecordBox.h"

namespace tv {
namespace {

using Slots = BoundedArray<std::string, 1, 3>;

// Shown in place of the third comment when more follow than the notes area has room for.
constexpr const char* MoreComments =
    "... use Show Statistics to see all comment lines after this entry";

bool Holds(const Slots& slots, const std::string& text) {
    for (int i = 1; i <= 3; ++i)
        if (slots[i] == text) return true;
    return false;
}

// Puts the text into the first empty slot; false when all three are full.
bool PutInFirstEmpty(Slots& slots, const std::string& text) {
    for (int i = 1; i <= 3; ++i) {
        if (slots[i].empty()) {
            slots[i] = text;
            return true;
        }
    }
    return false;
}

void AddStatus(Slots& slots, const std::string& text) {
    if (!Holds(slots, text)) PutInFirstEmpty(slots, text);
}

void AddComment(Slots& slots, const std::string& text) {
    if (Holds(slots, text)) return;
    if (!PutInFirstEmpty(slots, text)) slots[3] = MoreComments;
}

void RemoveStatus(Slots& slots, const std::string& text) {
    for (int i = 1; i <= 3; ++i) {
        if (slots[i] != text) continue;
        for (int k = i; k < 3; ++k)
            slots[k] = slots[k + 1];
        slots[3].clear();
        return;
    }
}

void AppendLine(std::string& notes, const std::string& line) {
    if (line.empty()) return;
    if (!notes.empty()) notes += CR;
    notes += line;
}

void Redraw(RecordBoxContent& box) {
    box.NotesText.clear();
    for (int i = 1; i <= 3; ++i)
        AppendLine(box.NotesText, box.StatusNotes[i]);
    for (int i = 1; i <= 3; ++i)
        AppendLine(box.NotesText, box.CommentNotes[i]);
}

} // namespace

void SetNote(RecordBoxContent& box, NoteKind kind, const std::string& text, bool redraw) {
    switch (kind) {
    case NoteKind::ClearAll:
        box.StatusNotes.Fill("");
        box.CommentNotes.Fill("");
        break;
    case NoteKind::AddStatus:
        AddStatus(box.StatusNotes, text);
        break;
    case NoteKind::AddComment:
        AddComment(box.CommentNotes, text);
        break;
    case NoteKind::RemoveStatus:
        RemoveStatus(box.StatusNotes, text);
        break;
    }
    if (redraw) Redraw(box);
}

} // namespace tv
