// Transcriptions that push every line kind to its limits: lengths either side of 100 and 200,
// quotes in every place, more than twenty fields, every byte value, mixed line ends, and files
// that are not files at all. Each reads without harm, as the rules say.
#include "ReaderFixture.h"

#include <sys/stat.h>

#include <chrono>
#include <thread>

namespace tv::test {

namespace {

using namespace std::string_literals;

class BadTranscriptionsTest : public ReaderTest {
  protected:
    // A births header of 1870 (no third column), then the lines given, each ended by CR LF.
    void ReadLines(const std::vector<std::string>& lines) {
        std::string bytes = "+INFO,a@b.org,,SEQ,BIRTHS\r\n+S,1870,Mar\r\n";
        for (const std::string& line : lines)
            bytes += line + "\r\n";
        Read(bytes);
    }
};

std::string Cut(const std::string& line) {
    return line.substr(0, 100) + " ... ...";
}

// A record line padded with spaces in its last field to exactly length characters.
std::string RecordOfLength(std::size_t length) {
    std::string line = "SMITH,John,Leeds,9b,1";
    return line + std::string(length - line.size(), ' ');
}

} // namespace

TEST_F(BadTranscriptionsTest, RecordOfExactly100CharactersIsARecord) {
    ReadLines({RecordOfLength(100)});
    EXPECT_EQ(Table.LineRecNo[3], 1);
    EXPECT_EQ(Table.LineText[3], RecordOfLength(100));
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(BadTranscriptionsTest, CommentsOf100To200CharactersAreKeptAndFrom201AreVeryLong) {
    const std::string c100 = "#" + std::string(99, 'c');
    const std::string c101 = "#" + std::string(100, 'c');
    const std::string c200 = "#" + std::string(199, 'c');
    const std::string c201 = "#" + std::string(200, 'c');
    Ask.Script = {Answer::Ok};
    ReadLines({"SMITH,John,Leeds,9b,1", c100, c101, c200, c201});
    EXPECT_EQ(Table.LineText[4], c100);
    EXPECT_EQ(Table.LineText[5], Cut(c101));
    EXPECT_EQ(Table.Surname[5], "#" + std::string(46, 'c') + "...");
    EXPECT_EQ(Table.LineText[6], Cut(c200));
    EXPECT_EQ(Table.LineText[7], Cut(c201));
    EXPECT_EQ(Table.Surname[7], "");
    EXPECT_EQ(Ask.Texts(),
              std::vector<std::string>{SuspectText(PathOf("1911B30123.SCA"), LongLinesReason)});
}

TEST_F(BadTranscriptionsTest, HeaderLineOfMoreThan100CharactersIsVeryLongAndSetsNothing) {
    const std::string longHeader = "+S,1899,Mar," + std::string(89, ' ');
    Read("+INFO,a@b.org,,SEQ,DEATHS\r\n" + longHeader + "\r\nSMITH,John,20,Leeds,9b,1\r\n");
    EXPECT_EQ(Table.HeaderEvent, "D");
    EXPECT_EQ(Table.HeaderYear, -1);
    EXPECT_EQ(Table.HeaderQuarter, -1);
    EXPECT_EQ(Table.LineText[2], Cut(longHeader));
    EXPECT_EQ(Table.LineRecNo[2], -1);
}

TEST_F(BadTranscriptionsTest, HeaderLineOfExactly100CharactersStillCounts) {
    const std::string header = "+S,1899,Mar," + std::string(88, ' ');
    ASSERT_EQ(header.size(), 100U);
    Read(header + "\r\nSMITH,John,Leeds,9b,1\r\n");
    EXPECT_EQ(Table.HeaderYear, 1899);
    EXPECT_EQ(Table.HeaderQuarter, 1);
}

TEST_F(BadTranscriptionsTest, AThousandVeryLongLinesLoadAsMarkersOnly) {
    std::string bytes;
    for (int i = 0; i < 1000; ++i)
        bytes += std::string(5000, static_cast<char>('a' + i % 26)) + "\n";
    Read(bytes);
    EXPECT_EQ(Table.LineCount, 1000);
    EXPECT_EQ(Table.RecordCount, 0);
    EXPECT_EQ(Table.LineText[1000], std::string(100, 'l') + " ... ...");
    EXPECT_EQ(Ask.Shown.size(), 3U);
}

TEST_F(BadTranscriptionsTest, QuotesInEveryPlace) {
    ReadLines({"\"\",John,Leeds,9b,1",             // an empty quoted surname
               "\"SMITH\"x\"Ann\",Leeds,9b,2",     // the character after a closing quote is skipped
               "JONES,Ma\"ry,Leeds,9b,3",          // a quote inside an unquoted field
               "\"\"\"",                           // a quoted empty field, then a stray quote
               "BROWN,\"Tom, Jr\",\"Leeds\",9b,4", // quoted fields after unquoted ones
               "\"#not a record\",x",              // a quoted comment mark
               "\"+B\",1870,Mar"});                // a quoted header keyword
    EXPECT_EQ(Table.Surname[3], "(blank)");
    EXPECT_EQ(Table.Forenames[3], "John");
    EXPECT_EQ(Table.Surname[4], "SMITH");
    EXPECT_EQ(Table.Forenames[4], "Ann");
    EXPECT_EQ(Table.Forenames[5], "Ma\"ry");
    EXPECT_EQ(Table.Surname[6], "(blank)");
    EXPECT_EQ(Table.Forenames[7], "Tom, Jr");
    EXPECT_EQ(Table.District[7], "Leeds");
    EXPECT_EQ(Table.LineRecNo[8], -1);
    EXPECT_EQ(Table.LineRecNo[9], -1);
    // A second line of the year group: the file is ambiguous.
    EXPECT_EQ(Table.HeaderYear, -1);
    EXPECT_EQ(Table.RecordCount, 5);
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(BadTranscriptionsTest, UnclosedQuotesOnManyLinesAreEachToldWithTheirLineNumbers) {
    ReadLines({"SMITH,\"John", "\"", "JONES,Mary,\"Leeds,9b,3"});
    ASSERT_EQ(Ask.Shown.size(), 3U);
    EXPECT_EQ(Ask.Shown[0].Text,
              "Opening  \"  without a matching closing  \"  in line \r3 - SMITH,\"John");
    EXPECT_EQ(Ask.Shown[1].Text, "Opening  \"  without a matching closing  \"  in line \r4 - \"");
    EXPECT_EQ(
        Ask.Shown[2].Text.rfind("Opening  \"  without a matching closing  \"  in line \r5 - ", 0),
        0U);
    EXPECT_EQ(Table.Forenames[3], "\"John");
    EXPECT_EQ(Table.Surname[4], "\"");
    EXPECT_EQ(Table.District[5], "\"Leeds,9b,3");
    EXPECT_EQ(Table.RecordCount, 3);
}

TEST_F(BadTranscriptionsTest, FieldsBeyondTwentyAreDroppedAndTheRecordStillReads) {
    std::string line = "SMITH,John,Leeds,9b,1";
    for (int k = 6; k <= 25; ++k)
        line += ",f" + std::to_string(k);
    ReadLines({"ADAMS,Ann,Hull,9d,7", line, std::string(30, ',')});
    EXPECT_EQ(Table.LineRecNo[4], 2);
    EXPECT_EQ(Table.District[4], "Leeds");
    EXPECT_EQ(Table.Page[4], "1");
    EXPECT_EQ(Table.Surname[5], "(blank)");
    EXPECT_EQ(Table.LineRecNo[5], 3);
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(BadTranscriptionsTest, TwentyQuotedFieldsOfFiftyCharactersAreAVeryLongLine) {
    std::string line;
    for (int k = 1; k <= 20; ++k)
        line += "\"" + std::string(50, static_cast<char>('a' + k)) + "\",";
    Ask.Script = {Answer::Ok};
    ReadLines({"SMITH,John,Leeds,9b,1", line});
    EXPECT_EQ(Table.LineRecNo[4], -1);
    EXPECT_EQ(Table.LineText[4], Cut(line));
}

TEST_F(BadTranscriptionsTest, EveryByteValueReadsAsOneCharacterEach) {
    // Every byte but the line ends, in records of ten bytes each.
    std::vector<std::string> lines;
    std::string bytes;
    for (int b = 0; b < 256; ++b)
        if (b != '\r' && b != '\n') bytes += static_cast<char>(b);
    for (std::size_t at = 0; at < bytes.size(); at += 10)
        lines.push_back("S" + bytes.substr(at, 10));
    ReadLines(lines);
    EXPECT_EQ(Table.LineCount, static_cast<int16_t>(2 + lines.size()));
    std::string back;
    for (int line = 3; line <= Table.LineCount; ++line) {
        EXPECT_EQ(Table.LineText[line], lines[static_cast<std::size_t>(line - 3)]);
        back += Table.LineText[line].substr(1);
    }
    EXPECT_EQ(back, bytes);
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(BadTranscriptionsTest, EveryByteValueThroughEachCodePageGivesOneCharacterOrTheBullet) {
    std::string bytes;
    for (int b = 0; b < 256; ++b)
        if (b != '\r' && b != '\n' && b != ',' && b != '"') bytes += static_cast<char>(b);
    for (const char* codePage : {"cp1250", "cp1251", "cp437", "cp932"}) {
        Read("+INFO,a@b.org,,SEQ,BIRTHS,"s + codePage + "\r\n+S,1870,Mar\r\nS" +
             bytes.substr(0, 84) + "\r\nS" + bytes.substr(84, 84) + "\r\nS" + bytes.substr(168) +
             "\r\n");
        EXPECT_GT(Table.TranscriptionCodePage, 0) << codePage;
        EXPECT_EQ(Table.LineCount, 5) << codePage;
        EXPECT_EQ(Table.RecordCount, 3) << codePage;
        for (int line = 3; line <= 5; ++line)
            EXPECT_LE(Table.LineText[line].size(), 85U) << codePage;
    }
}

TEST_F(BadTranscriptionsTest, LineEndsOfEveryMixture) {
    Read("+S,1911,Sep\n\rA,1\r\r\nB,2\n\n\rC,3\r\n\r\nD,4\r");
    // LF then CR is two line ends; CR CR LF is a CR and a CR LF.
    EXPECT_EQ(Table.LineCount, 10);
    EXPECT_EQ(Table.LineText[3], "A,1");
    EXPECT_EQ(Table.LineText[4], "");
    EXPECT_EQ(Table.LineText[5], "B,2");
    EXPECT_EQ(Table.LineText[8], "C,3");
    EXPECT_EQ(Table.LineText[10], "D,4");
    EXPECT_EQ(Table.RecordCount, 4);
}

TEST_F(BadTranscriptionsTest, AFileOfLineEndsAloneHasOnlyBlankLines) {
    Ask.Script = {Answer::Ok, Answer::Ok};
    Read(std::string(500, '\n') + std::string(500, '\r'));
    EXPECT_EQ(Table.LineCount, 1000);
    EXPECT_EQ(Table.RecordCount, 0);
    EXPECT_EQ(Table.LineText[1000], "");
}

TEST_F(BadTranscriptionsTest, ANamedPipeIsRefusedWithoutWaitingForAWriter) {
    const std::string path = PathOf("pipe.QRL");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const auto start = std::chrono::steady_clock::now();
    try {
        ReadPath(path);
        FAIL() << "no FileError";
    } catch (const FileError& error) {
        EXPECT_EQ(error.Reason, "Not a regular file");
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST_F(BadTranscriptionsTest, ADeviceThatNeverEndsIsRefused) {
    try {
        ReadPath("/dev/zero");
        FAIL() << "no FileError";
    } catch (const FileError& error) {
        EXPECT_EQ(error.Reason, "Not a regular file");
    }
}

TEST_F(BadTranscriptionsTest, AFolderGivesTheSystemsReason) {
    try {
        ReadPath(Dir.Path().string());
        FAIL() << "no FileError";
    } catch (const FileError& error) {
        EXPECT_EQ(error.Reason, "Is a directory");
    }
}

} // namespace tv::test
