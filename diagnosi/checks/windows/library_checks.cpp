#include "diagnosi/checks/windows/library_checks.h"

#include "diagnosi/checks/windows/library_file.h"
#include "diagnosi/checks/windows/program_file.h"
#include "host/version.h"
#include "platform/windows/adapters/host_fault.h"
#include "platform/windows/system/bstr.h"
#include "platform/windows/system/com_ptr.h"

#include <vellumo.h>

#include <algorithm>
#include <vector>

namespace vellumo::diagnosi
{
namespace
{

constexpr const char* reinstall = "Installare di nuovo Vellumo.";

std::string ForPrograms(Bitness bitness)
{
    return std::string("per i programmi a ") + NameOf(bitness);
}

struct VersionOf
{
    std::string what;
    std::string version;
};

// What the library itself says, else what the system does.
std::string WhyNot(HRESULT result)
{
    windows::ComPtr<IErrorInfo> information;
    windows::Bstr description;
    const bool isTold = GetErrorInfo(0, information.Put()) == S_OK &&
                        SUCCEEDED(information->GetDescription(description.Put())) && !description.IsEmpty();
    return isTold ? description.Text() : windows::MakeFault(result, "Vellumo.SISSProvider").Description();
}

void Add(std::vector<VersionOf>& versions, const std::string& what, const std::optional<std::string>& version)
{
    if (version)
    {
        versions.push_back({what, *version});
    }
}

} // namespace

Finding CheckLibraryRegistered(const Machine& machine)
{
    static_cast<void>(machine);
    const auto file = LibraryFile(Bitness::This);
    if (!file)
    {
        const std::string other = LibraryFile(Bitness::Other)
                                      ? std::string("; lo è solo ") + ForPrograms(Bitness::Other) + "."
                                      : std::string(".");
        return {State::Error, "La libreria Vellumo.dll non è registrata " + ForPrograms(Bitness::This) + other,
                std::string("Se il programma di cartella clinica è a ") + NameOf(Bitness::This) + ": " + reinstall};
    }
    switch (KindOf(*file))
    {
    case ProgramKind::NotThere:
        return {State::Error, "La libreria registrata, " + *file + ", non c'è.", reinstall};
    case ProgramKind::NoProgram:
        return {State::Error, "Il file " + *file + " non è una libreria di Windows: è rovinato.", reinstall};
    case ProgramKind::OtherBitness:
        return {State::Error,
                "La libreria " + *file + " non è fatta " + ForPrograms(Bitness::This) + ", per cui è registrata.",
                reinstall};
    case ProgramKind::Loads:
        break;
    }
    return {State::Ok, *file + ", " + ForPrograms(Bitness::This)};
}

Finding CheckVersions(const Machine& machine)
{
    static_cast<void>(machine);
    std::vector<VersionOf> versions{{"questo programma", std::string(host::version)}};
    for (const Bitness bitness : {Bitness::This, Bitness::Other})
    {
        if (const auto file = LibraryFile(bitness))
        {
            Add(versions, *file, FileVersion(*file));
        }
    }
    Add(versions, "installazione e modelli", InstalledVersion());
    std::string all;
    for (const auto& [what, version] : versions)
    {
        all += (all.empty() ? "" : "; ") + what + ": " + version;
    }
    const bool isOne =
        std::ranges::all_of(versions, [&](const VersionOf& one) { return one.version == versions[0].version; });
    return isOne
               ? Finding{State::Ok, all}
               : Finding{
                     State::Error, "Le versioni non sono uguali. " + all + ".",
                     "Riavviare il computer, se l'installazione lo ha chiesto; poi, se non basta, installare di nuovo "
                     "l'ultima versione di Vellumo."};
}

Finding CheckProvider(const Machine& machine)
{
    static_cast<void>(machine);
    windows::ComPtr<IUnknown> provider;
    const HRESULT result =
        CoCreateInstance(CLSID_SISSProvider, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, provider.PutVoid());
    return SUCCEEDED(result)
               ? Finding{State::Ok, "Riuscita."}
               : Finding{State::Error, "La libreria non può essere creata: " + WhyNot(result),
                         "Rimediare prima a quanto detto della libreria e del collegamento al SISS, poi ripetere il "
                         "controllo."};
}

} // namespace vellumo::diagnosi
