#include "reading/CompareRecords.h"
#include "reading/ReadText.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tv {

namespace {

// A record table of the given record lines (line 1 a comment, records from line 2).
RecordTable Table(const std::vector<std::string>& records, bool extra = false) {
    RecordTable t;
    t.HasExtraField = extra;
    t.LineCount = 1;
    t.LineText[1] = "#COMMENT";
    t.LineRecNo[1] = -1;
    for (const std::string& r : records) {
        ++t.LineCount;
        t.LineText[t.LineCount] = r;
        t.LineRecNo[t.LineCount] = static_cast<int16_t>(t.LineCount - 1);
        std::istringstream in(r);
        std::string f;
        std::vector<std::string> fields;
        while (std::getline(in, f, ','))
            fields.push_back(f);
        t.Surname[t.LineCount] = fields.size() > 0 ? fields[0] : "";
        t.Forenames[t.LineCount] = fields.size() > 1 ? fields[1] : "";
        t.ExtraField[t.LineCount] = extra && fields.size() > 2 ? fields[2] : "";
    }
    return t;
}

// One printed line as read: its words split at spaces, each ten pixels a character from the
// column's left edge as the text places it, read with the given confidence.
ReadLine Line(int index, const std::string& text, float confidence = 95.0F) {
    ReadLine line;
    line.Index = index;
    std::size_t at = 0;
    while ((at = text.find_first_not_of(' ', at)) != std::string::npos) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const double x = 10.0 * static_cast<double>(at);
        line.Words.push_back({text.substr(at, end - at), x, 0.0,
                              x + 10.0 * static_cast<double>(end - at), 20.0, confidence});
        at = end;
    }
    return line;
}

struct Page {
    PrintedLines Lines;
    ScanReading Reading;
};

Page Read(const std::vector<std::string>& printed) {
    Page p;
    p.Lines.Pitch = 40.0;
    p.Lines.ImageWidth = 1000;
    p.Lines.ImageHeight = 2000;
    FoundColumn column;
    column.Right = 900.0;
    for (std::size_t k = 0; k < printed.size(); ++k) {
        column.Lines.push_back({0.0, 100.0 + 40.0 * static_cast<double>(k)});
        p.Reading.Lines.push_back(Line(static_cast<int>(k), printed[k]));
    }
    p.Lines.Columns.push_back(column);
    return p;
}

std::vector<Disagreement> Compare(const RecordTable& table, const Page& page,
                                  const ScanType& scan = {}) {
    return FindDisagreements(table, scan, page.Lines, page.Reading);
}

// The one disagreement found: its table line and field, and where given, the scan's reading and
// the transcribed text.
void ExpectOnly(const std::vector<Disagreement>& found, int line, int field,
                const std::string& read = "", const std::string& transcribed = "") {
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, line);
    EXPECT_EQ(found[0].Field, field);
    if (!read.empty()) {
        EXPECT_EQ(found[0].Read, read);
    }
    if (!transcribed.empty()) {
        EXPECT_EQ(found[0].Transcribed, transcribed);
    }
}

const std::vector<std::string> Records = {
    "ABBOTT,Mary,Leeds,9b,211",         "ABBOTT,William,Bristol,6a,74",
    "ACKROYD,Sarah Ann,Halifax,9a,405", "ADAMS,Thomas,Kensington,1a,118",
    "ALLEN,Emma,Salford,8d,333",        "ALLSOP,John Henry,Derby,7b,290",
};

const std::vector<std::string> Printed = {
    "INDEX OF BIRTHS",
    "ABBOTT, Mary Leeds 9b 211",
    "ABBOTT, William Bristol 6a 74",
    "ACKROYD, Sarah Ann Halifax 9a 405",
    "ADAMS, Thomas Kensington 1a 118",
    "ALLEN, Emma Salford 8d 333",
    "ALLSOP, John Henry Derby 7b 290",
};

TEST(CompareRecords, RecordsThatSayWhatThePagePrintsAgree) {
    EXPECT_TRUE(Compare(Table(Records), Read(Printed)).empty());
}

