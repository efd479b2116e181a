// Reads one realistic transcription of every era of the indexes (tests/data/eras) end to end:
// the record table, the layout flags, the scan type from the built-in tables, the description
// and the printed report with answer No.
#include "core/Clock.h"
#include "layout/ScanType.h"
#include "stats/Statistics.h"
#include "support/FakePrompts.h"
#include "support/Process.h"
#include "support/TestFiles.h"
#include "transcription/ReadTranscription.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace tv {

namespace {

using Lines = std::vector<std::string>;

const DateTime PrintedAt{2025, 3, 14, 9, 30, 5};
const char* const PrintedLine = "Printed 14/03/2025 09:30:05";

std::string EraPath(const std::string& name) {
    return test::DataFile("eras/" + name);
}

// One transcription read as step 2 of the start window reads it, with the scan named.
struct EraFile {
    EraFile(const std::string& name, const std::string& scan) : Path(EraPath(name)), Scan(scan) {
        std::string fileName = Path;
        ReaderContext context{Table, Type, ColumnTops, Scan, Prompts};
        Caption = ReadTranscription(fileName, context);
        FileNameAfterRead = fileName;
    }

    // What the start window does once the files are loaded.
    void Choose() { ChooseScanType(Table, Type, ColumnTops, Scan, History); }

    std::vector<ReportLine> Report() {
        CheckIterator it;
        CheckInputs inputs{Table, Type.ScanTypeCode, Scan, Path};
        return ReportLines(false, ScanDescription(Table), it, inputs, PrintedAt);
    }

