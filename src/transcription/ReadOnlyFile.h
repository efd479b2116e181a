#pragma once
// The platform's file reading for the transcription reader: a regular file opened read-only and
// in binary by its native path (UTF-8 bytes), read in blocks through the C library's descriptor
// calls. This is the one file of the reader that differs between platforms.
#include <cstddef>
#include <string>

namespace tv {

class ReadOnlyFile {
  public:
    // Throws FileError with the system's reason when the file cannot be opened, and refuses
    // anything but a regular file: a pipe or a device could keep the reader waiting, or
    // reading, for ever.
    explicit ReadOnlyFile(const std::string& path);
    ~ReadOnlyFile();
    ReadOnlyFile(const ReadOnlyFile&) = delete;
    ReadOnlyFile& operator=(const ReadOnlyFile&) = delete;

    // Bytes read into buffer; 0 at the end of the file. Throws FileError when reading fails.
    std::size_t Read(char* buffer, std::size_t size);

  private:
    [[noreturn]] void Fail() const;

    std::string path_;
    int fd_;
};

} // namespace tv
