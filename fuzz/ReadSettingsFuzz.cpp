// A settings file of any content read through GetDefaults: every value comes out within its
// documented range or as its default, and what SaveDefaults writes back reads back the same.
// The input is parsed as the store's sections ("[Scan0]") and "key=value" lines.
#include "FuzzSupport.h"
#include "session/MemorySettingsStore.h"
#include "support/FakePlatform.h"

#include <string>
#include <string_view>

namespace {

using tv::fuzz::Require;

tv::test::MemorySettingsStore StoreOf(std::string_view text) {
    tv::test::MemorySettingsStore store;
    std::string section;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
        if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
            section = line.substr(1, line.size() - 2);
            continue;
        }
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) continue;
        store.Sections[section][std::string(line.substr(0, equals))] = line.substr(equals + 1);
    }
    return store;
}

bool InRange(double value, double minimum, double maximum) {
    return value >= minimum && value <= maximum;
}

void CheckGlobal(const tv::GlobalSettings& g, tv::ScreenSize screen) {
    Require(InRange(g.TextBoxColour, 1, 6), "box colour 1..6");
    const double height = screen.Height;
    const double width = screen.Width;
    Require(InRange(g.FormHeight, 6000, height - 600) ||
                g.FormHeight == tv::CLng(height < 12600 ? height - 600 : 12000),
            "form height in range or its default");
    Require(InRange(g.FormWidth, 8000, width - 200) ||
                g.FormWidth == tv::CLng(width < 15200 ? width - 600 : 14200),
            "form width in range or its default");
    Require(InRange(g.FormTop, 10, height - 200) ||
                g.FormTop == tv::CLng((height - g.FormHeight) / 2),
            "form top in range or its default");
    Require(InRange(g.FormLeft, 50, width - 1000) ||
                g.FormLeft == tv::CLng((width - g.FormWidth) / 2),
            "form left in range or its default");
}

void CheckEntry(const tv::ScanHistoryEntry& e) {
    if (e.Empty()) return;
    Require(InRange(e.NumColumns, 1, 6), "columns 1..6");
    Require(InRange(e.ScanType, 1, 42), "scan type 1..42");
    Require(e.LineIncrTop == -1 || InRange(e.LineIncrTop, 1, 9999), "line spacing");
    Require(InRange(e.LineIncrLeft, -9999, 9999), "line drift");
    Require(InRange(e.FrameFontSize, 8, 40), "font size 8..40");
    Require(InRange(e.BoxPerCent, 0.1F, 1.0F), "box size 0.1..1");
    Require(InRange(e.Scale, 0, 9999), "zoom 0..9999");
    Require(InRange(e.RecNo, 0, 1000), "record 0..1000");
    for (int n = 1; n <= 6; ++n)
        Require(InRange(e.ColTop[n], -1, 100000) && InRange(e.ColLeft[n], -1, 100000) &&
                    InRange(e.ColFirst[n], -1, 100000),
                "column tops -1..100000");
}

bool SameEntry(const tv::ScanHistoryEntry& a, const tv::ScanHistoryEntry& b) {
    bool same = a.ImgFile == b.ImgFile && a.SCAFile == b.SCAFile && a.ImgFileDir == b.ImgFileDir &&
                a.SCAFileDir == b.SCAFileDir && a.NumColumns == b.NumColumns &&
                a.ScanType == b.ScanType && a.LastChecked == b.LastChecked &&
                a.LineIncrTop == b.LineIncrTop && a.LineIncrLeft == b.LineIncrLeft &&
                a.FrameFontSize == b.FrameFontSize && a.BoxPerCent == b.BoxPerCent &&
                a.Scale == b.Scale && a.RecNo == b.RecNo && a.AntiAlias == b.AntiAlias &&
                a.Negative == b.Negative && a.Smoothing == b.Smoothing &&
                a.SurnameOwnLine == b.SurnameOwnLine;
    for (int n = 1; n <= 6; ++n)
        same = same && a.ColTop[n] == b.ColTop[n] && a.ColLeft[n] == b.ColLeft[n] &&
               a.ColFirst[n] == b.ColFirst[n];
    return same;
}

// Saves what was read with the first remembered scan as the current one, and reads it again.
void CheckRoundTrip(const tv::GlobalSettings& g, const tv::ScanHistory& history,
                    tv::ScreenSize screen) {
    tv::test::MemorySettingsStore saved;
    tv::test::FakePrompts prompts;
    tv::test::FixedClock clock;
    tv::ScanHistory written = history;
    tv::SaveSnapshot snapshot;
    snapshot.Global = g;
    snapshot.VersionLabel = "Version 1.0.0";
    const tv::ScanHistoryEntry& first = history.Entries[1];
    // A name holding a folder separator of either kind would be split at it, and name another
    // scan.
    if (!first.Empty() && first.ImgFile.find_first_of("/\\") == std::string::npos) {
        snapshot.GraphicsFile = "/scans/" + first.ImgFile;
        snapshot.TranscriptionFile = "/scans/page.QRL";
        snapshot.Current = first;
    }
    tv::SaveDefaults(saved, snapshot, written, clock);
    tv::ScanHistory reread;
    const tv::GlobalSettings again = tv::GetDefaults(saved, prompts, reread, screen);
    Require(prompts.Shown.empty(), "a store just written raises no version message");
    Require(again.TextBoxColour == g.TextBoxColour && again.FormHeight == g.FormHeight &&
                again.FormWidth == g.FormWidth && again.FormTop == g.FormTop &&
                again.FormLeft == g.FormLeft && again.ShowRptSurnames == g.ShowRptSurnames &&
                again.Magnifier == g.Magnifier,
            "the global settings read back as written");
    if (snapshot.GraphicsFile.empty()) return;
    for (int k = 2; k <= tv::HistorySize; ++k)
        Require(SameEntry(reread.Entries[k], history.Entries[k]),
                "a remembered scan reads back as written");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    // A small laptop screen, a full HD screen and one too small for any stored size.
    for (tv::ScreenSize screen :
         {tv::ScreenSize{11520, 20490}, tv::ScreenSize{16200, 28800}, tv::ScreenSize{3000, 4000}}) {
        tv::test::MemorySettingsStore store = StoreOf(text);
        tv::test::FakePrompts prompts;
        tv::ScanHistory history;
        const tv::GlobalSettings g = tv::GetDefaults(store, prompts, history, screen);
        Require(prompts.Shown.size() <= 1, "at most the version message");
        CheckGlobal(g, screen);
        for (int k = 1; k <= tv::HistorySize; ++k)
            CheckEntry(history.Entries[k]);
        CheckRoundTrip(g, history, screen);
    }
    return 0;
}