    std::string Path;
    std::string Scan;
    RecordTable Table;
    ScanType Type;
    ColumnTopLines ColumnTops;
    ScanHistory History;
    test::FakePrompts Prompts;
    std::string Caption;
    std::string FileNameAfterRead;
};

// The table is large: keep it off the stack.
std::unique_ptr<EraFile> Read(const std::string& name, const std::string& scan = "") {
    return std::make_unique<EraFile>(name, scan);
}

struct Header {
    int16_t LineCount;
    int16_t RecordCount;
    std::string Event;
    int16_t Year;
    int16_t Quarter;
    int16_t Page;
    int16_t PageLine;
};

void ExpectHeader(const EraFile& era, const Header& h) {
    const RecordTable& t = era.Table;
    EXPECT_EQ(era.FileNameAfterRead, era.Path);
    EXPECT_EQ(t.LineCount, h.LineCount);
    EXPECT_EQ(t.RecordCount, h.RecordCount);
    EXPECT_EQ(t.HeaderEvent, h.Event);
    EXPECT_EQ(t.HeaderYear, h.Year);
    EXPECT_EQ(t.HeaderQuarter, h.Quarter);
    EXPECT_EQ(t.TranscriptionCodePage, 1252);
    ASSERT_EQ(t.HeaderPageCount, 1);
    EXPECT_EQ(t.HeaderPages[1], h.Page);
    EXPECT_EQ(t.HeaderPageLines[1], h.PageLine);
}

struct Flags {
    bool HasExtraField;
    bool AnnualIndex;
    bool LayoutBD1993;
    bool LayoutM1993;
    bool LayoutM1994;
};

void ExpectFlags(const RecordTable& t, const Flags& f) {
    EXPECT_EQ(t.HasExtraField, f.HasExtraField);
    EXPECT_EQ(t.AnnualIndex, f.AnnualIndex);
    EXPECT_EQ(t.LayoutBD1993, f.LayoutBD1993);
    EXPECT_EQ(t.LayoutM1993, f.LayoutM1993);
    EXPECT_EQ(t.LayoutM1994, f.LayoutM1994);
}

struct Layout {
    int16_t NumColumns;
    int16_t ScanTypeCode;
    bool AskScanType;
    char IndexFont;
    int16_t SurnamePad;
    int16_t ExtraPad;
    int16_t DistrictPad;
    int16_t VolPageStyle;
    float FirstLineFraction;
    bool SurnameOwnLine;
    bool TenLineGap;
    int16_t LongForenamesLen;
    int16_t LongExtraLen;
};

void ExpectLayout(const ScanType& s, const Layout& l) {
    EXPECT_EQ(s.NumColumns, l.NumColumns);
    EXPECT_EQ(s.ScanTypeCode, l.ScanTypeCode);
    EXPECT_EQ(s.AskScanType, l.AskScanType);
    EXPECT_EQ(s.IndexFont, l.IndexFont);
    EXPECT_EQ(s.SurnamePad, l.SurnamePad);
    EXPECT_EQ(s.ExtraPad, l.ExtraPad);
    EXPECT_EQ(s.DistrictPad, l.DistrictPad);
    EXPECT_EQ(s.VolPageStyle, l.VolPageStyle);
    EXPECT_FLOAT_EQ(s.FirstLineFraction, l.FirstLineFraction);
    EXPECT_EQ(s.SurnameOwnLine, l.SurnameOwnLine);
    EXPECT_EQ(s.TenLineGap, l.TenLineGap);
    EXPECT_EQ(s.LongForenamesLen, l.LongForenamesLen);
    EXPECT_EQ(s.LongExtraLen, l.LongExtraLen);
}

struct Record {
    int16_t RecNo;
    std::string Surname;
    std::string Forenames;
    std::string ExtraField;
    std::string District;
    std::string Volume;
    std::string Page;
    std::string AltSecondLine;
    bool operator==(const Record&) const = default;
    friend void PrintTo(const Record& r, std::ostream* os) {
        *os << r.RecNo << " [" << r.Surname << "|" << r.Forenames << "|" << r.ExtraField << "|"
            << r.District << "|" << r.Volume << "|" << r.Page << "|" << r.AltSecondLine << "]";
    }
};

Record RecordAt(const RecordTable& t, int line) {
    return {t.LineRecNo[line], t.Surname[line], t.Forenames[line], t.ExtraField[line],
            t.District[line],  t.Volume[line],  t.Page[line],      t.AltSecondLine[line]};
}

void ExpectDescription(const EraFile& era, const std::string& description) {
    EXPECT_EQ(ScanDescription(era.Table), description);
    EXPECT_EQ(era.Caption, "Tallyview - " + description);
}

Lines Texts(const std::vector<ReportLine>& report) {
    Lines texts;
    for (const ReportLine& line : report)
        texts.push_back(line.Text);
    return texts;
}

// The report from its "Queries" heading to the end: every finding, or their absence.
Lines FindingsPart(const std::vector<ReportLine>& report) {
    Lines texts = Texts(report);
    auto queries = std::find(texts.begin(), texts.end(), "Queries");
    return {queries, texts.end()};
}

// The top of the report: heading, file name, counts.
Lines TopPart(const std::vector<ReportLine>& report) {
    Lines texts = Texts(report);
    return {texts.begin(), texts.begin() + std::min<std::ptrdiff_t>(6, std::ssize(texts))};
}

Lines Top(const EraFile& era, const std::string& description, const std::string& counts) {
    return {"", "Tallyview Report for " + description,
            "", "    Transcription file: " + era.Path,
            "", counts};
}

// The warnings part of a file without findings; ages are checked only with a third field.
Lines CleanWarnings(bool hasExtraField) {
    Lines lines = {"Warnings",     "", "  Names out of sequence ...",
                   "        None", "", "  Missing surnames ...",
                   "        None", ""};
    if (hasExtraField)
        lines.insert(lines.end(), {"  Suspect age at death ...", "        None", ""});
    lines.push_back(PrintedLine);
    return lines;
}

Lines CleanFindings(bool hasExtraField) {
    Lines lines = {"Queries", "    None", ""};
    Lines warnings = CleanWarnings(hasExtraField);
    lines.insert(lines.end(), warnings.begin(), warnings.end());
    return lines;
}

Lines RecordLineJumps(const RecordTable& t, int from, int to) {
    Lines jumps;
    for (int i = from; i <= to; ++i)
        jumps.push_back(std::to_string(t.LineJump[i]));
    return jumps;
}

} // namespace

