#include "session/Settings.h"

#include "core/Checked.h"
#include "core/Numeric.h"
#include "core/Text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace tv {

namespace {

constexpr const char* Global = "Global";
// The layout mark of this store: a store without it comes from an earlier version.
constexpr const char* RegVersion = "B";
constexpr const char* Missing = "*DEFAULT*";
constexpr float MaxColourNumber = 6.0F;

const std::string VersionChangedText =
    std::string("The version of Tallyview you are about to run is different from ") + CR +
    "the last time you ran it." + CR +
    "Usually Tallyview remembers certain settings and preferences" + CR +
    "but because you are running a different version, you may need" + CR +
    "to reselect or respecify them.";

std::string YesNo(bool value) {
    return value ? "Y" : "N";
}

// Entry k of the history is section "Scan" k-1.
std::string SectionOf(int entry) {
    return "Scan" + std::to_string(entry - 1);
}

std::string ColumnKey(int column, const char* part) {
    return "Col" + std::to_string(column) + part;
}

// The keys of one section as they are read.
class SectionReader {
  public:
    SectionReader(const SettingsStore& store, std::string section)
        : store_(store), section_(std::move(section)) {}

    std::string Text(const std::string& key, const std::string& deflt) const {
        return store_.Read(section_, key, deflt);
    }
    bool Flag(const std::string& key, const char* deflt) const { return Text(key, deflt) == "Y"; }
    // A number read with readDefault when the store holds none, then checked against its range.
    float Number(const std::string& key, const std::string& readDefault, float minimum,
                 float maximum, float deflt) const {
        return ValidateDefault(Text(key, readDefault), minimum, maximum, deflt);
    }
    // A number that is read with its own default when the store holds none.
    float Number(const std::string& key, float minimum, float maximum, float deflt) const {
        return Number(key, DecimalText(deflt), minimum, maximum, deflt);
    }
    // A whole-number setting is validated as any number (minimum <= value <= maximum) and the
    // caller rounds what it gets.
    float Whole(const std::string& key, const std::string& readDefault, float minimum,
                float maximum, float deflt) const {
        return Number(key, readDefault, minimum, maximum, deflt);
    }
    float Whole(const std::string& key, float minimum, float maximum, float deflt) const {
        return Whole(key, DecimalText(deflt), minimum, maximum, deflt);
    }

