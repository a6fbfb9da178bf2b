#include "diagnosi/support/anonymiser.h"

#include "environment/siss_date_time.h"
#include "host/text.h"
#include "service/journal.h"
#include "service/siss_codes.h"

#include <algorithm>
#include <random>
#include <utility>

namespace vellumo::diagnosi
{
namespace
{

constexpr std::string_view masked = "[mascherato]";
static_assert(masked.starts_with(maskedBeginning));
constexpr std::size_t longestWithoutLength = 16; // characters

Random RandomOfSystem()
{
    return [] { return std::random_device()(); };
}

// Texts that are the same for everybody.
bool IsKnownText(const std::string& text)
{
    return std::ranges::any_of(service::SissCodes(),
                               [&](const service::SissCode& code) { return code.meaning == text; });
}

// That a note was too long, or empty, is worth knowing; how long a name is, is not.
std::string MaskedText(std::string_view what, const std::string& value)
{
    const auto count = host::CharacterCount(value);
    return count <= longestWithoutLength ? std::string(masked)
                                         : '[' + std::string(what) + ", " + std::to_string(count) + " caratteri]";
}

std::string YearOf(const std::string& value)
{
    const host::Date date = environment::ConvertSissDateTime(value);
    if (date.IsZero())
    {
        return std::string(masked);
    }
    return host::Date::FromCalendar(date.ToCalendar().year, 1, 1).value_or(host::Date()).ToSissText();
}

PersonData PersonIn(const xml::Node& element)
{
    PersonData person;
    for (const xml::Node& child : element.ChildElements())
    {
        switch (MaskOfElement(child.Name()))
        {
        case Mask::FiscalCode:
            person.fiscalCode = child.Text();
            break;
        case Mask::Card:
            person.card = child.Text();
            break;
        case Mask::Surname:
            person.surname = child.Text();
            break;
        case Mask::GivenName:
            person.givenName = child.Text();
            break;
        default:
            break;
        }
    }
    return person;
}

// An element's name is SISS's and says nothing of anybody, as long as it looks like one.
bool HasProperNames(const xml::Node& element)
{
    const auto isProper = [](const std::string& name)
    {
        const auto local = std::string_view(name).substr(name.find(':') + 1);
        return IsCodeLike(name) && !IsFiscalCode(local);
    };
    const auto attributes = element.AttributeNames();
    const auto children = element.ChildElements();
    return isProper(element.Name()) && std::ranges::all_of(attributes, isProper) &&
           std::ranges::all_of(children, HasProperNames);
}

// Behind "2026-11-22 12.09.35 Vellumo 1.2.3.456 "; npos for a line that does not begin so.
std::size_t BeginOfText(std::string_view line)
{
    constexpr std::string_view name = " Vellumo ";
    constexpr std::size_t stamp = 19;
    if (line.size() < stamp + name.size() || line.substr(stamp, name.size()) != name)
    {
        return std::string_view::npos;
    }
    const auto version = line.substr(stamp + name.size());
    const auto end = version.find(' ');
    const bool isVersion = end != std::string_view::npos &&
                           version.substr(0, end).find_first_not_of("0123456789.") == std::string_view::npos;
    const bool isStamp = line.substr(0, stamp).find_first_not_of("0123456789-. ") == std::string_view::npos;
    return isVersion && isStamp ? stamp + name.size() + end + 1 : std::string_view::npos;
}

} // namespace

Anonymiser::Anonymiser(Random random)
    : m_persons(random ? std::move(random) : RandomOfSystem())
{
}

void Anonymiser::Learn(const std::string& message)
{
    if (const auto document = xml::Document::FromText(message))
    {
        LearnElement(document->Root());
    }
}

void Anonymiser::LearnElement(const xml::Node& element)
{
    const auto person = PersonIn(element);
    m_persons.Learn(person);
    for (const auto& code : {person.fiscalCode, person.card})
    {
        if (!code.empty())
        {
            m_known.Add(code, m_persons.TagOf(person));
        }
    }
    const auto children = element.ChildElements();
    if (children.empty())
    {
        LearnValue(element.Name(), element.Text());
    }
    std::ranges::for_each(children, [&](const xml::Node& child) { LearnElement(child); });
}

void Anonymiser::LearnValue(const std::string& name, const std::string& value)
{
    constexpr std::size_t longText = 12; // of a shorter one the words may be anybody's
    const Mask mask = MaskOfElement(name);
    switch (mask == Mask::Keep && !IsCodeLike(value) ? Mask::Other : mask)
    {
    case Mask::Surname:
    case Mask::GivenName:
        LearnName(value);
        break;
    case Mask::Place:
        m_known.Add(value, masked, 5);
        break;
    case Mask::Year:
        m_known.Add(value, masked, 8);
        break;
    case Mask::Health:
    case Mask::Text:
    case Mask::Other:
        m_known.Add(value, masked, longText);
        break;
    default:
        break;
    }
}

std::string Anonymiser::Message(const std::string& message)
{
    const auto document = xml::Document::FromText(message);
    if (message.empty() || (!document && IsKnownText(message)))
    {
        return message;
    }
    if (!document || !HasProperNames(document->Root()))
    {
        m_tally.Add(Mask::Whole);
        return "[testo mascherato, " + std::to_string(host::CharacterCount(message)) + " caratteri]";
    }
    MaskElement(document->Root(), {});
    return document->Xml();
}

void Anonymiser::MaskElement(const xml::Node& element, const PersonData& person)
{
    MaskAttributes(element);
    const auto children = element.ChildElements();
    if (children.empty())
    {
        if (const std::string value = element.Text(); !value.empty())
        {
            element.SetText(Masked(MaskOfElement(element.Name()), value, person));
        }
        return;
    }
    if (const std::string text = element.OwnText(); !text.empty())
    {
        // No message of SISS has text between elements.
        m_tally.Add(Mask::Other);
        element.SetText(MaskedText("testo mascherato", element.Text()));
        return;
    }
    const PersonData here = PersonIn(element);
    std::ranges::for_each(children, [&](const xml::Node& child) { MaskElement(child, here); });
}

void Anonymiser::MaskAttributes(const xml::Node& element)
{
    for (const auto& name : element.AttributeNames())
    {
        const auto attribute = element.Select("@" + name);
        if (!IsHarmlessAttribute(name, attribute.Text()))
        {
            m_tally.Add(Mask::Other);
            attribute.SetText(name.starts_with("xmlns") ? "urn:mascherato" : masked);
        }
    }
}

std::string Anonymiser::Masked(Mask mask, const std::string& value, const PersonData& person)
{
    if (mask == Mask::Keep && IsCodeLike(value))
    {
        return WithoutKnown(value);
    }
    if (mask == Mask::Text && IsKnownText(value))
    {
        return value;
    }
    m_tally.Add(mask == Mask::Keep ? Mask::Other : mask);
    switch (mask)
    {
    case Mask::FiscalCode:
    case Mask::Card:
    case Mask::Surname:
    case Mask::GivenName:
        return PersonText(mask, value, person);
    case Mask::Year:
        return YearOf(value);
    default:
        break;
    }
    if (const auto tag = m_persons.TagOf(std::string_view(value)))
    {
        return Persons::FiscalCodeOf(*tag);
    }
    return MaskedText(mask == Mask::Text ? "testo del SISS" : "mascherato", value);
}

std::string Anonymiser::PersonText(Mask mask, const std::string& value, const PersonData& person)
{
    std::string tag = m_persons.TagOf(person);
    switch (mask)
    {
    case Mask::FiscalCode:
        // One that is mistyped is worth seeing.
        return IsFiscalCode(value)
                   ? Persons::FiscalCodeOf(tag)
                   : tag + "[non valido, " + std::to_string(host::CharacterCount(value)) + " caratteri]";
    case Mask::Card:
        return Persons::CardOf(tag);
    case Mask::Surname:
        return tag;
    default:
        return "PERSONA";
    }
}

std::string Anonymiser::WithoutKnown(std::string_view text)
{
    std::size_t count = 0;
    std::string out = m_known.Replaced(text, count);
    for (; count > 0; --count)
    {
        m_tally.Add(Mask::Found);
    }
    return out;
}

std::string Anonymiser::WithoutFiscalCodes(std::string_view text)
{
    constexpr std::size_t size = 16;
    std::string out;
    for (std::size_t position = 0; position < text.size();)
    {
        if (!IsFiscalCode(text.substr(position, size)))
        {
            out += text[position++];
            continue;
        }
        m_tally.Add(Mask::Found);
        out += masked;
        position += size;
    }
    return out;
}

std::string Anonymiser::Line(std::string_view line)
{
    const std::size_t begin = BeginOfText(line);
    if (begin == std::string_view::npos)
    {
        m_tally.Add(Mask::Quoted);
        return MaskedText("riga mascherata", std::string(line));
    }
    const std::string text(line.substr(begin));
    std::string unquoted = service::WithoutQuotedValues(text, service::Parentheses::Kept);
    // "(CODE) text" is what the host's journal gets of a failure that was shown.
    const auto closes = unquoted.find(") ");
    const bool isFailure = unquoted.starts_with('(') && closes != std::string::npos &&
                           IsCodeLike(std::string_view(unquoted).substr(1, closes - 1));
    if (isFailure && !IsKnownText(unquoted.substr(closes + 2)))
    {
        unquoted.replace(closes + 2, std::string::npos, MaskedText("testo del SISS", text.substr(closes + 2)));
    }
    if (unquoted != text)
    {
        m_tally.Add(Mask::Quoted);
    }
    return std::string(line.substr(0, begin)) + WithoutFiscalCodes(WithoutKnown(unquoted));
}

std::string Anonymiser::Report(std::string_view text)
{
    constexpr std::string_view users = "\\Users\\";
    std::string out;
    for (auto found = text.find(users); found != std::string_view::npos; found = text.find(users))
    {
        const auto end = std::min(text.find_first_of("\\\"\r\n", found + users.size()), text.size());
        out.append(text.substr(0, found + users.size())).append(masked);
        m_tally.Add(Mask::Found);
        text.remove_prefix(end);
    }
    return WithoutFiscalCodes(WithoutKnown(out.append(text)));
}

std::string Anonymiser::Machine(const std::string& name)
{
    const auto [machine, isNew] = m_machines.try_emplace(host::WithoutCase(name), "");
    if (isNew)
    {
        m_tally.Add(Mask::Machine);
        machine->second = "postazione" + std::to_string(m_machines.size());
    }
    return machine->second;
}

} // namespace vellumo::diagnosi