TEST(EraFiles, Births1843OneColumnHandwrittenPageReadsCleanWithTheFullReport) {
    auto era = Read("1843B10187.QRL");
    EXPECT_EQ(era->Prompts.Texts(), Lines{});
    ExpectHeader(*era, {46, 41, "B", 1843, 1, 187, 4});
    ExpectFlags(era->Table, {false, false, false, false, false});
    ExpectLayout(era->Type, {1, 1, true, 'C', 17, 0, 35, 0, 0.07F, false, false, 99, 99});
    EXPECT_EQ(RecordAt(era->Table, 5), (Record{-1, "#Handwritten page", "", "", "", "", "", ""}));
    EXPECT_EQ(RecordAt(era->Table, 6),
              (Record{1, "HOLDEN", "Ann", "", "Blackburn", "XXI", "167", ""}));
    EXPECT_EQ(RecordAt(era->Table, 46),
              (Record{41, "HOLLAND", "William Henry", "", "Chorlton", "XX", "392", ""}));
    EXPECT_EQ(RecordLineJumps(era->Table, 4, 7), (Lines{"0", "0", "1", "1"}));
    ExpectDescription(*era, "Births 1843 Qtr 1 Page 187");

    std::vector<ReportLine> report = era->Report();
    Lines expected = {"",
                      "Tallyview Report for Births 1843 Qtr 1 Page 187",
                      "",
                      "    Transcription file: " + era->Path,
                      "",
                      "41 QRL entries in file, total of 46 lines in file",
                      "",
                      "Flagged QRL Records",
                      "        None",
                      "",
                      "File Header",
                      "      1  +INFO,someone@example.org,password,SEQUENCED,BIRTHS,cp1252",
                      "      2  +S,1843,Mar,BX1843C1,12/03/2024",
                      "      3  +CREDIT,Margaret Ellis,someone@example.org",
                      "      4  +PAGE,0187",
                      "      5  #Handwritten page, one column of entries",
                      "     .. QRL records ..",
                      ""};
    Lines findings = CleanFindings(false);
    expected.insert(expected.end(), findings.begin(), findings.end());
    EXPECT_EQ(Texts(report), expected);
    ASSERT_EQ(report.size(), expected.size());
    for (int heading : {1, 7, 10, 18, 21})
        EXPECT_TRUE(report[heading].Bold) << report[heading].Text;
    for (int plain : {0, 3, 5, 8, 11, 16, 19})
        EXPECT_FALSE(report[plain].Bold) << report[plain].Text;
}

TEST(EraFiles, Births1843ReadWithAScanOfAnotherQuarterWarnsAndReportsTheGraphicsFileName) {
    auto era = Read("1843B10187.QRL", "1843B20187.jpg");
    ASSERT_EQ(era->Prompts.Shown.size(), 1U);
    const Prompt& shown = era->Prompts.Shown[0];
    EXPECT_EQ(shown.Text, "Quarter in graphics file name appears to be inconsistent with details "
                          "in file header\n"
                          "File name     Year:1843  Qtr:2  B,M or D:B\n"
                          "File header  Year:1843  Qtr:1  B,M or D:B");
    EXPECT_EQ(shown.Title, "Tallyview");
    EXPECT_EQ(shown.Choice, Buttons::Ok);
    EXPECT_EQ(era->FileNameAfterRead, era->Path); // a warning only: the session goes on

    Lines texts = Texts(era->Report());
    EXPECT_EQ(texts[3], "    Graphics file: 1843B20187.jpg");
    EXPECT_EQ(texts[4], "    Transcription file: " + era->Path);
    Lines expected = {
        "Queries", "    None",
        "",        "Warnings",
        "",        "  Quarter in graphics file name inconsistent with details in file header",
        ""};
    Lines clean = CleanWarnings(false);
    expected.insert(expected.end(), clean.begin() + 2, clean.end());
    EXPECT_EQ(FindingsPart(era->Report()), expected);
}

