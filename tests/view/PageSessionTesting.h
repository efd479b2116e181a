#pragma once
// Transcription files of two real-looking index pages, written to a temporary folder and read
// with the real reader, and a session over them, for the key table, flags, reload and change
// watch tests.
#include "core/Text.h"
#include "support/FakePlatform.h"
#include "support/TestFiles.h"
#include "transcription/ReadTranscription.h"

#include "view/KeyCodes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace tv::test {

// Every code the key table knows.
inline const std::vector<int>& TableKeys() {
    static const std::vector<int> keys = {
        KeyBackspace, KeyEnter,    KeyPageUp, KeyPageDown, KeyEnd,  KeyHome, KeyLeft, KeyUp,
        KeyRight,     KeyDown,     KeyA,      KeyB,        KeyC,    KeyD,    KeyF,    KeyL,
        KeyM,         KeyO,        KeyR,      KeyS,        KeyNum2, KeyNum4, KeyNum6, KeyNum8,
        KeyNumPlus,   KeyNumMinus, KeyF1,     KeyF3,       KeyF11,  KeyF12,  KeyPlus, KeyMinus};
    return keys;
}

inline std::string JoinLines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + CRLF;
    return text;
}

// A three-column births page of the March quarter of 1878, page 57: three header lines, 90
// records (the surnames come in pairs after the first, so that a surname carries on over the
// top of columns 2 and 3), a comment after record 15 and one at the end: 95 lines.
inline std::vector<std::string> BirthsPage1878() {
    static const char* const surnames[] = {
        "ABBOTT",  "ACKROYD",  "ADAMS",  "AINSWORTH", "ALLEN",  "ARMITAGE", "ASHWORTH", "ATKINSON",
        "BAILEY",  "BAKER",    "BARKER", "BATES",     "BELL",   "BENTLEY",  "BOOTH",    "BRADLEY",
        "BROOK",   "BROWN",    "BUTLER", "CARTER",    "CLARK",  "COOPER",   "CROWTHER", "DAVIES",
        "DAWSON",  "DENNISON", "DYSON",  "EASTWOOD",  "ELLIS",  "FIRTH",    "FOSTER",   "GIBSON",
        "GREEN",   "HAIGH",    "HALL",   "HIRST",     "HOLMES", "JACKSON",  "KAYE",     "LEE",
        "MARSDEN", "MOORE",    "NAYLOR", "PARKER",    "WALKER", "WOOD"};
    static const char* const forenames[] = {"Mary",   "John",      "Ann",   "William", "Sarah",
                                            "Thomas", "Elizabeth", "James", "Hannah"};
    static const char* const districts[] = {"Leeds",     "Bradford", "Halifax", "Huddersfield",
                                            "Wakefield", "Dewsbury", "Keighley"};
    static const char* const volumes[] = {"9a", "9b", "9c"};
    std::vector<std::string> lines = {"+INFO,verifier@example.org,,SEQUENCED,BIRTHS",
                                      "+S,1878,Mar,,", "+PAGE,57"};
    for (int i = 0; i < 90; ++i) {
        lines.push_back(std::string(surnames[(i + 1) / 2]) + "," + forenames[i % 9] + "," +
                        districts[i % 7] + "," + volumes[i % 3] + "," +
                        std::to_string(100 + 3 * i));
        if (i == 14) lines.push_back("#COMMENT,ink blot over the next entry");
    }
    lines.push_back("#END of page 57");
    return lines;
}

// The table line of record r (1..90) of the 1878 page.
inline int LineOf1878Record(int record) {
    return record <= 15 ? record + 3 : record + 4;
}

inline const char* const GraphicsFile1878 = "1878B1-057.jpg";