  private:
    const SettingsStore& store_;
    std::string section_;
};

// Settings from an earlier layout are wiped after telling the user; nothing is migrated.
void CheckVersion(SettingsStore& store, Prompts& prompts) {
    const std::string regVersion = store.Read(Global, "RegVersion", "-");
    const std::string version = store.Read(Global, "Version", "---");
    if (regVersion == RegVersion || version == "---") return;
    prompts.Tell(VersionChangedText, PromptIcon::Information);
    store.DeleteAll();
    store.Flush();
}

GlobalSettings ReadGlobal(const SettingsStore& store, ScreenSize screen) {
    const SectionReader global(store, Global);
    const auto height = static_cast<float>(screen.Height);
    const auto width = static_cast<float>(screen.Width);
    GlobalSettings g;
    // Kept deliberately: the colour number fails only above 6 as it would be shown, so "6.4"
    // (colour 6 once rounded) is accepted while "6.5" is not; its maximum is the largest number
    // below 6.5.
    g.TextBoxColour =
        CInt(global.Whole("TextBoxColour", 1, std::nextafter(MaxColourNumber + 0.5F, 0.0F), 1));
    g.ShowRptSurnames = global.Flag("ShowRptSurnames", "N");
    g.Magnifier = global.Flag("Magnifier", "N");
    // Both are on unless switched off: any value but "N" reads as "Y".
    g.LineUpAutomatically = global.Text("LineUpAutomatically", "Y") != "N";
    g.FollowPrintedLines = global.Text("FollowPrintedLines", "Y") != "N";
    // The stored default "0" fails its range on the first run, so the computed size applies.
    g.FormHeight = CLng(
        global.Whole("FormHeight", "0", 6000, height - 600, height < 12600 ? height - 600 : 12000));
    g.FormWidth = CLng(
        global.Whole("FormWidth", "0", 8000, width - 200, width < 15200 ? width - 600 : 14200));
    // Deliberate: the stored default "100" passes, so the first run opens the main window 100
    // twips from the screen's top left corner rather than centred. Top and left are checked
    // against the height and width just read.
    g.FormTop = CLng(global.Whole("FormTop", "100", 10, height - 200,
                                  (height - static_cast<float>(g.FormHeight)) / 2));
    g.FormLeft = CLng(global.Whole("FormLeft", "100", 50, width - 1000,
                                   (width - static_cast<float>(g.FormWidth)) / 2));
    return g;
}

// One scan section; an empty "ImgFile" leaves the entry empty.
ScanHistoryEntry ReadEntry(const SettingsStore& store, int entry) {
    const SectionReader scan(store, SectionOf(entry));
    ScanHistoryEntry e;
    e.ImgFile = scan.Text("ImgFile", "");
    if (e.ImgFile.empty()) return e;
    e.SCAFile = scan.Text("SCAFile", "");
    e.ImgFileDir = scan.Text("ImgFileDir", "");
    e.SCAFileDir = scan.Text("SCAFileDir", "");
    e.NumColumns = CInt(scan.Whole("NumColumns", 1, 6, 3));
    e.ScanType = CInt(scan.Whole("ScanType", 1, 42, 1));
    e.LastChecked = scan.Text("LastChecked", "");
    e.LineIncrTop = scan.Number("LineIncrTop", 1, 9999, -1);
    e.LineIncrLeft = scan.Number("LineIncrLeft", -9999, 9999, 0);
    e.FrameFontSize = CInt(scan.Whole("FrameFontSize", 8, 40, 10));
    e.BoxPerCent = scan.Number("BoxPerCent", 0.1F, 1.0F, 0.3F);
    e.Scale = scan.Number("Scale", 0, 9999, 100);
    e.RecNo = CInt(scan.Whole("RecNo", 0, 1000, 0));
    e.AntiAlias = scan.Flag("AntiAlias", "Y");
    e.Negative = scan.Flag("Negative", "N");
    e.Smoothing = scan.Flag("Smoothing", "Y");
    e.SurnameOwnLine = scan.Text("SurnameOwnLine", "");
    for (int n = 1; n <= 6; ++n) {
        e.ColTop[n] = CLng(scan.Whole(ColumnKey(n, "Top"), -1, 100000, -1));
        e.ColLeft[n] = CLng(scan.Whole(ColumnKey(n, "Left"), -1, 100000, -1));
        e.ColFirst[n] = CLng(scan.Whole(ColumnKey(n, "First"), -1, 100000, -1));
    }
    return e;
}

void WriteEntry(SettingsStore& store, const std::string& section, const ScanHistoryEntry& e) {
    auto put = [&](const std::string& key, const std::string& value) {
        store.Write(section, key, value);
    };
    put("ImgFile", e.ImgFile);
    put("SCAFile", e.SCAFile);
    put("ImgFileDir", e.ImgFileDir);
    put("SCAFileDir", e.SCAFileDir);
    put("NumColumns", std::to_string(e.NumColumns));
    put("ScanType", std::to_string(e.ScanType));
    put("LastChecked", e.LastChecked);
    put("LineIncrTop", DecimalText(e.LineIncrTop));
    put("LineIncrLeft", DecimalText(e.LineIncrLeft));
    put("FrameFontSize", std::to_string(e.FrameFontSize));
    put("BoxPerCent", DecimalText(e.BoxPerCent));
    put("Scale", DecimalText(e.Scale));
    put("RecNo", std::to_string(e.RecNo));
    put("AntiAlias", YesNo(e.AntiAlias));
    put("Negative", YesNo(e.Negative));
    put("Smoothing", YesNo(e.Smoothing));
    // Written even when empty, so that a section taken over by another scan keeps no stale answer.
    put("SurnameOwnLine", e.SurnameOwnLine);
    for (int n = 1; n <= 6; ++n) {
        put(ColumnKey(n, "Top"), std::to_string(e.ColTop[n]));
        put(ColumnKey(n, "Left"), std::to_string(e.ColLeft[n]));
        put(ColumnKey(n, "First"), std::to_string(e.ColFirst[n]));
    }
}

void WriteGlobal(SettingsStore& store, const SaveSnapshot& snapshot) {
    const GlobalSettings& g = snapshot.Global;
    // The label reads "Version " and the version text; the store keeps the text alone.
    const std::string& label = snapshot.VersionLabel;
    store.Write(Global, "Version", label.size() > 8 ? label.substr(8) : "");
    store.Write(Global, "RegVersion", RegVersion);
    store.Write(Global, "TextBoxColour", std::to_string(g.TextBoxColour));
    store.Write(Global, "ShowRptSurnames", YesNo(g.ShowRptSurnames));
    store.Write(Global, "Magnifier", YesNo(g.Magnifier));
    store.Write(Global, "LineUpAutomatically", YesNo(g.LineUpAutomatically));
    store.Write(Global, "FollowPrintedLines", YesNo(g.FollowPrintedLines));
    store.Write(Global, "FormHeight", std::to_string(g.FormHeight));
    store.Write(Global, "FormWidth", std::to_string(g.FormWidth));
    store.Write(Global, "FormTop", std::to_string(g.FormTop));
    store.Write(Global, "FormLeft", std::to_string(g.FormLeft));
}

struct FolderAndName {
    std::string Folder;
    std::string Name;
};

// The bare name after the last folder separator; the folder up to and including it, but only
// when the separator stands after the fourth character. Kept deliberately: a file straight
// under a drive ("C:" then the separator) is stored without a folder.
FolderAndName SplitFolder(const std::string& path) {
    const std::size_t last = LastFolderSeparator(path);
    if (last == std::string::npos) return {"", path};
    return {last + 1 > 4 ? path.substr(0, last + 1) : "", path.substr(last + 1)};
}

// Takes the entry named name out of its place (closing the gap), then moves every entry one
// place down; entry 10 is lost and entry 1 is left for the current scan.
void MakeRoomAtFront(ScanHistory& history, const std::string& name) {
    for (int i = 1; i <= HistorySize; ++i) {
        if (history.Entries[i].ImgFile != name) continue;
        for (int j = i; j < HistorySize; ++j)
            history.Entries[j] = history.Entries[j + 1];
        history.Entries[HistorySize] = ScanHistoryEntry{};
        break;
    }
    for (int j = HistorySize; j >= 2; --j)
        history.Entries[j] = history.Entries[j - 1];
}

ScanHistoryEntry CurrentEntry(const SaveSnapshot& snapshot, const std::string& imageName,
                              const Clock& clock) {
    ScanHistoryEntry entry = snapshot.Current;
    const FolderAndName image = SplitFolder(snapshot.GraphicsFile);
    const FolderAndName transcription = SplitFolder(snapshot.TranscriptionFile);
    entry.ImgFile = imageName;
    entry.ImgFileDir = image.Folder;
    entry.SCAFile = transcription.Name;
    entry.SCAFileDir = transcription.Folder;
    entry.LastChecked = FormatLastChecked(clock.Now());
    return entry;
}

void WriteHistory(SettingsStore& store, const ScanHistory& history) {
    for (int k = 1; k <= HistorySize; ++k) {
        const std::string section = SectionOf(k);
        if (!history.Entries[k].Empty()) {
            WriteEntry(store, section, history.Entries[k]);
        } else if (store.Read(section, "ImgFile", Missing) != Missing) {
            store.DeleteSection(section);
        }
    }
}

} // namespace

