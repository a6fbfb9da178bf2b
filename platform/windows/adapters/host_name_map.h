// What this host calls the objects and members of `names`, where it differs: read from a text file beside the library,
// once for each provider. Without the file the compiled names hold.
//
//     # a comment
//     LockSrv.IDUtente = UserID
//     Norda.Paziente = Cartella.Paziente
//
// UTF-8, a line each: the object and member, or the ProgID, as compiled in; then what the host calls it. A file that
// says anything else is refused as a whole: half a map would be found out in the middle of a prescription.
#pragma once

#include "platform/windows/adapters/host_names.h"

#include <map>
#include <string>
#include <string_view>

namespace vellumo::windows
{

class HostNameMap
{
public:
    HostNameMap() = default;

    // "Vellumo.names.txt" in the folder; empty when there is none. Faults, with an Italian text that names the file and
    // the line, when it cannot be read or a line says what is not there, twice the same, or no name.
    [[nodiscard]] static HostNameMap ReadFrom(const std::wstring& folder);
    [[nodiscard]] static HostNameMap Parse(std::string_view text, const std::string& file);

    [[nodiscard]] const wchar_t* Of(const names::Name& name) const;

    // Nothing is called otherwise.
    [[nodiscard]] static const HostNameMap& Compiled();

private:
    void Add(std::string_view line);

    std::map<std::wstring, std::wstring> m_others; // by "Object.Member" or ProgID
};

// "Object.Member" or the ProgID, by which a file names it.
[[nodiscard]] std::wstring KeyOf(const names::Name& name);

} // namespace vellumo::windows
