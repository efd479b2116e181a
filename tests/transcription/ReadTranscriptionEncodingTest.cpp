// Transcriptions saved in another encoding: a UTF-8 byte-order mark is skipped so that the first
// line keeps its meaning, and a mark, UTF-16 or UTF-32 each give a "Suspect file " warning of
// their own before the others; every other byte is read by the reader's usual rules.
#include "ReaderFixture.h"
#include "transcription/TextEncoding.h"

#include <algorithm>

namespace tv::test {

namespace {

using namespace std::string_literals;

class ReadEncodingTest : public ReaderTest {};

// The text as UTF-16 or UTF-32 of either byte order, each character an ASCII one.
std::string Widened(const std::string& ascii, std::size_t width, bool bigEndian) {
    std::string wide;
    for (char c : ascii) {
        std::string unit(width, '\0');
        unit[bigEndian ? width - 1 : 0] = c;
        wide += unit;
    }
    return wide;
}

const std::string Births = BirthsHeader1911() + "SMITH,John,JONES,Leeds,9b,1\r\n";

constexpr const char* BomReason = "The file begins with a UTF-8 byte-order mark, which was skipped";
constexpr const char* Utf16Reason =
    "The file is written in UTF-16, two bytes a character, not as 8-bit text";
constexpr const char* Utf32Reason =
    "The file is written in UTF-32, four bytes a character, not as 8-bit text";

} // namespace

TEST(DetectEncoding, MarksAndTheNulsBesideTheFirstCharacter) {
    EXPECT_EQ(DetectEncoding("+INFO"), TextEncoding::Plain);
    EXPECT_EQ(DetectEncoding(""), TextEncoding::Plain);
    EXPECT_EQ(DetectEncoding("\xEF\xBB\xBF+"), TextEncoding::Utf8Bom);
    EXPECT_EQ(DetectEncoding("\xFF\xFE+\0"s), TextEncoding::Utf16);
    EXPECT_EQ(DetectEncoding("\xFE\xFF\0+"s), TextEncoding::Utf16);
    EXPECT_EQ(DetectEncoding("\xFF\xFE\0\0"s), TextEncoding::Utf32);
    EXPECT_EQ(DetectEncoding("\0\0\xFE\xFF"s), TextEncoding::Utf32);
    EXPECT_EQ(DetectEncoding("+\0I\0"s), TextEncoding::Utf16);
    EXPECT_EQ(DetectEncoding("\0+\0I"s), TextEncoding::Utf16);
    EXPECT_EQ(DetectEncoding("+\0\0\0"s), TextEncoding::Utf32);
    EXPECT_EQ(DetectEncoding("\0\0\0+"s), TextEncoding::Utf32);
    EXPECT_EQ(DetectEncoding("\0\0\0\0"s), TextEncoding::Plain);
    EXPECT_EQ(DetectEncoding("\xEF\xBB"), TextEncoding::Plain);
}

TEST_F(ReadEncodingTest, AByteOrderMarkIsSkippedSoTheInfoLineIsAHeader) {
    Read("\xEF\xBB\xBF" + Births);
    EXPECT_EQ(Table.LineText[1], "+INFO,someone@example.org,password,SEQ,BIRTHS,cp1252");
    EXPECT_EQ(Table.LineRecNo[1], -1);
    EXPECT_EQ(Table.HeaderEvent, "B");
    EXPECT_EQ(Table.RecordCount, 1);
    EXPECT_EQ(Table.LineRecNo[3], 1);
    EXPECT_EQ(Ask.Texts(),
              (std::vector<std::string>{SuspectText(PathOf("1911B30123.SCA"), BomReason)}));
}

TEST_F(ReadEncodingTest, AMarkIsSkippedOnlyAtTheStart) {
    Read(Births + "# \xEF\xBB\xBF a mark later on\r\n");
    EXPECT_EQ(Table.LineText[4], "# \xEF\xBB\xBF a mark later on");
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(ReadEncodingTest, CancelAtTheMarkQuits) {
    Ask.Script = {Answer::Cancel};
    EXPECT_EQ(Read("\xEF\xBB\xBF" + Births), QuitToken);
    EXPECT_EQ(Ask.Shown.size(), 1U);
}

TEST_F(ReadEncodingTest, Utf16IsToldFirstAndItsBytesReadAsTheyAre) {
    for (bool bigEndian : {false, true}) {
        for (bool mark : {false, true}) {
            Ask.Shown.clear();
            std::string bytes = Widened(Births, 2, bigEndian);
            if (mark) bytes = (bigEndian ? "\xFE\xFF" : "\xFF\xFE") + bytes;
            Read(bytes);
            const std::string path = PathOf("1911B30123.SCA");
            ASSERT_GE(Ask.Shown.size(), 2U) << bigEndian << mark;
            EXPECT_EQ(Ask.Shown[0].Text, SuspectText(path, Utf16Reason));
            const std::vector<std::string> texts = Ask.Texts();
            EXPECT_NE(std::find(texts.begin(), texts.end(), SuspectText(path, NoHeaderReason)),
                      texts.end());
            EXPECT_EQ(Table.HeaderEvent, "?"); // no byte is decoded
        }
    }
}

TEST_F(ReadEncodingTest, Utf32IsTold) {
    for (bool bigEndian : {false, true}) {
        for (bool mark : {false, true}) {
            Ask.Shown.clear();
            std::string bytes = Widened(Births, 4, bigEndian);
            if (mark) bytes = (bigEndian ? "\0\0\xFE\xFF"s : "\xFF\xFE\0\0"s) + bytes;
            Read(bytes);
            ASSERT_FALSE(Ask.Shown.empty());
            EXPECT_EQ(Ask.Shown[0].Text, SuspectText(PathOf("1911B30123.SCA"), Utf32Reason))
                << bigEndian << mark;
        }
    }
}

TEST_F(ReadEncodingTest, ControlBytesOfALineAreKeptAsTheyAre) {
    Read(Births + "# a NUL \0 and an escape \x1B[2J\r\n"s);
    EXPECT_EQ(Table.LineText[4], "# a NUL \0 and an escape \x1B[2J"s);
    EXPECT_TRUE(Ask.Shown.empty());
}

} // namespace tv::test
