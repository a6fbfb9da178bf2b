#include "simulator/norda/sql_types.h"

#include "host/text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

namespace vellumo::norda
{
namespace
{

constexpr std::array<ColumnType, 58> columnTypes = {{
    {"IDPaziente", SqlType::BigInt},
    {"IDRicetta", SqlType::BigInt},
    {"NumRicetta", SqlType::SmallInt},
    {"IDSpecialista", SqlType::Decimal},
    {"IDComune", SqlType::SmallInt},
    {"IDComuneNascita", SqlType::Decimal},
    {"IDComuneDomicilio", SqlType::Float},
    {"IDComuneResidenza", SqlType::SmallInt},
    {"IDRegione", SqlType::TinyInt},
    {"IDAsl", SqlType::SmallInt},
    {"IDEsenzione", SqlType::Money},
    {"IDSISSEsenzione", SqlType::BigInt},
    {"IDResidenza", SqlType::Decimal},
    {"IDTipoEsenzione", SqlType::TinyInt},
    {"IDTipoRichiesta", SqlType::TinyInt},
    {"IDTipoCertificato", SqlType::TinyInt},
    {"IDCategoriaVisita", SqlType::SmallInt},
    {"IDFormatoRicetta", SqlType::Decimal},
    {"IDPrioritaRicetta", SqlType::TinyInt},
    {"IDPartecipazioneSpesa", SqlType::Decimal},
    {"TR_TipoRaggruppamento", SqlType::SmallInt},
    {"PAZ_Eta", SqlType::Decimal},
    {"Quantita", SqlType::Decimal},
    {"Quantita_1", SqlType::Money},
    {"Quantita_2", SqlType::Real},
    {"DataNascita", SqlType::Date},
    {"PAZ_DataNascita", SqlType::Date},
    {"DataRicetta", SqlType::DateTime2},
    {"DataCertificato", SqlType::DateTime2},
    {"DataInizio", SqlType::Date},
    {"DataScadenza", SqlType::Date},
    {"Scadenza", SqlType::DateTime2},
    {"Data", SqlType::DateTime2},
    {"CCELastUpdated", SqlType::DateTime2},
    {"DataRevoca", SqlType::Date},
    {"CodiceFiscale", SqlType::Char, 20},
    {"PAZ_CodiceFiscale", SqlType::Char, 20},
    {"PAZ_Cognome", SqlType::Char, 40},
    {"Cognome", SqlType::Char, 60},
    {"Sesso", SqlType::Char, 4},
    {"NumTesseraSanitaria", SqlType::Char, 20},
    {"NumeroASL", SqlType::Char, 6},
    {"Cap", SqlType::Char, 10},
    {"Comune", SqlType::Char, 60},
    {"CodiceISTAT", SqlType::Char, 8},
    {"CodiceRegione", SqlType::Char, 5},
    {"SiglaProvincia", SqlType::Char, 4},
    {"CodiceRegioneAsl", SqlType::Char, 5},
    {"TipoRicetta", SqlType::Char, 4},
    {"PS_GruppoEsenzione", SqlType::Char, 4},
    {"PS_CodiceIdentificativo", SqlType::Char, 10},
    {"CodiceAIC_1", SqlType::Char, 12},
    {"ClasseFarmaco_1", SqlType::Char, 4},
    {"CodiceIUP", SqlType::Char, 20},
    {"Codice", SqlType::Char, 20},
    {"Valore", SqlType::Char, 40},
    {"Annotazioni", SqlType::Long},
    {"MotivoRicetta", SqlType::Long},
}};

std::string DateText(const host::Date& date, bool withTime)
{
    const auto day = date.ToCalendar();
    std::array<char, 40> text{};
    if (withTime)
    {
        std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d.0000000", day.year, day.month, day.day,
                      day.hour, day.minute, day.second);
    }
    else
    {
        std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", day.year, day.month, day.day);
    }
    return text.data();
}

} // namespace

ColumnType TypeOfColumn(std::string_view name)
{
    const auto* const found =
        std::find_if(columnTypes.begin(), columnTypes.end(),
                     [&](const ColumnType& column) { return host::EqualsIgnoringCase(column.name, name); });
    return found == columnTypes.end() ? ColumnType{} : *found;
}

host::Value ShapedAs(const ColumnType& type, const host::Value& value)
{
    if (const auto* const date = std::get_if<host::Date>(&value.Get());
        date != nullptr && (type.type == SqlType::Date || type.type == SqlType::DateTime2))
    {
        return DateText(*date, type.type == SqlType::DateTime2);
    }
    if (const auto* const text = std::get_if<std::string>(&value.Get()); text != nullptr && type.type == SqlType::Char)
    {
        const auto length = host::CharacterCount(*text);
        return *text + std::string(type.width > length ? type.width - length : 0, ' ');
    }
    return value;
}

} // namespace vellumo::norda
