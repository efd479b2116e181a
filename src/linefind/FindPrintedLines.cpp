#include "linefind/FindPrintedLines.h"

#include <leptonica/allheaders.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>
#include <vector>

namespace tv {

namespace {

struct PixFree {
    void operator()(PIX* pix) const { pixDestroy(&pix); }
};
using PixPtr = std::unique_ptr<PIX, PixFree>;

struct NumaFree {
    void operator()(NUMA* numa) const { numaDestroy(&numa); }
};
using NumaPtr = std::unique_ptr<NUMA, NumaFree>;

// The reduced page is about this many pixels on its longer side: the lines of a large scan are
// found as well on a quarter of its pixels, in a sixteenth of the time and memory.
constexpr double ReducedSide = 2000.0;

bool Cancelled(const std::atomic<bool>* cancelled) {
    return cancelled != nullptr && cancelled->load(std::memory_order_relaxed);
}

// The scan averaged over factor x factor blocks, built a band of rows at a time so that no copy
// of the whole scan at full size is made.
PixPtr ReducedGrey(const GreyRows& scan, int factor, const std::atomic<bool>* cancelled) {
    const int width = scan.Width / factor;
    const int height = scan.Height / factor;
    PixPtr pix(pixCreate(width, height, 8));
    if (!pix) return nullptr;
    std::vector<uint8_t> row(static_cast<size_t>(scan.Width));
    std::vector<uint32_t> sums(static_cast<size_t>(width));
    const uint32_t area = static_cast<uint32_t>(factor * factor);
    l_uint32* data = pixGetData(pix.get());
    const int wpl = pixGetWpl(pix.get());
    for (int y = 0; y < height; ++y) {
        if (y % 64 == 0 && Cancelled(cancelled)) return nullptr;
        std::fill(sums.begin(), sums.end(), 0U);
        for (int k = 0; k < factor; ++k) {
            scan.Row(y * factor + k, row.data());
            for (int x = 0; x < width; ++x)
                for (int j = 0; j < factor; ++j)
                    sums[static_cast<size_t>(x)] += row[static_cast<size_t>(x * factor + j)];
        }
        l_uint32* line = data + static_cast<ptrdiff_t>(y) * wpl;
        for (int x = 0; x < width; ++x)
            SET_DATA_BYTE(line, x, sums[static_cast<size_t>(x)] / area);
    }
    return pix;
}

std::vector<double> Values(NUMA* numa) {
    std::vector<double> values(static_cast<size_t>(numaGetCount(numa)));
    for (size_t i = 0; i < values.size(); ++i) {
        l_float32 v = 0;
        numaGetFValue(numa, static_cast<l_int32>(i), &v);
        values[i] = v;
    }
    return values;
}

double Percentile(std::vector<double> values, double fraction) {
    if (values.empty()) return 0.0;
    const size_t at = std::min(values.size() - 1, static_cast<size_t>(fraction * values.size()));
    std::nth_element(values.begin(), values.begin() + static_cast<ptrdiff_t>(at), values.end());
    return values[at];
}

double MiddleMean(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const size_t from = values.size() / 4;
    const size_t to = values.size() - values.size() / 4;
    double sum = 0.0;
    for (size_t i = from; i < to; ++i)
        sum += values[i];
    return to > from ? sum / static_cast<double>(to - from) : 0.0;
}

std::vector<double> Smoothed(const std::vector<double>& values) {
    std::vector<double> out(values.size());
    for (size_t i = 0; i < values.size(); ++i) {
        const double before = i > 0 ? values[i - 1] : values[i];
        const double after = i + 1 < values.size() ? values[i + 1] : values[i];
        out[i] = (before + 2.0 * values[i] + after) / 4.0;
    }
    return out;
}

struct Span {
    int Left = 0;
    int Right = 0; // exclusive
};

// The gap nearest expected, a wide gap preferred to a narrow one as near; nothing within reach.
const Span* GapNear(const std::vector<Span>& gaps, double expected, double reach, int minimum,
                    double widthWeight) {
    const Span* best = nullptr;
    double bestScore = 0.0;
    for (const Span& gap : gaps) {
        const int width = gap.Right - gap.Left;
        const double distance = std::abs(0.5 * (gap.Left + gap.Right) - expected);
        if (width < minimum || distance > reach) continue;
        const double score = distance - widthWeight * width;
        if (best == nullptr || score < bestScore) {
            best = &gap;
            bestScore = score;
        }
    }
    return best;
}

// The columns of a printed page are of one width: each split is the gap nearest where equal
// columns would part. Two facing pages of an even number of columns part first at the gutter,
// the widest gap near the middle, and then each page into its own columns.
void ChooseSplits(const std::vector<Span>& gaps, int left, int right, int columns, int minimum,
                  std::vector<Span>& chosen) {
    if (columns <= 1) return;
    const double width = right - left;
    if (columns >= 4 && columns % 2 == 0) {
        const Span* gutter = GapNear(gaps, left + width / 2, 0.2 * width, minimum, 4.0);
        if (gutter != nullptr) {
            chosen.push_back(*gutter);
            ChooseSplits(gaps, left, gutter->Left, columns / 2, minimum, chosen);
            ChooseSplits(gaps, gutter->Right, right, columns / 2, minimum, chosen);
            return;
        }
    }
    const double pitch = width / columns;
    for (int k = 1; k < columns; ++k) {
        const Span* split = GapNear(gaps, left + k * pitch, 0.3 * pitch, minimum, 1.0);
        if (split != nullptr &&
            std::none_of(chosen.begin(), chosen.end(),
                         [split](const Span& gap) { return gap.Left == split->Left; }))
            chosen.push_back(*split);
    }
}

// The columns: the stretches of ink between the gaps of the vertical projection where the
// columns part.
std::vector<Span> SplitColumns(const std::vector<double>& ink, int columnsAcross) {
    const double threshold = 0.06 * Percentile(ink, 0.9);
    const int n = static_cast<int>(ink.size());
    int first = 0;
    while (first < n && ink[static_cast<size_t>(first)] <= threshold)
        ++first;
    int last = n - 1;
    while (last > first && ink[static_cast<size_t>(last)] <= threshold)
        --last;
    if (first >= last) return {};
    std::vector<Span> gaps;
    for (int x = first; x <= last;) {
        if (ink[static_cast<size_t>(x)] > threshold) {
            ++x;
            continue;
        }
        const int start = x;
        while (x <= last && ink[static_cast<size_t>(x)] <= threshold)
            ++x;
        // A speck left in the white (a pixel or two across) does not part it.
        if (!gaps.empty() && start - gaps.back().Right <= 2)
            gaps.back().Right = x;
        else
            gaps.push_back({start, x});
    }
    // A sliver of ink at either side beyond a wide gap is the sheet's edge or the dark surround
    // a slanted photograph uncovers in its corners, not a column.
    const int sliver = std::max(3, n / 100);
    if (!gaps.empty() && gaps.back().Right - gaps.back().Left >= n / 50 &&
        last + 1 - gaps.back().Right < sliver) {
        last = gaps.back().Left - 1;
        gaps.pop_back();
    }
    if (!gaps.empty() && gaps.front().Right - gaps.front().Left >= n / 50 &&
        gaps.front().Left - first < sliver) {
        first = gaps.front().Right;
        gaps.erase(gaps.begin());
    }
    std::vector<Span> chosen;
    if (columnsAcross == 0) {
        for (const Span& gap : gaps)
            if (gap.Right - gap.Left >= n / 50) chosen.push_back(gap);
    } else {
        ChooseSplits(gaps, first, last + 1, columnsAcross, 3, chosen);
        std::sort(chosen.begin(), chosen.end(),
                  [](const Span& a, const Span& b) { return a.Left < b.Left; });
    }
    std::vector<Span> columns;
    int left = first;
    for (const Span& gap : chosen) {
        columns.push_back({left, gap.Left});
        left = gap.Right;
    }
    columns.push_back({left, last + 1});
    return columns;
}

// The columns of a page are printed of one width: the widest found against the narrowest.
double Uneven(const std::vector<Span>& spans) {
    int narrowest = 0;
    int widest = 0;
    for (const Span& span : spans) {
        const int width = span.Right - span.Left;
        narrowest = narrowest == 0 ? width : std::min(narrowest, width);
        widest = std::max(widest, width);
    }
    return narrowest > 0 ? static_cast<double>(widest) / narrowest : 1.0;
}

// The spacing of the printed lines: the shift at which the row projection best matches itself.
double LinePitch(const std::vector<double>& rows) {
    const int n = static_cast<int>(rows.size());
    if (n < 40) return 0.0;
    const double mean = std::accumulate(rows.begin(), rows.end(), 0.0) / n;
    std::vector<double> centred(rows.size());
    for (size_t i = 0; i < rows.size(); ++i)
        centred[i] = rows[i] - mean;
    const int longest = std::min(200, n / 4);
    std::vector<double> score(static_cast<size_t>(longest + 1), 0.0);
    for (int lag = 4; lag <= longest; ++lag) {
        double sum = 0.0;
        for (int i = 0; i + lag < n; ++i)
            sum += centred[static_cast<size_t>(i)] * centred[static_cast<size_t>(i + lag)];
        score[static_cast<size_t>(lag)] = sum / (n - lag);
    }
    const double best = *std::max_element(score.begin(), score.end());
    if (best <= 0.0) return 0.0;
    // The first shift that scores near the best is one line; its multiples score as well.
    for (int lag = 5; lag < longest; ++lag) {
        const double s = score[static_cast<size_t>(lag)];
        if (s >= 0.7 * best && s >= score[static_cast<size_t>(lag - 1)] &&
            s >= score[static_cast<size_t>(lag + 1)]) {
            // A parabola through the peak and its neighbours places it between whole shifts.
            const double a = score[static_cast<size_t>(lag - 1)];
            const double c = score[static_cast<size_t>(lag + 1)];
            const double denominator = a - 2.0 * s + c;
            const double offset = denominator != 0.0 ? 0.5 * (a - c) / denominator : 0.0;
            return lag + std::clamp(offset, -0.5, 0.5);
        }
    }
    return 0.0;
}

// The baselines of one slice's row projection: where the ink drops most sharply at the foot of
// a band of text, one per line (the foot of the descenders drops less and lies within the line).
// A thin rule, with no band of ink above its foot, is not a line of text.
std::vector<double> Baselines(const std::vector<double>& counts, double pitch) {
    const std::vector<double> rows = Smoothed(counts);
    const int n = static_cast<int>(rows.size());
    std::vector<double> drop(rows.size(), 0.0);
    for (int y = 0; y + 1 < n; ++y)
        drop[static_cast<size_t>(y)] =
            std::max(0.0, rows[static_cast<size_t>(y)] - rows[static_cast<size_t>(y + 1)]);
    // A drop counts against the usual drop at a line's foot, not the largest: a bold title or a
    // heading would hide the lines of a short slice.
    std::vector<double> peaks;
    for (int y = 1; y + 1 < n; ++y) {
        const double d = drop[static_cast<size_t>(y)];
        if (d > 0.0 && d >= drop[static_cast<size_t>(y - 1)] &&
            d >= drop[static_cast<size_t>(y + 1)])
            peaks.push_back(d);
    }
    const double strongest = Percentile(peaks, 0.75);
    if (strongest <= 0.0) return {};
    const int window = std::max(2, static_cast<int>(0.4 * pitch));
    const int band = std::max(2, static_cast<int>(std::lround(0.15 * pitch)));
    std::vector<double> found;
    for (int y = band; y + 1 < n; ++y) {
        const double d = drop[static_cast<size_t>(y)];
        if (d < 0.25 * strongest) continue;
        bool peak = true;
        for (int k = std::max(0, y - window); k <= std::min(n - 1, y + window) && peak; ++k)
            if (drop[static_cast<size_t>(k)] > d || (drop[static_cast<size_t>(k)] == d && k < y))
                peak = false;
        if (!peak) continue;
        if (counts[static_cast<size_t>(y - band)] < 0.25 * counts[static_cast<size_t>(y)]) continue;
        found.push_back(y + 1.0);
    }
    return found;
}

// A printed line bends or slants by several degrees at most, even near the binding.
double Slope(double dy, double dx) {
    constexpr double Steepest = 0.08;
    return std::clamp(dy / dx, -Steepest, Steepest);
}

struct Chain {
    std::vector<double> X;
    std::vector<double> Y;
    std::vector<int> Slice;
    int LastSlice = 0;
};

// Links the baselines of neighbouring slices that continue one another into lines.
std::vector<Chain> LinkSlices(const std::vector<std::vector<double>>& slices,
                              const std::vector<double>& centres, double pitch) {
    std::vector<Chain> chains;
    for (size_t s = 0; s < slices.size(); ++s) {
        std::vector<bool> taken(chains.size(), false);
        for (double y : slices[s]) {
            int best = -1;
            double bestDistance = 0.35 * pitch;
            for (size_t c = 0; c < chains.size(); ++c) {
                const Chain& chain = chains[c];
                if (taken[c] || static_cast<int>(s) - chain.LastSlice > 2) continue;
                double predicted = chain.Y.back();
                if (chain.Y.size() >= 2) {
                    const size_t k = chain.Y.size() - 1;
                    predicted += Slope(chain.Y[k] - chain.Y[k - 1], chain.X[k] - chain.X[k - 1]) *
                                 (centres[s] - chain.X[k]);
                }
                const double distance = std::abs(predicted - y);
                if (distance < bestDistance) {
                    bestDistance = distance;
                    best = static_cast<int>(c);
                }
            }
            if (best < 0) {
                chains.push_back({{centres[s]}, {y}, {static_cast<int>(s)}, static_cast<int>(s)});
                taken.push_back(true);
                continue;
            }
            Chain& chain = chains[static_cast<size_t>(best)];
            chain.X.push_back(centres[s]);
            chain.Y.push_back(y);
            chain.Slice.push_back(static_cast<int>(s));
            chain.LastSlice = static_cast<int>(s);
            taken[static_cast<size_t>(best)] = true;
        }
    }
    return chains;
}

// A line's height at the column's left edge: the middle of its points, each taken back by the
// column's bend in its slice.
double HeightAt(const Chain& chain, const std::vector<double>& bend) {
    std::vector<double> heights;
    for (size_t k = 0; k < chain.Y.size(); ++k)
        heights.push_back(chain.Y[k] - bend[static_cast<size_t>(chain.Slice[k])]);
    return Percentile(heights, 0.5);
}

// How far the lines of a column rise or sink in each slice against the column's left edge: the
// bend of a page curved towards the binding, or what is left of its skew, is the same for every
// line of a column, so it is measured on all of them at once. A line's height is the middle of
// its points taken back by the bend, and the bend of a slice the mean of the middle half of its
// points' heights above their lines' (so that a dash or a low mark does not count, while the
// heights of whole pixels still average to a fraction of one); a few rounds settle both.
std::vector<double> Bend(const std::vector<Chain>& chains, const std::vector<double>& centres,
                         double left) {
    const size_t slices = centres.size();
    std::vector<double> bend(slices, 0.0);
    if (slices < 2) return bend;
    for (int round = 0; round < 4; ++round) {
        std::vector<std::vector<double>> above(slices);
        for (const Chain& chain : chains) {
            if (chain.Y.size() < 2) continue;
            const double height = HeightAt(chain, bend);
            for (size_t k = 0; k < chain.Y.size(); ++k)
                above[static_cast<size_t>(chain.Slice[k])].push_back(chain.Y[k] - height);
        }
        for (size_t s = 0; s < slices; ++s)
            bend[s] = above[s].size() >= 3 ? MiddleMean(above[s]) : 0.0;
        // Nought at the column's edge, half a slice left of the first slice's centre: carried
        // there along the first two slices.
        const double edge =
            bend[0] - Slope(bend[1] - bend[0], centres[1] - centres[0]) * (centres[0] - left);
        for (double& b : bend)
            b -= edge;
    }
    return bend;
}

// The deskewed, reduced page back to the scan's pixels.
struct Unturn {
    double Factor = 1.0;
    double CentreX = 0.0;
    double CentreY = 0.0;
    double Cos = 1.0;
    double Sin = 0.0;

