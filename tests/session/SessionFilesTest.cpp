// Files that come without the open-file dialog, dropped or named on the command line, taken as
// the scan or the transcription by their kind.
#include "session/SessionFiles.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

TEST(KindOfFile, EveryScanExtensionOfTheDialogIsAScan) {
    for (const char* name :
         {"1911B30123.jpg", "a.JPG", "a.jpe", "a.JPE", "a.jpeg", "a.JPEG", "a.gif", "a.GIF",
          "a.tif", "a.TIF", "a.tiff", "a.TiFf", "a.png", "a.PNG", "a.bmp", "a.BMP"})
        EXPECT_EQ(KindOfFile(name), FileKind::Image) << name;
}

TEST(KindOfFile, SCAQRLAndBMDAreTranscriptionsInCapitalsOrNot) {
    for (const char* name : {"1911B30123.QRL", "a.qrl", "a.SCA", "a.sca", "a.BMD", "a.bmd"})
        EXPECT_EQ(KindOfFile(name), FileKind::Transcription) << name;
}

TEST(KindOfFile, OtherExtensionsAndNoExtensionAreNeither) {
    for (const char* name : {"notes.txt", "report.pdf", "a.jpg.bak", "QRL", "a.", ".qrl", "",
                             "scan.jp2", "a.qrlx", "a.xqrl"})
        EXPECT_EQ(KindOfFile(name), std::nullopt) << name;
}

TEST(KindOfFile, OnlyTheBareNameCounts) {
    EXPECT_EQ(KindOfFile("/home/me/scans.qrl/page"), std::nullopt);
    EXPECT_EQ(KindOfFile("/home/me/v1.2/1911B30123.jpg"), FileKind::Image);
    EXPECT_EQ(KindOfFile("C:\\Index.jpg\\1911B30123.QRL"), FileKind::Transcription);
}

TEST(DroppedFiles, EachFileIsTakenByItsKindInAnyOrder) {
    EXPECT_EQ(DroppedFiles({"/d/p.QRL", "/d/p.jpg"}), (SessionFiles{"/d/p.jpg", "/d/p.QRL"}));
    EXPECT_EQ(DroppedFiles({"/d/p.jpg", "/d/p.QRL"}), (SessionFiles{"/d/p.jpg", "/d/p.QRL"}));
    EXPECT_EQ(DroppedFiles({"/d/p.tif"}), (SessionFiles{"/d/p.tif", ""}));
    EXPECT_EQ(DroppedFiles({"/d/p.sca"}), (SessionFiles{"", "/d/p.sca"}));
}

TEST(DroppedFiles, TheFirstOfAKindIsTakenAndFilesOfNoKnownKindAreLeftOut) {
    EXPECT_EQ(DroppedFiles({"/d/notes.txt", "/d/b.QRL", "/d/a.gif", "/d/a.QRL", "/d/b.png"}),
              (SessionFiles{"/d/a.gif", "/d/b.QRL"}));
    EXPECT_TRUE(DroppedFiles({"/d/notes.txt", "/d/report.pdf"}).Empty());
    EXPECT_TRUE(DroppedFiles({}).Empty());
}

TEST(CommandLineFiles, KnownKindsTakeTheirPlacesInAnyOrder) {
    EXPECT_EQ(CommandLineFiles({"p.QRL", "p.jpg"}), (SessionFiles{"p.jpg", "p.QRL"}));
    EXPECT_EQ(CommandLineFiles({"p.jpg"}), (SessionFiles{"p.jpg", ""}));
    EXPECT_EQ(CommandLineFiles({"p.BMD"}), (SessionFiles{"", "p.BMD"}));
    EXPECT_EQ(CommandLineFiles({}), SessionFiles{});
}

TEST(CommandLineFiles, FilesOfNoKnownKindTakeTheFreePlacesScanFirst) {
    EXPECT_EQ(CommandLineFiles({"page.jp2", "page.txt"}), (SessionFiles{"page.jp2", "page.txt"}));
    EXPECT_EQ(CommandLineFiles({"page.txt", "page.jpg"}), (SessionFiles{"page.jpg", "page.txt"}));
    EXPECT_EQ(CommandLineFiles({"page.QRL", "scan"}), (SessionFiles{"scan", "page.QRL"}));
    EXPECT_EQ(CommandLineFiles({"scan"}), (SessionFiles{"scan", ""}));
}

TEST(CommandLineFiles, FilesThatDoNotFitTheTwoPlacesAreRefused) {
    EXPECT_EQ(CommandLineFiles({"a.jpg", "b.jpg"}), std::nullopt);
    EXPECT_EQ(CommandLineFiles({"a.QRL", "b.SCA"}), std::nullopt);
    EXPECT_EQ(CommandLineFiles({"a.jpg", "a.QRL", "notes"}), std::nullopt);
    EXPECT_EQ(CommandLineFiles({"x", "y", "z"}), std::nullopt);
}

} // namespace
} // namespace tv
