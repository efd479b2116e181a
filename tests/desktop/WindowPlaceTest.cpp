// Every window stays on the screen: a place read from the settings that reaches past the screen,
// the place after the "different version" message, and a window left above the screen, which is
// never saved with a negative top.
#include "HostileWindowTesting.h"

#include "session/QtWindowPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

#include <fstream>
#include <regex>

namespace tv::test {
namespace {

namespace fs = std::filesystem;

class WindowPlace : public HostileWindowTest {
  protected:
    SamplePage Page = GeneratePage("births1872", Dir.Path());

    void WriteSettings(const std::string& text) {
        fs::create_directories(SettingsFile().parent_path());
        std::ofstream(SettingsFile(), std::ios::binary) << text;
    }

    void Open() {
        RunWithRealBoxes(Page.Scan, Page.Transcription);
        WaitForTheMainWindow();
    }

    static QRect FreeArea() { return QGuiApplication::primaryScreen()->availableGeometry(); }

    static int Twips(int pixels) { return pixels * 15; }

    // A saved number of the "Global" section; nothing when it is not there.
    std::optional<long> Saved(const std::string& key) const {
        std::smatch match;
        const std::string text = SettingsText();
        if (!std::regex_search(text, match, std::regex("\n" + key + "=(-?[0-9]+)")))
            return std::nullopt;
        return std::stol(match[1]);
    }

    void ExpectOnTheScreen(const QWidget& window) {
        EXPECT_TRUE(FreeArea().contains(window.frameGeometry()))
            << window.objectName().toStdString() << " at " << window.frameGeometry().x() << ","
            << window.frameGeometry().y() << " " << window.frameGeometry().width() << "x"
            << window.frameGeometry().height();
    }
};

TEST(KeepOnScreen, MovesAndShrinksOnlyWhatLiesOutside) {
    const QRect screen(0, 0, 800, 600);
    EXPECT_EQ(KeepOnScreen(QRect(10, 20, 300, 200), screen), QRect(10, 20, 300, 200));
    EXPECT_EQ(KeepOnScreen(QRect(10, -150, 300, 200), screen), QRect(10, 0, 300, 200));
    EXPECT_EQ(KeepOnScreen(QRect(700, 500, 300, 200), screen), QRect(500, 400, 300, 200));
    EXPECT_EQ(KeepOnScreen(QRect(-40, -40, 900, 700), screen), screen);
    const QRect panelAtTop(0, 30, 800, 570);
    EXPECT_EQ(KeepOnScreen(QRect(100, 5, 300, 200), panelAtTop), QRect(100, 30, 300, 200));
}

TEST_F(WindowPlace, SavedPlaceReachingPastTheScreenIsKeptOnIt) {
    const QRect whole = QGuiApplication::primaryScreen()->geometry();
    // Within every range the settings allow, yet the window would hang below the screen.
    WriteSettings("[Global]\nRegVersion=B\nVersion=1.0.0\nFormHeight=6000\nFormWidth=8000\n"
                  "FormTop=" +
                  std::to_string(Twips(whole.height()) - 200) +
                  "\nFormLeft=" + std::to_string(Twips(whole.width()) - 1000) + "\n");
    Open();
    ExpectOnTheScreen(*Window);
    EXPECT_TRUE(Boxes.Answered.empty()) << Boxes.Texts();
}

TEST_F(WindowPlace, AfterTheVersionMessageTheWindowIsOnTheScreenAndNeverSavedAboveIt) {
    WriteSettings("[Global]\nRegVersion=A\nVersion=0.9\nFormTop=-4000\n");
    Open();
    ASSERT_EQ(Boxes.Answered.size(), 1U) << Boxes.Texts();
    EXPECT_EQ(Boxes.Answered[0].Text.rfind("The version of Tallyview you are about to run is "
                                           "different from",
                                           0),
              0U);
    ExpectOnTheScreen(*Window);

    // Calibrated (nothing is saved while calibrating), left with its title bar above the screen
    // (as a window manager may leave it) and closed.
    Calibrate(Page);
    Window->move(Window->x(), FreeArea().top() - 300);
    Window->close();
    ASSERT_TRUE(Saved("FormTop").has_value()) << SettingsText();
    EXPECT_GE(*Saved("FormTop"), Twips(FreeArea().top()));
    EXPECT_GE(*Saved("FormLeft"), Twips(FreeArea().left()));

    Open();
    ExpectOnTheScreen(*Window);
}

} // namespace
} // namespace tv::test
