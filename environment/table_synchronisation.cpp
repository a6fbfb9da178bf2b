#include "environment/table_synchronisation.h"

#include "environment/siss_date_time.h"
#include "host/fault.h"
#include "ui/form_progress.h"

#include <algorithm>
#include <any>
#include <array>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace vellumo::environment
{
namespace
{

constexpr std::string_view clientKey = "Software\\Lisit\\SISS\\ID\\CC_0";
constexpr const char* jobName = "sincronizza";

enum class Effect
{
    ShowOnly,
    ExemptionValidity
};

struct KnownTable
{
    const char* name; // in the index
    const char* code; // column
    const char* description;
    const char* progress;
    Effect effect;
};

constexpr std::array<KnownTable, 3> knownTables = {{
    {"BRANCHE_SPECIALISTICHE", "CD_BRANCA_SPECIALISTICA", "DS_BRANCA_SPECIALISTICA",
     "Importazione branche specialistiche...", Effect::ShowOnly},
    {"ESENZIONI", "CD_APPLICATIVO", "DS_ESENZIONE_SISS", "Importazione esenzioni...", Effect::ExemptionValidity},
    {"MAPPING_REGIONALE", "CD_APPLICATIVO", "DS_PRESTAZIONE_SISS", "Importazione prestazioni...", Effect::ShowOnly},
}};

const KnownTable* FindTable(std::string_view name)
{
    const auto* table = std::ranges::find(knownTables, name, &KnownTable::name);
    return table == knownTables.end() ? nullptr : table;
}

// Columns are looked up once a table; one that it does not have reads as "".
std::int32_t ColumnOf(const SISSImportTable& table, const char* name)
{
    const auto* column = table.Columns().Find(name);
    return column == nullptr ? 0 : column->Index;
}

// Takes over the validity that the region gives an exemption. A code that the host has not paired changes nothing:
// pairing it is the host's business.
class ExemptionValidity
{
public:
    ExemptionValidity(const host::HostServices& services, const SISSImportTable& table)
        : m_services(services)
        , m_start(ColumnOf(table, "DT_INIZIO_VALIDITA"))
        , m_end(ColumnOf(table, "DT_FINE_VALIDITA"))
    {
    }

    void Store(const std::string& code, const SISSImportTableRow& row) const
    {
        const std::int32_t exemption = LocalExemptionOf(code);
        if (exemption == 0)
        {
            return;
        }
        m_services.RequireUtils().WriteRow(
            "Norda..Esenzione", "IDEsenzione", exemption,
            {{"IDEsenzione", exemption},
             {"DataInizioValidita", host::Value::DateOrNull(ConvertSissDateTime(row.Bytes(m_start)))},
             {"DataFineValidita", host::Value::DateOrNull(ConvertSissDateTime(row.Bytes(m_end)))}});
    }

private:
    [[nodiscard]] std::int32_t LocalExemptionOf(const std::string& code) const
    {
        return m_services.RequireUtils()
            .SingleValue("SELECT ISNULL(IDEsenzione, 0) FROM Norda..SISS_Esenzione WHERE Codice = {0}", {code})
            .ToInteger();
    }

    const host::HostServices& m_services;
    std::int32_t m_start;
    std::int32_t m_end;
};

} // namespace

// What was passed over in one run.
class TableSynchronisation::Failures
{
public:
    enum Kind
    {
        Dates,
        Tables,
        Rows,
        Stores
    };

    // Runs one statement about that table.
    template <class Statement>
    void PassOver(Kind kind, const std::string& table, Statement&& statement) noexcept
    {
        try
        {
            std::forward<Statement>(statement)();
        }
        catch (...)
        {
            Note(m_of.at(kind), table);
            m_first = m_first ? m_first : std::current_exception();
        }
    }

    void TellBy(const Tell& tell) const
    {
        if (!m_first)
        {
            return;
        }
        constexpr std::array<std::string_view, 4> names = {
            "tabelle di cui il programma non dà la data", "tabelle non lette", "righe non acquisite",
            "tabelle importate di cui il programma non ha registrato la data"};
        std::string what = "Sincronizzazione delle tabelle regionali";
        const char* between = ": ";
        for (std::size_t kind = 0; kind < names.size(); ++kind)
        {
            if (m_of.at(kind).count > 0)
            {
                what.append(between).append(names.at(kind)).append(" ").append(std::to_string(m_of.at(kind).count));
                what.append(" (").append(m_of.at(kind).tables).append(")");
                between = ", ";
            }
        }
        try
        {
            std::rethrow_exception(m_first);
        }
        catch (const std::exception& fault)
        {
            tell(what + ". Prima causa", fault);
        }
    }

private:
    struct Of
    {
        int count = 0;
        std::string tables;
    };
    static void Note(Of& of, const std::string& table) noexcept
    {
        ++of.count;
        if (!of.tables.ends_with(table))
        {
            host::PassOver([&] { of.tables += (of.tables.empty() ? "" : ", ") + table; });
        }
    }

    std::array<Of, 4> m_of;
    std::exception_ptr m_first;
};

bool TableSynchronisation::Run() const noexcept
{
    Failures failures;
    const bool done = host::Trap(
        false,
        [&]
        {
            RegisterHost();
            const SISSImportIndexs outdated = Outdated(failures);
            return outdated.Count() == 0 || ImportInWindow(outdated, failures);
        },
        [&](const std::exception& fault) { m_tell("Sincronizzazione delle tabelle regionali interrotta", fault); });
    host::PassOver([&] { failures.TellBy(m_tell); });
    return done;
}

// Not every user may write there, and the tables are as good without it.
void TableSynchronisation::RegisterHost() const
{
    host::PassOver([&] { m_settings.WriteMachineText(clientKey, "NOME", "NordaG"); });
    host::PassOver([&] { m_settings.WriteMachineText(clientKey, "VERSIONE", "1.9.22"); });
}

SISSImportIndexs TableSynchronisation::Outdated(Failures& failures) const
{
    SISSImportIndexs outdated;
    for (const SISSImportIndex& index : m_environment.ImportIndexs())
    {
        bool isOutdated = false;
        if (FindTable(index.Name) != nullptr)
        {
            failures.PassOver(Failures::Dates, index.Name, [&] { isOutdated = IsOutdated(index); });
        }
        if (isOutdated)
        {
            outdated.AddObject(index);
        }
    }
    return outdated;
}

// An entry is due when the host's date lies on a later day than the entry's: hosts count on this order of the two.
bool TableSynchronisation::IsOutdated(const SISSImportIndex& index) const
{
    const host::Value hosts = m_services.RequireUtils().TableDate(index.Name);
    return !hosts.IsNull() && hosts.ToDate().DayNumber() > index.UpdateDateTime.DayNumber();
}

bool TableSynchronisation::ImportInWindow(const SISSImportIndexs& indexs, Failures& failures) const
{
    ui::FormProgress progress;
    progress.Parameters() = indexs;
    progress.Load();
    progress.Tag = jobName;
    progress.OnActivate[jobName] = [&](ui::FormProgress& window, const std::any& parameters, std::any& done)
    {
        Import(std::any_cast<const SISSImportIndexs&>(parameters), window, failures);
        done = true;
    };
    progress.InitializeProgress("Sincronizzazione SISS", "Importazione dati");
    m_desktop.ShowModal(progress);
    const bool* done = std::any_cast<bool>(&progress.Result());
    return done != nullptr && *done;
}

void TableSynchronisation::Import(const SISSImportIndexs& indexs, ui::FormProgress& progress, Failures& failures) const
{
    for (const SISSImportIndex& index : indexs)
    {
        failures.PassOver(Failures::Tables, index.Name, [&] { ImportRows(index, progress, failures); });
    }
}

// A table that cannot be opened keeps the host's date as it is; every other has its own stored afterwards.
void TableSynchronisation::ImportRows(const SISSImportIndex& index, ui::FormProgress& progress,
                                      Failures& failures) const
{
    const KnownTable& known = *FindTable(index.Name);
    const SISSImportTable table = m_environment.GetImportTable(index);
    const std::int32_t codeColumn = ColumnOf(table, known.code);
    const std::int32_t descriptionColumn = ColumnOf(table, known.description);
    const ExemptionValidity validity(m_services, table);
    for (std::int32_t position = 1; position <= table.RowCount(); ++position)
    {
        const SISSImportTableRow row = table.Item(position);
        const std::string code = row.Field(codeColumn);
        host::PassOver([&] { progress.SetProgressValue(position, table.RowCount()); });
        host::PassOver(
            [&] { progress.SetProgressInformation(known.progress, code + " - " + row.Field(descriptionColumn)); });
        if (known.effect == Effect::ExemptionValidity)
        {
            failures.PassOver(Failures::Rows, index.Name, [&] { validity.Store(code, row); });
        }
    }
    failures.PassOver(Failures::Stores, index.Name,
                      [&] {
                          m_services.RequireUtils().StoreTableDate(index.Name, index.UpdateDateTime,
                                                                   m_services.RequireLockSrv().UserId());
                      });
}

} // namespace vellumo::environment