TEST(CompareRecords, AChangedLetterIsReportedOnItsLineAndField) {
    std::vector<std::string> typed = Records;
    typed[2] = "ACKROYD,Sarah Ann,Halifex,9a,405";
    const std::vector<Disagreement> found = Compare(Table(typed), Read(Printed));
    ExpectOnly(found, 4, 3, "Halifax", "Halifex");
}

TEST(CompareRecords, DroppedDoubledAndSwappedLettersAndAWrongPageAreReported) {
    std::vector<std::string> typed = Records;
    typed[0] = "ABOTT,Mary,Leeds,9b,211";
    typed[1] = "ABBOTT,Willliam,Bristol,6a,74";
    typed[3] = "ADAMS,Thomas,Kensingotn,1a,118";
    typed[4] = "ALLEN,Emma,Salford,8d,383";
    const std::vector<Disagreement> found = Compare(Table(typed), Read(Printed));
    ASSERT_EQ(found.size(), 4U);
    EXPECT_EQ(found[0].Line, 2);
    EXPECT_EQ(found[0].Field, 1);
    EXPECT_EQ(found[0].Read, "ABBOTT");
    EXPECT_EQ(found[1].Line, 3);
    EXPECT_EQ(found[1].Field, 2);
    EXPECT_EQ(found[2].Line, 5);
    EXPECT_EQ(found[2].Field, 3);
    EXPECT_EQ(found[3].Line, 6);
    EXPECT_EQ(found[3].Field, 5);
    EXPECT_EQ(found[3].Read, "333");
}

TEST(CompareRecords, TheReadersConfusionsAreNotDisagreements) {
    std::vector<std::string> printed = Printed;
    printed[2] = "ABBOTT, Wi1liam Bristo1 6a 74";   // 1 for l
    printed[4] = "ADAMS, Thomas Kensington la 118"; // l for 1
    printed[5] = "ALLEN, Ernma Salford 8d 333";     // rn for m
    printed[6] = "ALLSOP, John Henry Derby 7b 29O"; // O for 0
    EXPECT_TRUE(Compare(Table(Records), Read(printed)).empty());
}

TEST(CompareRecords, AccentsPunctuationAndCapitalsAreFoldedAway) {
    std::vector<std::string> typed = Records;
    typed[0] = "ABBOTT,Marie-Th\xE9r\xE8se,Leeds,9b,211";
    std::vector<std::string> printed = Printed;
    printed[1] = "Abbott, MARIE THERESE Leeds 9b 211";
    EXPECT_TRUE(Compare(Table(typed), Read(printed)).empty());
}

TEST(CompareRecords, AForenameTypedWithoutItsCapitalDiffersButASurnamesCapitalsDoNot) {
    std::vector<std::string> typed = Records;
    typed[0] = "Abbott,mary,Leeds,9b,211";
    typed[1] = "ABBOTT,william,Bristol,6a,74"; // w and W look alike: not reported
    typed[4] = "ALLEN,emma,Salford,8d,333";
    typed[2] = "ACKROYD,sarah Ann,Halifax,9a,405"; // s and S look alike: not reported
    const std::vector<Disagreement> found = Compare(Table(typed), Read(Printed));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].Line, 2);
    EXPECT_EQ(found[0].Field, 2);
    EXPECT_EQ(found[0].Read, "Mary");
    EXPECT_EQ(found[1].Line, 6);
    EXPECT_EQ(found[1].Field, 2);
}

TEST(CompareRecords, AWordTheReaderDoubtsIsNotADisagreement) {
    std::vector<std::string> typed = Records;
    typed[2] = "ACKROYD,Sarah Ann,Halifex,9a,405";
    Page page = Read(Printed);
    page.Reading.Lines[3].Words[3].Confidence = 40.0F; // "Halifax"
    EXPECT_TRUE(Compare(Table(typed), page).empty());
}

