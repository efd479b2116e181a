// The check command given files a hostile tester would give it: a transcription that never
// ends, a report onto a full disk, a read-only disk, a pipe, a device, or over the transcription
// itself. Each gives its message and exit status at once, and no good file is overwritten.
#include "support/Process.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>

namespace tv::test {

namespace {

namespace fs = std::filesystem;

constexpr const char* TooLong =
    "The file is longer than 16384000 bytes, far more than a transcription can hold";

std::string Clean() {
    return DataFile("check/clean.QRL");
}

std::string FirstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

// A shell in a mount namespace of its own, where it can mount a small disk of its own; false
// when this machine lets no user do that.
bool PrivateMountsWork() {
    return std::system("unshare -rm true >/dev/null 2>&1") == 0;
}

// Runs the program in its own mount namespace after script has run there (the program's
// arguments follow it); after the program, lists folder and prints the report kept there, so
// that a disk that lives only as long as the namespace can be looked at.
ProcessResult RunWithDisk(const std::string& script, const std::string& folder,
                          const std::vector<std::string>& args) {
    const std::string after = "status=$?; echo '--after--'; ls -A '" + folder + "'; cat '" +
                              folder + "/report.pdf'; exit $status";
    return RunTallyviewThrough(
        {"unshare", "-rm", "sh", "-c", script + " && \"$@\"; " + after, "sh"}, args);
}

std::string After(const ProcessResult& r) {
    const std::size_t at = r.Out.find("--after--\n");
    return at == std::string::npos ? "" : r.Out.substr(at + 10);
}

} // namespace

TEST(HostileFilesCheck, ASparseHundredGigabyteTranscriptionIsRefusedAtOnce) {
    TempDir dir;
    const std::string path = dir.Write("huge.QRL", "");
    fs::resize_file(path, 100ULL << 30);
    ProcessResult r = RunTallyview({"--check", path});
    EXPECT_EQ(r.Status, 3);
    EXPECT_EQ(r.Err, "tallyview: cannot read " + path + ": " + TooLong + "\n");
    EXPECT_EQ(r.Out, "");
}

TEST(HostileFilesCheck, ADeviceThatNeverEndsBehindALinkIsRefused) {
    TempDir dir;
    const std::string link = (dir.Path() / "zero.QRL").string();
    fs::create_symlink("/dev/zero", link);
    ProcessResult r = RunTallyview({"--check", link});
    EXPECT_EQ(r.Status, 3);
    EXPECT_EQ(r.Err, "tallyview: cannot read " + link + ": Not a regular file\n");
}

TEST(HostileFilesCheck, AByteOrderMarkIsToldAndControlBytesAreShownVisibly) {
    using namespace std::string_literals;
    TempDir dir;
    const std::string file = dir.Write("1911B30123.QRL", "\xEF\xBB\xBF" + ReadBytes(Clean()) +
                                                             "# NUL \0 ESC \x1B[2J end\r\n"s);
    ProcessResult r = RunTallyview({"--check", "--all-records", file});
    EXPECT_EQ(r.Status, 0);
    EXPECT_EQ(r.Err, "Suspect file " + file +
                         "\nThe file begins with a UTF-8 byte-order mark, which was skipped\n\n"
                         "Click OK to carry on or CANCEL to quit\n");
    EXPECT_NE(r.Out.find("Tallyview Report for Births 1911 Qtr 3 Page 123"), std::string::npos);
    EXPECT_NE(r.Out.find("  +INFO,someone@example.org"), std::string::npos);
    EXPECT_NE(r.Out.find("# NUL \u2400 ESC \u241B[2J end"), std::string::npos) << r.Out;
    EXPECT_EQ(r.Out.find('\0'), std::string::npos);
    EXPECT_EQ(r.Out.find('\x1B'), std::string::npos);
}

TEST(HostileFilesCheck, Utf16IsToldBeforeTheOtherWarnings) {
    TempDir dir;
    std::string wide = "\xFF\xFE";
    for (char c : ReadBytes(Clean())) {
        wide += c;
        wide += '\0';
    }
    const std::string file = dir.Write("1911B30123.QRL", wide);
    ProcessResult r = RunTallyview({"--check", "--answer", "no", file});
    EXPECT_EQ(r.Status, 2);
    EXPECT_EQ(r.Err, "Suspect file " + file +
                         "\nThe file is written in UTF-16, two bytes a character, not as 8-bit "
                         "text\n\nClick OK to carry on or CANCEL to quit\n");
}

TEST(HostileFilesCheck, AnEmptyPrintToIsAWrongCommandLine) {
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"--check", "--print-to", "", Clean()},
          std::vector<std::string>{"--check", "--print-to=", Clean()}}) {
        ProcessResult r = RunTallyview(args);
        EXPECT_EQ(r.Status, 64);
        EXPECT_EQ(FirstLine(r.Err), "tallyview: --print-to needs a file name");
        EXPECT_EQ(r.Out, "");
    }
}

TEST(HostileFilesCheck, ADeviceIsNeverWrittenTo) {
    for (const char* device : {"/dev/full", "/dev/null"}) {
        ProcessResult r = RunTallyview({"--check", "--print-to", device, Clean()});
        EXPECT_EQ(r.Status, 3);
        EXPECT_EQ(r.Err, "tallyview: cannot write the report to " + std::string(device) +
                             ": Not a regular file\n");
        EXPECT_NE(r.Out.find("Tallyview Report for Births 1911 Qtr 3 Page 123"), std::string::npos);
    }
}

