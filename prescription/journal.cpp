#include "prescription/journal.h"

#include "host/fault.h"

namespace vellumo::prescription
{
namespace
{

std::string_view OrNone(std::string_view code)
{
    return code.empty() ? "nessuno" : code;
}

std::string LineOf(const host::PrescriptionKey& key, std::initializer_list<std::string_view> parts)
{
    std::string line = "Ricetta " + std::to_string(key.IDRicetta) + ", numero " + std::to_string(key.NumRicetta) + ": ";
    for (const auto part : parts)
    {
        line += part;
    }
    return line;
}

} // namespace

void Journal::NotSaved(const host::PrescriptionKey& key, const Codes& codes, std::string_view reason) const noexcept
{
    if (!codes.iup.empty() || !codes.protocollo.empty())
    {
        Write(key, {"codici del SISS non salvati (IUP ", codes.iup, ", protocollo ", codes.protocollo, "). ", reason});
    }
}

void Journal::NotConfirmed(const host::PrescriptionKey& key, std::string_view iup) const noexcept
{
    Write(key, {"IUP ", iup, " senza conferma alla chiusura. Verificare sul SISS."});
}

void Journal::OtherCode(const host::PrescriptionKey& key, std::string_view given, std::string_view final) const noexcept
{
    Write(key,
          {"IUP ", OrNone(given), " alla registrazione, IUP ", OrNone(final), " alla chiusura. Verificare sul SISS."});
}

void Journal::Replaced(const host::PrescriptionKey& key, std::string_view old, std::string_view now) const noexcept
{
    Write(key,
          {"IUP ", old, " sostituito nella tabella RicettaSSN, IUP attuale ", OrNone(now), ". Verificare sul SISS."});
}

std::string Journal::Name(std::int32_t kind, const host::PrescriptionKey& key)
{
    return std::string(kind == host::kindDrugs ? "Ricetta farmaci " : "Ricetta accertamenti ") +
           std::to_string(key.IDRicetta) + ", numero " + std::to_string(key.NumRicetta);
}

void Journal::Write(const host::PrescriptionKey& key, std::initializer_list<std::string_view> parts) const noexcept
{
    host::PassOver([&] { m_services.RequireUtils().RecordServiceError(LineOf(key, parts)); });
}

} // namespace vellumo::prescription
