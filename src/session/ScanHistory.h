#pragma once
// The ten most recently verified scans with their files, layout and calibration, most recent
// first (entry 1). An entry is empty when its image file name is empty.
#include "core/Checked.h"

#include <cstdint>
#include <string>

namespace tv {

inline constexpr int HistorySize = 10;

struct ScanHistoryEntry {
    std::string ImgFile;    // image file name without folder: the entry's identity
    std::string SCAFile;    // transcription file name without folder
    std::string ImgFileDir; // folder of the image, with its trailing separator
    std::string SCAFileDir; // folder of the transcription, with its trailing separator
    int16_t NumColumns = 3;
    int16_t ScanType = 1;
    std::string LastChecked;
    float LineIncrTop = -1.0F;
    float LineIncrLeft = 0.0F;
    int16_t FrameFontSize = 10;
    float BoxPerCent = 0.3F;
    float Scale = 100.0F;
    int16_t RecNo = 0;
    bool AntiAlias = true;
    bool Negative = false;
    bool Smoothing = true;
    std::string SurnameOwnLine; // "Y", "N" or "" when the layout does not ask it
    BoundedArray<int32_t, 1, 6> ColTop;
    BoundedArray<int32_t, 1, 6> ColLeft;
    BoundedArray<int32_t, 1, 6> ColFirst;

    ScanHistoryEntry() {
        ColTop.Fill(-1);
        ColLeft.Fill(-1);
        ColFirst.Fill(-1);
    }
    bool Empty() const { return ImgFile.empty(); }
};

struct ScanHistory {
    BoundedArray<ScanHistoryEntry, 1, HistorySize> Entries;
    int16_t ScanHistoryMatch = 0; // entry whose image name equals the current one, 0 when none
    int16_t ScanHistoryNear = 0;  // first entry of the same year and event, 0 when none
};

} // namespace tv
