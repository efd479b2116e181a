// One fault, one answer: a transcription the windowed program refuses at a reload is refused by
// the check command in the same words, naming the line.
#include "support/Process.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

namespace tv::test {
namespace {

TEST(OneFaultOneAnswer, PageNoSixteenBitNumberHoldsIsRefusedNamingItsLine) {
    TempDir dir;
    const std::string path = dir.Write("1911B30123.QRL", "+INFO,a,b,c,BIRTHS\r\n+S,1911,Sep\r\n"
                                                         "+PAGE,-99999\r\nMUIR,Agnes,,x,1,2\r\n");
    ProcessResult r = RunTallyview({"--check", path});
    EXPECT_EQ(r.Status, 2);
    EXPECT_EQ(r.Out, "");
    EXPECT_EQ(r.Err, "tallyview: " + path + ": Run-time error 6: Overflow in line 3\n");
}

} // namespace
} // namespace tv::test