// A two-column births page of the June quarter of 1965, page 12, in the layout of its time:
// surnames on their own lines, a gap after every ten printed lines, the mother's maiden
// surname as third field. 40 records, 20 to a column, a comment after record 25: 44 lines.
inline std::vector<std::string> BirthsPage1965() {
    struct Group {
        const char* Surname;
        std::vector<const char*> Forenames;
        const char* Mother;
    };
    static const std::vector<Group> groups = {
        {"ABEL", {"Karen M", "Paul", "Susan J"}, "SMITH"},
        {"ADAMSON", {"Mark"}, "MONTGOMERY-CAMPBELL"},
        {"AHMED", {"Ali", "Fatima", "Mohammed", "Yasmin"}, "KHAN"},
        {"ALLSOP", {"Gary"}, "WOOD"},
        {"ANDREWS",
         {"Alan", "Brenda", "Carol", "David", "Elaine", "Frank", "Gillian", "Harold", "Irene",
          "Julie", "Keith"},
         "JONES"},
        {"ARCHER", {"Linda", "Martin"}, "FEATHERSTONEHAUGHS"},
        {"ARMSTRONG", {"Neil", "Olive", "Peter", "Rachel", "Simon"}, "HUGHES"},
        {"ASHTON", {"Tracey"}, "ELLIOTT-WORTHINGTON"},
        {"ATKINS",
         {"Alison", "Barry", "Clare", "Derek", "Emma", "Fiona", "Graham", "Helen", "Ian", "Jane",
          "Kevin", "Lesley"},
         "MOSS"},
    };
    static const char* const districts[] = {"Leeds", "Bradford", "Wakefield", "Halifax"};
    static const char* const volumes[] = {"2c", "2b", "2d", "2b"};
    std::vector<std::string> lines = {"+INFO,verifier@example.org,,SEQUENCED,BIRTHS",
                                      "+S,1965,Jun,,", "+PAGE,12"};
    int record = 0;
    for (const Group& g : groups) {
        for (const char* forenames : g.Forenames) {
            lines.push_back(std::string(g.Surname) + "," + forenames + "," + g.Mother + "," +
                            districts[record % 4] + "," + volumes[record % 4] + "," +
                            std::to_string(101 + record));
            ++record;
            if (record == 25) lines.push_back("#NOTE,entry smudged on the scan");
        }
    }
    return lines;
}

inline int LineOf1965Record(int record) {
    return record <= 25 ? record + 3 : record + 4;
}

inline const char* const GraphicsFile1965 = "1965B2-0012.jpg";

// A session whose transcription file is written to a temporary folder and read as the start
// window reads it, with the box 7000 twips wide.
class PageSession {
  public:
    FakeSession F;
    Session& S = F.S;
    TempDir Dir;
    std::string Path;

    // Writes the file, reads it with the reader and chooses the scan type, as the start window
    // does before calibration.
    void Load(const std::vector<std::string>& lines, const std::string& graphicsFile,
              const std::string& name = "PAGE.SCA") {
        Path = Dir.Write(name, JoinLines(lines));
        S.GraphicsFile = graphicsFile;
        S.TranscriptionFile = Path;
        std::string fileName = Path;
        ReaderContext context{S.Table, S.Scan, S.Calib.ColumnTopLine, S.GraphicsFile, S.P.Ask};
        S.Caption = ReadTranscription(fileName, context);
        ASSERT_EQ(fileName, Path);
        ChooseScanType(S.Table, S.Scan, S.Calib.ColumnTopLine, S.GraphicsFile, S.History);
        S.TranscriptionFileTime = ModificationTime(Path);
        S.Box.BoxWidth = 7000;
        S.UpdateStats();
    }

    // The 1878 page, calibrated as the dialogue would leave it: every column starting 3572
    // twips down, 1224 twips from line to line and 68 across (a slightly skewed scan).
    void LoadCalibrated1878() {
        Load(BirthsPage1878(), GraphicsFile1878);
        CalibrateAt({4, 35, 65}, 3572, {745, 12305, 23865}, 1224.0F, 68.0F);
    }

    void CalibrateAt(const std::vector<int16_t>& topLines, int32_t top,
                     const std::vector<int32_t>& lefts, float incrTop, float incrLeft) {
        for (std::size_t i = 0; i < topLines.size(); ++i) {
            int c = static_cast<int>(i) + 1;
            S.Calib.ColumnTopLine[c] = topLines[i];
            S.Calib.ColumnTopY[c] = top;
            S.Calib.ColumnTopX[c] = lefts[i];
        }
        S.Calib.LineIncrTop = incrTop;
        S.Calib.LineIncrLeft = incrLeft;
        S.Calib.CalibrationStage = 0;
        S.Calib.BoxLinedUp = true;
        S.Commands.MenuCalibrate = true;
        CalcLineJump(S.Table, S.Scan, S.Calib.ColumnTopLine);
        S.Table.CurrentLine = topLines[0];
        S.ShowRecord(0);
        S.Box.BoxTop = top;
        S.Box.BoxLeft = lefts[0];
        S.EnsureFrameVisible();
    }

    CommandOutcome Press(int code, bool shift = false, bool alt = false) {
        return S.Form_KeyDown(code, shift, alt);
    }

    // Rewrites the transcription file as a later save by the transcription program, with a
    // modification time that certainly differs from the one read.
    void Save(const std::vector<std::string>& lines, int secondsLater = 10) {
        Dir.Write("PAGE.SCA", JoinLines(lines));
        auto time = S.TranscriptionFileTime.value_or(std::filesystem::file_time_type::clock::now());
        std::filesystem::last_write_time(Path, time + std::chrono::seconds(secondsLater));
    }

    int CountOf(const std::string& text, const std::string& part) const {
        int count = 0;
        for (std::size_t at = text.find(part); at != std::string::npos;
             at = text.find(part, at + 1))
            ++count;
        return count;
    }
};

class PageSessionTest : public ::testing::Test, public PageSession {};

} // namespace tv::test
