// A transcription file of any content, read as the start window reads it, then everything the
// program does with the table it gets: the statistics, every list, both reports, the start of
// calibration and a walk over every record. Only the documented run-time errors may stop
// the start of calibration; everything else must take any table.
#include "FuzzSupport.h"
#include "session/MemorySettingsStore.h"
#include "support/FakePlatform.h"
#include "transcription/ReadTranscription.h"

#include <string>

namespace {

using tv::fuzz::Require;

void CheckTable(const tv::RecordTable& t) {
    Require(t.LineCount >= 0 && t.LineCount <= tv::MaxLines, "at most 1000 lines");
    Require(t.RecordCount >= 0 && t.RecordCount <= t.LineCount, "records among the lines");
    Require(t.HeaderYear == -1 || (t.HeaderYear >= 1837 && t.HeaderYear <= 2000), "a year");
    Require(t.HeaderQuarter >= -1 && t.HeaderQuarter <= 4, "a quarter");
    Require(t.HeaderPageCount >= 0 && t.HeaderPageCount <= tv::MaxHeaderPages, "30 pages");
    int16_t records = 0;
    for (int line = 1; line <= t.LineCount; ++line) {
        Require(t.LineText[line].size() <= 108, "a shown line is at most 100 + \" ... ...\"");
        if (!t.IsRecord(line)) {
            Require(t.LineRecNo[line] == -1, "a line that is no record has number -1");
            continue;
        }
        Require(t.LineRecNo[line] == ++records, "records are numbered in file order");
        Require(!t.Surname[line].empty(), "a record has a surname, \"(blank)\" at least");
    }
    Require(records == t.RecordCount, "every record counted");
}

// Every list of the statistics screen and both reports.
void RunStatistics(tv::Session& s) {
    s.UpdateStats();
    tv::test::MemorySettingsStore store;
    const tv::MainWindowState window{{100, 100, 14200, 12000}, tv::VersionLine()};
    for (int16_t option = 0; option <= 4; ++option) {
        s.StatsOption = option;
        Require(!s.RefreshTabs(store, window).empty(), "every list shows something");
    }
    Require(!s.Report(true).empty() && !s.Report(false).empty(), "a report is printed");
}

// The walk over the records that ENTER and BACKSPACE do, box text and notes included.
void WalkRecords(tv::Session& s) {
    s.Table.CurrentLine = 0;
    for (int k = 0; k <= s.Table.LineCount; ++k)
        s.ShowRecord(1);
    Require(s.Table.CurrentLine == s.Table.LineCount + 1, "the walk ends one past the end");
    for (int k = 0; k <= s.Table.LineCount; ++k)
        s.ShowRecord(-1);
    Require(s.Table.CurrentLine == 0, "the walk back ends before the start");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const tv::fuzz::MemoryFile file(data, size);
    {
        // Every question refused: the session ends with "**QUIT**" or reads on.
        tv::test::FakeSession refusing;
        refusing.Prompts.Script.assign(64, tv::Answer::Cancel);
        refusing.S.ImageChosen("/scans/1911B30123.jpg");
        refusing.S.LoadTranscription(file.Path());
        CheckTable(refusing.S.Table);
    }
    tv::test::FakeSession session;
    tv::Session& s = session.S;
    s.ImageChosen("/scans/1911B30123.jpg");
    if (s.LoadTranscription(file.Path()) == tv::QuitToken) return 0;
    CheckTable(s.Table);
    RunStatistics(s);
    try {
        s.InitialiseForm1();
    } catch (const tv::RunTimeError&) {
        // A page whose layout defeats calibration stops it with a documented run-time error.
        return 0;
    }
    WalkRecords(s);
    return 0;
}
