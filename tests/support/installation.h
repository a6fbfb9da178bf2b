// A host installation in a temporary folder, with its settings in memory.
#pragma once

#include "environment/files.h"
#include "host/clock.h"
#include "host/fault.h"
#include "host/path.h"
#include "host/settings_store.h"

#include <doctest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <string>

namespace vellumo::tests
{

class MemorySettings final : public host::SettingsStore
{
public:
    std::optional<std::string> ReadMachineText(std::string_view key, std::string_view name) override
    {
        return Read("HKLM", key, name);
    }
    std::optional<std::string> ReadUserText(std::string_view key, std::string_view name) override
    {
        return Read("HKCU", key, name);
    }
    void WriteMachineText(std::string_view key, std::string_view name, std::string_view text) override
    {
        values[Entry("HKLM", key, name)] = text;
    }

    std::map<std::string, std::string> values;

private:
    static std::string Entry(std::string_view root, std::string_view key, std::string_view name)
    {
        return std::string(root).append("\\").append(key).append("\\").append(name);
    }
    std::optional<std::string> Read(std::string_view root, std::string_view key, std::string_view name) const
    {
        const auto found = values.find(Entry(root, key, name));
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
};

class FixedClock final : public host::Clock
{
public:
    [[nodiscard]] host::Date Now() const override { return now; }

    host::Date now = host::Date::FromCalendar(2024, 3, 5, 15, 4, 9).value();
};

class Installation
{
public:
    Installation()
    {
        // Several test programs run at the same time, so each makes folders that no other one uses.
        do
        {
            m_folder =
                std::filesystem::temp_directory_path() / ("vellumo-test-" + std::to_string(std::random_device()()));
        } while (!std::filesystem::create_directories(m_folder));
        settings.values["HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Norda.exe\\Path"] =
            Path("host");
        settings.values["HKCU\\Software\\VB and VBA Program Settings\\Norda\\SISS\\Path"] = Path("client");
    }
    ~Installation()
    {
        std::error_code error;
        std::filesystem::remove_all(m_folder, error);
    }
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    // `name` with "\" between folders, below the installation's own folder.
    [[nodiscard]] std::string Path(const std::string& name) const
    {
        return environment::JoinPath(m_folder.string(), name);
    }

    void Write(const std::string& name, std::string_view bytes) const
    {
        std::filesystem::create_directories(host::NativePath(Path(name)).parent_path());
        REQUIRE(environment::WriteFile(Path(name), bytes));
    }

    // A file larger than any memory, which takes no room: all of it is a hole.
    void WriteHuge(const std::string& name) const
    {
        Write(name, "");
        std::ofstream out(host::NativePath(Path(name)), std::ios::binary);
        out.seekp(std::streamoff{2} * 1024 * 1024 * 1024 * 1024);
        out.put(' ');
    }

    void WriteTable(const std::string& name, std::string_view bytes) const
    {
        Write("client\\SISS\\Prerequisiti\\mysql\\data\\imp_test\\sau\\" + name + ".txt", bytes);
    }

    MemorySettings settings;
    FixedClock clock;

private:
    std::filesystem::path m_folder;
};

} // namespace vellumo::tests
