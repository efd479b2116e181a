#pragma once
// A transcription file written to a temporary folder and read into a record table, with the
// prompts scripted and recorded.
#include "core/Text.h"
#include "support/FakePrompts.h"
#include "support/TestFiles.h"
#include "transcription/ReadTranscription.h"

#include <gtest/gtest.h>

#include <string>

namespace tv::test {

class ReaderTest : public ::testing::Test {
  protected:
    // Writes bytes to name, reads it and returns the file name as the reader left it.
    std::string Read(const std::string& bytes, const std::string& name = "1911B30123.SCA") {
        std::string path = Dir.Write(name, bytes);
        return ReadPath(path);
    }

    std::string ReadPath(std::string path) {
        ReaderContext context{Table, Scan, ColumnTops, GraphicsFile, Ask};
        Caption = ReadTranscription(path, context);
        return path;
    }

    std::string PathOf(const std::string& name) const { return (Dir.Path() / name).string(); }

    TempDir Dir;
    RecordTable Table;
    ScanType Scan;
    ColumnTopLines ColumnTops;
    std::string GraphicsFile;
    FakePrompts Ask;
    std::string Caption;
};

// The three "Suspect file " warnings' reasons.
inline constexpr const char* NoRecordsReason =
    "Could not find any transcribed birth, marriage or death entries in the file";
inline constexpr const char* NoHeaderReason =
    "Could not find any +INFO/S/F/M/B/U/PAGE header lines in the file";
inline constexpr const char* LongLinesReason = "One or more very long lines in the file";

inline std::string SuspectText(const std::string& path, const std::string& reason) {
    return "Suspect file " + path + "\r" + reason + "\r\rClick OK to carry on or CANCEL to quit";
}

// A births header for 1911 Sep quarter, as the transcription programs write it.
inline std::string BirthsHeader1911() {
    return "+INFO,someone@example.org,password,SEQ,BIRTHS,cp1252\r\n"
           "+S,1911,Sep,,\r\n";
}

} // namespace tv::test
