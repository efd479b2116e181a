#include "SamplePages.h"

#include "support/TestFiles.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace tv::test {

namespace fs = std::filesystem;

namespace {

void ReadPositions(const fs::path& path, TruePage& page) {
    std::ifstream in(path);
    std::string line;
    double below = 0.0;
    while (std::getline(in, line)) {
        if (line.rfind("# pitch ", 0) == 0)
            page.Pitch = std::stod(line.substr(8));
        else if (line.rfind("# columns ", 0) == 0)
            page.Columns = std::stoi(line.substr(10));
        else if (line.rfind("# below ", 0) == 0)
            below = std::stod(line.substr(8));
        else if (!line.empty() && line[0] != '#') {
            std::istringstream fields(line);
            int tableLine = 0;
            TruePlace place;
            fields >> tableLine >> place.Column >> place.X >> place.Baseline;
            place.Baseline -= below;
            page.Places[tableLine] = place;
        }
    }
    if (page.Places.empty()) throw std::runtime_error("no positions in " + path.string());
}

} // namespace

const TruePage& SamplePage(const std::string& kind, const std::string& options) {
    static TempDir drawn;
    static std::map<std::string, TruePage> pages;
    const std::string key = kind + options;
    auto found = pages.find(key);
    if (found != pages.end()) return found->second;
    const fs::path dir = drawn.Path() / std::to_string(pages.size());
    // The generator is a test tool, and its own leak check is left out: clang 14's leak checker
    // crashes on the bounds it reads of glibc's dynamic thread-local storage in it when it draws
    // the annual pages (a fault of the checker, which finds no leak in the other kinds).
    const std::string command =
        std::string("QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=\"${ASAN_OPTIONS}:detect_leaks=0\" ") +
        TALLYVIEW_SAMPLEGEN + " " + options + " " + kind + " " + dir.string() + " > /dev/null";
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("the sample generator failed: " + command);
    TruePage page;
    for (const auto& entry : fs::directory_iterator(dir)) {
        const fs::path path = entry.path();
        if (path.extension() == ".lines") ReadPositions(path, page);
        if (path.extension() == ".jpg") page.Scan = path;
        if (path.extension() == ".QRL") page.Transcription = path;
        if (path.extension() == ".slips") {
            std::ifstream in(path);
            int line = 0;
            int field = 0;
            std::string kind;
            while (in >> line >> field >> kind)
                page.Slips.insert({line, field});
        }
    }
    return pages[key] = page;
}

} // namespace tv::test
