#include "ocr/ReadScanLines.h"
#include "linefind/FindPrintedLines.h"
#include "support/SamplePages.h"

#include <QImage>
#include <gtest/gtest.h>

#include <mutex>
#include <vector>

namespace tv::test {

namespace {

// The generated 1911 page decoded as grey, its lines found, and the first lines of its first
// column only: reading a whole page takes seconds.
struct Page {
    QImage Grey;
    GreyImage Image;
    PrintedLines Lines;
};

const Page& FirstLines(std::size_t count) {
    static Page page = [] {
        Page p;
        p.Grey = QImage(QString::fromStdString(SamplePage("births1911").Scan.string()))
                     .convertToFormat(QImage::Format_Grayscale8);
        p.Image.Width = p.Grey.width();
        p.Image.Height = p.Grey.height();
        p.Image.Stride = static_cast<int>(p.Grey.bytesPerLine());
        p.Image.Pixels = p.Grey.constBits();
        GreyRows rows;
        rows.Width = p.Grey.width();
        rows.Height = p.Grey.height();
        rows.Row = [&p](int y, uint8_t* out) {
            const uint8_t* line = p.Grey.constScanLine(y);
            std::copy(line, line + p.Grey.width(), out);
        };
        p.Lines = FindPrintedLines(rows, 2);
        return p;
    }();
    static Page cut;
    cut = page;
    cut.Image.Pixels = page.Grey.constBits();
    if (!cut.Lines.Columns.empty()) {
        cut.Lines.Columns.resize(1);
        auto& lines = cut.Lines.Columns[0].Lines;
        if (lines.size() > count) lines.resize(count);
    }
    return cut;
}

std::string Text(const ReadLine& line) {
    std::string text;
    for (const ReadWord& w : line.Words)
        text += (text.empty() ? "" : " ") + w.Text;
    return text;
}

TEST(ReadScanLines, ReadsTheWordsOfEachFoundLineInOrderWithBoxesAndConfidences) {
    const Page& page = FirstLines(8);
    ASSERT_EQ(page.Lines.Columns.size(), 1U);
    ReadOptions options;
    const ScanReading reading = ReadScanLines(page.Image, page.Lines, options);
    ASSERT_EQ(reading.Lines.size(), page.Lines.Columns[0].Lines.size());
    EXPECT_EQ(reading.ImageWidth, page.Image.Width);
    std::string all;
    for (std::size_t k = 0; k < reading.Lines.size(); ++k) {
        const ReadLine& line = reading.Lines[k];
        EXPECT_EQ(line.Column, 0);
        EXPECT_EQ(line.Index, static_cast<int>(k));
        const FoundLine& found = page.Lines.Columns[0].Lines[k];
        for (const ReadWord& w : line.Words) {
            EXPECT_LT(w.Left, w.Right);
            EXPECT_LT(w.Top, w.Bottom);
            // Each word lies on its line: above its baseline by less than a pitch.
            EXPECT_LT(w.Top, found.Y + 0.3 * page.Lines.Pitch);
            EXPECT_GT(w.Bottom, found.Y - page.Lines.Pitch);
            EXPECT_GE(w.Confidence, 0.0F);
            EXPECT_LE(w.Confidence, 100.0F);
        }
        all += Text(line) + "\n";
    }
    // The first entries of the page, as the generator typed them beside it.
    EXPECT_NE(all.find("PARDOE"), std::string::npos) << all;
    EXPECT_NE(all.find("Hampstead"), std::string::npos) << all;
    EXPECT_NE(all.find("Gladys"), std::string::npos) << all;
}

TEST(ReadScanLines, ReportsProgressUpToAHundredAndStopsWhenCancelled) {
    const Page& page = FirstLines(6);
    std::mutex lock;
    std::vector<int> seen;
    ReadOptions options;
    options.Progress = [&](int percent) {
        std::lock_guard<std::mutex> hold(lock);
        seen.push_back(percent);
    };
    const ScanReading whole = ReadScanLines(page.Image, page.Lines, options);
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.back(), 100);
    for (std::size_t k = 1; k < seen.size(); ++k)
        EXPECT_GT(seen[k], seen[k - 1]);

    std::atomic<bool> cancelled{true};
    options.Cancelled = &cancelled;
    options.Progress = nullptr;
    EXPECT_TRUE(ReadScanLines(page.Image, page.Lines, options).Lines.empty());

    cancelled = false;
    options.Threads = 1;
    options.Progress = [&](int) { cancelled = true; };
    const ScanReading cut = ReadScanLines(page.Image, page.Lines, options);
    EXPECT_EQ(cut.Lines.size(), 1U);
    EXPECT_EQ(whole.Lines.size(), page.Lines.Columns[0].Lines.size());
}

TEST(ReadScanLines, NoLinesNoReading) {
    const Page& page = FirstLines(2);
    EXPECT_TRUE(ReadScanLines(page.Image, PrintedLines{}, ReadOptions{}).Lines.empty());
}

} // namespace

} // namespace tv::test
