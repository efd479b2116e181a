#pragma once
// The start window and the main window under test, driven with real key and mouse events, with
// scripted prompts, a scripted file dialog and generated sample pages whose entries' places on
// the scan are known.
#include "layout/ScanTypesForm.h"
#include "session/Form1.h"
#include "session/StartForm.h"
#include "support/FakePlatform.h"
#include "support/TestFiles.h"

#include <QPointF>

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class QLineEdit;

namespace tv::test {

// A page drawn by the sample generator: the scan, its transcription and, for every record, where
// the top left corner of a box placed just below the entry belongs (scan pixels).
struct SamplePage {
    struct Place {
        int Column = 0;
        double X = 0.0;
        double Y = 0.0;
    };
    std::string Scan;
    std::string Transcription;
    int Pitch = 0;
    int Columns = 0;
    std::map<int, Place> Places; // by table line

    int FirstLineOfColumn(int column) const;
};

// Draws a page of the kind ("births1872", "births1965" ...) into dir.
SamplePage GeneratePage(const std::string& kind, const std::filesystem::path& dir);

// Runs action as soon as the scan layout options form is shown modally (once).
void WhenScanTypesShown(const std::function<void(ScanTypesForm&)>& action);

class FormsTest : public ::testing::Test {
  protected:
    ~FormsTest() override;

    // A start window whose step 1 creates the main window below.
    StartForm& OpenStartForm(bool skipOpenScreen = false);
    // The main window as step 1 creates it: scripted prompts and file dialog, and the scripted
    // layout chooser unless RealScanTypes is set.
    Form1* CreateMainForm();
    // The page through the four steps with SkipSteps ticked; calibration waits at stage 1.
    void OpenPage(const SamplePage& page);
    // Calibration with the arrow, ENTER, + and - keys at the page's known places.
    void Calibrate(const SamplePage& page);

    // The scripted file dialog: the next of Files ("" once they run out); the request is kept.
    std::string NextFile(const FileRequest& request);

    // A key as the user presses it on the main window.
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // Moves the box with the arrow keys until it is within half a key step of the scan point.
    void MoveBoxTo(double x, double y);
    void MoveBoxTo(const SamplePage::Place& place) { MoveBoxTo(place.X, place.Y); }
    // The top left corner of the box as it is drawn, in scan pixels.
    QPointF BoxOnScan() const;
    // Where the session holds the box, in scan pixels.
    QPointF BoxInSession() const;

    QLineEdit* DummyBox() const;
    template <typename T> T* Find(const QString& name) const { return Window->findChild<T*>(name); }
    Session& S() const { return Window->Model(); }

    FakePrompts Prompts;
    FakeLayoutChooser Chooser;
    bool RealScanTypes = false;
    // The file dialog's answers, in order ("" cancels); the requests it was given.
    std::deque<std::string> Files;
    std::vector<FileRequest> Requests;
    int MainFormsCreated = 0;
    // The main window's ShowStatistics hook, each call's statisticsOnly.
    std::vector<bool> StatisticsRequests;
    std::unique_ptr<Form1> Main;
    // The main window the helpers drive: Main, or one the app's wiring made.
    Form1* Window = nullptr;
    std::unique_ptr<StartForm> Start;
    TempDir Dir;
};

} // namespace tv::test
