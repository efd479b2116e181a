#pragma once
// A settings store held in memory, for tests of the settings rules without a disk.
#include "session/Settings.h"

#include <map>
#include <string>

namespace tv::test {

class MemorySettingsStore : public SettingsStore {
  public:
    std::string Read(const std::string& section, const std::string& key,
                     const std::string& deflt) const override {
        auto s = Sections.find(section);
        if (s == Sections.end()) return deflt;
        auto k = s->second.find(key);
        return k == s->second.end() ? deflt : k->second;
    }
    void Write(const std::string& section, const std::string& key,
               const std::string& value) override {
        Sections[section][key] = value;
        ++Writes;
    }
    void DeleteSection(const std::string& section) override { Sections.erase(section); }
    void DeleteAll() override { Sections.clear(); }
    void Flush() override { ++Flushes; }

    bool HasSection(const std::string& section) const { return Sections.contains(section); }

    std::map<std::string, std::map<std::string, std::string>> Sections;
    int Writes = 0;
    int Flushes = 0;
};

} // namespace tv::test