TEST(EraFiles, Marriages1855ReportsTheQueryAndTheSwappedForenamesInTheFullReport) {
    auto era = Read("1855M30213.QRL");
    EXPECT_EQ(era->Prompts.Texts(), Lines{});
    ExpectHeader(*era, {60, 55, "M", 1855, 3, 213, 4});
    ExpectFlags(era->Table, {false, false, false, false, false});
    ExpectLayout(era->Type, {1, 1, true, 'C', 12, 0, 26, 0, 0.07F, false, false, 99, 99});
    EXPECT_EQ(RecordAt(era->Table, 25),
              (Record{21, "SM?TH", "Ellen", "", "Bolton", "8c", "349", ""}));
    EXPECT_TRUE(era->Table.LineQuery[25]);
    EXPECT_FALSE(era->Table.LineQuery[24]);
    // The folding turns "?" into a space: SM?TH sorts as "smth", after SMETHURST, and the
    // comment after it keeps SMITH from being compared with it.
    EXPECT_EQ(era->Table.LineRecNo[26], -1);
    EXPECT_EQ(RecordAt(era->Table, 60),
              (Record{55, "SMITH", "William", "", "Bolton", "8c", "336", ""}));
    ExpectDescription(*era, "Marriages 1855 Qtr 3 Page 213");

    Lines expected = {"",
                      "Tallyview Report for Marriages 1855 Qtr 3 Page 213",
                      "",
                      "    Transcription file: " + era->Path,
                      "",
                      "55 QRL entries in file, total of 60 lines in file",
                      "",
                      "Flagged QRL Records",
                      "        None",
                      "",
                      "File Header",
                      "      1  +INFO,someone@example.org,password,SEQUENCED,MARRIAGES,cp1252",
                      "      2  +S,1855,Sep,MX1855C3,02/05/2024",
                      "      3  +CREDIT,Peter Wardle,someone@example.org",
                      "      4  +PAGE,0213",
                      "     .. QRL records ..",
                      "     26  #COMMENT(21) reads SMYTH or SMITH",
                      "     .. QRL records ..",
                      "",
                      "Queries",
                      "     25 SM?TH,Ellen,Bolton,8c,349",
                      "",
                      "Warnings",
                      "",
                      "  Names out of sequence ...",
                      "     58 SMITH,Thomas,Wigan,8c,92",
                      "     59 SMITH,Susannah,Macclesfield,8a,207",
                      "",
                      "  Missing surnames ...",
                      "        None",
                      "",
                      PrintedLine};
    EXPECT_EQ(Texts(era->Report()), expected);
}

TEST(EraFiles, Deaths1867ReportsAge107TheMissingSurnameAndTheIllegibleDistrict) {
    auto era = Read("1867D40301.QRL");
    EXPECT_EQ(era->Prompts.Texts(), Lines{});
    ExpectHeader(*era, {57, 53, "D", 1867, 4, 301, 4});
    ExpectFlags(era->Table, {true, false, false, false, false});
    // The district is padded to 0 from 1866 until 1868 gives 99 (not padded).
    ExpectLayout(era->Type, {3, 1, false, 'T', 0, 0, 0, 0, 0.07F, false, false, 99, 99});
    EXPECT_EQ(RecordAt(era->Table, 5),
              (Record{1, "WALKER", "Abraham", "71", "Huddersfield", "9a", "233", ""}));
    EXPECT_EQ(RecordAt(era->Table, 32),
              (Record{28, "(blank)", "Mary", "64", "Leeds", "9b", "233", ""}));
    EXPECT_EQ(RecordAt(era->Table, 42),
              (Record{38, "WALSH", "Bridget", "107", "Liverpool", "8b", "112", ""}));
    EXPECT_EQ(RecordAt(era->Table, 51),
              (Record{47, "WALTON", "Ann", "2", "[illegible]", "8c", "411", ""}));
    EXPECT_EQ(era->Table.LineText[32], ",Mary,64,Leeds,9b,233");
    ExpectDescription(*era, "Deaths 1867 Qtr 4 Page 301");

    std::vector<ReportLine> report = era->Report();
    EXPECT_EQ(TopPart(report), Top(*era, "Deaths 1867 Qtr 4 Page 301",
                                   "53 QRL entries in file, total of 57 lines in file"));
    Lines expected = {"Queries",
                      "     51 WALTON,Ann,2,[illegible],8c,411",
                      "",
                      "Warnings",
                      "",
                      "  Names out of sequence ...",
                      "     31 WALLACE,Mary,0,Newcastle upon Tyne,10b,51",
                      "     32 ,Mary,64,Leeds,9b,233",
                      "",
                      "  Missing surnames ...",
                      "     32 ,Mary,64,Leeds,9b,233",
                      "",
                      "  Suspect age at death ...",
                      "     42 WALSH,Bridget,107,Liverpool,8b,112",
                      "",
                      PrintedLine};
    EXPECT_EQ(FindingsPart(report), expected);
}