TEST(CompareRecords, ADashForARepeatedSurnameStandsForTheSurnameAbove) {
    std::vector<std::string> printed = Printed;
    printed[2] = "\x97       William Bristol 6a 74";
    EXPECT_TRUE(Compare(Table(Records), Read(printed)).empty());
    std::vector<std::string> typed = Records;
    typed[1] = "ABOTT,William,Bristol,6a,74";
    const std::vector<Disagreement> found = Compare(Table(typed), Read(printed));
    ExpectOnly(found, 3, 1, "ABBOTT");
}

TEST(CompareRecords, SurnamesOnLinesOfTheirOwnHeadTheEntriesBelowThem) {
    const std::vector<std::string> printed = {
        "ABBOTT",  "       Mary Leeds 9b 211",        "       William Bristol 6a 74",
        "ACKROYD", "       Sarah Ann Halifax 9a 405", "",
        "ADAMS",   "       Thomas Kensington 1a 118"};
    ScanType scan;
    scan.SurnameOwnLine = true;
    const std::vector<std::string> records(Records.begin(), Records.begin() + 4);
    EXPECT_TRUE(Compare(Table(records), Read(printed), scan).empty());
    std::vector<std::string> typed = records;
    typed[2] = "ACKRYOD,Sarah Ann,Halifax,9a,405";
    const std::vector<Disagreement> found = Compare(Table(typed), Read(printed), scan);
    ExpectOnly(found, 4, 1, "ACKROYD");
}

// A long entry whose third field is carried over to the next printed line, the carried part
// starting dx pixels right of the part on the line above.
const std::vector<std::string> CarriedRecords = {"WALKER,Ann,SMITH,Leeds,2b,11",
                                                 "WALKER,John,MONTGOMERY-CUNNINGHAM,Hull,2d,637",
                                                 "WALKER,Mary,JONES,York,2c,40"};

Page CarriedPage(double dx) {
    Page page = Read({"WALKER Ann SMITH Leeds 2b 11", "WALKER John MONTGOMERY- Hull 2d 637",
                      "CUNNINGHAM", "WALKER Mary JONES York 2c 40"});
    for (ReadWord& w : page.Reading.Lines[2].Words) {
        w.Left = page.Reading.Lines[1].Words[2].Left + dx;
        w.Right = w.Left + 100.0;
    }
    return page;
}

ScanType CarriedScan() {
    ScanType scan;
    scan.LongExtraLen = 19;
    return scan;
}

TEST(CompareRecords, ALongEntryCarriedOverTwoLinesIsOneRecord) {
    // The carried part stands under the field it carries on.
    const Page page = CarriedPage(5.0);
    EXPECT_TRUE(Compare(Table(CarriedRecords, true), page, CarriedScan()).empty());
    std::vector<std::string> typed = CarriedRecords;
    typed[1] = "WALKER,John,MONTGOMERY-CUNNINGHAN,Hull,2d,637";
    ExpectOnly(Compare(Table(typed, true), page, CarriedScan()), 3, 3, "MONTGOMERY- CUNNINGHAM");
}

// The carried part starts where the field starts, a pixel or two either way: it still follows
// the part on the line above.
TEST(CompareRecords, ACarriedPartStartingJustLeftOfItsFieldFollowsTheFirstPart) {
    EXPECT_TRUE(Compare(Table(CarriedRecords, true), CarriedPage(-3.0), CarriedScan()).empty());
}

// A reference is printed in digits: a reader that takes the 1 of "1a" for a t has not found a
// slip, but a volume typed with another digit still differs, shown as the digit it reads.
TEST(CompareRecords, ALetterReadWhereAReferenceHasItsDigitIsTheDigitOfItsShape) {
    Page page = Read(Printed);
    page.Reading.Lines[4].Words[3].Text = "ta";
    page.Reading.Lines[4].Words[4].Text = "lI8";
    EXPECT_TRUE(Compare(Table(Records), page).empty());
    std::vector<std::string> typed = Records;
    typed[3] = "ADAMS,Thomas,Kensington,7a,118";
    const std::vector<Disagreement> found = Compare(Table(typed), page);
    ExpectOnly(found, 5, 4, "1a", "7a");
}

