#include "tests/support/installation.h"

#include "environment/files.h"
#include "host/path.h"
#include "xml/document.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>

namespace vellumo::tests
{
namespace
{

std::string Entry(std::string_view root, std::string_view key, std::string_view name)
{
    return std::string(root).append("\\").append(key).append("\\").append(name);
}

std::string Bytes(const std::filesystem::path& file)
{
    return environment::ReadFile(file.string()).value();
}

} // namespace

std::optional<std::string> MemorySettings::ReadMachineText(std::string_view key, std::string_view name)
{
    return Read("HKLM", key, name);
}

std::optional<std::string> MemorySettings::ReadUserText(std::string_view key, std::string_view name)
{
    return Read("HKCU", key, name);
}

void MemorySettings::WriteMachineText(std::string_view key, std::string_view name, std::string_view text)
{
    values[Entry("HKLM", key, name)] = text;
}

std::optional<std::string> MemorySettings::Read(std::string_view root, std::string_view key,
                                                std::string_view name) const
{
    const auto found = values.find(Entry(root, key, name));
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

Installation::Installation()
{
    // Several test programs run at the same time, so each makes folders that no other one uses.
    std::filesystem::path folder;
    do
    {
        folder = std::filesystem::temp_directory_path() / ("vellumo-test-" + std::to_string(std::random_device()()));
    } while (!std::filesystem::create_directories(folder));
    m_folder = folder.string();
    settings.values["HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Norda.exe\\Path"] = Path("host");
    settings.values["HKCU\\Software\\VB and VBA Program Settings\\Norda\\SISS\\Path"] = Path("client");
}

Installation::~Installation()
{
    std::error_code error;
    std::filesystem::remove_all(m_folder, error);
}

std::string Installation::Path(const std::string& name) const
{
    return environment::JoinPath(m_folder, name);
}

void Installation::Write(const std::string& name, std::string_view bytes) const
{
    std::filesystem::create_directories(host::NativePath(Path(name)).parent_path());
    if (!environment::WriteFile(Path(name), bytes))
    {
        throw std::runtime_error("cannot write " + Path(name));
    }
}

void Installation::WriteHuge(const std::string& name) const
{
    Write(name, "");
    std::ofstream out(host::NativePath(Path(name)), std::ios::binary);
    out.seekp(std::streamoff{2} * 1024 * 1024 * 1024 * 1024);
    out.put(' ');
}

void Installation::WriteTable(const std::string& name, std::string_view bytes) const
{
    Write(TableName(name), bytes);
}

std::string Installation::TableName(const std::string& name)
{
    return "client\\SISS\\Prerequisiti\\mysql\\data\\imp_test\\sau\\" + name + ".txt";
}

void Installation::WriteTemplates() const
{
    for (const auto& file : std::filesystem::directory_iterator(VELLUMO_TEMPLATES))
    {
        Write("host\\SISS\\Templates\\" + file.path().filename().string(), Bytes(file.path()));
    }
}

std::string Golden(const std::string& room, const std::string& name)
{
    return xml::Document::FromText(Bytes(std::string(VELLUMO_TESTS) + "/" + room + "/golden/" + name + ".xml"))
        .value()
        .Xml();
}

} // namespace vellumo::tests
