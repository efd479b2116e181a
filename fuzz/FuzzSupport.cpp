#include "FuzzSupport.h"

#include <cstdio>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

namespace tv::fuzz {

MemoryFile::MemoryFile(const uint8_t* data, std::size_t size)
    : fd_(memfd_create("fuzz-input", MFD_CLOEXEC)) {
    Require(fd_ >= 0, "an in-memory file can be made");
    std::size_t written = 0;
    while (written < size) {
        const ssize_t n = ::write(fd_, data + written, size - written);
        Require(n > 0, "the in-memory file takes the input");
        written += static_cast<std::size_t>(n);
    }
    path_ = "/proc/self/fd/" + std::to_string(fd_);
}

MemoryFile::~MemoryFile() {
    ::close(fd_);
}

void Require(bool condition, const char* promise) {
    if (condition) return;
    std::fprintf(stderr, "Broken promise: %s\n", promise);
    std::abort();
}

} // namespace tv::fuzz
