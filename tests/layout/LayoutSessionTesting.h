#pragma once
// A session over a scan of 2400 x 3400 pixels (36000 x 51000 twips at 15 twips per pixel) in a
// view of 18000 x 12000 twips at (600, 600), with a record table built line by line, for the
// calibration and box placement tests.
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <string>

namespace tv::test {

inline constexpr int32_t ImageWidthTwips = 36000;
inline constexpr int32_t ImageHeightTwips = 51000;
inline constexpr int32_t ControlLeft = 600;
inline constexpr int32_t ControlTop = 600;

class LayoutSessionTest : public ::testing::Test {
  protected:
    FakeSession F;
    Session& S = F.S;

    LayoutSessionTest() {
        S.Scan.AskScanType = false;
        S.Scan.FontName = "Times New Roman";
        S.Box.BoxWidth = 6000;
        S.Box.BoxHeight = 900;
    }

    // A record line as the reader leaves it, each with a surname of its own.
    int AddRecord() {
        int line = ++S.Table.LineCount;
        S.Table.Surname[line] = "SURNAME" + std::to_string(line);
        S.Table.Forenames[line] = "John";
        S.Table.District[line] = "Leeds";
        S.Table.Volume[line] = "9b";
        S.Table.Page[line] = "123";
        S.Table.LineText[line] = S.Table.Surname[line] + ",John,Leeds,9b,123";
        S.Table.LineJump[line] = 1;
        S.Table.LineRecNo[line] = ++S.Table.RecordCount;
        return line;
    }

    void AddRecords(int count) {
        for (int k = 0; k < count; ++k)
            AddRecord();
    }

    int AddComment(const std::string& text) {
        int line = ++S.Table.LineCount;
        S.Table.LineText[line] = text;
        S.Table.LineJump[line] = 0;
        S.Table.LineRecNo[line] = -1;
        return line;
    }

    // The user drags the box to this place in image space, at the view's present offsets.
    void MoveBoxTo(int32_t left, int32_t top) {
        ViewMetrics m = F.View.Metrics();
        S.DropBox(CLng(left - m.ScrollX * m.TwipsPerPixelX + m.Control.Left),
                  CLng(top - m.ScrollY * m.TwipsPerPixelY + m.Control.Top));
    }

    void Enter() { S.CalibrateTextbox(); }

    // A finished calibration of one column from line 1 at (left, top) with this spacing.
    void Calibrated(int32_t left, int32_t top, float down, float across) {
        S.Calib.ColumnTopLine[1] = 1;
        S.Calib.ColumnTopX[1] = left;
        S.Calib.ColumnTopY[1] = top;
        S.Calib.LineIncrTop = down;
        S.Calib.LineIncrLeft = across;
        S.Calib.CalibrationStage = 0;
        S.Calib.BoxLinedUp = true;
    }
};

} // namespace tv::test
