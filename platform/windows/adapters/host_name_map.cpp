#include "platform/windows/adapters/host_name_map.h"

#include "host/fault.h"
#include "host/text.h"
#include "platform/windows/adapters/host_contract.h"
#include "platform/windows/system/text.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vellumo::windows
{
namespace
{

constexpr std::uintmax_t largestFile = 64 * 1024; // bytes; all names together are a fortieth of it

std::string_view Trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t\r");
    return first == std::string_view::npos ? "" : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// A member is one word, a ProgID words with points between them; both begin with a letter.
bool IsName(std::string_view text, bool isProgId)
{
    const auto isAllowed = [isProgId](char c)
    { return host::IsLetter(c) || host::IsDigit(c) || c == '_' || (isProgId && c == '.'); };
    return !text.empty() && host::IsLetter(text.front()) && std::ranges::all_of(text, isAllowed);
}

const HostNeed* Find(std::string_view key)
{
    const auto wide = ToWide(key);
    const auto needs = HostContract();
    const auto found =
        std::ranges::find_if(needs, [&](const HostNeed& need) { return EqualsIgnoringCase(KeyOf(need.name), wide); });
    return found == needs.end() ? nullptr : &*found;
}

} // namespace

std::wstring KeyOf(const names::Name& name)
{
    return *name.object == L'\0' ? name.text : std::wstring(name.object) + L'.' + name.text;
}

HostNameMap HostNameMap::ReadFrom(const std::wstring& folder)
{
    const auto path = std::filesystem::path(folder) / "Vellumo.names.txt";
    std::error_code error;
    if (!std::filesystem::exists(path, error) && !error)
    {
        return {};
    }
    const auto file = FromWide(path.wstring());
    std::ifstream in(path, std::ios::binary);
    std::string text(largestFile + 1, '\0');
    in.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(in.gcount()));
    if (error || in.bad() || !in.eof() || text.size() > largestFile)
    {
        throw host::Fault("Il file " + file +
                          ", che dice i nomi degli oggetti del programma, non si può leggere o è troppo lungo.");
    }
    return Parse(text, file);
}

HostNameMap HostNameMap::Parse(std::string_view text, const std::string& file)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    text.remove_prefix(text.starts_with(mark) ? mark.size() : 0);
    HostNameMap map;
    for (int number = 1; !text.empty(); ++number)
    {
        const auto end = std::min(text.find('\n'), text.size());
        try
        {
            map.Add(Trimmed(text.substr(0, end)));
        }
        catch (const host::Fault& fault)
        {
            throw host::Fault("Il file " + file + ", che dice i nomi degli oggetti del programma, è errato alla riga " +
                              std::to_string(number) + ": " + fault.Description() +
                              " Correggerlo, o eliminarlo perché valgano i nomi previsti.");
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return map;
}

void HostNameMap::Add(std::string_view line)
{
    if (line.empty() || line.front() == '#')
    {
        return;
    }
    const auto equals = line.find('=');
    if (equals == std::string_view::npos)
    {
        throw host::Fault("manca il segno =.");
    }
    const auto key = Trimmed(line.substr(0, equals));
    const auto other = Trimmed(line.substr(equals + 1));
    const auto* const need = Find(key);
    if (need == nullptr)
    {
        throw host::Fault("la libreria non usa " + std::string(key) + ".");
    }
    if (!IsName(other, *need->name.object == L'\0'))
    {
        throw host::Fault("\"" + std::string(other) + "\" non è un nome.");
    }
    if (!m_others.try_emplace(KeyOf(need->name), ToWide(other)).second)
    {
        throw host::Fault(std::string(key) + " c'è già.");
    }
}

const wchar_t* HostNameMap::Of(const names::Name& name) const
{
    if (m_others.empty())
    {
        return name.text;
    }
    const auto found = m_others.find(KeyOf(name));
    return found == m_others.end() ? name.text : found->second.c_str();
}

const HostNameMap& HostNameMap::Compiled()
{
    static const HostNameMap compiled;
    return compiled;
}

} // namespace vellumo::windows
