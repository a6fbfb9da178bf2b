#include "tests/life/rows.h"

#include "host/fault.h"
#include "service/service_response.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace vellumo::life
{
namespace
{

struct Column
{
    std::string_view name;
    host::Value value;
};
using Columns = std::vector<Column>;

// One row, or none.
class Rows final : public host::Recordset
{
public:
    explicit Rows(const Columns* columns, std::string citizen = {})
        : m_columns(columns)
        , m_citizen(std::move(citizen))
    {
    }
    [[nodiscard]] bool IsAtEnd() const override { return m_columns == nullptr; }
    void MoveNext() override { m_columns = nullptr; }
    [[nodiscard]] std::size_t ColumnCount() const override { return m_columns->size(); }
    [[nodiscard]] std::string ColumnName(std::size_t column) const override
    {
        return std::string((*m_columns)[column].name);
    }
    [[nodiscard]] host::Value Read(std::size_t column) const override { return ValueOf((*m_columns)[column]); }
    [[nodiscard]] host::Value Read(std::string_view name) const override
    {
        const auto found = std::ranges::find(*m_columns, name, &Column::name);
        if (found == m_columns->end())
        {
            throw host::Fault("Colonna sconosciuta: " + std::string(name));
        }
        return ValueOf(*found);
    }

private:
    [[nodiscard]] host::Value ValueOf(const Column& column) const
    {
        return column.name == "PAZ_CodiceFiscale" ? host::Value(m_citizen) : column.value;
    }

    const Columns* m_columns;
    std::string m_citizen;
};

Columns WithCitizen(Columns columns)
{
    columns.insert(columns.end(), {{"PAZ_CodiceFiscale", {}},
                                   {"PAZ_Cognome", "Verdi"},
                                   {"PAZ_Indirizzo", "Via Roma, 1"},
                                   {"PS_GruppoEsenzione", "R"},
                                   {"PS_CodiceIdentificativo", "048"},
                                   {"IDPartecipazioneSpesa", 5},
                                   {"Annotazioni", ""}});
    return columns;
}

Columns Drugs(const host::Value& code)
{
    return WithCitizen({{"CodiceAIC_1", code},
                        {"FarmacoBreve_1", "Farmaco"},
                        {"Quantita_1", 1},
                        {"ClasseFarmaco_1", "A"},
                        {"PosologiaBreve_1", ""},
                        {"NotaCuf_1_Ori", ""},
                        {"CodiceAIC_2", {}}});
}

const Columns& ViewOf(const Prescription& prescription)
{
    static const Columns drugs = Drugs("A1");
    static const Columns noDrugs = Drugs({});
    static const Columns tests = WithCitizen(
        {{"PT_CodicePrestazioneTariffario", "A1"}, {"Prestazione", "Esame"}, {"Quantita", 1}, {"MotivoRicetta", ""}});
    return prescription.kind == 2 ? tests : prescription.withoutItems ? noDrugs : drugs;
}

class LifeConnection final : public host::Connection
{
public:
    explicit LifeConnection(World& world)
        : m_world(world)
    {
    }
    std::unique_ptr<host::Recordset> Open(const std::string& sql) override
    {
        static const Columns specialist = {{"IDSpecialista", 1}};
        m_world.Call(Point::Statement);
        if (sql.find("FROM Specialista") != std::string::npos)
        {
            return std::make_unique<Rows>(&specialist);
        }
        const auto& prescriptions = m_world.plan.prescriptions;
        for (std::size_t i = 0; i < prescriptions.size(); ++i)
        {
            const auto& [kind, form, number, a, b, c] = prescriptions[i];
            if (sql.ends_with(std::string(kind == 1 ? "IDRicettaFarmaci = " : "IDRicettaAccertamenti = ") +
                              std::to_string(form) + " AND NumRicetta = " + std::to_string(number)))
            {
                return std::make_unique<Rows>(&ViewOf(prescriptions[i]), "P" + std::to_string(i));
            }
        }
        return NoRows();
    }
    void BeginTransaction() override {}
    void CommitTransaction() override {}
    void RollbackTransaction() override {}

private:
    World& m_world;
};

// --- RicettaSSN ---

class LifeRow final : public host::Record
{
public:
    LifeRow(World& world, std::size_t place)
        : m_world(world)
        , m_place(place)
        , m_row(world.outside.rows.at(place))
    {
    }
    bool Load(std::int32_t) override { return true; }
    void StartNew() override {}
    [[nodiscard]] host::Value Read(std::string_view column) const override
    {
        m_world.Call(Point::RowGet);
        return column == "CodiceIUP"          ? Padded(m_row.code.View())
               : column == "NumeroProtocollo" ? host::Value(m_row.protocol.View())
                                              : host::Value(m_row.annullata);
    }
    void Set(std::string_view column, const host::Value& value) override
    {
        m_world.Call(Point::RowSet);
        if (column == "CodiceIUP")
        {
            m_row.code = value.ToText();
        }
        else if (column == "NumeroProtocollo")
        {
            m_row.protocol = value.ToText();
        }
        else
        {
            m_row.annullata = value.ToBoolean();
        }
    }
    bool Save() override
    {
        m_world.Call(Point::Save);
        if (m_world.Fails(Point::SaveRefused))
        {
            return false;
        }
        StoredRow& stored = m_world.outside.rows.at(m_place);
        const bool isNew = stored.code.View() != m_row.code.View();
        stored = m_row;
        Check(isNew);
        m_world.Call(Point::Saved);
        return true;
    }
    [[nodiscard]] std::int32_t Id() const override { return static_cast<std::int32_t>(m_place); }

private:
    [[nodiscard]] host::Value Padded(std::string_view code) const
    {
        std::string text(code);
        text.resize(m_world.plan.paddedCodes ? std::max<std::size_t>(text.size(), 20) : text.size(), ' ');
        return text;
    }
    void Check(bool isNew) const
    {
        Outside& outside = m_world.outside;
        const auto code = m_row.code.View();
        const std::string subject = SubjectOf(m_world.plan.prescriptions.at(m_place));
        if (isNew && outside.IsTold(code) && !outside.IsTold(code, static_cast<int>(m_place)))
        {
            outside.Violated("the row of " + subject + " gets " + std::string(code) +
                             ", which registration gave to another prescription");
        }
        if (m_world.givenUp)
        {
            outside.Violated("the row of " + subject + " is written, though the batch was given up");
        }
    }

    World& m_world;
    std::size_t m_place;
    StoredRow m_row;
};

class LifePrescriptionData final : public host::PrescriptionData
{
public:
    LifePrescriptionData(World& world, std::int32_t kind)
        : m_world(world)
        , m_kind(kind)
    {
    }
    std::vector<host::PrescriptionKey> List(std::int32_t form, std::int32_t number) override
    {
        m_world.Call(Point::List);
        std::vector<host::PrescriptionKey> keys;
        for (const auto& prescription : m_world.plan.prescriptions)
        {
            if (prescription.kind == m_kind && prescription.form == form &&
                (number == 0 || prescription.number == number))
            {
                keys.push_back({prescription.form, prescription.number});
            }
        }
        return keys;
    }
    std::unique_ptr<host::Record> Find(const host::PrescriptionKey& key) override
    {
        m_world.Call(Point::Find);
        const auto& all = m_world.plan.prescriptions;
        for (std::size_t i = 0; i < all.size(); ++i)
        {
            if (all[i].kind == m_kind && all[i].form == key.IDRicetta && all[i].number == key.NumRicetta)
            {
                return all[i].rowGoes ? nullptr : std::make_unique<LifeRow>(m_world, i);
            }
        }
        return nullptr;
    }

private:
    World& m_world;
    std::int32_t m_kind;
};

// --- The session ---

class LifeSession final : public host::PrescriptionSession
{
public:
    explicit LifeSession(World& world)
        : m_world(world)
    {
    }
    [[nodiscard]] bool SenzaSISS() const override { return Flag(m_senzaSISS); }
    void SetSenzaSISS(bool value) override { m_senzaSISS = value; }
    [[nodiscard]] bool DaValidare() const override { return Flag(m_daValidare); }
    void SetDaValidare(bool value) override { m_daValidare = value; }
    [[nodiscard]] std::shared_ptr<host::OpzioniRicetta> Options() const override
    {
        m_world.Call(Point::SessionOptions);
        return m_options;
    }
    void SetOptions(const std::shared_ptr<host::OpzioniRicetta>& options) override { m_options = options; }
    void AddResponse(std::int32_t kind, const std::shared_ptr<host::KeptObject>& response) override
    {
        m_world.Call(Point::SessionAdd);
        m_responses.at(static_cast<std::size_t>(kind)).push_back(response);
    }
    [[nodiscard]] std::size_t ResponseCount(std::int32_t kind) const override
    {
        Read(Point::SessionCount);
        return m_responses.at(static_cast<std::size_t>(kind)).size();
    }
    [[nodiscard]] std::shared_ptr<host::KeptObject> Response(std::int32_t kind, std::size_t position) const override
    {
        Read(Point::SessionRead);
        const auto& response = m_responses.at(static_cast<std::size_t>(kind)).at(position);
        m_world.readCodes.push_back(dynamic_cast<const service::ServiceResponse&>(*response).GetData(
            "datiAmministrativiPrescrizione/identificativoUnivoco"));
        return response;
    }

private:
    void Read(Point point) const
    {
        m_world.sessionFaulted = true;
        m_world.Call(point);
        m_world.sessionFaulted = false;
    }
    [[nodiscard]] bool Flag(bool value) const
    {
        m_world.Call(Point::SessionFlags);
        return value;
    }

    World& m_world;
    bool m_senzaSISS = false;
    bool m_daValidare = false;
    std::shared_ptr<host::OpzioniRicetta> m_options;
    std::array<std::vector<std::shared_ptr<host::KeptObject>>, 3> m_responses;
};

class LifePrescriptions final : public host::PrescriptionObjects
{
public:
    explicit LifePrescriptions(World& world)
        : m_world(world)
    {
    }
    std::shared_ptr<host::PrescriptionSession> CreateSession() override
    {
        return std::make_shared<LifeSession>(m_world);
    }
    std::unique_ptr<host::PrescriptionData> CreatePrescriptionData(std::int32_t kind,
                                                                   const host::HostServices&) override
    {
        return std::make_unique<LifePrescriptionData>(m_world, kind);
    }

private:
    World& m_world;
};

} // namespace

std::shared_ptr<host::Connection> MakeConnection(World& world)
{
    return std::make_shared<LifeConnection>(world);
}

std::unique_ptr<host::PrescriptionObjects> MakePrescriptions(World& world)
{
    return std::make_unique<LifePrescriptions>(world);
}

std::unique_ptr<host::Recordset> NoRows()
{
    return std::make_unique<Rows>(nullptr);
}

} // namespace vellumo::life
