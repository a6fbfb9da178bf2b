#include "platform/native/file_settings_store.h"

#include "host/fault.h"
#include "host/text.h"

#include <algorithm>
#include <fstream>
#include <vector>

namespace vellumo::platform
{
namespace
{

constexpr std::size_t longestText = 255;

std::string Entry(std::string_view root, std::string_view key, std::string_view name)
{
    std::string entry(root);
    entry.append("\\").append(key).append("\\").append(name);
    return entry;
}

// Without regard to case.
bool IsBelow(std::string_view line, std::string_view key)
{
    return host::EqualsIgnoringCase(line.substr(0, key.size()), key);
}

bool IsEntry(std::string_view line, std::string_view entry)
{
    return line.size() > entry.size() && line[entry.size()] == '=' && IsBelow(line, entry);
}

std::vector<std::string> ReadLines(const std::filesystem::path& file)
{
    std::vector<std::string> lines;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);)
    {
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace

std::optional<std::string> FileSettingsStore::Read(const std::string& entry) const
{
    for (const std::string& line : ReadLines(m_file))
    {
        if (IsEntry(line, entry))
        {
            std::string text = line.substr(entry.size() + 1);
            return text.size() <= longestText ? std::optional(std::move(text)) : std::nullopt;
        }
    }
    return std::nullopt;
}

std::optional<std::string> FileSettingsStore::ReadMachineText(std::string_view key, std::string_view name)
{
    return Read(Entry("HKLM", key, name));
}

std::optional<std::string> FileSettingsStore::ReadUserText(std::string_view key, std::string_view name)
{
    return Read(Entry("HKCU", key, name));
}

void FileSettingsStore::WriteMachineText(std::string_view key, std::string_view name, std::string_view text)
{
    const std::string entry = Entry("HKLM", key, name);
    auto lines = ReadLines(m_file);
    const std::string below = Entry("HKLM", key, "");
    const bool keyExists = std::ranges::any_of(lines, [&](const std::string& line) { return IsBelow(line, below); });
    if (!keyExists)
    {
        throw host::Fault("Nelle impostazioni non c'è la chiave HKLM\\" + std::string(key) + ".");
    }
    std::erase_if(lines, [&](const std::string& line) { return IsEntry(line, entry); });
    lines.push_back(entry + "=" + std::string(text));
    std::ofstream out(m_file, std::ios::trunc);
    for (const std::string& line : lines)
    {
        out << line << '\n';
    }
    out.close();
    if (!out)
    {
        throw host::Fault("Impossibile scrivere il file delle impostazioni.");
    }
}

} // namespace vellumo::platform
