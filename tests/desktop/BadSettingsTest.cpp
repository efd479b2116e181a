// Bad settings through the windowed program: a file that is damaged, that holds values of the
// wrong type or outside every range, or that cannot be written. The program starts as on its
// very first run, takes the documented defaults, and a save that fails is told once per run.
#include "DesktopTesting.h"

#include <QAction>
#include <QScreen>
#include <QTest>

#include <fstream>

#include <sys/stat.h>

namespace tv::test {
namespace {

namespace fs = std::filesystem;

// What the main window took from the settings when it loaded.
struct Loaded {
    QPoint Place; // of the frame
    QSize Size;
    int16_t Colour = 0;
    bool ShowRptSurnames = false;
    bool Magnifier = false;
};

class BadSettings : public DesktopTest {
  protected:
    SamplePage Page = GeneratePage("births1872", Dir.Path());

    void WriteSettings(const std::string& bytes) {
        fs::create_directories(SettingsFile().parent_path());
        std::ofstream(SettingsFile(), std::ios::binary) << bytes;
    }

    Loaded Open() {
        Run(Page.Scan, Page.Transcription);
        WaitForMainWindow();
        return {Window->pos(), Window->size(), S().Content.BoxColourIndex,
                S().Prefs.ShowRptSurnames, S().Prefs.Magnifier};
    }

    // The program's very first run, with no settings at all; nothing of it is kept.
    Loaded FirstRun() {
        const Loaded first = Open();
        EndRun();
        fs::remove_all(SettingsFile().parent_path());
        return first;
    }

    // The size and the preferences of the first run; its place too unless centred is set.
    static void ExpectSame(const Loaded& loaded, const Loaded& first) {
        EXPECT_EQ(loaded.Place, first.Place);
        ExpectDefaults(loaded, first);
    }

    static void ExpectDefaults(const Loaded& loaded, const Loaded& first) {
        EXPECT_EQ(loaded.Size, first.Size);
        EXPECT_EQ(loaded.Colour, 1);
        EXPECT_EQ(loaded.Colour, first.Colour);
        EXPECT_FALSE(loaded.ShowRptSurnames);
        EXPECT_FALSE(loaded.Magnifier);
    }

    // New Scan saves once, closing the program saves again.
    void SaveTwice() {
        Find<QAction>("MenuNewScan")->trigger();
        ASSERT_TRUE(Forms->StartWindow()->isVisible());
        Forms->MainForm()->close();
    }

