#include "prescription/ricetta_record.h"

#include <algorithm>
#include <array>

namespace vellumo::prescription
{
namespace
{

using host::Recordset;

std::string ItemKey(std::string_view key, std::int32_t item)
{
    return std::string(key) + "_" + std::to_string(item);
}

struct ItemField
{
    const char* key;
    const char* drugColumn; // "_n" stands for the item's number
    const char* testColumn; // null: a test has no such value and stores ""
};

constexpr std::array<ItemField, 7> itemFields = {{
    {"Codice", "CodiceAIC_n", "PT_CodicePrestazioneTariffario"},
    {"Descrizione", "FarmacoBreve_n", "Prestazione"},
    {"Quantita", "Quantita_n", "Quantita"},
    {"Classe", "ClasseFarmaco_n", nullptr},
    {"Posologia", "PosologiaBreve_n", nullptr},
    {"NotaCuf", "NotaCuf_n_Ori", nullptr},
    {"Annotazione", "Annotazioni", "Annotazioni"},
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

void CopyColumns(const Recordset& row, RicettaRecord& record)
{
    for (std::size_t column = 0; column < row.ColumnCount(); ++column)
    {
        const std::string name = row.ColumnName(column);
        if (std::ranges::find(replacedColumns, name) == replacedColumns.end())
        {
            record.Set(name, row.Field(column));
        }
    }
}

// The group's own number stays: a form whose first group is empty keeps its drug under 2, with one item counted.
void AddDrugs(const Recordset& row, RicettaRecord& record)
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
    record.Set("DetailCount", count);
}

void AddTests(Recordset& rows, RicettaRecord& record)
{
    std::int32_t count = 0;
    for (; !rows.IsAtEnd(); rows.MoveNext())
    {
        ++count;
        for (const ItemField& field : itemFields)
        {
            record.SetItem(field.key, count,
                           field.testColumn == nullptr ? host::Value("") : rows.Field(field.testColumn));
        }
    }
    record.Set("DetailCount", count);
}

} // namespace

host::Value RicettaRecord::Get(std::string_view key) const
{
    const auto found = m_values.find(key);
    return found == m_values.end() ? host::Value() : found->second;
}

void RicettaRecord::Set(std::string_view key, const host::Value& value)
{
    m_values.insert_or_assign(std::string(key), value);
}

host::Value RicettaRecord::GetItem(std::string_view key, std::int32_t item) const
{
    return Get(ItemKey(key, item));
}

void RicettaRecord::SetItem(std::string_view key, std::int32_t item, const host::Value& value)
{
    Set(ItemKey(key, item), value);
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
    CopyColumns(*rows, *record);
    record->Set("IDRicetta", key.IDRicetta);
    record->Set("NumRicetta", key.NumRicetta);
    if (drugs)
    {
        AddDrugs(*rows, *record);
    }
    else
    {
        AddTests(*rows, *record);
    }
    return record;
}

} // namespace vellumo::prescription