TEST(EraFiles, Births1874ThreeColumnPageTakesItsHalfOfTheDoublePageScanFromTheScanName) {
    auto era = Read("1874B20234.QRL");
    EXPECT_EQ(era->Prompts.Texts(), Lines{});
    ExpectHeader(*era, {81, 76, "B", 1874, 2, 234, 4});
    ExpectFlags(era->Table, {false, false, false, false, false});
    ExpectLayout(era->Type, {3, 1, false, 'T', 0, 0, 99, 0, 0.07F, false, false, 99, 99});
    EXPECT_EQ(RecordAt(era->Table, 6), (Record{1, "GREEN", "Ada", "", "Salford", "8d", "31", ""}));
    EXPECT_EQ(RecordAt(era->Table, 51),
              (Record{46, "GREENHALGH", "John Thomas", "", "Bolton", "8c", "385", ""}));
    EXPECT_EQ(RecordAt(era->Table, 81),
              (Record{76, "GREY", "John", "", "Alnwick", "10b", "310", ""}));
    ExpectDescription(*era, "Births 1874 Qtr 2 Page 234");
    EXPECT_EQ(FindingsPart(era->Report()), CleanFindings(false));

    // Without a scan name the page of a double-page year is unknown: the user is asked.
    era->Choose();
    EXPECT_EQ(era->Type.FontName, "Times New Roman");
    EXPECT_EQ(era->Type.NumColumns, 3);
    EXPECT_EQ(era->Type.ScanTypeCode, 1);
    EXPECT_TRUE(era->Type.AskScanType);
}

TEST(EraFiles, Births1874ScanNamedForItsPageIsTheLeftHandPage) {
    auto era = Read("1874B20234.QRL", "1874B20234.jpg");
    EXPECT_EQ(era->Prompts.Texts(), Lines{});
    era->Choose();
    EXPECT_EQ(era->Type.NumColumns, 3);
    EXPECT_EQ(era->Type.ScanTypeCode, 41);
    EXPECT_FALSE(era->Type.AskScanType);
    EXPECT_EQ(FindingsPart(era->Report()), CleanFindings(false));
}

TEST(EraFiles, Births1874ScanNamedForThePageBeforeIsTheRightHandPageWithoutAPageWarning) {
    auto era = Read("1874B20234.QRL", "1874B20233.jpg");
    EXPECT_EQ(era->Prompts.Texts(), Lines{});
    era->Choose();
    EXPECT_EQ(era->Type.NumColumns, 3);
    EXPECT_EQ(era->Type.ScanTypeCode, 42);
    // Right-hand page scans are named one below the header's page: no "Page, " finding.
    EXPECT_EQ(FindingsPart(era->Report()), CleanFindings(false));
}

