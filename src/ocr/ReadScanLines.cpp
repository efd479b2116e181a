#include "ocr/ReadScanLines.h"

#include "core/Text.h"

#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <leptonica/allheaders.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <thread>

namespace tv {

namespace {

// The letters, digits and marks printed on index pages: names with their accents, districts,
// volumes in Roman or Arabic numerals with a letter, page numbers, and the dash, full stop,
// comma, apostrophe and brackets around them. Nothing else is ever printed there, and a narrow
// set keeps the reader from taking a speck for a symbol.
constexpr const char* Whitelist =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"
    " -.,'()&"
    "\xC3\x80\xC3\x81\xC3\x82\xC3\x84\xC3\x87\xC3\x88\xC3\x89\xC3\x8A\xC3\x8B\xC3\x8E\xC3\x8F"
    "\xC3\x94\xC3\x96\xC3\x99\xC3\x9B\xC3\x9C"
    "\xC3\xA0\xC3\xA1\xC3\xA2\xC3\xA4\xC3\xA7\xC3\xA8\xC3\xA9\xC3\xAA\xC3\xAB\xC3\xAE\xC3\xAF"
    "\xC3\xB4\xC3\xB6\xC3\xB9\xC3\xBB\xC3\xBC";

// The line pitch the reader gets: text of about 30 pixels a line reads as well as larger text
// and costs less.
constexpr double ReadPitch = 66.0;

// Where a line's text lies about its baseline, in pitches: capitals and ascenders above, the
// tails of g, p and y below, and no more of the neighbouring lines than can be helped.
constexpr double AboveBaseline = 0.80;
constexpr double BelowBaseline = 0.30;

struct LineTask {
    int Column = 0;
    int Index = 0;
    double Left = 0.0;                               // image x where the strip starts
    double Baseline = 0.0;                           // image y of the baseline at Left
    double Slope = 0.0;                              // dy/dx of the baseline
    double Width = 0.0;                              // image pixels along the line
    std::shared_ptr<const std::vector<double>> Bend; // the column's, a pitch at a time
};

uint8_t PixelAt(const GreyImage& scan, int x, int y) {
    if (x < 0 || y < 0 || x >= scan.Width || y >= scan.Height) return 255;
    return scan.Pixels[static_cast<std::ptrdiff_t>(y) * scan.Stride + x];
}

// How far a column's lines lie below the straight lines through their left ends, a pitch of
// width at a time from the left: a page bent towards the binding bends every line of a column
// alike. Each stretch's ink, summed across it row by row over the whole column, is a comb of
// lines; the comb of the next stretch is the same comb shifted by the bend between them, found
// where the two match best within less than half a pitch (so no line is taken for its
// neighbour). A stretch without ink (between fields) keeps the bend of the one before.
std::vector<double> ColumnBend(const GreyImage& scan, const FoundColumn& column, double left,
                               double top, double slope, double width, double pitch) {
    constexpr int Dark = 160;
    const int n = std::max(1, static_cast<int>(std::ceil(width / pitch)));
    std::vector<double> bend(static_cast<std::size_t>(n), 0.0);
    if (column.Lines.size() < 3) return bend;
    const double from = top - pitch;
    const int rows = static_cast<int>(column.Lines.back().Y - top + 2 * pitch);
    const int reach = static_cast<int>(0.45 * pitch);
    const int across = std::max(4, static_cast<int>(pitch / 3));
    std::vector<int> reference;
    int shiftOfReference = 0;
    int shift = 0;
    for (int b = 0; b < n; ++b) {
        std::vector<int> comb(static_cast<std::size_t>(rows), 0);
        long total = 0;
        for (int k = 0; k < across; ++k) {
            const double dx = (b + (k + 0.5) / across) * pitch;
            const int x = static_cast<int>(left + dx);
            const double y0 = from + dx * slope;
            for (int r = 0; r < rows; ++r) {
                const int dark = PixelAt(scan, x, static_cast<int>(y0) + r) < Dark ? 1 : 0;
                comb[static_cast<std::size_t>(r)] += dark;
                total += dark;
            }
        }
        // Too little ink to show the lines: a gap between fields.
        if (total < static_cast<long>(column.Lines.size()) * across / 4) {
            bend[static_cast<std::size_t>(b)] = shift;
            continue;
        }
        if (reference.empty()) {
            shift = 0;
        } else {
            long best = -1;
            int bestD = 0;
            for (int d = -reach; d <= reach; ++d) {
                long match = 0;
                for (int r = std::max(0, d); r < rows && r - d < rows; ++r)
                    match += static_cast<long>(comb[static_cast<std::size_t>(r)]) *
                             reference[static_cast<std::size_t>(r - d)];
                if (match > best) {
                    best = match;
                    bestD = d;
                }
            }
            shift = shiftOfReference + bestD;
        }
        reference = std::move(comb);
        shiftOfReference = shift;
        bend[static_cast<std::size_t>(b)] = shift;
    }
    return bend;
}

// The bend at dx along the line, between the middles of the stretches.
double BendAt(const std::vector<double>& bend, double dx, double pitch) {
    if (bend.empty()) return 0.0;
    const double at = dx / pitch - 0.5;
    if (at <= 0.0) return bend.front();
    const std::size_t k = static_cast<std::size_t>(at);
    if (k + 1 >= bend.size()) return bend.back();
    const double f = at - static_cast<double>(k);
    return bend[k] + f * (bend[k + 1] - bend[k]);
}

// The baselines' slope in a column: its lines all start at the column's left edge, so the left
// ends drift sideways as the page is turned (dX/dY = -tan of the angle).
double ColumnSlope(const FoundColumn& column) {
    const std::size_t n = column.Lines.size();
    if (n < 3) return 0.0;
    double sy = 0.0;
    double sx = 0.0;
    for (const FoundLine& l : column.Lines) {
        sy += l.Y;
        sx += l.X;
    }
    const double my = sy / static_cast<double>(n);
    const double mx = sx / static_cast<double>(n);
    double syy = 0.0;
    double sxy = 0.0;
    for (const FoundLine& l : column.Lines) {
        syy += (l.Y - my) * (l.Y - my);
        sxy += (l.Y - my) * (l.X - mx);
    }
    if (syy <= 0.0) return 0.0;
    const double slope = -sxy / syy;
    return std::clamp(slope, -0.06, 0.06); // beyond about 3.5 degrees the finder has turned it
}

std::vector<LineTask> Tasks(const GreyImage& scan, const PrintedLines& lines) {
    std::vector<LineTask> tasks;
    for (std::size_t c = 0; c < lines.Columns.size(); ++c) {
        const FoundColumn& column = lines.Columns[c];
        const double slope = ColumnSlope(column);
        if (column.Lines.empty()) continue;
        const double margin0 = 0.4 * lines.Pitch;
        const auto bend = std::make_shared<const std::vector<double>>(
            ColumnBend(scan, column, column.Lines.front().X - margin0,
                       column.Lines.front().Y - margin0 * slope, slope,
                       column.Right - column.Left + 1.2 * margin0, lines.Pitch));
        for (std::size_t i = 0; i < column.Lines.size(); ++i) {
            LineTask t;
            t.Column = static_cast<int>(c);
            t.Index = static_cast<int>(i);
            const double margin = 0.4 * lines.Pitch;
            t.Left = column.Lines[i].X - margin;
            t.Baseline = column.Lines[i].Y - margin * slope;
            t.Slope = slope;
            // On the right only a little: the next column starts close by.
            t.Width = column.Right - column.Left + 1.2 * margin;
            t.Bend = bend;
            tasks.push_back(t);
        }
    }
    return tasks;
}

// The strip of one line, straightened along its baseline and scaled to ReadPitch, as an 8-bit
// Leptonica image (bilinear sampling; white outside the scan).
Pix* Strip(const GreyImage& scan, const LineTask& t, double pitch, double& scale) {
    scale = ReadPitch / pitch;
    const double step = 1.0 / scale;
    const int w = std::max(8, static_cast<int>(t.Width * scale));
    const int h = std::max(8, static_cast<int>((AboveBaseline + BelowBaseline) * pitch * scale));
    Pix* pix = pixCreate(w, h, 8);
    const l_int32 wpl = pixGetWpl(pix);
    l_uint32* data = pixGetData(pix);
    const double top = -AboveBaseline * pitch;
    for (int v = 0; v < h; ++v) {
        l_uint32* row = data + static_cast<std::ptrdiff_t>(v) * wpl;
        for (int u = 0; u < w; ++u) {
            const double dx = u * step;
            const double x = t.Left + dx;
            const double y =
                t.Baseline + dx * t.Slope + BendAt(*t.Bend, dx, pitch) + top + v * step;
            const int x0 = static_cast<int>(std::floor(x));
            const int y0 = static_cast<int>(std::floor(y));
            int value = 255;
            if (x0 >= 0 && y0 >= 0 && x0 + 1 < scan.Width && y0 + 1 < scan.Height) {
                const double fx = x - x0;
                const double fy = y - y0;
                const uint8_t* p = scan.Pixels + static_cast<std::ptrdiff_t>(y0) * scan.Stride + x0;
                const uint8_t* q = p + scan.Stride;
                const double a = p[0] + fx * (p[1] - p[0]);
                const double b = q[0] + fx * (q[1] - q[0]);
                value = static_cast<int>(a + fy * (b - a) + 0.5);
            }
            SET_DATA_BYTE(row, u, value);
        }
    }
    return pix;
}

std::unique_ptr<tesseract::TessBaseAPI> StartReader() {
    auto api = std::make_unique<tesseract::TessBaseAPI>();
    // Names and districts are not dictionary words: the word lists would only pull a reading
    // towards English.
    const char* names[] = {"load_system_dawg", "load_freq_dawg"};
    const char* values[] = {"0", "0"};
    std::vector<std::string> nameList(names, names + 2);
    std::vector<std::string> valueList(values, values + 2);
    if (api->Init(nullptr, "eng", tesseract::OEM_LSTM_ONLY, nullptr, 0, &nameList, &valueList,
                  false) != 0)
        return nullptr;
    api->SetPageSegMode(tesseract::PSM_SINGLE_LINE);
    api->SetVariable("tessedit_char_whitelist", Whitelist);
    api->SetVariable("user_defined_dpi", "300");
    api->SetVariable("tessedit_do_invert", "0");
    api->SetVariable("debug_file", "/dev/null");
    return api;
}

// Whether the paper of the scan is grainy: the mean step between neighbouring pixels of paper
// (light pixels), over a sparse grid. A clean scan's paper steps by a few grey levels; a worn
// one's by a dozen or more, and the reader then takes the grain for marks unless the strip is
// smoothed first (which on clean print only blurs it).
bool Grainy(const GreyImage& scan) {
    constexpr int Paper = 170;
    long steps = 0;
    long count = 0;
    const int every = std::max(3, std::min(scan.Width, scan.Height) / 200);
    for (int y = every; y + 1 < scan.Height; y += every)
        for (int x = every; x + 1 < scan.Width; x += every) {
            const int a = PixelAt(scan, x, y);
            const int b = PixelAt(scan, x + 1, y);
            if (a < Paper || b < Paper) continue;
            steps += std::abs(a - b);
            ++count;
        }
    return count > 0 && 10 * steps > 90 * count; // a mean step above 9 grey levels
}

// The words the reader reads in the part of the strip set (the whole strip, or a rectangle of
// it), in strip pixels, with its confidence in each.
struct StripWord {
    std::string Text; // Windows-1252
    int Left = 0;
    int Top = 0;
    int Right = 0;
    int Bottom = 0;
    float Confidence = 0.0F;
};

std::vector<StripWord> Words(tesseract::TessBaseAPI& api) {
    std::vector<StripWord> words;
    if (api.Recognize(nullptr) != 0) return words;
    std::unique_ptr<tesseract::ResultIterator> it(api.GetIterator());
    if (!it) return words;
    do {
        std::unique_ptr<char[]> text(it->GetUTF8Text(tesseract::RIL_WORD));
        if (!text) continue;
        StripWord word;
        word.Text = Utf8ToCp1252(text.get());
        it->BoundingBox(tesseract::RIL_WORD, &word.Left, &word.Top, &word.Right, &word.Bottom);
        word.Confidence = it->Confidence(tesseract::RIL_WORD);
        if (!word.Text.empty()) words.push_back(std::move(word));
    } while (it->Next(tesseract::RIL_WORD));
    return words;
}

// A word read with less confidence than this is read again on its own, with a little of the
// paper around it: read with its neighbours, a short reference (1d, 9c 155) often comes out
// joined to the next or doubted, where alone it reads plainly. Not on a grainy scan: there the
// doubt is the faded print's, and a surer second reading is as often a wrong one (10d as 16d).
constexpr float ReadAgainBelow = 75.0F;

// At most this many words of a line are read again, the least sure first: on a dusty scan a
// line of specks would otherwise be read word by word.
constexpr std::size_t MostReadAgain = 2;

// The words of a line worth reading again: doubted, with a letter or a digit and more than one
// character (a speck reads as a full stop, a dash or a lone letter).
std::vector<bool> ToReadAgain(const std::vector<StripWord>& words) {
    std::vector<std::size_t> doubted;
    for (std::size_t k = 0; k < words.size(); ++k) {
        const std::string& text = words[k].Text;
        const bool letters = std::any_of(text.begin(), text.end(), [](char c) {
            return std::isalnum(static_cast<unsigned char>(c)) != 0;
        });
        if (words[k].Confidence < ReadAgainBelow && letters && text.size() > 1)
            doubted.push_back(k);
    }
    std::stable_sort(doubted.begin(), doubted.end(), [&words](std::size_t a, std::size_t b) {
        return words[a].Confidence < words[b].Confidence;
    });
    std::vector<bool> again(words.size(), false);
    for (std::size_t k = 0; k < doubted.size() && k < MostReadAgain; ++k)
        again[doubted[k]] = true;
    return again;
}

float LeastConfidence(const std::vector<StripWord>& words) {
    float least = 100.0F;
    for (const StripWord& w : words)
        least = std::min(least, w.Confidence);
    return words.empty() ? 0.0F : least;
}

ReadLine ReadOne(tesseract::TessBaseAPI& api, const GreyImage& scan, const LineTask& t,
                 double pitch, bool grainy) {
    double scale = 1.0;
    Pix* pix = Strip(scan, t, pitch, scale);
    if (grainy) {
        Pix* smooth = pixBlockconv(pix, 1, 1); // the mean of each 3 x 3
        pixDestroy(&pix);
        pix = smooth;
    }
    api.SetImage(pix);
    ReadLine line;
    line.Column = t.Column;
    line.Index = t.Index;
    std::vector<StripWord> words = Words(api);
    const int stripWidth = static_cast<int>(pixGetWidth(pix));
    const int stripHeight = static_cast<int>(pixGetHeight(pix));
    const int margin = static_cast<int>(0.25 * ReadPitch);
    std::vector<bool> readAgain =
        grainy ? std::vector<bool>(words.size(), false) : ToReadAgain(words);
    for (std::size_t k = 0; k < words.size(); ++k) {
        if (!readAgain[k]) continue;
        // Up to the neighbours' edges, not into them.
        const int from = std::max({0, words[k].Left - margin, k > 0 ? words[k - 1].Right + 1 : 0});
        const int to = std::min({stripWidth, words[k].Right + margin,
                                 k + 1 < words.size() ? words[k + 1].Left - 1 : stripWidth});
        if (to - from < 4) continue;
        api.SetRectangle(from, 0, to - from, stripHeight);
        std::vector<StripWord> again = Words(api);
        // Taken only when surer and with no letter fewer: alone, a small letter at the end of
        // a word (the c of 8c) is sometimes left out.
        std::size_t letters = 0;
        for (const StripWord& w : again)
            letters += w.Text.size();
        if (again.empty() || LeastConfidence(again) <= words[k].Confidence ||
            letters < words[k].Text.size())
            continue;
        // (The reader gives the boxes in the strip's pixels, not the rectangle's.)
        words.erase(words.begin() + static_cast<std::ptrdiff_t>(k));
        words.insert(words.begin() + static_cast<std::ptrdiff_t>(k), again.begin(), again.end());
        readAgain.insert(readAgain.begin() + static_cast<std::ptrdiff_t>(k), again.size() - 1,
                         false);
        k += again.size() - 1;
    }
    for (const StripWord& w : words) {
        ReadWord word;
        word.Text = w.Text;
        const double top = -AboveBaseline * pitch;
        word.Left = t.Left + w.Left / scale;
        word.Right = t.Left + w.Right / scale;
        const double lineTop =
            t.Baseline + (w.Left / scale) * t.Slope + BendAt(*t.Bend, w.Left / scale, pitch) + top;
        word.Top = lineTop + w.Top / scale;
        word.Bottom = lineTop + w.Bottom / scale;
        word.Confidence = w.Confidence;
        line.Words.push_back(std::move(word));
    }
    api.Clear();
    pixDestroy(&pix);
    return line;
}

} // namespace

ScanReading ReadScanLines(const GreyImage& scan, const PrintedLines& lines,
                          const ReadOptions& options) {
    ScanReading reading;
    reading.ImageWidth = scan.Width;
    reading.ImageHeight = scan.Height;
    if (lines.Empty() || scan.Pixels == nullptr) return reading;
    const std::vector<LineTask> tasks = Tasks(scan, lines);
    const bool grainy = Grainy(scan);
    reading.Grainy = grainy;
    std::vector<ReadLine> read(tasks.size());
    std::vector<char> done(tasks.size(), 0);
    std::atomic<std::size_t> next{0};
    std::atomic<std::size_t> finished{0};
    std::mutex progressLock;
    int lastPercent = -1;
    auto work = [&] {
        std::unique_ptr<tesseract::TessBaseAPI> api = StartReader();
        if (!api) return;
        for (;;) {
            if (options.Cancelled && options.Cancelled->load()) break;
            const std::size_t k = next.fetch_add(1);
            if (k >= tasks.size()) break;
            read[k] = ReadOne(*api, scan, tasks[k], lines.Pitch, grainy);
            done[k] = 1;
            const std::size_t count = finished.fetch_add(1) + 1;
            if (options.Progress) {
                const int percent = static_cast<int>(100 * count / tasks.size());
                std::lock_guard<std::mutex> hold(progressLock);
                if (percent != lastPercent) {
                    lastPercent = percent;
                    options.Progress(percent);
                }
            }
        }
        api->End();
    };
    const int threads = std::clamp(options.Threads, 1, 16);
    std::vector<std::thread> pool;
    for (int i = 1; i < threads; ++i)
        pool.emplace_back(work);
    work();
    for (std::thread& t : pool)
        t.join();
    for (std::size_t k = 0; k < tasks.size(); ++k)
        if (done[k]) reading.Lines.push_back(std::move(read[k]));
    return reading;
}

int ReadWholePage(const GreyImage& scan) {
    tesseract::TessBaseAPI api;
    if (api.Init(nullptr, "eng", tesseract::OEM_LSTM_ONLY) != 0) return -1;
    api.SetPageSegMode(tesseract::PSM_AUTO);
    api.SetVariable("debug_file", "/dev/null");
    api.SetImage(scan.Pixels, scan.Width, scan.Height, 1, scan.Stride);
    api.SetSourceResolution(300);
    int words = 0;
    if (api.Recognize(nullptr) == 0) {
        std::unique_ptr<tesseract::ResultIterator> it(api.GetIterator());
        if (it) do
                ++words;
            while (it->Next(tesseract::RIL_WORD));
    }
    api.End();
    return words;
}

} // namespace tv