float ValidateDefault(const std::string& text, float minimum, float maximum, float deflt) {
    const std::optional<double> value = NumericValue(Trim(text));
    // Beyond single precision lies outside every range a setting has.
    if (!value || std::fabs(*value) > std::numeric_limits<float>::max()) return deflt;
    const auto single = static_cast<float>(*value);
    return single >= minimum && single <= maximum ? single : deflt;
}

std::string DecimalText(float value) {
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed);
    return std::string(buffer.data(), result.ptr);
}

GlobalSettings GetDefaults(SettingsStore& store, Prompts& prompts, ScanHistory& history,
                           ScreenSize screen) {
    CheckVersion(store, prompts);
    GlobalSettings global = ReadGlobal(store, screen);
    for (int k = 1; k <= HistorySize; ++k)
        history.Entries[k] = ReadEntry(store, k);
    return global;
}

void SaveDefaults(SettingsStore& store, const SaveSnapshot& snapshot, ScanHistory& history,
                  const Clock& clock) {
    if (snapshot.CalibratingFlag) return;
    WriteGlobal(store, snapshot);
    const std::string imageName = SplitFolder(snapshot.GraphicsFile).Name;
    if (!imageName.empty()) {
        MakeRoomAtFront(history, imageName);
        history.Entries[1] = CurrentEntry(snapshot, imageName, clock);
        history.ScanHistoryMatch = 1;
        WriteHistory(store, history);
    }
    store.Flush();
}

void RestoreDefaults(SettingsStore& store) {
    if (store.Read(Global, "Version", Missing) == Missing) return;
    store.DeleteAll();
    store.Flush();
}

bool ReadSkipSteps(const SettingsStore& store) {
    return store.Read(Global, "SkipOpenScreen", "N") == "Y";
}

void WriteSkipSteps(SettingsStore& store, bool ticked) {
    store.Write(Global, "SkipOpenScreen", YesNo(ticked));
    store.Flush();
}

} // namespace tv
