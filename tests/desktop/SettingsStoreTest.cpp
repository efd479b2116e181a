// The settings on disk: runs of the program one after another in a temporary configuration
// folder, damaged and older settings files, and a folder that cannot be written.
#include "session/QtSettingsStore.h"
#include "session/Settings.h"
#include "support/FakePlatform.h"
#include "support/FakePrompts.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QSettings>

#include <gtest/gtest.h>

namespace tv {
namespace {

constexpr ScreenSize Screen{16200, 28800};

// The folder ~/.config stands for in these tests.
struct ConfigFolder {
    test::TempDir Dir;
    QString Path() const {
        return QString::fromStdString((Dir.Path() / "Tallyview" / "Tallyview.conf").string());
    }
    void WriteFile(const std::string& bytes) const {
        QDir().mkpath(QString::fromStdString((Dir.Path() / "Tallyview").string()));
        Dir.Write("Tallyview/Tallyview.conf", bytes);
    }
    std::string FileText() const { return test::ReadBytes(Path().toStdString()); }
};

// One run of the program: read the settings at start-up, save them when it ends.
struct ProgramRun {
    explicit ProgramRun(const ConfigFolder& folder) : Store(Prompts, folder.Path()) {
        Global = GetDefaults(Store, Prompts, History, Screen);
    }
    void SaveScan(const std::string& graphicsFile, int16_t recNo) {
        SaveSnapshot s;
        s.VersionLabel = "Version 1.0.0 / 21-Jun-2022";
        s.Global = Global;
        s.Global.TextBoxColour = 3;
        s.Global.FormTop = 420;
        s.GraphicsFile = graphicsFile;
        s.TranscriptionFile = "/home/ann/qrl/1911B30123.QRL";
        s.Current.ScanType = 12;
        s.Current.LineIncrTop = 27.5F;
        s.Current.BoxPerCent = 0.3F;
        s.Current.RecNo = recNo;
        s.Current.ColTop[2] = 4480;
        SaveDefaults(Store, s, History, Clock);
    }
    test::FakePrompts Prompts;
    QtSettingsStore Store;
    ScanHistory History;
    test::FixedClock Clock;
    GlobalSettings Global;
};

void ExpectDefaults(const ProgramRun& run) {
    EXPECT_EQ(run.Global.TextBoxColour, 1);
    EXPECT_FALSE(run.Global.ShowRptSurnames);
    EXPECT_EQ(run.Global.FormHeight, 12000);
    EXPECT_EQ(run.Global.FormWidth, 14200);
    EXPECT_EQ(run.Global.FormTop, 100);
    EXPECT_EQ(run.Global.FormLeft, 100);
    for (int k = 1; k <= HistorySize; ++k)
        EXPECT_TRUE(run.History.Entries[k].Empty()) << k;
}

TEST(QtSettingsStore, FirstRunStartsFromTheDefaultsAndWritesTheConfigurationFile) {
    ConfigFolder folder;
    ProgramRun first(folder);
    ExpectDefaults(first);
    EXPECT_TRUE(first.Prompts.Shown.empty());
    first.SaveScan("/home/ann/scans/1911B30123.jpg", 57);
    const std::string text = folder.FileText();
    EXPECT_NE(text.find("[Global]"), std::string::npos);
    EXPECT_NE(text.find("RegVersion=B"), std::string::npos);
    EXPECT_NE(text.find("Version=1.0.0 / 21-Jun-2022"), std::string::npos);
    EXPECT_NE(text.find("[Scan0]"), std::string::npos);
    EXPECT_NE(text.find("LineIncrTop=27.5"), std::string::npos);
    EXPECT_NE(text.find("BoxPerCent=0.3"), std::string::npos);
    EXPECT_TRUE(first.Prompts.Shown.empty());
}

TEST(QtSettingsStore, SecondRunReadsTheSavedScanBack) {
    ConfigFolder folder;
    {
        ProgramRun first(folder);
        first.SaveScan("/home/ann/scans/1911B30123.jpg", 57);
    }
    ProgramRun second(folder);
    EXPECT_TRUE(second.Prompts.Shown.empty());
    EXPECT_EQ(second.Global.TextBoxColour, 3);
    EXPECT_EQ(second.Global.FormTop, 420);
    const ScanHistoryEntry& e = second.History.Entries[1];
    EXPECT_EQ(e.ImgFile, "1911B30123.jpg");
    EXPECT_EQ(e.ImgFileDir, "/home/ann/scans/");
    EXPECT_EQ(e.SCAFile, "1911B30123.QRL");
    EXPECT_EQ(e.ScanType, 12);
    EXPECT_EQ(e.LineIncrTop, 27.5F);
    EXPECT_EQ(e.BoxPerCent, 0.3F);
    EXPECT_EQ(e.RecNo, 57);
    EXPECT_EQ(e.ColTop[2], 4480);
    EXPECT_EQ(e.LastChecked, "20 Nov 2026 14:05");
    EXPECT_TRUE(second.History.Entries[2].Empty());

    second.SaveScan("/home/ann/scans, 1866/caf\xC3\xA9 1866D20045.jpg", 3);
    ProgramRun third(folder);
    EXPECT_EQ(third.History.Entries[1].ImgFile, "caf\xC3\xA9 1866D20045.jpg");
    EXPECT_EQ(third.History.Entries[1].ImgFileDir, "/home/ann/scans, 1866/");
    EXPECT_EQ(third.History.Entries[2].ImgFile, "1911B30123.jpg");
}

TEST(QtSettingsStore, DamagedFileGivesEveryDefaultAndIsReplacedOnSaving) {
    ConfigFolder folder;
    std::string damaged = "[Global]\nRegVersion=B\nVersion=1.0.0\nFormHeight=9000\n"
                          "TextBoxColour=4\n[Scan0]\nImgFile=1911B30123.jpg\n";
    for (int i = 0; i < 400; ++i)
        damaged += static_cast<char>((i * 37) % 256);
    folder.WriteFile(damaged);
    {
        ProgramRun run(folder);
        ExpectDefaults(run);
        EXPECT_TRUE(run.Prompts.Shown.empty());
        run.SaveScan("/home/ann/scans/1866D20045.jpg", 8);
        EXPECT_TRUE(run.Prompts.Shown.empty());
    }
    ProgramRun next(folder);
    EXPECT_EQ(next.Global.TextBoxColour, 3);
    EXPECT_EQ(next.History.Entries[1].ImgFile, "1866D20045.jpg");
    EXPECT_TRUE(next.History.Entries[2].Empty());
}

TEST(QtSettingsStore, ValuesOfAnotherTypeGiveTheirDefaults) {
    ConfigFolder folder;
    folder.WriteFile("[Global]\nRegVersion=B\nVersion=1.0.0\nFormHeight=9000, 9500\n"
                     "TextBoxColour=@Invalid()\nFormWidth=@ByteArray(12000)\nFormTop=300\n");
    ProgramRun run(folder);
    EXPECT_EQ(run.Global.FormHeight, 12000);
    EXPECT_EQ(run.Global.TextBoxColour, 1);
    EXPECT_EQ(run.Global.FormWidth, 14200);
    EXPECT_EQ(run.Global.FormTop, 300);
}

TEST(QtSettingsStore, SettingsFromAnOlderLayoutAreWipedAfterTheMessage) {
    ConfigFolder folder;
    folder.WriteFile("[Global]\nVersion=0.9.1 / 01-Jan-2019\nFormHeight=9000\n"
                     "[Scan0]\nImgFile=1911B30123.jpg\nRecNo=40\n");
    ProgramRun run(folder);
    ASSERT_EQ(run.Prompts.Shown.size(), 1U);
    EXPECT_EQ(run.Prompts.Shown[0].Text,
              "The version of Tallyview you are about to run is different from \r"
              "the last time you ran it.\r"
              "Usually Tallyview remembers certain settings and preferences\r"
              "but because you are running a different version, you may need\r"
              "to reselect or respecify them.");
    EXPECT_EQ(run.Prompts.Shown[0].Title, "Tallyview");
    ExpectDefaults(run);
    QSettings onDisk(folder.Path(), QSettings::IniFormat);
    EXPECT_TRUE(onDisk.allKeys().isEmpty());
}

TEST(QtSettingsStore, RestoreDefaultsEmptiesTheFile) {
    ConfigFolder folder;
    {
        ProgramRun first(folder);
        first.SaveScan("/home/ann/scans/1911B30123.jpg", 57);
        WriteSkipSteps(first.Store, true);
    }
    {
        test::FakePrompts prompts;
        QtSettingsStore store(prompts, folder.Path());
        EXPECT_TRUE(ReadSkipSteps(store));
        RestoreDefaults(store);
        EXPECT_FALSE(ReadSkipSteps(store));
    }
    QSettings onDisk(folder.Path(), QSettings::IniFormat);
    EXPECT_TRUE(onDisk.allKeys().isEmpty());
}

TEST(QtSettingsStore, AFolderThatCannotBeWrittenIsToldOncePerRun) {
    test::TempDir dir;
    const std::string plain = dir.Write("plain", "not a folder");
    const QString path = QString::fromStdString(plain + "/Tallyview/Tallyview.conf");
    test::FakePrompts prompts;
    QtSettingsStore store(prompts, path);
    ScanHistory history;
    GetDefaults(store, prompts, history, Screen);
    WriteSkipSteps(store, true);
    WriteSkipSteps(store, false);
    ASSERT_EQ(prompts.Shown.size(), 1U);
    EXPECT_EQ(prompts.Shown[0].Text, "Tallyview could not save its settings in " + plain +
                                         "/Tallyview/Tallyview.conf\r"
                                         "The file or its folder cannot be written.");
    EXPECT_EQ(prompts.Shown[0].Title, "Tallyview");
    EXPECT_EQ(prompts.Shown[0].Choice, Buttons::Ok);
}

TEST(QtSettingsStore, UserStoreLivesInTheConfigurationFolder) {
    test::TempDir dir;
    const QByteArray saved = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(dir.Path().string()));
    EXPECT_EQ(DefaultSettingsPath(),
              QString::fromStdString((dir.Path() / "Tallyview" / "Tallyview.conf").string()));
    {
        test::FakePrompts prompts;
        QtSettingsStore store(prompts);
        WriteSkipSteps(store, true);
        EXPECT_EQ(store.FilePath(), DefaultSettingsPath());
    }
    EXPECT_NE(test::ReadBytes((dir.Path() / "Tallyview" / "Tallyview.conf").string())
                  .find("SkipOpenScreen=Y"),
              std::string::npos);
    if (saved.isNull()) {
        qunsetenv("XDG_CONFIG_HOME");
    } else {
        qputenv("XDG_CONFIG_HOME", saved);
    }
}

} // namespace
} // namespace tv
