#include "transcription/LineReader.h"

#include "core/RunTimeError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace tv {

namespace {

class ReadOnlyFile {
  public:
    explicit ReadOnlyFile(const std::string& path)
        : path_(path), fd_(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (fd_ < 0) Fail();
    }
    ~ReadOnlyFile() { ::close(fd_); }
    ReadOnlyFile(const ReadOnlyFile&) = delete;
    ReadOnlyFile& operator=(const ReadOnlyFile&) = delete;

    // Bytes read into buffer; 0 at the end of the file.
    std::size_t Read(char* buffer, std::size_t size) {
        for (;;) {
            ssize_t got = ::read(fd_, buffer, size);
            if (got >= 0) return static_cast<std::size_t>(got);
            if (errno != EINTR) Fail();
        }
    }

  private:
    [[noreturn]] void Fail() const { throw FileError(path_, std::strerror(errno)); }
    std::string path_;
    int fd_;
};

// Cuts a stream of bytes into lines; a CR at the end of one chunk may pair with an LF at the
// start of the next.
class LineSplitter {
  public:
    explicit LineSplitter(std::size_t maxLines) : maxLines_(maxLines) {}

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
            const char* stop =
                std::find_if(data, end, [](char c) { return c == '\r' || c == '\n'; });
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
    std::array<char, 65536> chunk{};
    for (;;) {
        std::size_t got = file.Read(chunk.data(), chunk.size());
        if (got == 0 || !splitter.Feed(chunk.data(), got)) break;
    }
    return splitter.Finish();
}

} // namespace tv