    FoundLine Map(double x, double y) const {
        const double dx = x - CentreX;
        const double dy = y - CentreY;
        return {(CentreX + dx * Cos + dy * Sin) * Factor, (CentreY - dx * Sin + dy * Cos) * Factor};
    }
};

// The rules printed under the headings, at the foot and between the columns are no text: a
// straight run of ink far longer than any word is taken out, across and down, and so is a long
// thin piece of ink that bends or slants with the page (a rule near the binding of a curved
// page), which no straight run takes out.
void RemoveRules(PIX* page) {
    const int width = pixGetWidth(page);
    const int height = pixGetHeight(page);
    PixPtr across(pixOpenBrick(nullptr, page, std::max(20, width / 10), 1));
    if (across) pixSubtract(page, page, across.get());
    // A rule between the columns of a page photographed at a slant leans and breaks into short
    // steps: widened a little and its breaks closed, it is a straight run again, and it is taken
    // out with its width.
    PixPtr wider(pixDilateBrick(nullptr, page, 3, 1));
    if (wider) pixCloseBrick(wider.get(), wider.get(), 1, 5);
    PixPtr down(wider ? pixOpenBrick(nullptr, wider.get(), 1, std::max(20, height / 10)) : nullptr);
    if (down) {
        pixDilateBrick(down.get(), down.get(), 3, 1);
        pixSubtract(page, page, down.get());
    }
    l_int32 changed = 0;
    PixPtr wide(pixSelectBySize(page, std::max(20, width / 10), 0, 8, L_SELECT_WIDTH,
                                L_SELECT_IF_GTE, &changed));
    if (wide) {
        PixPtr thin(pixSelectByWidthHeightRatio(wide.get(), 8.0F, 8, L_SELECT_IF_GT, &changed));
        if (thin) pixSubtract(page, page, thin.get());
    }
    // Down the page the pieces of a leaning rule are joined first, across the pixel or two the
    // binarizing broke it at (far less than the white between two lines of text).
    PixPtr joined(pixDilateBrick(nullptr, page, 3, 1));
    if (joined) pixCloseBrick(joined.get(), joined.get(), 1, 3);
    PixPtr tall(joined ? pixSelectBySize(joined.get(), 0, std::max(20, height / 10), 8,
                                         L_SELECT_HEIGHT, L_SELECT_IF_GTE, &changed)
                       : nullptr);
    if (tall) {
        PixPtr thin(pixSelectByWidthHeightRatio(tall.get(), 0.125F, 8, L_SELECT_IF_LT, &changed));
        if (thin) pixSubtract(page, page, thin.get());
    }
}

std::vector<double> RowCounts(PIX* page, const Span& span) {
    BOX* box = boxCreate(span.Left, 0, span.Right - span.Left, pixGetHeight(page));
    PixPtr strip(pixClipRectangle(page, box, nullptr));
    boxDestroy(&box);
    if (!strip) return {};
    NumaPtr rows(pixCountPixelsByRow(strip.get(), nullptr));
    return rows ? Values(rows.get()) : std::vector<double>{};
}

FoundColumn ColumnLines(PIX* page, const Span& span, double pitch, const Unturn& unturn) {
    const int width = span.Right - span.Left;
    const int slices = std::clamp(static_cast<int>(width / (5.0 * pitch)), 4, 8);
    std::vector<std::vector<double>> baselines;
    std::vector<double> centres;
    for (int s = 0; s < slices; ++s) {
        const Span slice{span.Left + width * s / slices, span.Left + width * (s + 1) / slices};
        baselines.push_back(Baselines(RowCounts(page, slice), pitch));
        centres.push_back(0.5 * (slice.Left + slice.Right));
    }
    std::vector<Chain> chains = LinkSlices(baselines, centres, pitch);
    struct AtLeft {
        double Y = 0.0;
        double FirstX = 0.0; // where the line's found part starts
        size_t Points = 0;
    };
    std::vector<AtLeft> atLeft;
    const std::vector<double> bend = Bend(chains, centres, span.Left);
    for (const Chain& chain : chains)
        atLeft.push_back({HeightAt(chain, bend), chain.X.front(), chain.Y.size()});
    std::sort(atLeft.begin(), atLeft.end(),
              [](const AtLeft& a, const AtLeft& b) { return a.Y < b.Y; });
    // Two lines within half a line of each other at the column's edge are one: the part found
    // nearest the edge is measured there, a part that starts further right (a line broken
    // where the page bends towards the binding) is carried to the edge along its slope only.
    const auto better = [](const AtLeft& a, const AtLeft& b) {
        return a.Points != b.Points ? a.Points > b.Points : a.FirstX < b.FirstX;
    };
    FoundColumn column;
    std::vector<AtLeft> kept;
    for (const AtLeft& line : atLeft) {
        if (!kept.empty() && line.Y - kept.back().Y < 0.45 * pitch) {
            if (better(line, kept.back())) kept.back() = line;
            continue;
        }
        kept.push_back(line);
    }
    for (const AtLeft& line : kept)
        column.Lines.push_back(unturn.Map(span.Left, line.Y));
    const double top = kept.empty() ? 0.0 : kept.front().Y;
    column.Left = unturn.Map(span.Left, top).X;
    column.Right = unturn.Map(span.Right, top).X;
    // The bend at the right edge, carried there from the last slice along the last two.
    const size_t last = bend.size() - 1;
    const double atRight = last == 0 ? bend[0]
                                     : bend[last] + Slope(bend[last] - bend[last - 1],
                                                          centres[last] - centres[last - 1]) *
                                                        (span.Right - centres[last]);
    column.Rise = unturn.Map(span.Right, top + atRight).Y - unturn.Map(span.Left, top).Y;
    return column;
}

} // namespace

PrintedLines FindPrintedLines(const GreyRows& scan, int columnsAcross,
                              const std::atomic<bool>* cancelled) {
    // Leptonica's notes on what it could not do (no background on a blank page) are not the
    // program's messages: a page without lines simply has none.
    static const l_int32 quiet = setMsgSeverity(L_SEVERITY_NONE);
    (void)quiet;
    PrintedLines result;
    result.ImageWidth = scan.Width;
    result.ImageHeight = scan.Height;
    const int factor =
        std::max(1, static_cast<int>(std::lround(std::max(scan.Width, scan.Height) / ReducedSide)));
    if (scan.Width / factor < 100 || scan.Height / factor < 100) return result;
    if (Cancelled(cancelled)) return result;
    PixPtr grey = ReducedGrey(scan, factor, cancelled);
    if (!grey || Cancelled(cancelled)) return result;
    PixPtr even(pixBackgroundNormSimple(grey.get(), nullptr, nullptr));
    grey.reset();
    if (!even || Cancelled(cancelled)) return result;
    PIX* binary = nullptr;
    pixOtsuAdaptiveThreshold(even.get(), pixGetWidth(even.get()), pixGetHeight(even.get()), 0, 0,
                             0.1F, nullptr, &binary);
    PixPtr binarized(binary);
    even.reset();
    if (!binarized || Cancelled(cancelled)) return result;
    // The dark surround of a photographed or scanned sheet touches the edges; the print does not.
    PixPtr ink(pixRemoveBorderConnComps(binarized.get(), 8));
    binarized.reset();
    if (!ink || Cancelled(cancelled)) return result;

    const int width = pixGetWidth(ink.get());
    const int height = pixGetHeight(ink.get());
    l_int32 inked = 0;
    pixCountPixels(ink.get(), &inked, nullptr);
    const double coverage = static_cast<double>(inked) / (static_cast<double>(width) * height);
    // A blank page, or a photograph or a damaged file that is mostly dark, holds no lines.
    if (coverage < 0.002 || coverage > 0.3) return result;

    l_float32 angle = 0.0F;
    l_float32 confidence = 0.0F;
    if (pixFindSkew(ink.get(), &angle, &confidence) != 0 || confidence < 2.0F) angle = 0.0F;
    constexpr double Radians = 3.14159265358979323846 / 180.0;
    PixPtr page(std::abs(angle) > 0.02F
                    ? pixRotate(ink.get(), static_cast<l_float32>(angle * Radians),
                                L_ROTATE_SAMPLING, L_BRING_IN_WHITE, 0, 0)
                    : pixClone(ink.get()));
    ink.reset();
    if (!page || Cancelled(cancelled)) return result;
    RemoveRules(page.get());
    // Dust and grain, far smaller than any letter at this size (the page is about 2000 pixels
    // long, a letter ten or more), would fill the white between the columns: taken out.
    l_int32 changed = 0;
    PixPtr clean(
        pixSelectBySize(page.get(), 4, 4, 8, L_SELECT_IF_EITHER, L_SELECT_IF_GTE, &changed));
    if (clean) page = std::move(clean);
    const Unturn unturn{static_cast<double>(factor), width / 2.0, height / 2.0,
                        std::cos(angle * Radians), std::sin(angle * Radians)};

    NumaPtr across(pixCountPixelsByColumn(page.get()));
    if (!across) return result;
    std::vector<Span> spans = SplitColumns(Smoothed(Values(across.get())), columnsAcross);
    if (columnsAcross > 0 && (std::ssize(spans) < columnsAcross || Uneven(spans) > 1.25)) {
        // On a page photographed at a slant the columns' edges lean, and the narrow white
        // between two columns is filled, over the page's height, by the lean of their edges
        // (too few columns, or columns of unequal widths, split at the white between fields);
        // across a band of the page's middle sixth it leans by a sixth as much.
        BOX* box = boxCreate(0, 5 * height / 12, width, height / 6);
        PixPtr band(pixClipRectangle(page.get(), box, nullptr));
        boxDestroy(&box);
        NumaPtr middle(band ? pixCountPixelsByColumn(band.get()) : nullptr);
        if (middle) {
            std::vector<Span> banded = SplitColumns(Smoothed(Values(middle.get())), columnsAcross);
            if (banded.size() > spans.size() ||
                (banded.size() == spans.size() && Uneven(banded) < Uneven(spans)))
                spans = std::move(banded);
        }
    }
    std::vector<double> pitches;
    for (const Span& span : spans) {
        const double pitch = LinePitch(RowCounts(page.get(), span));
        if (pitch > 0.0) pitches.push_back(pitch);
    }
    if (pitches.empty() || Cancelled(cancelled)) return result;
    const double pitch = Percentile(pitches, 0.5);
    for (const Span& span : spans) {
        if (Cancelled(cancelled)) return {};
        FoundColumn column = ColumnLines(page.get(), span, pitch, unturn);
        if (!column.Lines.empty()) result.Columns.push_back(std::move(column));
    }
    result.Pitch = pitch * factor;
    return result;
}

} // namespace tv
