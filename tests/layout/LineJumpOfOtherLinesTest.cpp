// Lines that are no records never count as printed index lines, whatever stands around them:
// found by fuzzing the scan type for any header (fuzz/corpus/ScanTypeTable keeps the input).
#include "ScanTypeTesting.h"

#include <vector>

namespace tv {

class LineJumpOfOtherLines : public test::ScanTypeTest {};

TEST_F(LineJumpOfOtherLines, TwoBlankLinesBeforeANewSurnameKeepNoLineWithTheTenLineGap) {
    scanType.TenLineGap = true;
    AddRecord("ABEL");
    AddComment("");
    AddComment("");
    AddRecord("ADAMS");
    CalcJumps();
    EXPECT_EQ(Jumps(), (std::vector<int>{1, 0, 0, 1}));
    // Worked out again, as every reload and column top does, nothing changes.
    CalcJumps();
    EXPECT_EQ(Jumps(), (std::vector<int>{1, 0, 0, 1}));
    EXPECT_EQ(table.RecordCount, 2);
}

TEST_F(LineJumpOfOtherLines, TwoLikeCommentsAfterATenthRecordKeepNoLine) {
    scanType.TenLineGap = true;
    AddRecords("ATKINS", 11); // the eleventh takes the gap and restarts the count of ten
    AddComment("#NOTE");
    AddComment("#NOTE");
    AddRecord("BAKER");
    CalcJumps();
    const std::vector<int> jumps = Jumps();
    EXPECT_EQ(jumps[10], 2);
    EXPECT_EQ(jumps[11], 0);
    EXPECT_EQ(jumps[12], 0);
    EXPECT_EQ(jumps[13], 1);
}

TEST_F(LineJumpOfOtherLines, ASurnameOfOneRecordStillLosesItsGapWhenTheNextBegins) {
    // The deliberate rule itself, on records: the count of ten restarted at the tenth record
    // of ATKINS; the new surname takes that record's extra line away.
    scanType.TenLineGap = true;
    AddRecords("ATKINS", 11);
    AddRecord("BAKER");
    CalcJumps();
    const std::vector<int> jumps = Jumps();
    EXPECT_EQ(jumps[10], 1);
    EXPECT_EQ(jumps[11], 1);
}

} // namespace tv
