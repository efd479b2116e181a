#include "transcription/LineReader.h"

#include "core/RunTimeError.h"
#include "transcription/ReadOnlyFile.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace tv {

namespace {

// The first CR or LF in [data, end), or end: the LF found with the library's fast search, then
// the CR looked for only before it.
const char* LineEnd(const char* data, const char* end) {
    const auto* lf =
        static_cast<const char*>(std::memchr(data, '\n', static_cast<std::size_t>(end - data)));
    const char* stop = lf != nullptr ? lf : end;
    const auto* cr =
        static_cast<const char*>(std::memchr(data, '\r', static_cast<std::size_t>(stop - data)));
    return cr != nullptr ? cr : stop;
}

// Cuts a stream of bytes into lines; a CR at the end of one chunk may pair with an LF at the
// start of the next.
class LineSplitter {
  public:
    // Room for every line the limit allows, made once rather than grown line by line.
    explicit LineSplitter(std::size_t maxLines) : maxLines_(maxLines) {
        result_.Lines.reserve(maxLines);
    }

    // False once a line beyond maxLines starts: nothing more needs reading.
    bool Feed(const char* data, std::size_t size) {
        const char* end = data + size;
        while (data < end) {
            if (afterCR_ && *data == '\n') {
                afterCR_ = false;
                ++data;
                continue;
            }
            afterCR_ = false;
            if (result_.Lines.size() == maxLines_) {
                result_.MoreLines = true;
                return false;
            }
            const char* stop = LineEnd(data, end);
            Append(data, stop);
            data = stop;
            if (data < end) EndLine(*data++ == '\r');
        }
        return true;
    }

    RawLines Finish() {
        if (current_.Length > 0) result_.Lines.push_back(std::move(current_));
        return std::move(result_);
    }

  private:
    void Append(const char* begin, const char* end) {
        auto size = static_cast<std::size_t>(end - begin);
        std::size_t room = HeadBytes - std::min(HeadBytes, current_.Head.size());
        current_.Head.append(begin, std::min(room, size));
        current_.Length += size;
    }

    void EndLine(bool atCR) {
        result_.Lines.push_back(std::move(current_));
        current_ = RawLine{};
        afterCR_ = atCR;
    }

    std::size_t maxLines_;
    RawLines result_;
    RawLine current_;
    bool afterCR_ = false;
};

} // namespace

RawLines ReadLines(const std::string& path, std::size_t maxLines) {
    ReadOnlyFile file(path);
    LineSplitter splitter(maxLines);
    // Not cleared first: only the bytes read are looked at.
    std::array<char, 65536> chunk;
    // One byte past the limit is enough to know that a file is too long; a file that ends
    // sooner, or whose lines pass the line limit sooner, is read no further.
    std::size_t left = MaxTranscriptionBytes + 1;
    TextEncoding encoding = TextEncoding::Plain;
    for (bool first = true;; first = false) {
        std::size_t got = file.Read(chunk.data(), std::min(chunk.size(), left));
        left -= got;
        std::size_t skip = 0;
        if (first) {
            // A regular file gives its first bytes whole: the mark is never split.
            encoding =
                DetectEncoding(std::string_view(chunk.data(), std::min<std::size_t>(got, 4)));
            skip = SkippedMarkBytes(encoding);
        }
        if (got == 0 || !splitter.Feed(chunk.data() + skip, got - skip)) break;
        if (left == 0) throw FileError(path, TooLongReason);
    }
    RawLines lines = splitter.Finish();
    lines.Encoding = encoding;
    return lines;
}

} // namespace tv
