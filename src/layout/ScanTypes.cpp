// Choosing the scan type (remembered choice or the two-page rules), the user's choice from the
// scan layout options form, the printed-line jumps between records and the scan's description.
#include "layout/ScanType.h"
#include "transcription/FileNames.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <vector>

namespace tv {

namespace {

// Years whose births and marriages indexes were printed as two facing pages on one scan.
constexpr std::array<std::string_view, 19> BirthsDoublePageKeys = {
    "1866B", "1867B", "1870B", "1871B", "1872B", "1873B", "1874B", "1875B", "1876B", "1877B",
    "1882B", "1884B", "1885B", "1886B", "1887B", "1888B", "1889B", "1890B", "1891B"};
constexpr std::array<std::string_view, 19> MarriagesDoublePageKeys = {
    "1843M", "1845M", "1846M", "1847M", "1848M", "1849M", "1850M", "1851M", "1852M", "1853M",
    "1857M", "1858M", "1859M", "1860M", "1861M", "1862M", "1863M", "1864M", "1865M"};

template <std::size_t N>
bool IsAmong(const std::array<std::string_view, N>& keys, const std::string& key) {
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

// The facing right-hand page of page p is numbered p+1 to p+7.
bool IsFacingPage(int16_t page, int16_t p) {
    return page >= p + 1 && page <= p + 7;
}

// The header lists page p (the file name's) and its facing page: both pages are transcribed.
bool CoversBothPages(const RecordTable& table, int16_t p) {
    return IsFacingPage(table.HeaderPages[2], p) && table.HeaderPages[1] == p &&
           table.HeaderPageCount == 2;
}

// Columns and code of a double-page scan from the header's pages, given the columns of one
// page; the user is asked when the pages fit none of the three cases.
void ApplyDoublePageRules(const RecordTable& table, ScanType& scanType, int16_t p,
                          int16_t pageColumns) {
    if (p >= 1) {
        if (CoversBothPages(table, p)) {
            scanType.NumColumns = To16(pageColumns * 2);
            scanType.ScanTypeCode = 40;
            return;
        }
        if (table.HeaderPages[1] == p && table.HeaderPageCount == 1) {
            scanType.NumColumns = pageColumns;
            scanType.ScanTypeCode = 41;
            return;
        }
        if (IsFacingPage(table.HeaderPages[1], p) && table.HeaderPageCount == 1) {
            scanType.NumColumns = pageColumns;
            scanType.ScanTypeCode = 42;
            return;
        }
    }
    scanType.AskScanType = true;
}

// The columns the calibration and the box can follow across one scan.
constexpr int16_t MostColumnsAcross = 6;

// The remembered choice of entry h. A scan remembered as its left page only, whose transcription
// now covers both pages, becomes a two-page scan; the remembered indices are cleared so that it
// is stored as a new choice. False, with nothing changed, when the choice would put more than
// six columns across the scan: only a settings file edited by hand holds one, and the rules for
// a scan without a remembered choice apply instead.
bool TakeRememberedChoice(const RecordTable& table, ScanType& scanType, ScanHistory& history,
                          int16_t h, int16_t p) {
    ScanType remembered = scanType;
    remembered.NumColumns = history.Entries[h].NumColumns;
    remembered.ScanTypeCode = history.Entries[h].ScanType;
    const bool bothPages = remembered.ScanTypeCode == 41 && CoversBothPages(table, p);
    if (bothPages) {
        remembered.ScanTypeCode = 40;
        remembered.NumColumns = To16(remembered.NumColumns * 2);
    }
    if (remembered.ColumnsAcross() > MostColumnsAcross) return false;
    scanType = remembered;
    if (bothPages) {
        history.ScanHistoryMatch = 0;
        history.ScanHistoryNear = 0;
    }
    return true;
}

void SetFontName(ScanType& scanType) {
    if (scanType.IndexFont == 'T') {
        scanType.FontName = "Times New Roman";
    } else if (scanType.IndexFont == 'C') {
        scanType.FontName = "Courier New";
    }
}

bool IsLongRecord(const RecordTable& table, const ScanType& scanType, int i) {
    return !(std::ssize(table.Forenames[i]) < scanType.LongForenamesLen &&
             std::ssize(table.ExtraField[i]) < scanType.LongExtraLen);
}

bool IsColumnTop(const ColumnTopLines& columnTops, int i) {
    for (int column = 1; column <= 6; ++column)
        if (columnTops[column] == i) return true;
    return false;
}

std::string EventWord(const std::string& event) {
    if (event == "B") return "Births";
    if (event == "M") return "Marriages";
    if (event == "D") return "Deaths";
    return "";
}

std::string PagesPiece(const RecordTable& table) {
    if (table.HeaderPageCount == 1) return "Page " + std::to_string(table.HeaderPages[1]);
    if (table.HeaderPageCount > 1)
        return "Pages " + std::to_string(table.HeaderPages[1]) + "-" +
               std::to_string(table.HeaderPages[table.HeaderPageCount]);
    return "";
}

// Record lines carry a jump of 1 to 3; every other line keeps 0.
bool IsRecordJump(int16_t jump) {
    return jump >= 1 && jump <= 3;
}

} // namespace

void ChooseScanType(RecordTable& table, ScanType& scanType, const ColumnTopLines& columnTops,
                    const std::string& graphicsFile, ScanHistory& history) {
    ReadScanTypeTable(table, scanType, columnTops);
    SetFontName(scanType);
    std::string eventKey = std::to_string(table.HeaderYear) + table.HeaderEvent;
    int16_t p = ParseFileName(graphicsFile).Page;
    int16_t h = history.ScanHistoryMatch;
    if (h == 0) h = history.ScanHistoryNear;
    if (h >= 1 && TakeRememberedChoice(table, scanType, history, h, p)) return;
    if (IsAmong(BirthsDoublePageKeys, eventKey)) {
        ApplyDoublePageRules(table, scanType, p, 3);
    } else if (IsAmong(MarriagesDoublePageKeys, eventKey)) {
        ApplyDoublePageRules(table, scanType, p, 1);
    } else if (table.RecordCount > 400) {
        scanType.NumColumns = 6;
        scanType.ScanTypeCode = 40;
        scanType.AskScanType = true;
    }
}

void SetScanTypes(ScanType& scanType, int16_t columns, int16_t pageOption, bool surnameOwnLine,
                  RecordTable& table, const ColumnTopLines& columnTops) {
    if (pageOption >= 1 && pageOption <= 7) {
        constexpr std::array<int16_t, 7> codes = {1, 21, 22, 31, 32, 33, 40};
        scanType.ScanTypeCode = codes[static_cast<std::size_t>(pageOption - 1)];
        scanType.NumColumns = columns;
    } else if (pageOption == 8 || pageOption == 9) {
        // The form passes the columns of both pages; one page has half of them.
        scanType.ScanTypeCode = To16(33 + pageOption);
        scanType.NumColumns = CInt(columns / 2.0);
    }
    if (surnameOwnLine != scanType.SurnameOwnLine) {
        scanType.SurnameOwnLine = surnameOwnLine;
        CalcLineJump(table, scanType, columnTops);
    }
}

void CalcLineJump(RecordTable& table, const ScanType& scanType, const ColumnTopLines& columnTops) {
    std::string previousSurname;
    int16_t counter = 0;
    for (int i = 1; i <= table.LineCount; ++i) {
        int16_t& jump = table.LineJump[i];
        if (!IsRecordJump(jump)) continue;
        if (table.Surname[i] != previousSurname) {
            // Deliberate: when a surname's last record restarted the count of ten (at a column
            // top or by taking the gap), the next surname takes that record's extra line away.
            // Only a record has a line to take: two blank or comment lines alike between the
            // surnames are no printed lines and keep their 0.
            if (scanType.TenLineGap && i >= 3 && counter == 1 &&
                table.Surname[i - 2] == table.Surname[i - 1] && IsRecordJump(table.LineJump[i - 1]))
                table.LineJump[i - 1] = 1;
            jump = scanType.SurnameOwnLine ? 2 : 1;
            previousSurname = table.Surname[i];
            counter = 1;
            if (IsLongRecord(table, scanType, i)) {
                counter = 2;
                jump = To16(jump + 1);
            }
        } else {
            jump = 1;
            if (IsLongRecord(table, scanType, i)) {
                jump = 2;
                counter = To16(counter + 1);
            }
            if (scanType.TenLineGap) {
                counter = To16(counter + 1);
                // The count of ten restarts at the top of every column.
                if (IsColumnTop(columnTops, i)) counter = 1;
                if (counter >= 11) {
                    counter = 1;
                    jump = To16(jump + 1);
                }
            }
        }
    }
}

std::string ScanDescription(const RecordTable& table) {
    std::vector<std::string> pieces = {EventWord(table.HeaderEvent)};
    if (table.HeaderYear > 0) pieces.push_back(std::to_string(table.HeaderYear));
    if (table.HeaderQuarter > 0) pieces.push_back("Qtr " + std::to_string(table.HeaderQuarter));
    pieces.push_back(PagesPiece(table));
    std::string description;
    for (const std::string& piece : pieces) {
        if (piece.empty()) continue;
        if (!description.empty()) description += ' ';
        description += piece;
    }
    return description;
}

} // namespace tv
