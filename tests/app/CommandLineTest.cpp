// The command line as Qt programs read it: --help, --version, the files to open, --check
// anywhere and values joined to their options by "=".
#include "support/Process.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tv::test {
namespace {

constexpr const char* Usage =
    "Usage: tallyview [OPTIONS] [SCAN] [TRANSCRIPTION]\n"
    "Usage: tallyview --check [--scan IMAGE] [--all-records] [--answer yes|no] "
    "[--print-to FILE.pdf] FILE...\n"
    "Try 'tallyview --help' for more information.\n";

constexpr const char* VersionText = "tallyview 1.0.0\n"
                                    "Released 2026-11-21.\n"
                                    "Copyright (C) 2026 the Tallyview developers.\n"
                                    "License MIT (Expat): <https://opensource.org/licenses/MIT>.\n"
                                    "This is free software: you are free to change and "
                                    "redistribute it.\n"
                                    "There is NO WARRANTY, to the extent permitted by law.\n";

TEST(CommandLine, VersionPrintsTheProgramItsVersionReleaseCopyrightAndLicence) {
    for (const char* option : {"--version", "-v"}) {
        ProcessResult r = RunTallyview({option});
        EXPECT_EQ(r.Status, 0);
        EXPECT_EQ(r.Out, VersionText);
        EXPECT_EQ(r.Err, "");
    }
}

TEST(CommandLine, HelpListsTheOptionsOfBothUsesWithoutADisplay) {
    for (const char* option : {"--help", "-h"}) {
        ProcessResult r = RunTallyview({option});
        EXPECT_EQ(r.Status, 0);
        EXPECT_EQ(r.Err, "");
        EXPECT_TRUE(r.Out.starts_with("Usage: tallyview [OPTIONS] [FILE...]\n")) << r.Out;
        for (const char* listed : {"-h, --help", "-v, --version", "--check", "--scan <IMAGE>",
                                   "--all-records", "--answer <yes|no>", "--print-to <FILE.pdf>",
                                   "64 for a wrong command line", "(QRL, SCA, BMD)"})
            EXPECT_NE(r.Out.find(listed), std::string::npos) << listed;
    }
}

TEST(CommandLine, QtsOwnOptionsAreTakenWithOneDash) {
    ProcessResult r = RunTallyview({"-platform", "offscreen", "-reverse", "--version"});
    EXPECT_EQ(r.Status, 0);
    EXPECT_EQ(r.Out, VersionText);
}

TEST(CommandLine, AnUnknownOptionGivesItsNameBothUsagesAndTheHelpHint) {
    ProcessResult r = RunTallyview({"--nonsense"});
    EXPECT_EQ(r.Status, 64);
    EXPECT_EQ(r.Out, "");
    EXPECT_EQ(r.Err, std::string("tallyview: unrecognized option '--nonsense'\n") + Usage);
    r = RunTallyview({"-x", "a.QRL"});
    EXPECT_EQ(r.Err, std::string("tallyview: unrecognized option '-x'\n") + Usage);
}

// Whichever of the two parsers reads it, an unknown option is told in the same words, and the
// last line points to --help.
TEST(CommandLine, AnUnknownOptionIsToldAlikeWithAndWithoutCheck) {
    ProcessResult windowed = RunTallyview({"--bogus=1", "a.QRL"});
    ProcessResult check = RunTallyview({"--check", "--bogus=1", "a.QRL"});
    EXPECT_EQ(windowed.Status, 64);
    EXPECT_EQ(check.Status, 64);
    const auto firstLine = [](const std::string& text) { return text.substr(0, text.find('\n')); };
    EXPECT_EQ(firstLine(windowed.Err), "tallyview: unrecognized option '--bogus=1'");
    EXPECT_EQ(firstLine(check.Err), firstLine(windowed.Err));
    for (const std::string& err : {windowed.Err, check.Err})
        EXPECT_TRUE(err.ends_with("\nTry 'tallyview --help' for more information.\n")) << err;
}

TEST(CommandLine, MoreFilesThanAScanAndATranscriptionAreRefused) {
    for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
             {"a.jpg", "b.jpg"}, {"a.QRL", "b.SCA"}, {"a.jpg", "a.QRL", "notes.txt"}}) {
        ProcessResult r = RunTallyview(args);
        EXPECT_EQ(r.Status, 64);
        EXPECT_EQ(r.Err,
                  std::string("tallyview: give at most one scan and one transcription\n") + Usage);
    }
}

TEST(CommandLine, CheckOptionsWithoutCheckAreRefused) {
    ProcessResult r = RunTallyview({"--print-to", "r.pdf", "a.QRL"});
    EXPECT_EQ(r.Status, 64);
    EXPECT_EQ(r.Err, std::string("tallyview: --print-to is an option of --check\n") + Usage);
}

TEST(CommandLine, CheckMayStandAfterItsOptions) {
    const std::string path = DataFile("check/findings.QRL");
    ProcessResult first = RunTallyview({"--check", "--answer", "no", path});
    ProcessResult later = RunTallyview({"--answer", "no", path, "--check"});
    EXPECT_EQ(later.Status, 1);
    EXPECT_EQ(later.Err, first.Err);
    EXPECT_NE(later.Out.find("Tallyview Report for Deaths 1872 Qtr 1 Page 42"), std::string::npos);
}

TEST(CommandLine, CheckAfterTheEndOfTheOptionsIsAFileName) {
    // A third file: the windowed program refuses it, so "--check" was taken for a file.
    ProcessResult r = RunTallyview({"--", "--check", "a.jpg", "a.QRL"});
    EXPECT_EQ(r.Status, 64);
    EXPECT_EQ(r.Err,
              std::string("tallyview: give at most one scan and one transcription\n") + Usage);
}

TEST(CommandLine, ValuesMayBeJoinedToTheirOptions) {
    TempDir dir;
    const std::string pdf = (dir.Path() / "joined.pdf").string();
    ProcessResult r = RunTallyview({"--check", "--scan=1911B20123.jpg", "--answer=no",
                                    "--print-to=" + pdf, DataFile("check/clean.QRL")});
    EXPECT_EQ(r.Status, 1);
    EXPECT_NE(r.Err.find("Quarter in graphics file name appears to be inconsistent"),
              std::string::npos);
    EXPECT_NE(r.Out.find("    Graphics file: 1911B20123.jpg"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(pdf));
}

TEST(CommandLine, AJoinedValueOnAnOptionWithoutOneIsUnknown) {
    ProcessResult r = RunTallyview({"--check", "--all-records=yes", DataFile("check/clean.QRL")});
    EXPECT_EQ(r.Status, 64);
    EXPECT_EQ(r.Err.substr(0, r.Err.find('\n')),
              "tallyview: option '--all-records' doesn't allow an argument");
}

} // namespace
} // namespace tv::test
