#include "transcription/ReadOnlyFile.h"

#include "core/RunTimeError.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

#ifdef _WIN32
#include <filesystem>
#include <io.h>
#else
#include <unistd.h>
#endif

namespace tv {

namespace {

#ifdef _WIN32
using FileStatus = struct _stat64;

// The native path is UTF-8: the wide call opens any name, whatever the ANSI code page.
int OpenForReading(const std::string& path) {
    const std::filesystem::path native(std::u8string(path.begin(), path.end()));
    return ::_wopen(native.c_str(), _O_RDONLY | _O_BINARY);
}
int Status(int fd, FileStatus& info) {
    return ::_fstat64(fd, &info);
}
long long ReadSome(int fd, char* buffer, std::size_t size) {
    return ::_read(fd, buffer, static_cast<unsigned>(std::min<std::size_t>(size, INT_MAX)));
}
void Close(int fd) {
    ::_close(fd);
}
bool IsDirectory(const FileStatus& info) {
    return (info.st_mode & _S_IFMT) == _S_IFDIR;
}
bool IsRegularFile(const FileStatus& info) {
    return (info.st_mode & _S_IFMT) == _S_IFREG;
}
#else
using FileStatus = struct stat;

// Opened without waiting, so that a pipe with no writer is refused at once.
int OpenForReading(const std::string& path) {
    return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
}
int Status(int fd, FileStatus& info) {
    return ::fstat(fd, &info);
}
long long ReadSome(int fd, char* buffer, std::size_t size) {
    return ::read(fd, buffer, size);
}
void Close(int fd) {
    ::close(fd);
}
bool IsDirectory(const FileStatus& info) {
    return S_ISDIR(info.st_mode);
}
bool IsRegularFile(const FileStatus& info) {
    return S_ISREG(info.st_mode);
}
#endif

// Why the open file fd cannot be read as a transcription; nullptr when it can.
const char* Refusal(int fd) {
    FileStatus info{};
    if (Status(fd, info) != 0) return std::strerror(errno);
    if (IsDirectory(info)) return std::strerror(EISDIR);
    if (!IsRegularFile(info)) return "Not a regular file";
    return nullptr;
}

} // namespace

ReadOnlyFile::ReadOnlyFile(const std::string& path) : path_(path), fd_(OpenForReading(path)) {
    if (fd_ < 0) Fail();
    if (const char* refusal = Refusal(fd_)) {
        Close(fd_);
        throw FileError(path_, refusal);
    }
}

ReadOnlyFile::~ReadOnlyFile() {
    Close(fd_);
}

std::size_t ReadOnlyFile::Read(char* buffer, std::size_t size) {
    for (;;) {
        const long long got = ReadSome(fd_, buffer, size);
        if (got >= 0) return static_cast<std::size_t>(got);
        if (errno != EINTR) Fail();
    }
}

void ReadOnlyFile::Fail() const {
    throw FileError(path_, std::strerror(errno));
}

} // namespace tv
