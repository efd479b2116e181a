#include "TestFiles.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tv::test {

TempDir::TempDir() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "tallyview-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("cannot make a temporary folder");
    path_ = pattern;
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(path_, ignored);
}

std::string TempDir::Write(const std::string& name, const std::string& bytes) const {
    std::filesystem::path p = path_ / name;
    std::ofstream out(p, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return p.string();
}

std::string DataFile(const std::string& name) {
    return std::string(TALLYVIEW_TEST_DATA) + "/" + name;
}

std::string ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

} // namespace tv::test
