#include "service/journal.h"

#include "host/fault.h"
#include "host/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <utility>

namespace vellumo::service
{
namespace
{

constexpr std::size_t mostCharacters = 2000;
constexpr std::string_view folderLine =
    "DA CONTROLLARE: la cartella SISS\\Tracce del programma non può essere scritta. "
    "I codici del SISS non sono al sicuro se il programma si chiude in modo anomalo: "
    "controllare che gli utenti possano crearvi file.";

std::string OneLine(std::string_view text)
{
    std::string beginning = host::FirstCharacters(text, mostCharacters);
    const bool isCut = beginning.size() < text.size();
    if (isCut)
    {
        beginning = host::FirstCharacters(beginning, mostCharacters - 1);
    }
    std::string line;
    for (const char character : beginning)
    {
        const bool breaks = character == '\r' || character == '\n' || character == '\t';
        if (!breaks || !line.ends_with(' '))
        {
            line += breaks ? ' ' : character;
        }
    }
    return isCut ? line + "…" : line;
}

struct Quotation
{
    std::string_view opens;
    std::string_view closes;
};

constexpr std::array<Quotation, 8> quotations = {{
    {"\"", "\""},
    {"'", "'"},
    {"(", ")"},
    {"[", "]"},
    {"{", "}"},
    {"<", ">"},
    {"«", "»"},
    {"“", "”"},
}};

// Accents count: no other character begins or ends a quotation.
bool IsLetterAt(std::string_view text, std::size_t position)
{
    return position < text.size() &&
           (host::IsLetter(text[position]) || static_cast<unsigned char>(text[position]) >= 0x80);
}

// Behind a letter it is one.
bool IsApostrophe(std::string_view text, std::size_t position)
{
    return text[position] == '\'' && position > 0 && IsLetterAt(text, position - 1);
}

const Quotation* OpensAt(std::string_view text, std::size_t position, Parentheses parentheses)
{
    const auto* found = std::ranges::find_if(quotations, [&](const Quotation& quotation)
                                             { return text.substr(position).starts_with(quotation.opens); });
    const bool isKept = found != quotations.end() && found->opens == "(" && parentheses == Parentheses::Kept;
    return found == quotations.end() || isKept || IsApostrophe(text, position) ? nullptr : found;
}

// Where the quotation ends that begins before `from`; one that is not closed has no end. Brackets may stand in
// brackets, and an apostrophe in what single quotes enclose.
std::size_t EndOf(const Quotation& quotation, std::string_view text, std::size_t from)
{
    const bool nests = quotation.opens != quotation.closes;
    for (int depth = 1; from < text.size(); ++from)
    {
        const auto rest = text.substr(from);
        if (nests && rest.starts_with(quotation.opens))
        {
            ++depth;
        }
        const bool isApostrophe = quotation.closes == "'" && IsLetterAt(text, from + 1);
        if (rest.starts_with(quotation.closes) && !isApostrophe && --depth == 0)
        {
            return from;
        }
    }
    return std::string_view::npos;
}

} // namespace

Journal::Journal(const host::HostServices& services, host::Traces& traces)
    : m_services(services)
    , m_traces(traces)
{
}

bool Journal::Write(Urgency urgency, std::string_view text) noexcept
{
    return host::Trap(false,
                      [&]
                      {
                          const std::string line =
                              OneLine(std::string(urgency == Urgency::ToCheck ? toCheck : "").append(text));
                          const bool written = WriteToHost(line);
                          if (!m_traces.Append(line))
                          {
                              TellOfFolder();
                          }
                          return written;
                      });
}

std::shared_ptr<host::OpenCodeEntry> Journal::Keep(const host::OpenCode& code) noexcept
{
    auto entry = m_traces.Keep(code);
    if (!entry)
    {
        TellOfFolder();
    }
    return entry;
}

void Journal::TellOfFolder() noexcept
{
    if (!std::exchange(m_toldOfFolder, true))
    {
        host::PassOver([&] { static_cast<void>(WriteToHost(std::string(folderLine))); });
    }
}

bool Journal::WriteToHost(const std::string& line) const noexcept
{
    return host::Trap(false,
                      [&]
                      {
                          m_services.RequireUtils().RecordServiceError(line);
                          return true;
                      });
}

std::string WhyOf(const std::exception& failure)
{
    const auto* fault = dynamic_cast<const host::Fault*>(&failure);
    std::string why;
    if (fault != nullptr && fault->Number() != 0)
    {
        std::array<char, 16> number{};
        std::snprintf(number.data(), number.size(), "0x%08X", static_cast<std::uint32_t>(fault->Number()));
        why.append("errore ").append(number.data()).append(fault->Source().empty() ? "" : " di " + fault->Source());
        why += ": ";
    }
    return why + WithoutQuotedValues(failure.what());
}

std::string IdentifierText(const host::Value& identifier)
{
    return host::Trap(std::string("sconosciuto"), [&] { return std::to_string(identifier.ToInteger()); });
}

std::string WithoutQuotedValues(std::string_view text, Parentheses parentheses)
{
    std::string masked;
    for (std::size_t position = 0; position < text.size();)
    {
        const Quotation* quotation = OpensAt(text, position, parentheses);
        if (quotation == nullptr)
        {
            masked += text[position++];
            continue;
        }
        const std::size_t end = EndOf(*quotation, text, position + quotation->opens.size());
        masked.append(quotation->opens).append("…");
        if (end == std::string_view::npos)
        {
            return masked;
        }
        masked += quotation->closes;
        position = end + quotation->closes.size();
    }
    return masked;
}

} // namespace vellumo::service
