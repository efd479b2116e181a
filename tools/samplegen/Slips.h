#pragma once
// The slips a volunteer makes while typing a page: a letter changed, dropped, doubled or two
// swapped in a surname, forename or district; a wrong page number or volume; a record's fields
// taken from the line above. Put into a written transcription, with a note of where they are.
#include "SampleKinds.h"
#include "TranscriptionWriter.h"

#include <string>
#include <vector>

namespace samplegen {

// One field of one record that no longer says what the page prints.
struct Slip {
    int Line = 0;  // table line number (from 1)
    int Field = 0; // 1-based, as the program splits the record's line
    std::string Kind;
};

// Puts slips into about one record in every seven (never two in one record), chosen by the
// kind's seed; returns where they are, in table order.
std::vector<Slip> MakeSlips(const KindSpec& kind, Transcription& transcription);

// "<line> <field> <kind>" per slip, LF line ends.
void WriteSlips(const std::vector<Slip>& slips, const std::string& path);

} // namespace samplegen
