#include "ScanTypeTesting.h"

#include <string>
#include <vector>

namespace tv {

class CalcLineJumpTest : public test::ScanTypeTest {
  protected:
    // The lines whose jump is the one given.
    std::vector<int> LinesWithJump(int jump) {
        std::vector<int> lines;
        for (int line = 1; line <= table.LineCount; ++line)
            if (table.LineJump[line] == jump) lines.push_back(line);
        return lines;
    }
};

TEST_F(CalcLineJumpTest, WithoutAnyLayoutRuleEveryRecordIsOneLine) {
    AddRecords("SMITH", 3);
    AddRecord("TAYLOR");
    CalcJumps();
    EXPECT_EQ(Jumps(), (std::vector<int>{1, 1, 1, 1}));
}

TEST_F(CalcLineJumpTest, NewSurnameOnItsOwnLineTakesTwoLines) {
    scanType.SurnameOwnLine = true;
    AddRecords("SMITH", 3);
    AddRecords("TAYLOR", 2);
    CalcJumps();
    EXPECT_EQ(Jumps(), (std::vector<int>{2, 1, 1, 2, 1}));
}

TEST_F(CalcLineJumpTest, NonRecordLinesAreLeftAndDoNotBreakASurname) {
    scanType.SurnameOwnLine = true;
    AddComment("+PAGE");
    AddRecord("SMITH");
    AddComment("# page break");
    AddRecord("SMITH");
    CalcJumps();
    EXPECT_EQ(Jumps(), (std::vector<int>{0, 2, 0, 1}));
}

TEST_F(CalcLineJumpTest, LongForenamesTakeAnExtraLine) {
    scanType.SurnameOwnLine = true;
    scanType.LongForenamesLen = 22;
    AddRecord("SMITH", std::string(22, 'f'));
    AddRecord("SMITH", std::string(21, 'f'));
    AddRecord("SMITH", std::string(30, 'f'));
    AddRecord("TAYLOR", std::string(21, 'f'));
    CalcJumps();
    EXPECT_EQ(Jumps(), (std::vector<int>{3, 1, 2, 2}));
}

TEST_F(CalcLineJumpTest, LongExtraFieldTakesAnExtraLine) {
    scanType.LongExtraLen = 13;
    AddRecord("SMITH", "Ann", std::string(13, 'e'));
    AddRecord("SMITH", "Ann", std::string(12, 'e'));
    AddRecord("SMITH", "Ann", std::string(13, 'e'));
    AddRecord("TAYLOR", "Ann", std::string(12, 'e'));
    CalcJumps();
    EXPECT_EQ(Jumps(), (std::vector<int>{2, 1, 2, 1}));
}

TEST_F(CalcLineJumpTest, ElevenRecordsOfOneSurnameFromAColumnTopGiveTheEleventhAGap) {
    scanType.TenLineGap = true;
    columnTops[1] = 1;
    AddRecords("SMITH", 11);
    CalcJumps();
    EXPECT_EQ(LinesWithJump(2), std::vector<int>{11});
    EXPECT_EQ(LinesWithJump(1).size(), 10U);
}

TEST_F(CalcLineJumpTest, TenLineGapRecursEveryTenLines) {
    scanType.TenLineGap = true;
    AddRecords("SMITH", 31);
    CalcJumps();
    EXPECT_EQ(LinesWithJump(2), (std::vector<int>{11, 21, 31}));
}

TEST_F(CalcLineJumpTest, TenLineGapCountRestartsAtEveryColumnTop) {
    scanType.TenLineGap = true;
    columnTops[1] = 1;
    columnTops[2] = 6;
    AddRecords("SMITH", 16);
    CalcJumps();
    EXPECT_EQ(LinesWithJump(2), std::vector<int>{16});
}

TEST_F(CalcLineJumpTest, TenLineGapCountsALongRecordAsTwoLines) {
    scanType.TenLineGap = true;
    scanType.LongForenamesLen = 20;
    AddRecords("SMITH", 4);
    AddRecord("SMITH", std::string(20, 'f'));
    AddRecords("SMITH", 5);
    CalcJumps();
    EXPECT_EQ(LinesWithJump(2), (std::vector<int>{5, 10}));
}

TEST_F(CalcLineJumpTest, TenLineGapCountRestartsWithANewSurname) {
    scanType.TenLineGap = true;
    AddRecords("SMITH", 6);
    AddRecords("TAYLOR", 10);
    CalcJumps();
    EXPECT_TRUE(LinesWithJump(2).empty());
    AddRecord("TAYLOR");
    CalcJumps();
    EXPECT_EQ(LinesWithJump(2), std::vector<int>{17});
}

TEST_F(CalcLineJumpTest, NewSurnameTakesAwayTheGapOfTheRecordBefore) {
    scanType.TenLineGap = true;
    AddRecords("SMITH", 11);
    AddRecord("TAYLOR");
    CalcJumps();
    EXPECT_TRUE(LinesWithJump(2).empty());
    // Had the surname gone on, the eleventh record would have kept its gap.
    table.Surname[12] = "SMITH";
    CalcJumps();
    EXPECT_EQ(LinesWithJump(2), std::vector<int>{11});
}

TEST_F(CalcLineJumpTest, NewSurnameTakesAwayTheLongLineOfAColumnTopRecordBefore) {
    scanType.TenLineGap = true;
    scanType.LongForenamesLen = 20;
    columnTops[2] = 5;
    AddRecords("SMITH", 4);
    AddRecord("SMITH", std::string(20, 'f'));
    AddRecord("TAYLOR");
    CalcJumps();
    EXPECT_EQ(table.LineJump[5], 1);
    // Without the ten-line gap the long record keeps its second line.
    scanType.TenLineGap = false;
    CalcJumps();
    EXPECT_EQ(table.LineJump[5], 2);
}

TEST_F(CalcLineJumpTest, RunningAgainGivesTheSameJumps) {
    scanType.SurnameOwnLine = true;
    scanType.TenLineGap = true;
    scanType.LongForenamesLen = 20;
    AddRecord("SMITH", std::string(25, 'f'));
    AddRecords("SMITH", 12);
    AddComment("# end of column");
    AddRecord("TAYLOR", std::string(25, 'f'));
    CalcJumps();
    std::vector<int> first = Jumps();
    CalcJumps();
    EXPECT_EQ(Jumps(), first);
    EXPECT_EQ(first[0], 3);
    EXPECT_EQ(first[14], 3);
}

} // namespace tv
