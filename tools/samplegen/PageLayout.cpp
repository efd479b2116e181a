#include "PageLayout.h"

#include <stdexcept>

namespace samplegen {

namespace {

// What one entry takes when it is put at the next free line of a column.
struct Fit {
    bool Gap = false;
    bool Heading = false;
    bool Long = false;
    int Counter = 0; // the count of lines towards the next blank line, after this entry
    int Needed() const { return (Gap ? 1 : 0) + (Heading ? 1 : 0) + 1 + (Long ? 1 : 0); }
};

class Printer {
  public:
    explicit Printer(const KindSpec& kind) : kind_(kind) {}

    // False when the page is full.
    bool Place(const Entry& entry);
    PageLayout Result() { return std::move(page_); }

  private:
    bool NewSurname(const Entry& entry) const {
        return page_.Records.empty() || entry.Surname != page_.Records.back().Surname;
    }
    Fit FitAt(const Entry& entry, bool top) const;
    void DropGapOfLast();
    void Print(const Entry& entry, const Fit& fit, bool top);

    const KindSpec& kind_;
    PageLayout page_;
    int column_ = 1;
    int next_ = 0; // next free line of the column
    int counter_ = 0;
    bool lastTookGap_ = false;
};

// The count of ten runs within one surname; a long entry counts two lines; the count starts
// again at the top of a column, where no blank line is printed.
Fit Printer::FitAt(const Entry& entry, bool top) const {
    Fit fit;
    fit.Long = IsLongEntry(kind_, entry);
    const bool fresh = NewSurname(entry);
    fit.Heading = kind_.SurnameOwnLine() && (fresh || top);
    if (fresh) {
        fit.Counter = fit.Long ? 2 : 1;
        return fit;
    }
    fit.Counter = counter_ + (fit.Long ? 1 : 0);
    if (!kind_.TenLineGap) return fit;
    fit.Counter = top ? 1 : fit.Counter + 1;
    if (fit.Counter >= 11) {
        fit.Counter = 1;
        fit.Gap = true;
    }
    return fit;
}

// A surname whose last entry took the blank line loses it when the next surname starts: the
// index closes the surname up rather than leave one entry below a gap.
void Printer::DropGapOfLast() {
    if (!lastTookGap_) return;
    const int last = static_cast<int>(page_.Records.size()) - 1;
    if (IsLongEntry(kind_, page_.Records.back()))
        throw std::logic_error("a long entry takes the blank line at the end of " +
                               page_.Records.back().Surname + "; choose other names");
    std::erase_if(page_.Lines, [last](const PrintedLine& line) {
        return line.Record == last && line.Kind == LineKind::Gap;
    });
    for (PrintedLine& line : page_.Lines)
        if (line.Record == last) --line.Line;
    --page_.Places.back().Line;
    --next_;
    lastTookGap_ = false;
}

void Printer::Print(const Entry& entry, const Fit& fit, bool top) {
    const int record = static_cast<int>(page_.Records.size());
    if (top) page_.ColumnTops.push_back(record);
    const bool full = top || NewSurname(entry);
    auto add = [&](LineKind kind) {
        page_.Lines.push_back({column_, next_++, kind, record, full});
    };
    if (fit.Gap) add(LineKind::Gap);
    if (fit.Heading) add(LineKind::Heading);
    add(LineKind::Entry);
    if (fit.Long) add(LineKind::Continuation);
    page_.Records.push_back(entry);
    page_.Places.push_back({column_, next_ - 1});
    counter_ = fit.Counter;
    lastTookGap_ = fit.Gap;
}

bool Printer::Place(const Entry& entry) {
    const std::size_t count = page_.Records.size();
    if (kind_.TenLineGap && NewSurname(entry) && counter_ == 1 && count >= 2 &&
        page_.Records[count - 1].Surname == page_.Records[count - 2].Surname)
        DropGapOfLast();
    bool top = page_.Records.empty();
    Fit fit = FitAt(entry, top);
    if (next_ + fit.Needed() > kind_.LinesPerColumn) {
        if (column_ == kind_.Columns()) return false;
        ++column_;
        next_ = 0;
        top = true;
        fit = FitAt(entry, top);
    }
    Print(entry, fit, top);
    return true;
}

} // namespace

bool IsLongEntry(const KindSpec& kind, const Entry& entry) {
    return std::ssize(entry.Extra) >= kind.LongExtraLen;
}

PageLayout LayOutPage(const KindSpec& kind, const std::vector<Entry>& stream) {
    Printer printer(kind);
    for (const Entry& entry : stream)
        if (!printer.Place(entry)) return printer.Result();
    throw std::logic_error(kind.Name + ": the names run out before the page is full");
}

} // namespace samplegen
