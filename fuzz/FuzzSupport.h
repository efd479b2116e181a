#pragma once
// What the fuzz targets share: the input bytes as a file that lives only in memory, and the
// check that ends a run when the code under test breaks one of its promises.
#include <cstddef>
#include <cstdint>
#include <string>

namespace tv::fuzz {

// The bytes as an anonymous in-memory file; Path() opens it as any file is opened.
class MemoryFile {
  public:
    MemoryFile(const uint8_t* data, std::size_t size);
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    const std::string& Path() const { return path_; }

  private:
    int fd_;
    std::string path_;
};

// Stops the run with a report when condition is false: libFuzzer keeps the input that did it.
void Require(bool condition, const char* promise);

} // namespace tv::fuzz
