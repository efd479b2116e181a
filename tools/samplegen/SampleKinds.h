#pragma once
// The kinds of sample page the generator draws: each one period's layout of the births index,
// with its page numbers, print, line pitch and stretch of names.
#include "Names.h"

#include <cstdint>
#include <string>
#include <vector>

namespace samplegen {

// One printed index entry, Windows-1252 text as it is transcribed.
struct Entry {
    std::string Surname;
    std::string Forenames;
    std::string Extra; // mother's maiden surname; empty when the index has no third field
    std::string District;
    std::string Volume;
    std::string Page;
    // The annual index's further reference fields, printed between the district and the
    // volume: the register (to 1992), or the district number, register, entry number and month
    // of registration (from 1993, with no volume and page). None in a quarterly index.
    std::vector<std::string> References;
};

// How the index prints a surname that repeats the one above it.
enum class RepeatStyle { Full, Dash, Blank, OwnLine };

// Where the fields of an entry start, as fractions of the column width; the page number ends
// at the column's right edge. Forenames 0: they follow the surname after a comma.
struct FieldStops {
    double Forenames = 0.0;
    double Extra = 0.0;
    double District = 0.0;
    double Volume = 0.0;
    double Reference = 0.0; // the annual index's references, shared out up to the volume; 0: none
};

struct KindSpec {
    std::string Name;
    char Event = 'B';
    int16_t Year = 0;
    int16_t Quarter = 0; // 0: an annual index
    int16_t FirstPage = 0;
    int Pages = 1; // 2: a double-page scan of two facing pages, both transcribed
    int ColumnsPerPage = 1;
    int LinesPerColumn = 0;
    int Pitch = 0; // pixels from one printed line to the next
    int PageWidth = 0;
    int PageHeight = 0;
    char IndexFont = 'T'; // 'T' a Times face, 'C' a Courier face
    int FontPixels = 0;
    RepeatStyle Repeat = RepeatStyle::Full;
    bool TenLineGap = false;
    int LongExtraLen = 99; // a third field this long or longer takes a second line
    FieldStops Stops;
    std::vector<std::string> Headings; // surname, forenames, third field, district, vol, page,
                                       // and the references' in an annual index
    double RotationDegrees = 0.0;
    uint32_t Seed = 0;
    NamePools (*Names)() = nullptr;

    bool SurnameOwnLine() const { return Repeat == RepeatStyle::OwnLine; }
    bool HasExtra() const { return Stops.Extra > 0; }
    bool Annual() const { return Quarter == 0; }
    int Columns() const { return Pages * ColumnsPerPage; }
    // The scan's name without extension, as the scans are named: 1872B20234, and without a
    // quarter for an annual index: 1988B0512.
    std::string BaseName() const;
    // "INDEX OF BIRTHS REGISTERED IN APRIL, MAY AND JUNE 1872.", for an annual index
    // "INDEX OF BIRTHS REGISTERED IN 1988."
    std::string Title() const;
};

const std::vector<KindSpec>& AllKinds();

// The page's stretch of the index in index order, more entries than the page holds.
std::vector<Entry> IndexEntries(const KindSpec& kind);

} // namespace samplegen
