#pragma once
// The settings kept between runs: the user's preferences, the main window's size and place, and
// the ten most recently verified scans with their layout and calibration. GetDefaults reads them
// once at start-up, SaveDefaults writes them back; the start window adds Restore Defaults and
// the skip-steps box.
#include "core/Clock.h"
#include "core/Prompts.h"
#include "session/ScanHistory.h"

#include <cstdint>
#include <string>

namespace tv {

inline constexpr const char* SettingsApplication = "Tallyview";

// The per-user store of this application: string values addressed by section and key.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;
    // The value of key in section, or deflt when the store holds none.
    virtual std::string Read(const std::string& section, const std::string& key,
                             const std::string& deflt) const = 0;
    virtual void Write(const std::string& section, const std::string& key,
                       const std::string& value) = 0;
    virtual void DeleteSection(const std::string& section) = 0;
    // Deletes every section of the application.
    virtual void DeleteAll() = 0;
    // Puts the changes made so far where they last; a store that keeps them at once does nothing.
    virtual void Flush() {}
};

// The value of text (leading and trailing spaces trimmed) when it is numeric and lies in
// minimum..maximum, both ends included; deflt otherwise.
float ValidateDefault(const std::string& text, float minimum, float maximum, float deflt);

// A number as the store keeps it: plain decimal text without exponent or needless digits
// ("0.3", "27.5", "-1").
std::string DecimalText(float value);

// The size of the screen in twips.
struct ScreenSize {
    int32_t Height = 0;
    int32_t Width = 0;
};

// Section "Global": the preferences and the main window's place, in twips.
struct GlobalSettings {
    int16_t TextBoxColour = 1;
    bool ShowRptSurnames = false;
    bool Magnifier = false;
    int32_t FormHeight = 0;
    int32_t FormWidth = 0;
    int32_t FormTop = 0;
    int32_t FormLeft = 0;
    bool LineUpAutomatically = true; // "Line Up Automatically" ticked
    bool FollowPrintedLines = true;  // "Follow Printed Lines" ticked
};

// The version check, section "Global" and the ten scan sections into history.
GlobalSettings GetDefaults(SettingsStore& store, Prompts& prompts, ScanHistory& history,
                           ScreenSize screen);

// What SaveDefaults saves, as the session holds it at this moment.
struct SaveSnapshot {
    bool CalibratingFlag = false; // a calibration is in progress: nothing is saved
    GlobalSettings Global;
    std::string VersionLabel;      // "Version " and the program's version text
    std::string GraphicsFile;      // native path of the scan; "" when none is open
    std::string TranscriptionFile; // native path
    // The current scan's layout, calibration, box and image options; its file names and
    // LastChecked are filled by SaveDefaults.
    ScanHistoryEntry Current;
};

// Writes "Global", moves the current scan to the front of history (ScanHistoryMatch becomes 1)
// and writes every scan section.
void SaveDefaults(SettingsStore& store, const SaveSnapshot& snapshot, ScanHistory& history,
                  const Clock& clock);

// The start window's Restore Defaults box: clears every setting when any exist.
void RestoreDefaults(SettingsStore& store);

// The start window's skip-steps box, kept as "SkipOpenScreen".
bool ReadSkipSteps(const SettingsStore& store);
void WriteSkipSteps(SettingsStore& store, bool ticked);

} // namespace tv
