#pragma once
// A session with a record table built line by line and a scan layout set by hand, for the
// record box tests.
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <string>

namespace tv::test {

struct RecordFields {
    std::string Surname = "SMITH";
    std::string Forenames = "John";
    std::string District = "Bolton";
    std::string Volume = "8c";
    std::string Page = "123";
    std::string Extra;
    std::string Alt;
};

class RecordBoxTest : public ::testing::Test {
  protected:
    FakeSession fake;
    Session& s = fake.S;
    RecordTable& t = fake.S.Table;

    void SetUp() override {
        s.Box.BoxWidth = 20000;
        s.Calib.CalibrationStage = 0;
        UseTimes1870Births();
    }

    // Births of the 1870s: three columns of Times, nothing padded, district on the right.
    void UseTimes1870Births() {
        s.Scan.NumColumns = 3;
        s.Scan.IndexFont = 'T';
        s.Scan.FontName = "Times New Roman";
        s.Scan.SurnamePad = 0;
        s.Scan.ExtraPad = 0;
        s.Scan.DistrictPad = 99;
        s.Scan.VolPageStyle = 0;
        t.HasExtraField = false;
    }

    // Any Courier layout from 1910 on; the pads and style are the caller's.
    void UseCourier(int16_t extraPad, int16_t districtPad, int16_t style) {
        s.Scan.NumColumns = 2;
        s.Scan.IndexFont = 'C';
        s.Scan.FontName = "Courier New";
        s.Scan.SurnamePad = 0;
        s.Scan.ExtraPad = extraPad;
        s.Scan.DistrictPad = districtPad;
        s.Scan.VolPageStyle = style;
        t.HasExtraField = true;
    }

    int AddRecord(const RecordFields& f = {}) {
        int line = ++t.LineCount;
        t.LineText[line] = f.Surname + "," + f.Forenames;
        t.Surname[line] = f.Surname;
        t.Forenames[line] = f.Forenames;
        t.ExtraField[line] = f.Extra;
        t.District[line] = f.District;
        t.Volume[line] = f.Volume;
        t.Page[line] = f.Page;
        t.AltSecondLine[line] = f.Alt;
        t.LineFlagged[line] = false;
        t.LineJump[line] = 1;
        t.LineRecNo[line] = ++t.RecordCount;
        return line;
    }

    int AddRecord(const std::string& surname, const std::string& forenames = "John") {
        RecordFields f;
        f.Surname = surname;
        f.Forenames = forenames;
        return AddRecord(f);
    }

    // A comment, blank or header line: not a record.
    int AddOther(const std::string& text) {
        int line = ++t.LineCount;
        t.LineText[line] = text;
        t.Surname[line] = text;
        t.LineJump[line] = 0;
        t.LineRecNo[line] = -1;
        return line;
    }

    // Redisplays the box with the given line current.
    void Show(int line) {
        t.CurrentLine = static_cast<int16_t>(line);
        s.ShowRecord(0);
    }

    static std::string Spaces(std::size_t count) { return std::string(count, ' '); }
};

} // namespace tv::test
