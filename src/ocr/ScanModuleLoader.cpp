// The program's side of the scan module: opens tallyview-scan.so once, on the thread that first
// looks at a scan, and calls through its table. Where it looks, in this order: beside the
// program (the build tree, which also copies it beside its tests and benchmarks), and where the
// install put it relative to the program (bin/../LIBDIR/tallyview, for the Debian package
// /usr/lib/<triplet>/tallyview). Without the module no lines are found and nothing is read: the
// box is placed as the index's own rules place it and no record is compared, as on a scan where
// no lines can be found.
#include "ocr/ScanModule.h"

#include <dlfcn.h>

#include <filesystem>
#include <mutex>
#include <system_error>
#include <vector>

namespace tv {

namespace {

std::vector<std::filesystem::path> Candidates() {
    std::vector<std::filesystem::path> paths;
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error) {
        const std::filesystem::path folder = program.parent_path();
        paths.push_back(folder / ScanModuleFile);
        paths.push_back(folder / ".." / TALLYVIEW_INSTALL_LIBDIR / "tallyview" / ScanModuleFile);
    }
    return paths;
}

// The module's table, or nullptr. The module stays open until the program ends.
const ScanModuleEntries* Entries() {
    static std::once_flag once;
    static const ScanModuleEntries* entries = nullptr;
    std::call_once(once, [] {
        for (const std::filesystem::path& path : Candidates()) {
            std::error_code error;
            if (!std::filesystem::is_regular_file(path, error)) continue;
            void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
            if (module == nullptr) continue;
            const auto entry =
                reinterpret_cast<ScanModuleEntryFunction>(dlsym(module, ScanModuleEntryName));
            const ScanModuleEntries* table = entry != nullptr ? entry() : nullptr;
            if (table != nullptr && table->Version == ScanModuleVersion &&
                table->FindLines != nullptr && table->ReadLines != nullptr &&
                table->ReadWhole != nullptr) {
                entries = table;
                return;
            }
            dlclose(module);
        }
    });
    return entries;
}

} // namespace

PrintedLines FindPrintedLines(const GreyRows& scan, int columnsAcross,
                              const std::atomic<bool>* cancelled) {
    if (const ScanModuleEntries* entries = Entries())
        return entries->FindLines(scan, columnsAcross, cancelled);
    PrintedLines none;
    none.ImageWidth = scan.Width;
    none.ImageHeight = scan.Height;
    return none;
}

ScanReading ReadScanLines(const GreyImage& scan, const PrintedLines& lines,
                          const ReadOptions& options) {
    if (const ScanModuleEntries* entries = Entries())
        return entries->ReadLines(scan, lines, options);
    ScanReading none;
    none.ImageWidth = scan.Width;
    none.ImageHeight = scan.Height;
    return none;
}

int ReadWholePage(const GreyImage& scan) {
    if (const ScanModuleEntries* entries = Entries()) return entries->ReadWhole(scan);
    return -1;
}

} // namespace tv
