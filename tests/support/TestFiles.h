#pragma once
// Temporary files for tests, removed when the test ends.
#include <filesystem>
#include <string>

namespace tv::test {

class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    // Writes bytes exactly as given to a file in this folder and returns its path.
    std::string Write(const std::string& name, const std::string& bytes) const;
    std::filesystem::path Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

// The path of a file kept in tests/data.
std::string DataFile(const std::string& name);
// The bytes of a file.
std::string ReadBytes(const std::string& path);

} // namespace tv::test
