#include "package/acceptance/installer_without_rights.h"

#include "platform/windows/system/text.h"

#include <windows.h>

#include <array>

namespace vellumo::acceptance
{
namespace
{

constexpr DWORD noRights = 3;            // the installer's exit code for it
constexpr DWORD elevationRequired = 740; // ERROR_ELEVATION_REQUIRED, which not all headers have

// This process's token in which the group of the administrators counts for nothing; null where the system has none.
HANDLE TokenWithoutRights()
{
    std::array<std::byte, SECURITY_MAX_SID_SIZE> administrators{};
    auto size = static_cast<DWORD>(administrators.size());
    HANDLE own = nullptr;
    HANDLE reduced = nullptr;
    if (CreateWellKnownSid(WinBuiltinAdministratorsSid, nullptr, administrators.data(), &size) != FALSE &&
        OpenProcessToken(GetCurrentProcess(), TOKEN_DUPLICATE | TOKEN_ASSIGN_PRIMARY | TOKEN_QUERY, &own) != FALSE)
    {
        SID_AND_ATTRIBUTES group{administrators.data(), 0};
        if (CreateRestrictedToken(own, DISABLE_MAX_PRIVILEGE, 1, &group, 0, nullptr, 0, nullptr, &reduced) == FALSE)
        {
            reduced = nullptr;
        }
        CloseHandle(own);
    }
    return reduced;
}

} // namespace

std::pair<std::string, bool> TryInstallerWithoutRights(const std::filesystem::path& setup)
{
    const HANDLE token = TokenWithoutRights();
    if (token == nullptr)
    {
        return {"Non provato: questo sistema non toglie i diritti a un processo.", true};
    }
    // Otherwise Windows asks for an administrator before the installer can say anything.
    SetEnvironmentVariableW(L"__COMPAT_LAYER", L"RunAsInvoker");
    std::wstring line = L"\"" + setup.wstring() + L"\" /S";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    const BOOL started = CreateProcessAsUserW(token, nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                              &start, &process);
    const DWORD error = GetLastError();
    SetEnvironmentVariableW(L"__COMPAT_LAYER", nullptr);
    CloseHandle(token);
    if (started == FALSE)
    {
        return error == elevationRequired
                   ? std::pair<std::string, bool>{"Windows stesso non avvia l'installazione senza amministratore.",
                                                  true}
                   : std::pair<std::string, bool>{"L'installazione non si avvia: errore " + std::to_string(error) + '.',
                                                  false};
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code == noRights
               ? std::pair<std::string, bool>{"Rifiutata con il codice 3, come promesso.", true}
               : std::pair<std::string, bool>{
                     "Non rifiutata come promesso: codice " + std::to_string(code) + " invece di 3.", false};
}

} // namespace vellumo::acceptance
