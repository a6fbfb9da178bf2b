// A copy of the registered library in a folder of its own, beside a file that says what this host calls its objects:
// each otherwise than the library expects.
#pragma once

#include "platform/windows/system/com_ptr.h"

#include <windows.h>
// After windows.h.
#include <unknwn.h>

#include <filesystem>
#include <string>

namespace vellumo::norda
{

// Stands behind each name of a renamed host.
inline constexpr const wchar_t* renamed = L"Altrove";

class RenamedLibrary
{
public:
    // Faults when the library is not registered.
    explicit RenamedLibrary(const std::filesystem::path& folder);
    ~RenamedLibrary();
    RenamedLibrary(const RenamedLibrary&) = delete;
    RenamedLibrary& operator=(const RenamedLibrary&) = delete;

    [[nodiscard]] HRESULT Create(const CLSID& clsid, const IID& iid, void** result) const;

private:
    HMODULE m_module = nullptr;
};

} // namespace vellumo::norda
