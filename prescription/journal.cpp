#include "prescription/journal.h"

#include "host/fault.h"

#include <utility>

namespace vellumo::prescription
{
namespace
{

std::string_view OrNone(std::string_view code)
{
    return code.empty() ? "nessuno" : code;
}

std::string TextOf(const Codes& codes)
{
    std::string text = codes.iup.empty() ? "" : "IUP " + codes.iup;
    if (!codes.protocollo.empty())
    {
        text.append(text.empty() ? "" : ", ").append("protocollo ").append(codes.protocollo);
    }
    return text;
}

std::string Line(std::string_view subject, std::initializer_list<std::string_view> parts)
{
    std::string line(subject);
    line += ": ";
    for (const auto part : parts)
    {
        line += part;
    }
    return line;
}

} // namespace

std::string PrescriptionId::Name() const
{
    std::string name = "Ricetta ";
    name += kind == host::kindDrugs ? "farmaci " : kind == host::kindTests ? "accertamenti " : "";
    name += std::to_string(key.IDRicetta);
    return key.NumRicetta == 0 ? name : name + ", numero " + std::to_string(key.NumRicetta);
}

void Settle(OpenCode& code) noexcept
{
    if (const auto settled = std::exchange(code, nullptr))
    {
        settled->Settle();
    }
}

std::int32_t Journal::User() const noexcept
{
    return host::Trap(0, [&] { return m_context.services.RequireLockSrv().UserId(); });
}

OpenCode Journal::Keep(std::string_view subject, const Codes& codes, std::int32_t user) const noexcept
{
    return host::Trap(OpenCode(),
                      [&]
                      {
                          const std::string text = TextOf(codes);
                          return text.empty() ? nullptr
                                              : m_context.traces.Keep(
                                                    {m_context.services.studio, user, std::string(subject), text});
                      });
}

void Journal::NotSaved(const PrescriptionId& id, const Codes& codes, std::string_view reason,
                       OpenCode& open) const noexcept
{
    Tell({&open},
         [&]
         {
             const std::string text = TextOf(codes);
             return Line(id.Name(), {text.empty() ? "esito del SISS non salvato" : "codici del SISS non salvati (",
                                     text, text.empty() ? ". " : "). ", reason});
         });
}

void Journal::NotConfirmed(const PrescriptionId& id, std::string_view iup, OpenCode& open) const noexcept
{
    Tell({&open},
         [&] {
             return Line(id.Name(), {"IUP ", iup, " senza conferma alla chiusura. Verificare sul SISS."});
         });
}

void Journal::OtherCode(const PrescriptionId& id, std::string_view given, OpenCode& openGiven, std::string_view final,
                        OpenCode& openFinal) const noexcept
{
    Tell({&openGiven, &openFinal},
         [&]
         {
             return Line(id.Name(), {"IUP ", OrNone(given), " alla registrazione, IUP ", OrNone(final),
                                     " alla chiusura. Verificare sul SISS."});
         });
}

void Journal::Replaced(const PrescriptionId& id, std::string_view old, OpenCode& openOld,
                       std::string_view now) const noexcept
{
    Tell({&openOld},
         [&]
         {
             return Line(id.Name(), {"IUP ", old, " sostituito nella tabella RicettaSSN, IUP attuale ", OrNone(now),
                                     ". Verificare sul SISS."});
         });
}

void Journal::LeftOver(std::string_view subject, const Codes& codes, OpenCode& open) const noexcept
{
    Tell({&open},
         [&]
         {
             return Line(subject, {"esito finale senza una ricetta in cui salvarlo (", TextOf(codes),
                                   "). Verificare sul SISS."});
         });
}

void Journal::RegistrationBroken(const PrescriptionId& id, const std::exception& fault) const noexcept
{
    host::PassOver(
        [&] {
            m_context.journal.Write(Line(id.Name(), {"registrazione interrotta. ", service::WhyOf(fault)}));
        });
}

void Journal::ClosingBroken(const std::exception& fault) const noexcept
{
    host::PassOver(
        [&] {
            m_context.journal.Write(
                Line("Chiusura della sessione di prescrizione interrotta", {service::WhyOf(fault)}));
        });
}

template <class Text>
void Journal::Tell(std::initializer_list<OpenCode*> codes, Text&& text) const noexcept
{
    if (host::Trap(false, [&] { return m_context.journal.WriteToCheck(text()); }))
    {
        for (OpenCode* code : codes)
        {
            Settle(*code);
        }
    }
}

} // namespace vellumo::prescription
