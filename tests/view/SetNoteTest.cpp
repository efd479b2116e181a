#include "view/RecordBox.h"

#include <gtest/gtest.h>

#include <string>

namespace tv {

namespace {
const std::string MoreComments =
    "... use Show Statistics to see all comment lines after this entry";
}

class SetNoteTest : public ::testing::Test {
  protected:
    RecordBoxContent box;

    void Status(const std::string& text) { SetNote(box, NoteKind::AddStatus, text, true); }
    void Comment(const std::string& text) { SetNote(box, NoteKind::AddComment, text, true); }
    void Remove(const std::string& text) { SetNote(box, NoteKind::RemoveStatus, text, true); }
};

TEST_F(SetNoteTest, TheSameStatusMessageAddedTwiceIsShownOnce) {
    Status("Your transcription file has changed - press R to reload it");
    Status("Your transcription file has changed - press R to reload it");
    EXPECT_EQ(box.StatusNotes[1], "Your transcription file has changed - press R to reload it");
    EXPECT_EQ(box.StatusNotes[2], "");
    EXPECT_EQ(box.NotesText, "Your transcription file has changed - press R to reload it");
}

TEST_F(SetNoteTest, StatusMessagesFillTheFirstEmptySlot) {
    Status("one");
    Status("two");
    EXPECT_EQ(box.StatusNotes[1], "one");
    EXPECT_EQ(box.StatusNotes[2], "two");
    EXPECT_EQ(box.StatusNotes[3], "");
}

TEST_F(SetNoteTest, AFourthStatusMessageIsDropped) {
    Status("one");
    Status("two");
    Status("three");
    Status("four");
    EXPECT_EQ(box.StatusNotes[3], "three");
    EXPECT_EQ(box.NotesText, "one\rtwo\rthree");
}

TEST_F(SetNoteTest, TheSameCommentAddedTwiceIsShownOnce) {
    Comment("  Following line: # x");
    Comment("  Following line: # x");
    EXPECT_EQ(box.CommentNotes[2], "");
    EXPECT_EQ(box.NotesText, "  Following line: # x");
}

TEST_F(SetNoteTest, AFourthCommentReplacesTheThirdByTheOverflowNote) {
    Comment("c1");
    Comment("c2");
    Comment("c3");
    Comment("c4");
    EXPECT_EQ(box.CommentNotes[1], "c1");
    EXPECT_EQ(box.CommentNotes[2], "c2");
    EXPECT_EQ(box.CommentNotes[3], MoreComments);
    EXPECT_EQ(box.NotesText, "c1\rc2\r" + MoreComments);
}

TEST_F(SetNoteTest, ACommentAlreadyShownDoesNotOverflowTheFullSlots) {
    Comment("c1");
    Comment("c2");
    Comment("c3");
    Comment("c2");
    Comment("c3");
    EXPECT_EQ(box.CommentNotes[3], "c3");
}

TEST_F(SetNoteTest, RemovingAStatusMessageMovesTheLaterOnesUp) {
    Status("one");
    Status("two");
    Status("three");
    Remove("one");
    EXPECT_EQ(box.StatusNotes[1], "two");
    EXPECT_EQ(box.StatusNotes[2], "three");
    EXPECT_EQ(box.StatusNotes[3], "");
    EXPECT_EQ(box.NotesText, "two\rthree");
}

TEST_F(SetNoteTest, RemovingTheMiddleStatusMessageLeavesTheOthersInOrder) {
    Status("one");
    Status("two");
    Status("three");
    Remove("two");
    Status("four");
    EXPECT_EQ(box.NotesText, "one\rthree\rfour");
}

TEST_F(SetNoteTest, RemovingAMessageThatIsNotShownChangesNothing) {
    Status("one");
    Remove("two");
    EXPECT_EQ(box.StatusNotes[1], "one");
    EXPECT_EQ(box.NotesText, "one");
}

TEST_F(SetNoteTest, RemovingDoesNotTouchTheComments) {
    Comment("one");
    Remove("one");
    EXPECT_EQ(box.CommentNotes[1], "one");
}

TEST_F(SetNoteTest, ClearingEmptiesAllSixSlots) {
    Status("s1");
    Status("s2");
    Comment("c1");
    Comment("c2");
    Comment("c3");
    SetNote(box, NoteKind::ClearAll, "", true);
    for (int i = 1; i <= 3; ++i) {
        EXPECT_EQ(box.StatusNotes[i], "");
        EXPECT_EQ(box.CommentNotes[i], "");
    }
    EXPECT_EQ(box.NotesText, "");
}

TEST_F(SetNoteTest, TheNotesListStatusMessagesBeforeComments) {
    Comment("c1");
    Status("s1");
    Comment("c2");
    Status("s2");
    EXPECT_EQ(box.NotesText, "s1\rs2\rc1\rc2");
}

TEST_F(SetNoteTest, WithoutRedrawTheNotesTextIsKeptUntilTheNextRedraw) {
    Status("one");
    SetNote(box, NoteKind::AddStatus, "two", false);
    EXPECT_EQ(box.NotesText, "one");
    EXPECT_EQ(box.StatusNotes[2], "two");
    SetNote(box, NoteKind::ClearAll, "", false);
    EXPECT_EQ(box.NotesText, "one");
    SetNote(box, NoteKind::AddStatus, "three", true);
    EXPECT_EQ(box.NotesText, "three");
}

} // namespace tv
