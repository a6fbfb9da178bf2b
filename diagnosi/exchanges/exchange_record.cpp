#include "diagnosi/exchanges/exchange_record.h"

#include "diagnosi/exchanges/logged_folder.h"
#include "environment/files.h"
#include "environment/siss_date_time.h"
#include "host/trace_files.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vellumo::diagnosi
{
namespace
{

struct ServiceRow
{
    std::string_view name;
    Operation::Kind kind;
    Place place;
};

constexpr std::array<ServiceRow, 12> services = {{
    {"Identifica Cittadino GUI", Operation::Kind::Identification, Place::None},
    {"Identifica Cittadino Esteso", Operation::Kind::Identification, Place::None},
    {"Identifica Cittadino", Operation::Kind::Identification, Place::None},
    {"Invia Certificato", Operation::Kind::Certificate, Place::None},
    {"Inserimento Contatto", Operation::Kind::Contact, Place::None},
    {"Modifica Contatto", Operation::Kind::Contact, Place::None},
    {"Inizia Fase Prescrittiva", Operation::Kind::Prescriptions, Place::Opens},
    {"Registra Prescrizione Farmaci", Operation::Kind::Prescriptions, Place::Within},
    {"Registra Prescrizione Accertamenti", Operation::Kind::Prescriptions, Place::Within},
    {"Calcola IUP", Operation::Kind::Prescriptions, Place::Within},
    {"Annulla Prescrizione", Operation::Kind::Prescriptions, Place::Within},
    {"Fine Fase Prescrittiva", Operation::Kind::Prescriptions, Place::Ends},
}};
constexpr ServiceRow anyOtherService = {"", Operation::Kind::Other, Place::None};

const ServiceRow& RowOf(std::string_view service)
{
    const auto* row = std::ranges::find(services, service, &ServiceRow::name);
    return row == services.end() ? anyOtherService : *row;
}

// Puts the calls of the folders, given in the order of their times, into operations.
class Arranger
{
public:
    explicit Arranger(std::vector<Operation>& operations)
        : m_operations(operations)
    {
    }

    void Add(const std::string& folder, host::Date time, std::vector<Call> calls)
    {
        if (calls.empty())
        {
            m_operations.push_back({Operation::Kind::NoCalls, time, folder, {}});
            return;
        }
        Life& life = LifeOf(calls);
        std::optional<std::size_t> own; // of this folder and the last kind
        for (Call& call : calls)
        {
            const ServiceRow& row = RowOf(call.service);
            if (row.kind == Operation::Kind::Prescriptions)
            {
                own.reset();
                AddToSession(life, folder, time, row.place, std::move(call));
                continue;
            }
            if (!own || m_operations[*own].kind != row.kind)
            {
                own = Begin(row.kind, folder, time);
            }
            m_operations[*own].calls.push_back(std::move(call));
        }
    }

private:
    // What one provider of the host did. Several programs may share the folder, and each counts for itself: a folder
    // goes on with the life whose last number comes before its first.
    struct Life
    {
        std::int32_t lastNumber = 0;
        std::optional<std::size_t> session; // the prescribing session that is open
    };

    Life& LifeOf(const std::vector<Call>& calls)
    {
        const auto before =
            std::ranges::find(m_lives.rbegin(), m_lives.rend(), calls.front().number - 1, &Life::lastNumber);
        Life& life = before == m_lives.rend() ? m_lives.emplace_back() : *before;
        life.lastNumber = calls.back().number;
        return life;
    }

    std::size_t Begin(Operation::Kind kind, const std::string& folder, host::Date time)
    {
        m_operations.push_back({kind, time, folder, {}});
        return m_operations.size() - 1;
    }

    void AddToSession(Life& life, const std::string& folder, host::Date time, Place place, Call call)
    {
        // An opening that was refused is tried again, and belongs to the same session.
        const bool isOpening =
            life.session && RowOf(m_operations[*life.session].calls.back().service).place == Place::Opens;
        if (!life.session || (place == Place::Opens && !isOpening))
        {
            life.session = Begin(Operation::Kind::Prescriptions, folder, time);
        }
        m_operations[*life.session].calls.push_back(std::move(call));
        if (place == Place::Ends)
        {
            life.session.reset();
        }
    }

    std::vector<Operation>& m_operations;
    std::vector<Life> m_lives;
};

} // namespace

Tally TallyOf(const ExchangeRecord& record) noexcept
{
    Tally tally;
    for (const Operation& operation : record.operations)
    {
        tally.calls += operation.calls.size();
        tally.bad += static_cast<std::size_t>(
            std::ranges::count_if(operation.calls, [](const Call& call) { return call.outcome.IsBad(); }));
    }
    return tally;
}

bool Period::Has(host::Date time) const
{
    return (firstDay.IsZero() || time.DayNumber() >= firstDay.DayNumber()) &&
           (lastDay.IsZero() || time.DayNumber() <= lastDay.DayNumber());
}

Operation::Kind KindOfService(std::string_view service)
{
    return RowOf(service).kind;
}

Place PlaceOfService(std::string_view service)
{
    return RowOf(service).place;
}

ExchangeRecord ReadExchanges(std::string_view logFolder, const Period& period)
{
    ExchangeRecord record;
    std::vector<std::pair<host::Date, std::string>> folders;
    for (auto& name : host::NamesIn(logFolder))
    {
        const auto time = environment::TimeOfStamp(name);
        if (!time || !environment::FolderExists(environment::JoinPath(logFolder, name)))
        {
            record.skipped.push_back(name + ": non è una cartella del registro");
        }
        else if (period.Has(*time))
        {
            folders.emplace_back(*time, std::move(name));
        }
    }
    std::ranges::sort(folders);
    std::ranges::sort(record.skipped);
    Arranger arranger(record.operations);
    for (const auto& [time, name] : folders)
    {
        arranger.Add(name, time, ReadFolder(logFolder, name, record.skipped));
    }
    return record;
}

} // namespace vellumo::diagnosi
