#include "simulator/norda/prescriptions.h"

#include "host/fault.h"
#include "host/host_services.h"
#include "simulator/norda/host_records.h"

#include <string>

namespace vellumo::norda
{
namespace
{

// What COM reports for a failure of any kind.
constexpr auto sessionError = static_cast<std::int32_t>(0x80004005U);

class PrescriptionData final : public host::PrescriptionData
{
public:
    PrescriptionData(std::int32_t kind, std::shared_ptr<Database> database, std::shared_ptr<SaveHabit> habit)
        : m_kind(kind)
        , m_database(std::move(database))
        , m_habit(std::move(habit))
    {
    }

    [[nodiscard]] std::vector<host::PrescriptionKey> List(std::int32_t idRicetta, std::int32_t numRicetta) override
    {
        const auto rows = m_database->Open("SELECT IDRicetta, NumRicetta FROM RicettaSSN WHERE " +
                                           Condition(idRicetta, numRicetta) + " ORDER BY NumRicetta");
        std::vector<host::PrescriptionKey> keys;
        for (; !rows->IsAtEnd(); rows->MoveNext())
        {
            keys.push_back({rows->Field("IDRicetta").ToInteger(), rows->Field("NumRicetta").ToInteger()});
        }
        return keys;
    }

    [[nodiscard]] std::unique_ptr<host::Record> Find(const host::PrescriptionKey& key) override
    {
        const auto id = m_database->Single(
            "SELECT IDRicettaSSN FROM RicettaSSN WHERE IDRicetta = " + std::to_string(key.IDRicetta) +
            " AND NumRicetta = " + std::to_string(key.NumRicetta) + MenuCondition());
        if (id.IsNull())
        {
            return nullptr;
        }
        auto row = MakeRow("RicettaSSN", "IDRicettaSSN", m_database, m_habit);
        return row->Load(id.ToInteger()) ? std::move(row) : nullptr;
    }

private:
    [[nodiscard]] std::string Condition(std::int32_t idRicetta, std::int32_t numRicetta) const
    {
        return "IDRicetta = " + std::to_string(idRicetta) +
               (numRicetta == 0 ? "" : " AND NumRicetta = " + std::to_string(numRicetta)) + MenuCondition();
    }

    // Which menu of the host made the row; a cancellation passes another number, and then the row is found by its key.
    [[nodiscard]] std::string MenuCondition() const
    {
        return m_kind == host::kindDrugs   ? " AND IDMenuItem = 80"
               : m_kind == host::kindTests ? " AND IDMenuItem = 79"
                                           : "";
    }

    std::int32_t m_kind;
    std::shared_ptr<Database> m_database;
    std::shared_ptr<SaveHabit> m_habit;
};

} // namespace

std::shared_ptr<host::OpzioniRicetta> PrescriptionSession::Options() const
{
    return std::dynamic_pointer_cast<host::OpzioniRicetta>(m_options);
}

std::shared_ptr<const bool> PrescriptionSession::Limit::Set(std::size_t count)
{
    left = count;
    return met;
}

void PrescriptionSession::Limit::Use()
{
    if (left == 0)
    {
        *met = true;
        throw host::Fault("La sessione non è più valida.", sessionError, "Norda.Sessione");
    }
    --left;
}

void PrescriptionSession::AddResponse(std::int32_t kind, const std::shared_ptr<host::KeptObject>& response)
{
    m_kept.Use();
    m_responses[kind].push_back(response);
}

std::size_t PrescriptionSession::ResponseCount(std::int32_t kind) const
{
    const auto list = m_responses.find(kind);
    return list == m_responses.end() ? 0 : list->second.size();
}

std::shared_ptr<host::KeptObject> PrescriptionSession::Response(std::int32_t kind, std::size_t position) const
{
    if (position >= ResponseCount(kind))
    {
        throw host::Fault("La sessione non ha una risposta in questa posizione.");
    }
    m_given.Use();
    return m_responses.at(kind)[position];
}

std::unique_ptr<host::PrescriptionData> PrescriptionObjects::CreatePrescriptionData(std::int32_t kind,
                                                                                    const host::HostServices& services)
{
    return std::make_unique<PrescriptionData>(kind, DatabaseOf(services), m_habit);
}

} // namespace vellumo::norda
