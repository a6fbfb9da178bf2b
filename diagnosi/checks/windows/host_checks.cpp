#include "diagnosi/checks/windows/host_checks.h"

#include "diagnosi/checks/windows/library_file.h"
#include "diagnosi/checks/windows/program_file.h"
#include "diagnosi/checks/windows/registered_class.h"
#include "host/fault.h"
#include "host/path.h"
#include "platform/windows/adapters/host_contract.h"
#include "platform/windows/adapters/host_name_map.h"
#include "platform/windows/adapters/late_bound.h"
#include "platform/windows/system/text.h"

#include <array>
#include <optional>
#include <string_view>

namespace vellumo::diagnosi
{
namespace
{

namespace names = windows::names;
using windows::FromWide;
using windows::HostNameMap;

constexpr const char* reinstallClient = "Installare il client SISS per i programmi a ";
constexpr const char* reinstallHost =
    "Installare di nuovo il programma di cartella clinica, o chiedere a chi lo fornisce.";

// As the library that is registered reads them. Faults when the file is wrong.
HostNameMap Names()
{
    const auto file = LibraryFile(Bitness::This);
    return file ? HostNameMap::ReadFrom(host::NativePath(*file).parent_path().wstring()) : HostNameMap();
}

// For the checks that come after that of the names, which has told the fault.
HostNameMap NamesOrCompiled()
{
    return host::Trap(HostNameMap(), Names);
}

// A host's class and the object whose members it has.
struct ClassMembers
{
    names::Name progId;
    const wchar_t* object;
};

constexpr std::array<ClassMembers, 6> classes = {{
    {names::patientProgId, names::record::self},
    {names::aslProgId, names::record::self},
    {names::specialistProgId, names::record::self},
    {names::settingsProgId, names::settings::self},
    {names::sessionProgId, names::session::self},
    {names::prescriptionDataProgId, names::prescriptionData::self},
}};

// What the library does without, or asks of patients only.
bool IsNeeded(const windows::HostNeed& need, const names::Name& progId)
{
    const bool isPatients = std::wstring_view(need.name.text) == names::record::studio.text;
    return std::string_view(need.fault) != "passed over" &&
           (!isPatients || std::wstring_view(progId.text) == names::patientProgId.text);
}

std::string MissingMembers(IDispatch& object, const ClassMembers& row, const HostNameMap& map)
{
    std::string missing;
    for (const auto& need : windows::HostContract())
    {
        if (std::wstring_view(need.name.object) != row.object || !IsNeeded(need, row.progId))
        {
            continue;
        }
        auto* name = const_cast<wchar_t*>(map.Of(need.name)); // the function does not write to it
        DISPID id = DISPID_UNKNOWN;
        if (FAILED(object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id)))
        {
            missing += (missing.empty() ? "" : ", ") + FromWide(name);
        }
    }
    return missing;
}

Finding CheckClass(const ClassMembers& row, const HostNameMap& map)
{
    const std::string progId = FromWide(map.Of(row.progId));
    try
    {
        const auto object = windows::CreateByProgId(map.Of(row.progId));
        const auto missing = MissingMembers(*object, row, map);
        return missing.empty()
                   ? Finding{}
                   : Finding{State::Error, "L'oggetto " + progId + " non ha: " + missing + ".",
                             "Mandare questo testo a chi fornisce il programma di cartella clinica: se i nomi "
                             "sono altri, vanno scritti in Vellumo.names.txt accanto a Vellumo.dll."};
    }
    catch (const host::Fault& fault)
    {
        return {State::Error, fault.Description(), reinstallHost};
    }
}

// What is wrong with the registered server; empty when nothing is.
std::optional<std::string> WhyNotUsable(const Server& server)
{
    if (server.file.find('\\') == std::string::npos)
    {
        return std::nullopt; // found along the system's path
    }
    switch (KindOf(server.file))
    {
    case ProgramKind::NotThere:
        return "il file " + server.file + " non c'è";
    case ProgramKind::NoProgram:
        return "il file " + server.file + " è rovinato";
    case ProgramKind::OtherBitness:
        return server.isProgram
                   ? std::nullopt
                   : std::optional("la libreria " + server.file + " è per i programmi a " + NameOf(Bitness::Other));
    case ProgramKind::Loads:
        break;
    }
    return std::nullopt;
}

} // namespace

Finding CheckNames(const Machine& machine)
{
    static_cast<void>(machine);
    try
    {
        static_cast<void>(Names());
        return {State::Ok, "In ordine."};
    }
    catch (const host::Fault& fault)
    {
        return {State::Error, fault.Description(),
                "Correggere il file come dice il testo, o chiedere a chi fornisce il programma di cartella clinica."};
    }
}

Finding CheckBridge(const Machine& machine)
{
    static_cast<void>(machine);
    const std::string progId = FromWide(NamesOrCompiled().Of(names::bridgeProgId));
    const auto serverFor = [&](Bitness bitness)
    {
        const auto classId = ClassOf(progId, bitness);
        return classId ? ServerOf(*classId, bitness) : std::nullopt;
    };
    const std::string remedy = std::string(reinstallClient) + NameOf(Bitness::This) +
                               ", o registrare di nuovo il suo componente; poi riavviare il programma.";
    const auto server = serverFor(Bitness::This);
    if (!server)
    {
        const bool other = serverFor(Bitness::Other).has_value();
        return {State::Error,
                "Il componente " + progId + " del client SISS non è registrato per i programmi a " +
                    NameOf(Bitness::This) +
                    (other ? std::string("; lo è solo per quelli a ") + NameOf(Bitness::Other) + "." : "."),
                remedy};
    }
    if (const auto why = WhyNotUsable(*server))
    {
        return {State::Error, "Il componente " + progId + " del client SISS non può essere usato: " + *why + ".",
                remedy};
    }
    return {State::Ok, server->file};
}

Finding CheckHostClasses(const Machine& machine)
{
    static_cast<void>(machine);
    const auto map = NamesOrCompiled();
    Findings findings;
    std::string unregistered;
    for (const auto& row : classes)
    {
        const std::string progId = FromWide(map.Of(row.progId));
        if (ClassOf(progId, Bitness::This))
        {
            findings.Add(CheckClass(row, map));
        }
        else
        {
            unregistered += (unregistered.empty() ? "" : ", ") + progId;
        }
    }
    if (!unregistered.empty())
    {
        findings.Add({State::Attention, "Non registrati, quindi non controllati da qui: " + unregistered + ".",
                      std::string("Se il programma di cartella clinica lavora e non li registra mai, va bene così. "
                                  "Altrimenti: ") +
                          reinstallHost});
    }
    return findings.Sum("Tutti registrati, con tutti i loro membri.");
}

} // namespace vellumo::diagnosi
