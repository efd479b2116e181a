#include "ReaderFixture.h"
#include "transcription/LineReader.h"

#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <random>

namespace tv::test {

namespace {

using namespace std::string_literals;

class ReadLinesTest : public ReaderTest {};

// A header and n - 2 records of a births file of 1911 Sep quarter: n lines with CR LF ends.
std::string FileOfLines(int n) {
    std::string bytes = BirthsHeader1911();
    for (int i = 3; i <= n; ++i)
        bytes += "SMITH,John,JONES,Leeds,9b,"s + std::to_string(i) + "\r\n";
    return bytes;
}

} // namespace

TEST_F(ReadLinesTest, LinesEndAtCrLf) {
    Read(BirthsHeader1911() + "SMITH,John,JONES,Leeds,9b,1\r\n# end\r\n");
    EXPECT_EQ(Table.LineCount, 4);
    EXPECT_EQ(Table.LineText[3], "SMITH,John,JONES,Leeds,9b,1");
    EXPECT_EQ(Table.LineText[4], "# end");
}

TEST_F(ReadLinesTest, LinesEndAtLfAlone) {
    Read("+S,1911,Sep\nSMITH,John,JONES,Leeds,9b,1\n# end\n");
    EXPECT_EQ(Table.LineCount, 3);
    EXPECT_EQ(Table.LineText[2], "SMITH,John,JONES,Leeds,9b,1");
    EXPECT_EQ(Table.LineText[3], "# end");
}

TEST_F(ReadLinesTest, LinesEndAtCrAlone) {
    Read("+S,1911,Sep\rSMITH,John,JONES,Leeds,9b,1\r# end\r");
    EXPECT_EQ(Table.LineCount, 3);
    EXPECT_EQ(Table.LineText[2], "SMITH,John,JONES,Leeds,9b,1");
    EXPECT_EQ(Table.LineText[3], "# end");
}

TEST_F(ReadLinesTest, MixedLineEndsAndEmptyLines) {
    Read("+S,1911,Sep\r\n# a\n\r# b\r\r\n\n# c");
    EXPECT_EQ(Table.LineCount, 7);
    EXPECT_EQ(Table.LineText[2], "# a");
    EXPECT_EQ(Table.LineText[3], "");
    EXPECT_EQ(Table.LineText[4], "# b");
    EXPECT_EQ(Table.LineText[5], "");
    EXPECT_EQ(Table.LineText[6], "");
    EXPECT_EQ(Table.LineText[7], "# c");
    EXPECT_EQ(Table.LineRecNo[3], -1);
    EXPECT_EQ(Table.LineJump[3], 0);
}

TEST_F(ReadLinesTest, LastLineWithoutALineEndCounts) {
    Read(BirthsHeader1911() + "SMITH,John,JONES,Leeds,9b,1");
    EXPECT_EQ(Table.LineCount, 3);
    EXPECT_EQ(Table.LineText[3], "SMITH,John,JONES,Leeds,9b,1");
    EXPECT_EQ(Table.RecordCount, 1);
}

TEST_F(ReadLinesTest, CrLfSplitAcrossTwoReadsIsOneLineEnd) {
    std::string path = Dir.Write("long.txt", std::string(65535, 'x') + "\r\nb\r");
    RawLines raw = ReadLines(path, MaxLines);
    ASSERT_EQ(raw.Lines.size(), 2U);
    EXPECT_EQ(raw.Lines[0].Length, 65535U);
    EXPECT_EQ(raw.Lines[0].Head, std::string(HeadBytes, 'x'));
    EXPECT_EQ(raw.Lines[1].Head, "b");
    EXPECT_FALSE(raw.MoreLines);
}

TEST_F(ReadLinesTest, ByteOrderMarkIsSkippedBeforeLineOne) {
    Read("\xEF\xBB\xBFSMITH,John,Leeds,9b,1\r\n");
    EXPECT_EQ(Table.LineText[1], "SMITH,John,Leeds,9b,1");
    EXPECT_EQ(Table.Surname[1], "SMITH");
    EXPECT_EQ(Table.LineRecNo[1], 1);
}

TEST_F(ReadLinesTest, LineOfSpacesIsNotBlank) {
    Read(BirthsHeader1911() + "   \r\n");
    EXPECT_EQ(Table.LineText[3], "   ");
    EXPECT_EQ(Table.LineRecNo[3], 1);
    EXPECT_EQ(Table.Surname[3], "   ");
}

TEST_F(ReadLinesTest, NulBytesAreOrdinaryCharacters) {
    Read(BirthsHeader1911() + "SM\0TH,John,JONES,Leeds,9b,1\r\n"s);
    EXPECT_EQ(Table.LineText[3], "SM\0TH,John,JONES,Leeds,9b,1"s);
    EXPECT_EQ(Table.Surname[3], "SM\0TH"s);
    EXPECT_EQ(Table.Forenames[3], "John");
}

TEST_F(ReadLinesTest, FileOf1000LinesLoads) {
    std::string path = Read(FileOfLines(1000));
    EXPECT_EQ(path, PathOf("1911B30123.SCA"));
    EXPECT_EQ(Table.LineCount, 1000);
    EXPECT_EQ(Table.RecordCount, 998);
    EXPECT_EQ(Table.LineRecNo[1000], 998);
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(ReadLinesTest, FileOf1001LinesEndingInACommentIsRefusedWithTheRecordsMessage) {
    std::string path = PathOf("1911B30123.SCA");
    std::string result = Read(FileOfLines(1000) + "# a comment\r\n");
    EXPECT_EQ(result, "**QUIT**");
    ASSERT_EQ(Ask.Shown.size(), 1U);
    EXPECT_EQ(Ask.Shown[0].Text, "You've exceeded the limit of 1000 records in the file " + path);
    EXPECT_EQ(Ask.Shown[0].Title, "Tallyview");
    EXPECT_EQ(Ask.Shown[0].Choice, Buttons::Ok);
}

TEST_F(ReadLinesTest, LinesOfEveryKindCountTowardsTheLimit) {
    std::string bytes;
    for (int i = 0; i < 1001; ++i)
        bytes += "\n";
    EXPECT_EQ(Read(bytes), "**QUIT**");
    EXPECT_EQ(Read(FileOfLines(1000) + "x"), "**QUIT**");
}

TEST_F(ReadLinesTest, LineEndAfterTheThousandthLineAddsNoLine) {
    EXPECT_NE(Read(FileOfLines(999) + "# last\r"), "**QUIT**");
    EXPECT_EQ(Table.LineCount, 1000);
    EXPECT_NE(Read(FileOfLines(999) + "# last\r\n"), "**QUIT**");
    EXPECT_EQ(Table.LineCount, 1000);
}

TEST_F(ReadLinesTest, CommentOf150CharactersIsKeptCutTo100) {
    std::string comment = "#" + std::string(149, 'c');
    Read(BirthsHeader1911() + comment + "\r\nSMITH,John,JONES,Leeds,9b,1\r\n");
    EXPECT_EQ(Table.LineText[3], Left(comment, 100) + " ... ...");
    EXPECT_EQ(Table.LineRecNo[3], -1);
    EXPECT_EQ(Table.Surname[3], comment.substr(0, 47) + "...");
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(ReadLinesTest, RecordOf101CharactersIsVeryLongAndWarned) {
    std::string record = "SMITH,John,JONES,Leeds,9b," + std::string(75, '1');
    ASSERT_EQ(record.size(), 101U);
    std::string path = Read(BirthsHeader1911() + "SMITH,Ann,JONES,Leeds,9b,1\r\n" + record);
    EXPECT_EQ(Table.LineText[4], Left(record, 100) + " ... ...");
    EXPECT_EQ(Table.Surname[4], "");
    EXPECT_EQ(Table.LineRecNo[4], -1);
    EXPECT_EQ(Table.LineJump[4], 0);
    EXPECT_EQ(Table.RecordCount, 1);
    EXPECT_EQ(Ask.Texts(), std::vector<std::string>{SuspectText(path, LongLinesReason)});
}

TEST_F(ReadLinesTest, CommentOfMoreThan200CharactersIsVeryLong) {
    std::string comment = "#" + std::string(200, 'c');
    std::string path = Read(BirthsHeader1911() + "SMITH,Ann,JONES,Leeds,9b,1\r\n" + comment);
    EXPECT_EQ(Table.Surname[4], "");
    EXPECT_EQ(Ask.Texts(), std::vector<std::string>{SuspectText(path, LongLinesReason)});
}

TEST_F(ReadLinesTest, VeryLongLineIsStoredUnconverted) {
    std::string record = "\xB9" + std::string(120, 'x');
    Read("+INFO,,,,BIRTHS,cp1250\r\n" + record + "\r\n\xB9,x\r\n");
    EXPECT_EQ(Table.LineText[2], Left(record, 100) + " ... ...");
    EXPECT_EQ(Table.LineText[3], "\x95,x");
}

TEST_F(ReadLinesTest, VeryLongLineKeepsTheOtherColumnsOfTheLastRead) {
    Read(BirthsHeader1911() + "SMITH,John,JONES,Leeds,9b,1\r\n");
    Read(BirthsHeader1911() + std::string(300, 'x') + "\r\n");
    EXPECT_EQ(Table.Surname[3], "");
    EXPECT_EQ(Table.Forenames[3], "John");
    EXPECT_EQ(Table.District[3], "Leeds");
}

TEST_F(ReadLinesTest, SingleLineOf10MegabytesIsReadAsOneVeryLongLine) {
    std::string path = Read(std::string(std::size_t{10} * 1024 * 1024, 'z'));
    EXPECT_EQ(Table.LineCount, 1);
    EXPECT_EQ(Table.LineText[1], std::string(100, 'z') + " ... ...");
    EXPECT_EQ(Ask.Texts(), (std::vector<std::string>{SuspectText(path, NoRecordsReason),
                                                     SuspectText(path, NoHeaderReason),
                                                     SuspectText(path, LongLinesReason)}));
}

TEST_F(ReadLinesTest, BinaryFileReadsWithoutCrashing) {
    std::mt19937 random(20240501);
    std::string bytes(std::size_t{64} * 1024, '\0');
    for (char& c : bytes)
        c = static_cast<char>(random() & 0xFF);
    EXPECT_NO_THROW(Read(bytes));
    EXPECT_GT(Table.LineCount, 100);
    EXPECT_LE(Table.LineCount, 1000);
}

TEST_F(ReadLinesTest, ZeroByteFileGivesBothSuspectWarningsAndOkCarriesOn) {
    std::string path = Read("");
    EXPECT_EQ(path, PathOf("1911B30123.SCA"));
    EXPECT_EQ(Table.LineCount, 0);
    ASSERT_EQ(Ask.Shown.size(), 2U);
    EXPECT_EQ(Ask.Shown[0].Text, SuspectText(path, NoRecordsReason));
    EXPECT_EQ(Ask.Shown[1].Text, SuspectText(path, NoHeaderReason));
    for (const Prompt& p : Ask.Shown) {
        EXPECT_EQ(p.Title, "Tallyview");
        EXPECT_EQ(p.Choice, Buttons::OkCancel);
        EXPECT_EQ(p.Default, Answer::Cancel);
    }
}

TEST_F(ReadLinesTest, ZeroByteFileCancelledQuitsWithoutFurtherWarnings) {
    Ask.Script = {Answer::Cancel};
    EXPECT_EQ(Read(""), "**QUIT**");
    EXPECT_EQ(Ask.Shown.size(), 1U);
}

TEST_F(ReadLinesTest, FileThatDoesNotExistThrowsFileErrorWithTheReason) {
    std::string path = PathOf("missing.SCA");
    try {
        ReadPath(path);
        FAIL() << "no FileError";
    } catch (const FileError& error) {
        EXPECT_EQ(error.Path, path);
        EXPECT_EQ(error.Reason, "No such file or directory");
    }
}

TEST_F(ReadLinesTest, FolderInsteadOfAFileThrowsFileError) {
    EXPECT_THROW(ReadPath(Dir.Path().string()), FileError);
}

TEST_F(ReadLinesTest, FileIsOpenedReadOnlyAndLeftAsItWas) {
    std::string bytes = BirthsHeader1911() + "SMITH,John,JONES,Leeds,9b,1\r\n";
    std::string path = Dir.Write("1911B30123.SCA", bytes);
    namespace fs = std::filesystem;
    fs::file_time_type then = fs::last_write_time(path) - std::chrono::hours(24);
    fs::last_write_time(path, then);
    fs::permissions(path, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    EXPECT_EQ(ReadPath(path), path);
    EXPECT_EQ(Table.RecordCount, 1);
    EXPECT_EQ(fs::last_write_time(path), then);
    EXPECT_EQ(ReadBytes(path), bytes);
}

TEST_F(ReadLinesTest, FileNameInMessagesIsShownInWindows1252) {
    std::string path = Read("", "Andr\xC3\xA9.SCA");
    ASSERT_FALSE(Ask.Shown.empty());
    std::string shown = Utf8ToCp1252(path);
    EXPECT_EQ(Ask.Shown[0].Text, SuspectText(shown, NoRecordsReason));
    EXPECT_NE(shown, path);
}

} // namespace tv::test
