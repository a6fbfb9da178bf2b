#include "prescription/ricetta_record.h"

#include "host/fault.h"
#include "host/text.h"

#include <algorithm>
#include <array>
#include <vector>

namespace vellumo::prescription
{
namespace
{

using host::Recordset;

std::string NameOf(const RicettaItemKey& key, std::int32_t item)
{
    return std::string(key.text) + "_" + std::to_string(item);
}

struct ItemField
{
    RicettaItemKey key;
    const char* drugColumn; // "_n" stands for the item's number
    const char* testColumn; // null: a test has no such value and stores ""
};

constexpr std::array<ItemField, 7> itemFields = {{
    {ricetta::itemCodice, "CodiceAIC_n", "PT_CodicePrestazioneTariffario"},
    {ricetta::itemDescrizione, "FarmacoBreve_n", "Prestazione"},
    {ricetta::itemQuantita, "Quantita_n", "Quantita"},
    {ricetta::itemClasse, "ClasseFarmaco_n", nullptr},
    {ricetta::itemPosologia, "PosologiaBreve_n", nullptr},
    {ricetta::itemNotaCuf, "NotaCuf_n_Ori", nullptr},
    {ricetta::itemAnnotazione, "Annotazioni", "Annotazioni"},
}};

// Stored under the item's own names instead.
constexpr std::array<std::string_view, 4> replacedColumns = {"Quantita_1", "Quantita_2", "NotaCuf_1", "NotaCuf_2"};
constexpr std::int32_t drugsOnAForm = 2;

std::string Numbered(std::string column, std::int32_t item)
{
    if (const auto place = column.find("_n"); place != std::string::npos)
    {
        column.replace(place, 2, "_" + std::to_string(item));
    }
    return column;
}

// A row, each column read once and in order: long texts are gone after the first time.
class Row
{
public:
    explicit Row(const Recordset& rows)
    {
        for (std::size_t column = 0; column < rows.ColumnCount(); ++column)
        {
            m_columns.push_back({rows.ColumnName(column), rows.Field(column)});
        }
    }

    [[nodiscard]] const std::vector<host::ColumnValue>& Columns() const noexcept { return m_columns; }
    [[nodiscard]] const host::Value& Field(std::string_view name) const
    {
        const auto found = std::ranges::find_if(m_columns, [&](const host::ColumnValue& column)
                                                { return host::EqualsIgnoringCase(column.column, name); });
        return found != m_columns.end() ? found->value
                                        : throw host::Fault("La ricetta non ha la colonna " + std::string(name) + ".");
    }

private:
    std::vector<host::ColumnValue> m_columns;
};

void CopyColumns(const Row& row, RicettaRecord& record)
{
    for (const auto& [name, value] : row.Columns())
    {
        if (std::ranges::find(replacedColumns, name) == replacedColumns.end())
        {
            record.SetColumn(name, value);
        }
    }
}

// The group's own number stays: a form whose first group is empty keeps its drug under 2, with one item counted.
void AddDrugs(const Row& row, RicettaRecord& record)
{
    std::int32_t count = 0;
    for (std::int32_t item = 1; item <= drugsOnAForm; ++item)
    {
        if (row.Field(Numbered("CodiceAIC_n", item)).IsNull())
        {
            continue;
        }
        ++count;
        for (const ItemField& field : itemFields)
        {
            record.SetItem(field.key, item, row.Field(Numbered(field.drugColumn, item)));
        }
    }
    record.Set(ricetta::detailCount, count);
}

// Each row is one test.
void AddTest(const Row& row, std::int32_t item, RicettaRecord& record)
{
    for (const ItemField& field : itemFields)
    {
        record.SetItem(field.key, item, field.testColumn == nullptr ? host::Value("") : row.Field(field.testColumn));
    }
    record.Set(ricetta::detailCount, item);
}

} // namespace

host::Value RicettaRecord::Find(std::string_view name) const
{
    const auto found = m_values.find(name);
    return found == m_values.end() ? host::Value() : found->second;
}

void RicettaRecord::SetColumn(std::string_view name, const host::Value& value)
{
    m_values.insert_or_assign(std::string(name), value);
}

host::Value RicettaRecord::GetItem(const RicettaItemKey& key, std::int32_t item) const
{
    return Find(NameOf(key, item));
}

void RicettaRecord::SetItem(const RicettaItemKey& key, std::int32_t item, const host::Value& value)
{
    SetColumn(NameOf(key, item), value);
}

std::shared_ptr<RicettaRecord> BuildRicettaRecord(const host::PrescriptionKey& key, std::int32_t kind,
                                                  const host::HostServices& services)
{
    if (kind != host::kindDrugs && kind != host::kindTests)
    {
        return nullptr;
    }
    const bool drugs = kind == host::kindDrugs;
    const auto rows = services.RequireConnection().Open(
        std::string(drugs ? "SELECT * FROM VwRicettaFarmaciSSN2009 "
                            "WHERE IDRicettaFarmaci = "
                          : "SELECT * FROM VwRicettaAccertamentiSSN2009_Dettagli "
                            "WHERE IDRicettaAccertamenti = ") +
        std::to_string(key.IDRicetta) + " AND NumRicetta = " + std::to_string(key.NumRicetta));
    if (rows->IsAtEnd())
    {
        return nullptr;
    }
    auto record = std::make_shared<RicettaRecord>();
    const Row first(*rows);
    CopyColumns(first, *record);
    record->Set(ricetta::idRicetta, key.IDRicetta);
    record->Set(ricetta::numRicetta, key.NumRicetta);
    if (drugs)
    {
        AddDrugs(first, *record);
        return record;
    }
    std::int32_t count = 0;
    AddTest(first, ++count, *record);
    for (rows->MoveNext(); !rows->IsAtEnd(); rows->MoveNext())
    {
        AddTest(Row(*rows), ++count, *record);
    }
    return record;
}

} // namespace vellumo::prescription