TEST(EraFiles, Births1911SeptemberQuarterCarriesTheMothersSurnameAndAccentedNames) {
    auto era = Read("1911B30123.QRL");
    EXPECT_EQ(era->Prompts.Texts(), Lines{});
    ExpectHeader(*era, {48, 42, "B", 1911, 3, 123, 5});
    ExpectFlags(era->Table, {true, false, false, false, false});
    ExpectLayout(era->Type, {2, 1, false, 'C', 0, 25, 36, 2, 0.07F, false, false, 99, 99});
    EXPECT_EQ(RecordAt(era->Table, 6),
              (Record{1, "MUIR", "Agnes", "CAMPBELL", "Newcastle T.", "10b", "211", ""}));
    EXPECT_EQ(RecordAt(era->Table, 14),
              (Record{9, "M\xDCLLER", "Andr\xE9", "SCHMIDT", "Hampstead", "1a", "1180", ""}));
    EXPECT_EQ(RecordAt(era->Table, 17),
              (Record{12, "MULLIGAN", "Mary", "SM?TH", "Chorlton", "8c", "1186", ""}));
    EXPECT_EQ(RecordAt(era->Table, 48),
              (Record{42, "MURPHY", "Zo\xEB", "DUNNE", "Camberwell", "1d", "1033", ""}));
    ExpectDescription(*era, "Births 1911 Qtr 3 Page 123");

    std::vector<ReportLine> report = era->Report();
    EXPECT_EQ(TopPart(report), Top(*era, "Births 1911 Qtr 3 Page 123",
                                   "42 QRL entries in file, total of 48 lines in file"));
    Lines expected = {"Queries", "     17 MULLIGAN,Mary,SM?TH,Chorlton,8c,1186", ""};
    Lines clean = CleanWarnings(true);
    expected.insert(expected.end(), clean.begin(), clean.end());
    EXPECT_EQ(FindingsPart(report), expected);
}

TEST(EraFiles, Deaths1965SurnamesOnTheirOwnLinesWithTheTenLineGap) {
    auto era = Read("1965D20345.QRL");
    EXPECT_EQ(era->Prompts.Texts(), Lines{});
    ExpectHeader(*era, {43, 38, "D", 1965, 2, 345, 4});
    ExpectFlags(era->Table, {true, false, false, false, false});
    ExpectLayout(era->Type, {2, 1, false, 'C', 0, 30, 37, 3, 0.07F, true, true, 99, 99});
    EXPECT_EQ(RecordAt(era->Table, 28),
              (Record{23, "KEELING", "Margaret", "8?", "Stoke on Trent", "9b", "1021", ""}));
    EXPECT_EQ(RecordAt(era->Table, 30),
              (Record{25, "KELLERMANN", "J\xFCrgen", "58", "Bradford", "2b", "330", ""}));
    EXPECT_EQ(RecordAt(era->Table, 32),
              (Record{27, "KELLY", "Bridget", "105", "Liverpool S.", "10a", "1338", ""}));
    // KAY (lines 6 to 17): its own line, then the eleventh entry takes the gap.
    EXPECT_EQ(RecordLineJumps(era->Table, 5, 18),
              (Lines{"0", "2", "1", "1", "1", "1", "1", "1", "1", "1", "1", "2", "1", "2"}));
    // KELLY (lines 31 to 41) ends on its eleventh entry: KELSALL takes that gap away.
    EXPECT_EQ(RecordLineJumps(era->Table, 30, 43),
              (Lines{"2", "2", "1", "1", "1", "1", "1", "1", "1", "1", "1", "1", "2", "1"}));
    ExpectDescription(*era, "Deaths 1965 Qtr 2 Page 345");

    // Age 105 passes and "8?" is no number: the query is the only finding.
    Lines expected = {"Queries", "     28 KEELING,Margaret,8?,Stoke on Trent,9b,1021", ""};
    Lines clean = CleanWarnings(true);
    expected.insert(expected.end(), clean.begin(), clean.end());
    EXPECT_EQ(FindingsPart(era->Report()), expected);
}

