#include "transcription/RecordTable.h"

#include <gtest/gtest.h>

#include <memory>

namespace tv {

namespace {

// Lines 1..6: header, record, comment, record, record, comment.
std::unique_ptr<RecordTable> SampleTable() {
    auto table = std::make_unique<RecordTable>();
    table->LineCount = 6;
    const int16_t recNo[] = {-1, 1, -1, 2, 3, -1};
    for (int line = 1; line <= 6; ++line)
        table->LineRecNo[line] = recNo[line - 1];
    return table;
}

} // namespace

TEST(RecordTable, NextRecordLineSkipsLinesThatAreNotRecords) {
    auto table = SampleTable();
    table->CurrentLine = 0;
    NextRecordLine(*table);
    EXPECT_EQ(table->CurrentLine, 2);
    NextRecordLine(*table);
    EXPECT_EQ(table->CurrentLine, 4);
    NextRecordLine(*table);
    EXPECT_EQ(table->CurrentLine, 5);
}

TEST(RecordTable, NextRecordLinePastTheLastRecordIsOnePastTheEnd) {
    auto table = SampleTable();
    table->CurrentLine = 5;
    NextRecordLine(*table);
    EXPECT_EQ(table->CurrentLine, 7);
    NextRecordLine(*table);
    EXPECT_EQ(table->CurrentLine, 7);
}

TEST(RecordTable, PrevRecordLineStepsBackOverLinesThatAreNotRecords) {
    auto table = SampleTable();
    table->CurrentLine = 7;
    PrevRecordLine(*table);
    EXPECT_EQ(table->CurrentLine, 5);
    PrevRecordLine(*table);
    EXPECT_EQ(table->CurrentLine, 4);
    PrevRecordLine(*table);
    EXPECT_EQ(table->CurrentLine, 2);
}

TEST(RecordTable, PrevRecordLineBeforeTheFirstRecordIsZero) {
    auto table = SampleTable();
    table->CurrentLine = 2;
    PrevRecordLine(*table);
    EXPECT_EQ(table->CurrentLine, 0);
    PrevRecordLine(*table);
    EXPECT_EQ(table->CurrentLine, 0);
}

TEST(RecordTable, NextRecordLineReachesLineOneThousandAndOneOnAFullTable) {
    auto table = std::make_unique<RecordTable>();
    table->LineCount = MaxLines;
    table->LineRecNo.Fill(-1);
    table->LineRecNo[MaxLines] = 1;
    table->CurrentLine = 1;
    NextRecordLine(*table);
    EXPECT_EQ(table->CurrentLine, MaxLines);
    NextRecordLine(*table);
    EXPECT_EQ(table->CurrentLine, MaxLines + 1);
}

} // namespace tv
