// A settings store that is no settings file: a device that never ends, a pipe with no writer, a
// file far larger than ten scans' settings. Each gives the defaults at once; the ones that are
// not files are never written, and a save to them is told once.
#include "session/QtSettingsStore.h"
#include "session/Settings.h"
#include "support/FakePrompts.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>

namespace tv {
namespace {

namespace fs = std::filesystem;

constexpr ScreenSize Screen{16200, 28800};

class HostileSettingsStore : public ::testing::Test {
  protected:
    fs::path StorePath() const { return Dir.Path() / "Tallyview.conf"; }
    QString Path() const { return QString::fromStdString(StorePath().string()); }

    // A run of the program on the store: read at start-up, a preference saved.
    GlobalSettings RunOnce() {
        QtSettingsStore store(Prompts, Path());
        ScanHistory history;
        const GlobalSettings global = GetDefaults(store, Prompts, history, Screen);
        EXPECT_TRUE(history.Entries[1].Empty());
        WriteSkipSteps(store, true);
        WriteSkipSteps(store, false);
        return global;
    }

    std::string SaveFailure() const {
        return "Tallyview could not save its settings in " + StorePath().string() +
               "\rThe file or its folder cannot be written.";
    }

    test::TempDir Dir;
    test::FakePrompts Prompts;
};

TEST_F(HostileSettingsStore, ADeviceBehindTheNameGivesTheDefaultsAndIsNeverWritten) {
    for (const char* device : {"/dev/urandom", "/dev/zero"}) {
        Prompts.Shown.clear();
        fs::remove(StorePath());
        fs::create_symlink(device, StorePath());
        EXPECT_EQ(RunOnce().TextBoxColour, 1) << device;
        ASSERT_EQ(Prompts.Shown.size(), 1U) << device;
        EXPECT_EQ(Prompts.Shown[0].Text, SaveFailure());
        EXPECT_EQ(fs::read_symlink(StorePath()), device);
    }
}

TEST_F(HostileSettingsStore, APipeWithNoWriterGivesTheDefaultsWithoutWaiting) {
    ASSERT_EQ(mkfifo(StorePath().c_str(), 0600), 0);
    EXPECT_EQ(RunOnce().TextBoxColour, 1);
    ASSERT_EQ(Prompts.Shown.size(), 1U);
    EXPECT_EQ(Prompts.Shown[0].Text, SaveFailure());
    EXPECT_TRUE(fs::is_fifo(StorePath()));
}

TEST_F(HostileSettingsStore, AFileFarLargerThanTenScansIsDamagedAndReplacedOnSaving) {
    // Good settings, and then more than a megabyte that QSettings would read as a comment.
    std::string settings = "[Global]\nRegVersion=B\nVersion=1.0.0\nTextBoxColour=4\n";
    settings += "; " + std::string(1 << 20, 'x') + "\n";
    Dir.Write("Tallyview.conf", settings);
    EXPECT_EQ(RunOnce().TextBoxColour, 1);
    EXPECT_TRUE(Prompts.Shown.empty());
    EXPECT_LT(fs::file_size(StorePath()), 1000U);
    EXPECT_NE(test::ReadBytes(StorePath().string()).find("SkipOpenScreen=N"), std::string::npos);
}

TEST_F(HostileSettingsStore, ASparseQuarterGigabyteIsNeverRead) {
    Dir.Write("Tallyview.conf", "");
    fs::resize_file(StorePath(), 256ULL << 20);
    EXPECT_EQ(RunOnce().TextBoxColour, 1);
    EXPECT_TRUE(Prompts.Shown.empty());
    EXPECT_LT(fs::file_size(StorePath()), 1000U);
}

TEST_F(HostileSettingsStore, AFileOfExactlyAMegabyteIsStillRead) {
    std::string settings = "[Global]\nRegVersion=B\nVersion=1.0.0\nTextBoxColour=4\n; ";
    settings += std::string((1 << 20) - settings.size() - 1, 'x') + "\n";
    ASSERT_EQ(settings.size(), 1U << 20);
    Dir.Write("Tallyview.conf", settings);
    EXPECT_EQ(RunOnce().TextBoxColour, 4);
}

} // namespace
} // namespace tv