TEST(HostileFilesCheck, APipeWithNoReaderIsRefusedWithoutWaiting) {
    TempDir dir;
    const std::string pipe = (dir.Path() / "report.pdf").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    ProcessResult r = RunTallyview({"--check", "--print-to", pipe, Clean()});
    EXPECT_EQ(r.Status, 3);
    EXPECT_EQ(r.Err, "tallyview: cannot write the report to " + pipe + ": Not a regular file\n");
    EXPECT_TRUE(fs::is_fifo(pipe)); // left as it was
}

TEST(HostileFilesCheck, AFolderIsRefused) {
    TempDir dir;
    ProcessResult r = RunTallyview({"--check", "--print-to", dir.Path().string(), Clean()});
    EXPECT_EQ(r.Status, 3);
    EXPECT_EQ(r.Err, "tallyview: cannot write the report to " + dir.Path().string() +
                         ": Is a directory\n");
}

TEST(HostileFilesCheck, TheTranscriptionItselfIsNeverWrittenWhateverItsPath) {
    TempDir dir;
    const std::string bytes = ReadBytes(Clean());
    const std::string file = dir.Write("1911B30123.QRL", bytes);
    fs::create_directory(dir.Path() / "sub");
    fs::create_symlink(file, dir.Path() / "link.pdf");
    const std::string viaDots = (dir.Path() / "sub" / ".." / "1911B30123.QRL").string();
    const std::string viaLink = (dir.Path() / "link.pdf").string();
    for (const std::string& target : {file, viaDots, viaLink}) {
        ProcessResult r = RunTallyview({"--check", "--print-to", target, file});
        EXPECT_EQ(r.Status, 64) << target;
        EXPECT_EQ(r.Err, "tallyview: --print-to " + target + " is the file " + file +
                             ", which Tallyview only reads\n");
        EXPECT_EQ(r.Out, "");
        EXPECT_EQ(ReadBytes(file), bytes);
    }
}

TEST(HostileFilesCheck, TheScanIsNeverWritten) {
    TempDir dir;
    const std::string scan = dir.Write("1911B30123.jpg", "not really a scan");
    const std::string viaDots = (dir.Path() / "." / "1911B30123.jpg").string();
    ProcessResult r = RunTallyview({"--check", "--scan", scan, "--print-to", viaDots, Clean()});
    EXPECT_EQ(r.Status, 64);
    EXPECT_EQ(r.Err, "tallyview: --print-to " + viaDots + " is the file " + scan +
                         ", which Tallyview only reads\n");
    EXPECT_EQ(ReadBytes(scan), "not really a scan");
}

TEST(HostileFilesCheck, AGoodReportIsReplacedWholeAndNothingIsLeftBeside) {
    TempDir dir;
    const std::string pdf = dir.Write("report.pdf", "an older report");
    ProcessResult r = RunTallyview({"--check", "--print-to", pdf, Clean()});
    EXPECT_EQ(r.Status, 0);
    EXPECT_EQ(r.Err, "");
    EXPECT_TRUE(ReadBytes(pdf).starts_with("%PDF-"));
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.Path()), fs::directory_iterator()), 1);
}

TEST(HostileFilesCheck, AFullDiskIsStatusThreeAndTheOlderReportStays) {
    if (!PrivateMountsWork()) GTEST_SKIP() << "no private mounts for a small disk here";
    TempDir dir;
    const std::string disk = dir.Path().string();
    const std::string pdf = disk + "/report.pdf";
    // A disk of 64 kilobytes holding an older report and filled to the last byte.
    const std::string script = "mount -t tmpfs -o size=64k tmpfs '" + disk +
                               "' && echo 'an older report' > '" + pdf + "' && (cat /dev/zero > '" +
                               disk + "/fill' 2>/dev/null; true)";
    ProcessResult r = RunWithDisk(script, disk, {"--check", "--print-to", pdf, Clean()});
    EXPECT_EQ(r.Status, 3);
    EXPECT_EQ(r.Err,
              "tallyview: cannot write the report to " + pdf + ": No space left on device\n");
    EXPECT_EQ(After(r), "fill\nreport.pdf\nan older report\n");
}

TEST(HostileFilesCheck, AReadOnlyDiskIsStatusThreeWithTheReason) {
    if (!PrivateMountsWork()) GTEST_SKIP() << "no private mounts for a read-only disk here";
    TempDir dir;
    const std::string disk = dir.Path().string();
    const std::string pdf = disk + "/report.pdf";
    const std::string script = "mount -t tmpfs -o size=64k tmpfs '" + disk +
                               "' && echo 'an older report' > '" + pdf +
                               "' && mount -o remount,ro '" + disk + "'";
    // Over the older report, and as a new file beside it.
    ProcessResult r = RunWithDisk(script, disk, {"--check", "--print-to", pdf, Clean()});
    EXPECT_EQ(r.Status, 3);
    EXPECT_EQ(r.Err, "tallyview: cannot write the report to " + pdf + ": Existing file " + pdf +
                         " is not writable\n");
    EXPECT_EQ(After(r), "report.pdf\nan older report\n");
    const std::string fresh = disk + "/new.pdf";
    r = RunWithDisk(script, disk, {"--check", "--print-to", fresh, Clean()});
    EXPECT_EQ(r.Status, 3);
    EXPECT_EQ(r.Err,
              "tallyview: cannot write the report to " + fresh + ": Read-only file system\n");
    EXPECT_EQ(After(r), "report.pdf\nan older report\n");
}

} // namespace tv::test
