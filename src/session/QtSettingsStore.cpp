#include "session/QtSettingsStore.h"

#include "core/Text.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QStandardPaths>
#include <QStringDecoder>

#include <filesystem>
#include <system_error>

namespace tv {

namespace {

QString KeyOf(const std::string& section, const std::string& key) {
    return QString::fromStdString(section) + "/" + QString::fromStdString(key);
}

// Far more than the settings of ten scans can take, even with folder names of thousands of
// characters: a larger file was not written by this program.
constexpr qint64 MaxStoreBytes = 1 << 20;

enum class StoreFile {
    Usable,   // a regular file of a size this program writes, or none yet
    Damaged,  // a regular file far too large: given up, and replaced on saving
    NotAFile, // a device, a pipe, a folder: never read, never written
};

// Looked at without opening it: QSettings reads a store whole, so a device that never ends
// would exhaust the memory, and opening a pipe would wait for a writer that never comes.
StoreFile Examine(const QString& path) {
    const std::filesystem::path native(path.toStdU16String());
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(native, error);
    if (status.type() == std::filesystem::file_type::not_found) return StoreFile::Usable;
    if (status.type() != std::filesystem::file_type::regular) return StoreFile::NotAFile;
    const std::uintmax_t size = std::filesystem::file_size(native, error);
    if (error || size > static_cast<std::uintmax_t>(MaxStoreBytes)) return StoreFile::Damaged;
    return StoreFile::Usable;
}

// The file this program writes is UTF-8 text. Control bytes, or bytes that are not UTF-8, mean
// that something else has damaged it, even where QSettings still finds keys in it.
bool IsDamaged(const QString& path, const QSettings& settings) {
    if (settings.status() == QSettings::FormatError) return true;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false; // no file yet: the first run
    const QByteArray bytes = file.read(MaxStoreBytes + 1);
    if (bytes.size() > MaxStoreBytes) return true;
    for (char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 && c != '\t' && c != '\r' && c != '\n') return true;
    }
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(bytes); // decoding is what finds the bytes that are not UTF-8
    return utf8.hasError();
}

} // namespace

QString DefaultSettingsPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/" +
           SettingsApplication + "/" + SettingsApplication + ".conf";
}

QtSettingsStore::QtSettingsStore(Prompts& prompts)
    : QtSettingsStore(prompts, DefaultSettingsPath()) {}

QtSettingsStore::QtSettingsStore(Prompts& prompts, const QString& path)
    : prompts_(prompts), path_(path) {
    switch (Examine(path)) {
    case StoreFile::NotAFile:
        notAFile_ = true;
        return;
    case StoreFile::Damaged:
        damaged_ = true; // QSettings is opened on it only once it has been removed
        return;
    case StoreFile::Usable:
        break;
    }
    settings_ = std::make_unique<QSettings>(path, QSettings::IniFormat);
    damaged_ = IsDamaged(path, *settings_);
}

QtSettingsStore::~QtSettingsStore() = default;

// Values are the model's bytes; only file names carry anything but ASCII, and those are the
// platform's UTF-8. A value of another type (a list, a variant) was not written by this program.
std::string QtSettingsStore::Read(const std::string& section, const std::string& key,
                                  const std::string& deflt) const {
    if (damaged_ || notAFile_) return deflt;
    const QVariant value = settings_->value(KeyOf(section, key));
    if (value.typeId() != QMetaType::QString) return deflt;
    return value.toString().toStdString();
}

void QtSettingsStore::Write(const std::string& section, const std::string& key,
                            const std::string& value) {
    StartAfreshIfDamaged();
    if (notAFile_) return;
    settings_->setValue(KeyOf(section, key), QString::fromStdString(value));
}

void QtSettingsStore::DeleteSection(const std::string& section) {
    StartAfreshIfDamaged();
    if (notAFile_) return;
    settings_->remove(QString::fromStdString(section));
}

void QtSettingsStore::DeleteAll() {
    StartAfreshIfDamaged();
    if (notAFile_) return;
    settings_->clear();
}

void QtSettingsStore::Flush() {
    if (notAFile_) {
        ReportFailure("The file or its folder cannot be written.");
        return;
    }
    if (damaged_) return;
    settings_->sync();
    if (settings_->status() == QSettings::FormatError) {
        ReportFailure("Another program has damaged the file.");
    } else if (settings_->status() != QSettings::NoError || !settings_->isWritable()) {
        ReportFailure("The file or its folder cannot be written.");
    }
}

// A damaged file is given up for good: the settings written now replace it.
void QtSettingsStore::StartAfreshIfDamaged() {
    if (!damaged_) return;
    settings_.reset();
    QFile::remove(path_);
    damaged_ = false;
    // A file that could not be removed is still not one to read.
    if (Examine(path_) != StoreFile::Usable) {
        notAFile_ = true;
        return;
    }
    settings_ = std::make_unique<QSettings>(path_, QSettings::IniFormat);
}

void QtSettingsStore::ReportFailure(const QString& reason) {
    if (failureReported_) return;
    failureReported_ = true;
    const QString file = QDir::toNativeSeparators(path_);
    prompts_.Tell(Utf8ToCp1252(("Tallyview could not save its settings in " + file).toStdString()) +
                      CR + Utf8ToCp1252(reason.toStdString()),
                  PromptIcon::Exclamation);
}

} // namespace tv
