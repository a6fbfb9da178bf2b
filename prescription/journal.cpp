#include "prescription/journal.h"

#include "host/fault.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace vellumo::prescription
{
namespace
{

std::string_view OrNone(std::string_view code)
{
    return code.empty() ? "nessuno" : code;
}

struct KindName
{
    std::int32_t kind;
    std::string_view name;
};
constexpr std::array<KindName, 2> kindNames = {{{host::kindDrugs, "farmaci "}, {host::kindTests, "accertamenti "}}};

constexpr std::string_view prescriptionWord = "Ricetta ";
constexpr std::string_view numberWord = ", numero ";
constexpr std::string_view iupWord = "IUP ";
constexpr std::string_view protocolWord = "protocollo ";
constexpr std::string_view separator = ", ";

bool Skip(std::string_view& text, std::string_view word)
{
    const bool found = text.starts_with(word);
    text.remove_prefix(found ? word.size() : 0);
    return found;
}

// Takes the number that the text begins with.
std::optional<std::int32_t> TakeNumber(std::string_view& text)
{
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return error == std::errc() ? std::optional(number) : std::nullopt;
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
    std::string name(prescriptionWord);
    if (const auto* const found = std::ranges::find(kindNames, kind, &KindName::kind); found != kindNames.end())
    {
        name += found->name;
    }
    name += std::to_string(key.IDRicetta);
    return key.NumRicetta == 0 ? name : name.append(numberWord).append(std::to_string(key.NumRicetta));
}

std::optional<PrescriptionId> PrescriptionId::FromName(std::string_view name)
{
    if (!Skip(name, prescriptionWord))
    {
        return std::nullopt;
    }
    const auto* const kind =
        std::ranges::find_if(kindNames, [&](const KindName& candidate) { return Skip(name, candidate.name); });
    const auto form = TakeNumber(name);
    const auto number = Skip(name, numberWord) ? TakeNumber(name) : 0;
    return kind != kindNames.end() && form && number && name.empty()
               ? std::optional(PrescriptionId{kind->kind, {*form, *number}})
               : std::nullopt;
}

std::string Codes::Text() const
{
    std::string text = iup.empty() ? "" : std::string(iupWord) + iup;
    if (!protocollo.empty())
    {
        text.append(text.empty() ? "" : separator).append(protocolWord).append(protocollo);
    }
    return text;
}

Codes Codes::FromText(std::string_view text)
{
    Codes codes;
    if (Skip(text, iupWord))
    {
        codes.iup = text.substr(0, text.find(separator));
        text.remove_prefix(codes.iup.size());
        Skip(text, separator);
    }
    if (Skip(text, protocolWord))
    {
        codes.protocollo = text;
    }
    return codes;
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
    return host::Trap(
        OpenCode(),
        [&]
        {
            const host::OpenCode code{m_context.services.studio, user, std::string(subject), codes.Text()};
            return code.code.empty() ? nullptr : m_context.journal.Keep(code);
        });
}

void Journal::NotSaved(const PrescriptionId& id, const Codes& codes, std::string_view reason,
                       OpenCode& open) const noexcept
{
    Tell({&open},
         [&]
         {
             const std::string text = codes.Text();
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
             return Line(subject,
                         {"esito finale senza una ricetta in cui salvarlo (", codes.Text(), "). Verificare sul SISS."});
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
