#pragma once
// The settings store on disk: an INI file in the user's configuration folder
// (~/.config/Tallyview/Tallyview.conf), through QSettings.
#include "core/Prompts.h"
#include "session/Settings.h"

#include <QString>

#include <memory>

class QSettings;

namespace tv {

class QtSettingsStore : public SettingsStore {
  public:
    // The user's store; a failure to save it is told once through prompts.
    explicit QtSettingsStore(Prompts& prompts);
    // A store kept in the file at path. Anything there but a regular file of a size this
    // program writes is never read: the store starts from the defaults.
    QtSettingsStore(Prompts& prompts, const QString& path);
    ~QtSettingsStore() override;
    QtSettingsStore(const QtSettingsStore&) = delete;
    QtSettingsStore& operator=(const QtSettingsStore&) = delete;

    std::string Read(const std::string& section, const std::string& key,
                     const std::string& deflt) const override;
    void Write(const std::string& section, const std::string& key,
               const std::string& value) override;
    void DeleteSection(const std::string& section) override;
    void DeleteAll() override;
    // Writes the file now; a failure is told to the user, once per run.
    void Flush() override;

    QString FilePath() const { return path_; }

  private:
    void StartAfreshIfDamaged();
    void ReportFailure(const QString& reason);

    Prompts& prompts_;
    QString path_;
    std::unique_ptr<QSettings> settings_;
    bool damaged_ = false;  // the file could not be parsed: none of its values is used
    bool notAFile_ = false; // a device, a pipe or a folder: defaults, and nothing is saved
    bool failureReported_ = false;
};

// ~/.config/Tallyview/Tallyview.conf, or its place under XDG_CONFIG_HOME.
QString DefaultSettingsPath();

} // namespace tv
