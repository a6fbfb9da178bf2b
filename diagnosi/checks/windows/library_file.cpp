#include "diagnosi/checks/windows/library_file.h"

#include "platform/windows/system/text.h"

#include <objbase.h>

#include <vellumo.h>

#include <array>

namespace vellumo::diagnosi
{

std::optional<std::string> LibraryFile(Bitness bitness)
{
    std::array<wchar_t, 40> text{};
    StringFromGUID2(CLSID_SISSProvider, text.data(), static_cast<int>(text.size()));
    const auto server = ServerOf(windows::FromWide(text.data()), bitness);
    return server ? std::optional(server->file) : std::nullopt;
}

std::optional<std::string> InstalledVersion()
{
    for (const Bitness bitness : {Bitness::This, Bitness::Other}) // the installer writes where 64-bit programs read
    {
        if (auto version = RegistryText(HKEY_LOCAL_MACHINE, "Software\\Vellumo", "Versione", bitness))
        {
            return version;
        }
    }
    return std::nullopt;
}

} // namespace vellumo::diagnosi