TEST(CompareRecords, ADigitReadWhereARegisterHasTheLetterOfItsShapeIsTheLetter) {
    const std::vector<std::string> records = {"WATERS,Angela,Rochdale,D36,2301",
                                              "WATERS,Kevin,Wigan,B49,929"};
    Page page = Read({"WATERS Angela Rochdale 036 2301", "WATERS Kevin Wigan 849 929"});
    EXPECT_TRUE(Compare(Table(records), page).empty());
    std::vector<std::string> typed = records;
    typed[1] = "WATERS,Kevin,Wigan,D49,929";
    const std::vector<Disagreement> found = Compare(Table(typed), page);
    ExpectOnly(found, 3, 4, "849", "D49");
}

// A worn page's faded 0 is read with full confidence as 6, 8 or 9: on a grainy scan a field that
// differs only in those closed shapes is not reported. On a clean scan it is; another digit
// still differs on a grainy scan.
TEST(CompareRecords, OnAGrainyScanADigitReadAsAnotherClosedLoopIsNotADisagreement) {
    std::vector<std::string> printed = Printed;
    printed[3] = "ACKROYD, Sarah Ann Halifax 9a 465"; // 405
    printed[4] = "ADAMS, Thomas Kensington 1a 116";   // 118
    Page page = Read(printed);
    const std::vector<Disagreement> clean = Compare(Table(Records), page);
    ASSERT_EQ(clean.size(), 2U);
    EXPECT_EQ(clean[0].Read, "465");
    EXPECT_EQ(clean[1].Read, "116");
    page.Reading.Grainy = true;
    EXPECT_TRUE(Compare(Table(Records), page).empty());
    std::vector<std::string> typed = Records;
    typed[3] = "ADAMS,Thomas,Kensington,1a,113"; // a 3 is no closed loop: still reported
    ExpectOnly(Compare(Table(typed), page), 5, 5, "116", "113");
}

TEST(CompareRecords, GapsAndAFurtherColumnKeepTheRecordsInOrder) {
    Page page = Read({"ABBOTT, Mary Leeds 9b 211", "ABBOTT, William Bristol 6a 74", "",
                      "ACKROYD, Sarah Ann Halifax 9a 405"});
    Page second = Read({"SURNAME NAME DISTRICT VOL PAGE", "ADAMS, Thomas Kensington 1a 118",
                        "ALLEN, Emma Salford 8d 333", "ALLSOP, John Henry Derby 7b 290"});
    second.Lines.Columns[0].Left = 1000.0;
    page.Lines.Columns.push_back(second.Lines.Columns[0]);
    for (ReadLine l : second.Reading.Lines) {
        l.Column = 1;
        page.Reading.Lines.push_back(l);
    }
    EXPECT_TRUE(Compare(Table(Records), page).empty());
    std::vector<std::string> typed = Records;
    typed[5] = "ALLSOP,John Henry,Derby,7b,299";
    const std::vector<Disagreement> found = Compare(Table(typed), page);
    ExpectOnly(found, 7, 5);
}

TEST(CompareRecords, ARecordTypedFromTheLineAboveIsReportedFieldByField) {
    std::vector<std::string> typed = Records;
    typed[3] = typed[2];
    const std::vector<Disagreement> found = Compare(Table(typed), Read(Printed));
    ASSERT_EQ(found.size(), 5U);
    for (std::size_t k = 0; k < found.size(); ++k) {
        EXPECT_EQ(found[k].Line, 5);
        EXPECT_EQ(found[k].Field, static_cast<int>(k + 1));
    }
}

