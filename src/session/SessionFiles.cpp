#include "session/SessionFiles.h"

#include "core/Text.h"

#include <algorithm>
#include <array>

namespace tv {

namespace {

// The extensions of the open-file dialogs' filters; .png and .bmp are read as well as the
// scanners' own formats, and .bmd is the transcription programs' third extension.
constexpr std::array<const char*, 8> ScanExtensions = {"jpg", "jpe",  "jpeg", "gif",
                                                       "tif", "tiff", "png",  "bmp"};
constexpr std::array<const char*, 3> TranscriptionExtensions = {"sca", "qrl", "bmd"};

// The extension of the bare name in small letters, "" when it has none.
std::string Extension(const std::string& path) {
    const std::string name = BareFileName(path);
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos || dot == 0) return "";
    return LCase(name.substr(dot + 1));
}

bool OneOf(const std::string& extension, const auto& extensions) {
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

std::string& Place(SessionFiles& files, FileKind kind) {
    return kind == FileKind::Image ? files.Scan : files.Transcription;
}

} // namespace

std::optional<FileKind> KindOfFile(const std::string& path) {
    const std::string extension = Extension(path);
    if (OneOf(extension, ScanExtensions)) return FileKind::Image;
    if (OneOf(extension, TranscriptionExtensions)) return FileKind::Transcription;
    return std::nullopt;
}

SessionFiles DroppedFiles(const std::vector<std::string>& paths) {
    SessionFiles files;
    for (const std::string& path : paths) {
        const std::optional<FileKind> kind = KindOfFile(path);
        if (kind && Place(files, *kind).empty()) Place(files, *kind) = path;
    }
    return files;
}

std::optional<SessionFiles> CommandLineFiles(const std::vector<std::string>& paths) {
    SessionFiles files;
    std::vector<std::string> unknown;
    for (const std::string& path : paths) {
        const std::optional<FileKind> kind = KindOfFile(path);
        if (!kind) {
            unknown.push_back(path);
        } else if (Place(files, *kind).empty()) {
            Place(files, *kind) = path;
        } else {
            return std::nullopt;
        }
    }
    for (const std::string& path : unknown) {
        std::string& free = files.Scan.empty() ? files.Scan : files.Transcription;
        if (!free.empty()) return std::nullopt;
        free = path;
    }
    return files;
}

} // namespace tv
