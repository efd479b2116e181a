// Files far longer than a transcription can be: refused at once, reading no more than the limit
// and one byte, while a long file of many short lines still meets the line limit first.
#include "ReaderFixture.h"
#include "transcription/LineReader.h"

#include <filesystem>
#include <fstream>

namespace tv::test {

namespace {

class HugeTranscriptionsTest : public ReaderTest {
  protected:
    // A sparse file of size bytes: it reads as NULs and takes no room on the disk.
    std::string SparseFile(const std::string& name, std::uintmax_t size) {
        const std::string path = Dir.Write(name, "");
        std::filesystem::resize_file(path, size);
        return path;
    }

    // The reason the reader refuses path with; "" when it reads it.
    std::string Refusal(const std::string& path) {
        try {
            ReadPath(path);
        } catch (const FileError& error) {
            EXPECT_EQ(error.Path, path);
            return error.Reason;
        }
        return "";
    }
};

// The bytes this process has read through read() so far, as the kernel counts them.
std::uintmax_t BytesReadByThisProcess() {
    std::ifstream io("/proc/self/io");
    std::string key;
    std::uintmax_t value = 0;
    while (io >> key >> value)
        if (key == "rchar:") return value;
    return 0;
}

} // namespace

TEST_F(HugeTranscriptionsTest, TheLimitIsAThousandLinesOfSixteenKilobytes) {
    EXPECT_EQ(MaxTranscriptionBytes, 16384000U);
    EXPECT_EQ(std::string(TooLongReason),
              "The file is longer than 16384000 bytes, far more than a transcription can hold");
}

TEST_F(HugeTranscriptionsTest, ASparseHundredGigabyteFileIsRefusedAtOnce) {
    const std::string path = SparseFile("huge.QRL", 100ULL << 30);
    EXPECT_EQ(Refusal(path), TooLongReason);
    EXPECT_TRUE(Ask.Shown.empty());
}

TEST_F(HugeTranscriptionsTest, NoMoreThanTheLimitAndOneByteIsRead) {
    // Sixty-four megabytes without a line end: read whole, it would be one very long line.
    const std::string path = SparseFile("long.QRL", 64ULL << 20);
    const std::uintmax_t before = BytesReadByThisProcess();
    EXPECT_EQ(Refusal(path), TooLongReason);
    const std::uintmax_t read = BytesReadByThisProcess() - before;
    EXPECT_GT(read, MaxTranscriptionBytes);
    // The limit and one byte, and the few bytes of /proc/self/io itself read in between.
    EXPECT_LE(read, MaxTranscriptionBytes + 1 + 1024);
}

TEST_F(HugeTranscriptionsTest, AFileOfExactlyTheLimitIsRead) {
    Ask.Script = {Answer::Ok, Answer::Ok, Answer::Ok};
    const std::string path = SparseFile("limit.QRL", MaxTranscriptionBytes);
    EXPECT_EQ(Refusal(path), "");
    EXPECT_EQ(Table.LineCount, 1);
    EXPECT_EQ(Ask.Shown.size(), 3U); // no records, no header, a very long line
}

TEST_F(HugeTranscriptionsTest, OneByteOverTheLimitIsRefused) {
    const std::string path = SparseFile("over.QRL", MaxTranscriptionBytes + 1);
    EXPECT_EQ(Refusal(path), TooLongReason);
}

TEST_F(HugeTranscriptionsTest, ALongFileOfShortLinesMeetsTheLineLimitFirst) {
    std::string lines;
    for (int i = 0; i < 2000000; ++i)
        lines += "# a comment of a dozen bytes\n";
    ASSERT_GT(lines.size(), MaxTranscriptionBytes);
    EXPECT_EQ(Read(lines, "many.QRL"), QuitToken);
    ASSERT_EQ(Ask.Shown.size(), 1U);
    EXPECT_EQ(Ask.Shown[0].Text,
              "You've exceeded the limit of 1000 records in the file " + PathOf("many.QRL"));
}

TEST_F(HugeTranscriptionsTest, ADeviceThatNeverEndsBehindALinkIsRefused) {
    const std::string link = PathOf("zero.QRL");
    std::filesystem::create_symlink("/dev/zero", link);
    EXPECT_EQ(Refusal(link), "Not a regular file");
}

} // namespace tv::test