    std::string SaveFailure() const {
        return "Tallyview could not save its settings in " + SettingsFile().string() +
               "\rThe file or its folder cannot be written.";
    }
};

TEST_F(BadSettings, ADamagedFileStartsAsTheFirstRunAndIsReplacedWhenTheProgramEnds) {
    const Loaded first = FirstRun();
    std::string damaged = "[Global]\nRegVersion=B\nTextBoxColour=4\nMagnifier=Y\n";
    for (int i = 0; i < 2000; ++i)
        damaged += static_cast<char>((i * 131 + 7) % 256);
    WriteSettings(damaged);
    const Loaded loaded = Open();
    ExpectSame(loaded, first);
    EXPECT_TRUE(S().History.Entries[1].Empty());
    EXPECT_EQ(S().Calib.CalibrationStage, 1);
    EXPECT_TRUE(Prompts.Shown.empty());
    Calibrate(Page); // nothing is saved while calibrating
    Window->close();
    EndRun();
    const std::string saved = SettingsText();
    EXPECT_NE(saved.find("RegVersion=B"), std::string::npos);
    EXPECT_NE(saved.find("ImgFile=1872B20234.jpg"), std::string::npos);
    EXPECT_EQ(saved.find('\x7'), std::string::npos);
}

TEST_F(BadSettings, ValuesOfTheWrongTypeOrOutsideEveryRangeGiveTheDocumentedDefaults) {
    const Loaded first = FirstRun();
    std::string settings = "[Global]\nRegVersion=B\nVersion=1.0.0 / 21-Jun-2022\n"
                           "TextBoxColour=@Variant(\\0\\0\\0\\x7f\\0\\0\\0\\x5QRect)\n"
                           "ShowRptSurnames=yes\nMagnifier=1\nFormHeight=-5\nFormWidth=1e9\n"
                           "FormTop=\"top, left\"\nFormLeft=@ByteArray(100)\n"
                           "[Scan0]\nImgFile=1872B20234.jpg\nSCAFile=1872B20234.QRL\n"
                           "NumColumns=7\nScanType=0\nLineIncrTop=0.5\nLineIncrLeft=-10000\n"
                           "FrameFontSize=41\nBoxPerCent=1.01\nScale=nan\nRecNo=1001\n"
                           "AntiAlias=maybe\n";
    for (int n = 1; n <= 6; ++n)
        settings += "Col" + std::to_string(n) + "Top=100001\nCol" + std::to_string(n) +
                    "Left=-2\nCol" + std::to_string(n) + "First=1e400\n";
    WriteSettings(settings);
    const Loaded loaded = Open();
    ExpectDefaults(loaded, first);
    // A top that is no number fails its range, so the window is centred from top to bottom; a
    // left of another type is no text and reads as missing, so the stored default 100 passes
    // and the window stands where the first run put it.
    const QRect screen = Window->screen()->geometry();
    EXPECT_NEAR(loaded.Place.y(), (screen.height() - loaded.Size.height()) / 2, 1);
    EXPECT_NE(loaded.Place.y(), first.Place.y());
    EXPECT_EQ(loaded.Place.x(), first.Place.x());
    const ScanHistoryEntry& e = S().History.Entries[1];
    EXPECT_EQ(e.ImgFile, "1872B20234.jpg");
    EXPECT_EQ(e.NumColumns, 3);
    EXPECT_EQ(e.ScanType, 1);
    EXPECT_EQ(e.LineIncrTop, -1.0F);
    EXPECT_EQ(e.LineIncrLeft, 0.0F);
    EXPECT_EQ(e.FrameFontSize, 10);
    EXPECT_EQ(e.BoxPerCent, 0.3F);
    EXPECT_EQ(e.Scale, 100.0F);
    EXPECT_EQ(e.RecNo, 0);
    EXPECT_FALSE(e.AntiAlias);
    for (int n = 1; n <= 6; ++n) {
        EXPECT_EQ(e.ColTop[n], -1) << n;
        EXPECT_EQ(e.ColLeft[n], -1) << n;
        EXPECT_EQ(e.ColFirst[n], -1) << n;
    }
    // Without a remembered spacing the scan is calibrated afresh.
    EXPECT_EQ(S().Calib.CalibrationStage, 1);
    EXPECT_TRUE(Prompts.Shown.empty());
}

TEST_F(BadSettings, ASettingsFileThatIsAFolderGivesTheDefaultsAndAFailedSaveIsToldOnce) {
    const Loaded first = FirstRun();
    fs::create_directories(SettingsFile());
    ExpectSame(Open(), first);
    EXPECT_TRUE(Prompts.Shown.empty());
    Calibrate(Page); // nothing is saved while calibrating
    SaveTwice();
    ASSERT_EQ(Prompts.Shown.size(), 1U);
    EXPECT_EQ(Prompts.Shown[0].Text, SaveFailure());
    EXPECT_EQ(Prompts.Shown[0].Title, "Tallyview");
    EXPECT_EQ(Prompts.Shown[0].Choice, Buttons::Ok);
    EXPECT_TRUE(fs::is_directory(SettingsFile()));
}

TEST_F(BadSettings, AFolderThatCannotExistIsToldOnceAndTheSessionGoesOn) {
    const Loaded first = FirstRun();
    // A plain file where the settings folder should be: no one, root included, can make it.
    Dir.Write("config", "a plain file");
    ExpectSame(Open(), first);
    Calibrate(Page);
    EXPECT_EQ(S().Calib.CalibrationStage, 0);
    SaveTwice();
    ASSERT_EQ(Prompts.Shown.size(), 1U);
    EXPECT_EQ(Prompts.Shown[0].Text, SaveFailure());
    EXPECT_EQ(ReadBytes((Dir.Path() / "config").string()), "a plain file");
}

TEST_F(BadSettings, ADeviceOrAPipeForASettingsFileGivesTheDefaultsAndTheProgramRuns) {
    const Loaded first = FirstRun();
    for (const std::string kind : {"device", "pipe"}) {
        Prompts.Shown.clear();
        fs::create_directories(SettingsFile().parent_path());
        if (kind == "device") {
            fs::create_symlink("/dev/urandom", SettingsFile());
        } else {
            ASSERT_EQ(mkfifo(SettingsFile().c_str(), 0600), 0);
        }
        ExpectSame(Open(), first);
        EXPECT_TRUE(Prompts.Shown.empty()) << kind;
        Calibrate(Page);
        SaveTwice();
        ASSERT_EQ(Prompts.Shown.size(), 1U) << kind;
        EXPECT_EQ(Prompts.Shown[0].Text, SaveFailure());
        EndRun();
        EXPECT_EQ(fs::is_fifo(SettingsFile()), kind == "pipe");
        fs::remove(SettingsFile());
    }
}

} // namespace
} // namespace tv::test
