#include "diagnosi/checks/windows/registry_checks.h"

#include "diagnosi/checks/windows/registered_class.h"
#include "environment/files.h"
#include "platform/windows/system/text.h"

#include <array>

namespace vellumo::diagnosi
{
Finding CheckIdentityKey(const Machine& machine)
{
    static_cast<void>(machine);
    const std::string key = "Software\\Lisit\\SISS\\ID\\CC_0";
    const bool here = HasRegistryKey(HKEY_LOCAL_MACHINE, key, Bitness::This);
    const bool there = HasRegistryKey(HKEY_LOCAL_MACHINE, key, Bitness::Other);
    const auto seenBy = [](Bitness bitness) { return std::string("nel registro dei programmi a ") + NameOf(bitness); };
    if (here || (there && is64BitProgram)) // the 64-bit library writes wherever it is
    {
        return {State::Ok, "La chiave c'è " + (here ? seenBy(Bitness::This) : seenBy(Bitness::Other)) +
                               (here && there ? " e " + seenBy(Bitness::Other) : "") + "."};
    }
    if (there)
    {
        return {State::Attention,
                "La chiave HKEY_LOCAL_MACHINE\\" + key + " c'è solo " + seenBy(Bitness::Other) +
                    ", dove la libreria a " + NameOf(Bitness::This) +
                    " non scrive: il SISS non viene a sapere quale programma lo usa.",
                std::string("Installare il client SISS per i programmi a ") + NameOf(Bitness::This) +
                    ", o chiedere all'assistenza SISS."};
    }
    return {State::Attention,
            "Manca la chiave HKEY_LOCAL_MACHINE\\" + key + ": il SISS non viene a sapere quale programma lo usa.",
            "Installare di nuovo il client SISS, o chiedere all'assistenza SISS. Il resto funziona."};
}

Finding CheckRedirected(const Machine& machine)
{
    std::array<wchar_t, 32768> text{};
    const DWORD length = GetEnvironmentVariableW(L"LOCALAPPDATA", text.data(), static_cast<DWORD>(text.size()));
    const std::string siss = SissFolder(machine);
    if (length == 0 || length >= text.size() || siss.size() < 3 || siss[1] != ':')
    {
        return {State::Ok, "Nessuna."};
    }
    const std::string redirected =
        environment::JoinPath(environment::JoinPath(windows::FromWide(text.data()), "VirtualStore"), siss.substr(3));
    return environment::FolderExists(redirected)
               ? Finding{State::Attention,
                         "Windows ha reindirizzato le scritture di questo utente da " + siss + " a " + redirected +
                             ": gli altri non vedono ciò che c'è lì.",
                         "Dare agli utenti il permesso di modificare la cartella " + siss +
                             ", copiarvi il contenuto di quella reindirizzata ed eliminare questa."}
               : Finding{State::Ok, "Nessuna."};
}

} // namespace vellumo::diagnosi
