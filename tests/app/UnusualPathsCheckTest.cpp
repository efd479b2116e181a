// The check command on files in a folder whose name has spaces, accented letters, letters
// Windows-1252 lacks and a length of over a thousand characters.
#include "core/Text.h"
#include "support/Process.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tv::test {

namespace {

namespace fs = std::filesystem;

fs::path UnusualFolder(const fs::path& root) {
    fs::path folder = root;
    for (int round = 0; folder.string().size() < 1100; ++round)
        folder /= "\xC3\x86r\xC3\xB8 \xE5\x90\x8D\xE5\x89\x8D index, part " +
                  std::to_string(round) + " " + std::string(60, 'y');
    fs::create_directories(folder);
    return folder;
}

// The path as the report writes it to the terminal: through Windows-1252, so that a letter it
// lacks comes out as the bullet.
std::string Reported(const std::string& path) {
    return Cp1252ToUtf8(Utf8ToCp1252(path));
}

} // namespace

TEST(CheckCommandPaths, AFileInAnUnusualFolderIsCheckedAndNamedInTheReport) {
    TempDir dir;
    const fs::path folder = UnusualFolder(dir.Path());
    const std::string path = (folder / "\xC3\x89t\xC3\xA9 1911B30123.QRL").string();
    fs::copy_file(DataFile("check/clean.QRL"), path);
    const std::string scan = (folder / "1911B30123 \xE5\x90\x8D.jpg").string();
    const std::string pdf = (folder / "r\xC3\xA9sum\xC3\xA9.pdf").string();
    ProcessResult r = RunTallyview({"--check", "--scan", scan, "--print-to", pdf, path});
    EXPECT_EQ(r.Status, 0) << r.Err;
    EXPECT_EQ(r.Err, "");
    EXPECT_NE(r.Out.find("    Graphics file: " + Reported(scan) + "\n"), std::string::npos);
    EXPECT_NE(r.Out.find("    Transcription file: " + Reported(path) + "\n"), std::string::npos);
    EXPECT_NE(Reported(path), path);
    EXPECT_TRUE(fs::exists(pdf));
}

TEST(CheckCommandPaths, AMissingFileInAnUnusualFolderIsNamedWholeInTheMessage) {
    TempDir dir;
    const fs::path folder = UnusualFolder(dir.Path());
    const std::string path = (folder / "missing 1911B30123.QRL").string();
    ProcessResult r = RunTallyview({"--check", path});
    EXPECT_EQ(r.Status, 3);
    EXPECT_NE(r.Err.find(path), std::string::npos) << r.Err;
}

} // namespace tv::test
