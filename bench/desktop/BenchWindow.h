#pragma once
// The program on a scan as the volunteer uses it: the windowed program's forms on Qt's offscreen
// platform, the main window at 1920 x 1080, the box lined up with the page, driven with the
// keys and buttons the volunteer uses.
#include "BenchScans.h"

#include "core/Prompts.h"

#include <QSize>
#include <QTemporaryDir>

#include <functional>
#include <memory>

namespace tv {
class DesktopForms;
class Form1;
class ImageView;
class Session;
} // namespace tv

namespace bench {

inline constexpr QSize WindowSize(1920, 1080);

// Answers every message and question with its default and counts them: the benchmarks' pages
// must ask nothing, or the figures would time a dialog.
class QuietPrompts : public tv::Prompts {
  public:
    tv::Answer Ask(const tv::Prompt& prompt) override;
    int Asked = 0;
};

// Processes what a command left for the event loop: the repaint of what changed and its flush
// to the window.
void Settle();
// Lets the event loop run until done() holds (work on worker threads ends in an event).
void WaitFor(const std::function<bool()>& done);

class VerifyingWindow {
  public:
    // Opens the scan and its transcription through the four steps, sizes the main window and
    // lines the box up with the page's entries; the reduced copies of the scan are made.
    explicit VerifyingWindow(const ScanFile& file);
    ~VerifyingWindow();
    VerifyingWindow(const VerifyingWindow&) = delete;
    VerifyingWindow& operator=(const VerifyingWindow&) = delete;

    const ScanFile& File() const { return file_; }
    tv::Form1& Main() const;
    tv::ImageView& View() const;
    tv::Session& Model() const;

    // A key pressed and released on the main window, as the user types it; Settle shows it.
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    // A button of the main window's button bar clicked.
    void Click(const char* name) const;
    // The zoom as a percentage of the base zoom, as a remembered scan opens at it.
    void ZoomTo(int percent) const;
    // The box at the first record of column 1 (the Home key), the view settled.
    void Home() const;
    bool AtLastRecord() const;

  private:
    void Calibrate() const;
    void DropBoxAt(QPointF scanPoint) const;

    ScanFile file_;
    QTemporaryDir settings_;
    QuietPrompts prompts_;
    std::unique_ptr<tv::DesktopForms> forms_;
};

} // namespace bench