// A typewritten page prints each field at its own place across the column: the forenames at
// the 12th character, the district at the 26th, the volume at the 40th, the page at the 46th.
const std::vector<std::string> Typewritten = {
    "JACKSON     Agnes         Bury          VIII  120",
    "\x97           Alfred        Liverpool     XX    8",
    "\x97           Alfred        St Pancras    I     77",
    "\x97           Alice         Bristol       XL    211",
    "\x97           Ann           Barnsley      XXII  516",
    "\x97           Ann           Leeds         XXIII 107",
    "\x97           Arthur        Hull          XXII  302",
    "\x97           Betsy         Wigan         XXI   45",
};

const std::vector<std::string> TypewrittenRecords = {
    "JACKSON,Agnes,Bury,VIII,120",    "JACKSON,Alfred,Liverpool,XX,8",
    "JACKSON,Alfred,St Pancras,I,77", "JACKSON,Alice,Bristol,XL,211",
    "JACKSON,Ann,Barnsley,XXII,516",  "JACKSON,Ann,Leeds,XXIII,107",
    "JACKSON,Arthur,Hull,XXII,302",   "JACKSON,Betsy,Wigan,XXI,45",
};

TEST(CompareRecords, ARecordTypedFromTheLineAboveOnATypewrittenPageIsSharedOutByPlace) {
    Page page = Read(Typewritten);
    EXPECT_TRUE(Compare(Table(TypewrittenRecords), page).empty());
    // Alice's record typed from Alfred's line above: by their letters alone, her district and
    // volume would go to the typed district, the typed volume taking nothing.
    std::vector<std::string> typed = TypewrittenRecords;
    typed[3] = typed[2];
    const std::vector<Disagreement> found = Compare(Table(typed), page);
    ASSERT_EQ(found.size(), 4U);
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"Alfred", "Alice"}, {"St Pancras", "Bristol"}, {"I", "XL"}, {"77", "211"}};
    for (std::size_t k = 0; k < found.size(); ++k) {
        EXPECT_EQ(found[k].Line, 5);
        EXPECT_EQ(found[k].Field, static_cast<int>(k + 2));
        EXPECT_EQ(found[k].Transcribed, expected[k].first);
        EXPECT_EQ(found[k].Read, expected[k].second);
    }
}

TEST(CompareRecords, OnlyTheRecordsOfTheLinesReadSoFarAreCompared) {
    std::vector<std::string> typed = Records;
    typed[5] = "ALLSOP,John Henry,Dreby,7b,290";
    Page page = Read(Printed);
    EXPECT_EQ(Compare(Table(typed), page).size(), 1U);
    page.Reading.Lines.resize(4);
    EXPECT_TRUE(Compare(Table(typed), page).empty());
}

TEST(CompareRecords, NothingIsComparedWithoutLines) {
    EXPECT_TRUE(Compare(Table(Records), Page{}).empty());
}

TEST(ReadText, FoldsTheShapesAReaderConfuses) {
    EXPECT_EQ(Folded("Wi1liam"), Folded("William"));
    EXPECT_EQ(Folded("1O"), Folded("lo"));
    EXPECT_EQ(Folded("Ernma"), Folded("Emma"));
    EXPECT_EQ(Folded("Th\xE9r\xE8se"), Folded("THERESE"));
    EXPECT_NE(Folded("Halifax"), Folded("Halifex"));
    EXPECT_NE(Folded("SMITH"), Folded("SMYTH"));
}

TEST(ReadText, LikenessCountsTheSharedPairsOfCharacters) {
    EXPECT_DOUBLE_EQ(Likeness("SMITH", "SMITH"), 1.0);
    EXPECT_DOUBLE_EQ(Likeness("ABC", "XYZ"), 0.0);
    // SM MI IT TH against SM MY YT TH: two of four shared.
    EXPECT_DOUBLE_EQ(Likeness("SMITH", "SMYTH"), 0.5);
    EXPECT_DOUBLE_EQ(Likeness(Pairs("SMITH"), Pairs("SMYTH")), 0.5);
    EXPECT_DOUBLE_EQ(Likeness(Pairs("S"), Pairs("S")), 0.0);
}

} // namespace

} // namespace tv