TEST(EraFiles, Births1984AnnualIndexPutsTheRegistrationOnTheSecondLine) {
    auto era = Read("1984B0123.QRL");
    EXPECT_EQ(era->Prompts.Texts(), Lines{});
    ExpectHeader(*era, {44, 39, "B", 1984, 0, 123, 4});
    ExpectFlags(era->Table, {true, true, false, false, false});
    ExpectLayout(era->Type, {2, 1, false, 'C', 0, 33, 46, 5, 0.07F, true, true, 20, 16});
    EXPECT_EQ(RecordAt(era->Table, 6),
              (Record{1, "PATEL", "Aarti", "PATEL", "Leicester", "8", "1201", "0384"}));
    EXPECT_EQ(RecordAt(era->Table, 21),
              (Record{16, "PATEL", "Male", "PATEL", "Leicester", "8", "1702", "1084"}));
    EXPECT_EQ(RecordAt(era->Table, 22), (Record{17, "PATERSON", "Alexander James William", "ROSS",
                                                "Carlisle", "1", "1499", "0684"}));
    EXPECT_EQ(RecordAt(era->Table, 23),
              (Record{18, "PATERSON", "Chlo\xEB", "BURNS", "Newcastle", "2", "533", "0284"}));
    // The eleventh PATEL takes the gap; long forenames (23) and a long mother's surname (17)
    // take an extra line.
    EXPECT_EQ(RecordLineJumps(era->Table, 15, 24),
              (Lines{"1", "2", "1", "1", "1", "1", "1", "3", "1", "2"}));
    ExpectDescription(*era, "Births 1984 Page 123");
    // The unnamed "Male" after Yogesh is no warning.
    EXPECT_EQ(FindingsPart(era->Report()), CleanFindings(true));
}

TEST(EraFiles, Births1984ReadWithADeathsScanNameWarnsOfTheEventOnly) {
    auto era = Read("1984B0123.QRL", "1984D0123.jpg");
    EXPECT_EQ(era->Prompts.Texts(),
              Lines{"BMorD in graphics file name appears to be inconsistent with details in "
                    "file header\n"
                    "File name     Year:1984  Qtr:0  B,M or D:D\n"
                    "File header  Year:1984  Qtr:0  B,M or D:B"});
    Lines expected = {
        "Queries", "    None",
        "",        "Warnings",
        "",        "  BMorD in graphics file name inconsistent with details in file header",
        ""};
    Lines clean = CleanWarnings(true);
    expected.insert(expected.end(), clean.begin() + 2, clean.end());
    EXPECT_EQ(FindingsPart(era->Report()), expected);
}

TEST(EraFiles, Births1993LayoutSetsOutTheFourReferencesOnTheSecondLine) {
    auto era = Read("1993B0045.QRL");
    EXPECT_EQ(era->Prompts.Texts(), Lines{});
    ExpectHeader(*era, {26, 22, "B", 1993, 0, 45, 4});
    ExpectFlags(era->Table, {true, true, true, false, false});
    ExpectLayout(era->Type, {2, 1, false, 'C', 0, 23, 34, 5, 0.16F, true, true, 21, 9});
    // Volume and page are not set by this layout: a fresh table keeps them empty.
    EXPECT_EQ(RecordAt(era->Table, 5),
              (Record{1, "OAKES", "Bethany", "HOLT", "Oldham", "", "", "4306  D42B  161 0393 "}));
    EXPECT_EQ(RecordAt(era->Table, 16), (Record{12, "O BRIEN", "Sophie", "MURRAY", "Wolverhampton",
                                                "", "", "5336  A44D  063 1293 "}));
    EXPECT_EQ(RecordAt(era->Table, 22), (Record{18, "O'CONNOR", "Si\xE2n", "EVANS", "Cardiff", "",
                                                "", "7251  C07B  246 1093 "}));
    // A mother's surname of nine letters or more takes an extra line.
    EXPECT_EQ(RecordLineJumps(era->Table, 9, 18),
              (Lines{"2", "3", "1", "2", "1", "1", "2", "2", "2", "3"}));
    ExpectDescription(*era, "Births 1993 Page 45");
    // O'BRIEN, OBRIEN and O BRIEN sort alike, OAKLEY-SMITH after OAKLEY: no warning.
    EXPECT_EQ(FindingsPart(era->Report()), CleanFindings(true));
}

