#include "environment/siss_environment.h"

#include "environment/files.h"
#include "host/fault.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace vellumo::environment
{
namespace
{

// The leading number of the text, blanks in it passed over, cut to its whole part; 0 when it starts with none.
int LeadingNumber(std::string_view text)
{
    std::string digits;
    for (const char character : text)
    {
        if (character != ' ')
        {
            digits += character;
        }
    }
    double number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return std::fabs(number) < 1e9 ? static_cast<int>(number) : -1;
}

// Without the time of day that stands behind a blank: blanks within a number count for nothing, so that a time would be
// run into the day.
std::string_view WithoutTime(std::string_view day)
{
    const auto colon = day.find(':');
    const auto blank = colon == std::string_view::npos ? colon : day.rfind(' ', colon);
    return day.substr(0, blank);
}

// A year of one or two digits is read as the platform reads it in a date: up to 29 as 20yy, else as 19yy.
int FullYear(int year)
{
    if (year < 0 || year > 99)
    {
        return year;
    }
    return year + (year < 30 ? 2000 : 1900);
}

} // namespace

SISSEnvironment::SISSEnvironment(host::SettingsStore& settings, const host::Clock& clock)
    : m_clock(clock)
    , m_configuration(settings)
{
}

const SISSImportIndexs& SISSEnvironment::ImportIndexs()
{
    if (!m_importIndexs)
    {
        m_importIndexs.emplace();
        host::PassOver([&] { LoadImportIndexs(); });
    }
    return *m_importIndexs;
}

void SISSEnvironment::LoadImportIndexs()
{
    const SISSImportTable master = GetImportTable(DefaultIndex());
    for (std::int32_t position = 1; position <= master.RowCount(); ++position)
    {
        const SISSImportTableRow row = master.Item(position);
        SISSImportIndex index;
        index.Name = row.Field("ID_CENTRALE");
        index.Filename = row.Field("DS_NOME_FILE");
        host::PassOver(
            [&]
            {
                index.UpdateDateTime = UpdateOf(row.Field("DT_AGGIORNAMENTO"));
                m_importIndexs->AddObject(std::move(index));
            });
    }
}

// A date that cannot be read is none. For lack of memory nothing is known of it: the host would be told that the table
// has none, and never ask for the table again.
host::Date SISSEnvironment::UpdateOf(const std::string& text)
{
    try
    {
        return ConvertToDateTime(text);
    }
    catch (const host::Fault&)
    {
        return {};
    }
}

SISSImportTable SISSEnvironment::GetImportTable(const SISSImportIndex& index) const
{
    const std::string path = JoinPath(m_configuration.ImportWorkingFolder(), index.Filename + ".txt");
    auto table = SISSImportTable::FromFile(path);
    if (!table)
    {
        throw host::Fault("Impossibile aprire il file \"" + path + "\".");
    }
    return std::move(*table);
}

SISSImportIndex SISSEnvironment::DefaultIndex() const
{
    return {"Default", "master", m_clock.Now()};
}

host::Date SISSEnvironment::ConvertToDateTime(const std::string& text)
{
    std::array<int, 3> parts{};
    std::string_view rest = text;
    for (std::size_t part = 0; part < parts.size(); ++part)
    {
        const auto dash = rest.find('-');
        if (dash == std::string_view::npos && part + 1 < parts.size())
        {
            throw host::Fault("Il valore \"" + text + "\" non è una data.");
        }
        const auto number = rest.substr(0, dash);
        parts.at(part) = LeadingNumber(part + 1 < parts.size() ? number : WithoutTime(number));
        rest = dash == std::string_view::npos ? std::string_view() : rest.substr(dash + 1);
    }
    const auto date = host::Date::FromCalendar(FullYear(parts[0]), parts[1], parts[2]);
    if (!date)
    {
        throw host::Fault("Il valore \"" + text + "\" non è una data.");
    }
    return *date;
}

} // namespace vellumo::environment
