// A host installation in a temporary folder, with its settings in memory.
#pragma once

#include "host/clock.h"
#include "host/settings_store.h"

#include <map>
#include <string>

namespace vellumo::tests
{

class MemorySettings final : public host::SettingsStore
{
public:
    std::optional<std::string> ReadMachineText(std::string_view key, std::string_view name) override;
    std::optional<std::string> ReadUserText(std::string_view key, std::string_view name) override;
    void WriteMachineText(std::string_view key, std::string_view name, std::string_view text) override;

    std::map<std::string, std::string> values;

private:
    [[nodiscard]] std::optional<std::string> Read(std::string_view root, std::string_view key,
                                                  std::string_view name) const;
};

class FixedClock final : public host::Clock
{
public:
    [[nodiscard]] host::Date Now() const override { return now; }

    host::Date now = host::Date::FromCalendar(2024, 3, 5, 15, 4, 9).value();
};

// Names have "\" between folders and stand below the installation's own folder.
class Installation
{
public:
    Installation();
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    [[nodiscard]] std::string Path(const std::string& name) const;

    void Write(const std::string& name, std::string_view bytes) const;
    // A file larger than any memory, which takes no room: all of it is a hole.
    void WriteHuge(const std::string& name) const;
    void WriteTable(const std::string& name, std::string_view bytes) const;
    // The name of a table's file, for `Path`.
    [[nodiscard]] static std::string TableName(const std::string& name);
    // The request templates that are delivered.
    void WriteTemplates() const;

    MemorySettings settings;
    FixedClock clock;

private:
    std::string m_folder;
};

// The document tests/<room>/golden/<name>.xml as the library would write it.
[[nodiscard]] std::string Golden(const std::string& room, const std::string& name);

} // namespace vellumo::tests