TEST(EraFiles, Marriages1993LayoutRightAlignsTheEntryNumber) {
    auto era = Read("1993M0067.QRL");
    EXPECT_EQ(era->Prompts.Texts(), Lines{});
    ExpectHeader(*era, {36, 31, "M", 1993, 0, 67, 4});
    ExpectFlags(era->Table, {true, true, false, true, false});
    ExpectLayout(era->Type, {2, 1, false, 'C', 0, 33, 46, 5, 0.07F, true, true, 99, 14});
    EXPECT_EQ(RecordAt(era->Table, 5),
              (Record{1, "ROBERTS", "Alan", "PRICE", "Wrexham", "", "", "7421 A12   117"}));
    EXPECT_EQ(RecordAt(era->Table, 8),
              (Record{4, "ROBERTS", "Dawn", "W?LSON", "Liverpool", "", "", "4021 D33     9"}));
    EXPECT_EQ(RecordAt(era->Table, 36),
              (Record{31, "ROBSON", "Joanne", "HALL", "Durham", "", "", "2151 C14   204"}));
    ExpectDescription(*era, "Marriages 1993 Page 67");

    std::vector<ReportLine> report = era->Report();
    EXPECT_EQ(TopPart(report), Top(*era, "Marriages 1993 Page 67",
                                   "31 QRL entries in file, total of 36 lines in file"));
    Lines expected = {"Queries", "      8 ROBERTS,Dawn,W?LSON,Liverpool,4021,D33,9", ""};
    Lines clean = CleanWarnings(true);
    expected.insert(expected.end(), clean.begin(), clean.end());
    EXPECT_EQ(FindingsPart(report), expected);
}

TEST(EraFiles, Marriages1994LayoutSetsOutFiveReferencesOnTheSecondLine) {
    auto era = Read("1994M0089.QRL");
    EXPECT_EQ(era->Prompts.Texts(), Lines{});
    ExpectHeader(*era, {26, 22, "M", 1994, 0, 89, 4});
    ExpectFlags(era->Table, {true, true, false, false, true});
    ExpectLayout(era->Type, {2, 1, false, 'C', 0, 18, 29, 5, 0.16F, true, true, 21, 11});
    EXPECT_EQ(RecordAt(era->Table, 5),
              (Record{1, "WOOD", "Adrian", "BARKER", "Leeds", "", "", "3471A19 146  05  1994 "}));
    EXPECT_EQ(RecordAt(era->Table, 22), (Record{18, "WOODS", "Jos\xE9", "FERREIRA", "Lambeth", "",
                                                "", "1566C06 18   12  1994 "}));
    ExpectDescription(*era, "Marriages 1994 Page 89");
    EXPECT_EQ(FindingsPart(era->Report()), CleanFindings(true));
}

TEST(EraFiles, CheckCommandFindsNothingInTheCleanFilesOfEveryEra) {
    Lines args = {"--check", "--answer", "no"};
    for (const char* name :
         {"1843B10187.QRL", "1874B20234.QRL", "1984B0123.QRL", "1993B0045.QRL", "1994M0089.QRL"})
        args.push_back(EraPath(name));
    test::ProcessResult result = test::RunTallyview(args);
    EXPECT_EQ(result.Status, 0) << result.Err;
    EXPECT_EQ(result.Err, "");
    for (const char* heading : {"Tallyview Report for Births 1843 Qtr 1 Page 187\n",
                                "Tallyview Report for Births 1874 Qtr 2 Page 234\n",
                                "Tallyview Report for Births 1984 Page 123\n",
                                "Tallyview Report for Births 1993 Page 45\n",
                                "Tallyview Report for Marriages 1994 Page 89\n"})
        EXPECT_NE(result.Out.find(heading), std::string::npos) << heading;
}

TEST(EraFiles, CheckCommandListsTheFindingsAndPrintsAccentsInUnicode) {
    test::ProcessResult result = test::RunTallyview(
        {"--check", "--all-records", EraPath("1911B30123.QRL"), EraPath("1867D40301.QRL")});
    EXPECT_EQ(result.Status, 1) << result.Err;
    EXPECT_EQ(result.Err, "");
    for (const char* line :
         {"\n     17 MULLIGAN,Mary,SM?TH,Chorlton,8c,1186\n",
          "\n     14  M\u00dcLLER,Andr\u00e9,SCHMIDT,Hampstead,1a,1180\n",
          "\n     42 WALSH,Bridget,107,Liverpool,8b,112\n", "\n     32 ,Mary,64,Leeds,9b,233\n"})
        EXPECT_NE(result.Out.find(line), std::string::npos) << line;
}

} // namespace tv
