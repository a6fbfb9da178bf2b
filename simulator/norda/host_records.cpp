#include "simulator/norda/host_records.h"

#include "host/database_contract.h"
#include "host/fault.h"
#include "host/host_services.h"
#include "host/text.h"
#include "simulator/norda/host_utils.h"

#include <algorithm>

namespace vellumo::norda
{

namespace
{

struct Table
{
    const char* name;
    const char* key;
};

Table TableOf(host::RecordKind kind)
{
    switch (kind)
    {
    case host::RecordKind::Patient:
        return {"Paziente", "IDPaziente"};
    case host::RecordKind::Asl:
        return {"Norda..Asl", "IDAsl"};
    case host::RecordKind::Specialist:
        return {"Specialista", "IDSpecialista"};
    }
    throw host::Fault("Tipo di scheda sconosciuto.");
}

// One row: all its columns as they were read, and which of them have been set since.
class HostRecord final : public SavingRecord
{
public:
    HostRecord(Table table, std::shared_ptr<Database> database, std::vector<host::ColumnValue> initial,
               std::shared_ptr<SaveHabit> habit)
        : m_table(table)
        , m_database(std::move(database))
        , m_initial(std::move(initial))
        , m_habit(std::move(habit))
    {
    }

    [[nodiscard]] bool Load(std::int32_t id) override
    {
        const auto rows = Select(std::string(m_table.key) + " = " + std::to_string(id));
        if (rows->IsAtEnd())
        {
            return false;
        }
        Take(*rows, true);
        m_key = id;
        return true;
    }

    void StartNew() override
    {
        Take(*Select("1 = 0"), false);
        m_key = {};
        for (const auto& [column, value] : m_initial)
        {
            Set(column, value);
        }
    }

    [[nodiscard]] host::Value Read(std::string_view column) const override { return Find(column).value; }

    void Set(std::string_view column, const host::Value& value) override
    {
        auto& field = const_cast<Field&>(Find(column)); // the one search serves both
        field.value = value;
        field.changed = true;
    }

    [[nodiscard]] bool Save() override
    {
        if (m_habit)
        {
            ++m_habit->met;
            if (m_habit->refuses)
            {
                return false;
            }
        }
        std::vector<host::ColumnValue> changed;
        changed.reserve(m_fields.size());
        for (const auto& field : m_fields)
        {
            if (field.changed && !host::EqualsIgnoringCase(field.name, m_table.key))
            {
                changed.push_back({field.name, field.value});
            }
        }
        m_key = StoreRow(*m_database, m_table.name, m_table.key, m_key, changed);
        for (auto& field : m_fields)
        {
            field.changed = false;
            if (host::EqualsIgnoringCase(field.name, m_table.key))
            {
                field.value = m_key;
            }
        }
        return true;
    }

    [[nodiscard]] std::int32_t Id() const override { return m_key.ToInteger(); }
    [[nodiscard]] bool SavesWithoutResult() const noexcept override { return m_habit && !m_habit->refuses; }

private:
    struct Field
    {
        std::string name;
        host::Value value;
        bool changed = false;
    };

    [[nodiscard]] std::unique_ptr<host::Recordset> Select(const std::string& condition) const
    {
        return m_database->Open(std::string("SELECT * FROM ") + m_table.name + " WHERE " + condition);
    }

    // Only what the contract names can be asked for: a record of another host may have no more.
    void Take(const host::Recordset& rows, bool withValues)
    {
        m_fields.clear();
        m_fields.reserve(rows.ColumnCount());
        for (std::size_t i = 0; i < rows.ColumnCount(); ++i)
        {
            std::string column = rows.ColumnName(i);
            host::Value value = withValues ? rows.Read(i) : host::Value(); // in order, as a strict host's are
            if (IsOwn(column) || host::MayUseColumn(m_table.name, column))
            {
                m_fields.push_back({std::move(column), std::move(value)});
            }
        }
    }

    [[nodiscard]] bool IsOwn(std::string_view column) const
    {
        return host::EqualsIgnoringCase(column, m_table.key) ||
               std::ranges::any_of(m_initial, [&](const host::ColumnValue& initial)
                                   { return host::EqualsIgnoringCase(initial.column, column); });
    }

    [[nodiscard]] const Field& Find(std::string_view column) const
    {
        for (const auto& field : m_fields)
        {
            if (host::EqualsIgnoringCase(field.name, column))
            {
                return field;
            }
        }
        throw host::Fault(m_fields.empty() ? "La scheda non è stata caricata."
                                           : "La scheda di " + std::string(m_table.name) + " non ha la colonna \"" +
                                                 std::string(column) + "\".");
    }

    Table m_table;
    std::shared_ptr<Database> m_database;
    std::vector<host::ColumnValue> m_initial;
    std::shared_ptr<SaveHabit> m_habit;
    std::vector<Field> m_fields;
    host::Value m_key;
};

class HostSettings final : public host::PracticeSettings
{
public:
    explicit HostSettings(std::shared_ptr<Database> database)
        : m_database(std::move(database))
    {
    }

    [[nodiscard]] bool Load(std::int32_t studio) override
    {
        m_studio = studio;
        return !m_database->Single("SELECT IDStudio FROM Studio WHERE IDStudio = " + std::to_string(studio)).IsNull();
    }

    [[nodiscard]] host::Value Read(std::string_view name) const override
    {
        return m_database->Single("SELECT Valore FROM ImpostazioneStudio WHERE IDStudio = " + std::to_string(m_studio) +
                                  " AND Nome = " + Literal(m_database->GetDialect(), host::Value(name)));
    }

private:
    std::shared_ptr<Database> m_database;
    std::int32_t m_studio = 0;
};

} // namespace

std::shared_ptr<Database> DatabaseOf(const host::HostServices& services)
{
    auto database = std::dynamic_pointer_cast<Database>(services.connection);
    if (!database)
    {
        throw host::Fault("La scheda non ha ricevuto la connessione al database.");
    }
    return database;
}

std::unique_ptr<host::Record> MakeRow(const char* table, const char* key, std::shared_ptr<Database> database,
                                      std::shared_ptr<SaveHabit> habit)
{
    return std::make_unique<HostRecord>(Table{table, key}, std::move(database), std::vector<host::ColumnValue>(),
                                        std::move(habit));
}

std::unique_ptr<host::Record> HostObjects::CreateRecord(host::RecordKind kind, const host::HostServices& services)
{
    std::vector<host::ColumnValue> initial;
    if (kind == host::RecordKind::Patient)
    {
        initial = {{"IDStudio", services.studio}, {"Deceduto", false}, {"Revocato", false}};
    }
    const auto habit = m_habits.find(kind);
    return std::make_unique<HostRecord>(TableOf(kind), DatabaseOf(services), std::move(initial),
                                        habit == m_habits.end() ? nullptr : habit->second);
}

std::shared_ptr<host::Record> HostObjects::LoadCertificate(std::shared_ptr<Database> database, std::int32_t id) const
{
    auto certificate =
        std::make_shared<HostRecord>(Table{"CertificatoMalattia", "IDCertificatoMalattia"}, std::move(database),
                                     std::vector<host::ColumnValue>(), m_certificateHabit);
    if (!certificate->Load(id))
    {
        throw host::Fault("Il certificato " + std::to_string(id) + " non esiste.");
    }
    return certificate;
}

std::unique_ptr<host::PracticeSettings> HostObjects::CreateSettings(const host::HostServices& services)
{
    return std::make_unique<HostSettings>(DatabaseOf(services));
}

} // namespace vellumo::norda
