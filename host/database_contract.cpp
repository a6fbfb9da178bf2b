#include "host/database_contract.h"

#include "host/text.h"

#include <algorithm>
#include <array>

namespace vellumo::host
{
namespace
{

using Kind = ColumnKind;
constexpr const char* statement = "statement";
constexpr const char* record = "record";
constexpr const char* read = "read";
constexpr const char* written = "written";
constexpr const char* both = "read, written";

} // namespace

std::span<const ColumnNeed> DatabaseContract()
{
    static constexpr std::array<ColumnNeed, 164> needs = {{
        {"Paziente", "IDPaziente", Kind::Number, read, statement},
        {"Paziente", "CodiceFiscale", Kind::Text, both, statement},
        {"Paziente", "NumTesseraSanitaria", Kind::Text, both, statement},
        {"Paziente", "Revocato", Kind::Flag, both, statement},
        {"Paziente", "Deceduto", Kind::Flag, both, statement},
        {"Paziente", "Cognome", Kind::Text, both, record},
        {"Paziente", "Nome", Kind::Text, both, record},
        {"Paziente", "Sesso", Kind::Text, both, record},
        {"Paziente", "DataNascita", Kind::Date, both, record},
        {"Paziente", "IDComuneNascita", Kind::Number, both, record},
        {"Paziente", "NumAssistito", Kind::Text, both, record},
        {"Paziente", "IDASL", Kind::Number, both, record},
        {"Paziente", "DataSceltaASL", Kind::Date, written, record},
        {"Paziente", "DataScadenza", Kind::Date, written, record},
        {"Paziente", "DataScelta", Kind::Date, written, record},
        {"Paziente", "DataSospensione", Kind::Date, written, record},
        {"Paziente", "DataRevoca", Kind::Date, read, record},
        {"Paziente", "CCELastUpdated", Kind::Date, both, record},
        {"Residenza", "IDResidenza", Kind::Number, read, statement},
        {"Residenza", "IDPaziente", Kind::Number, both, statement},
        {"Residenza", "IDTipoResidenza", Kind::Number, both, statement},
        {"Residenza", "Indirizzo", Kind::Text, both, statement},
        {"Residenza", "Cap", Kind::Text, both, statement},
        {"Residenza", "IDComune", Kind::Number, both, statement},
        {"EsenzionePerPaziente", "IDEsenzionePerPaziente", Kind::Number, read, statement},
        {"EsenzionePerPaziente", "IDPaziente", Kind::Number, both, statement},
        {"EsenzionePerPaziente", "IDEsenzione", Kind::Number, both, statement},
        {"EsenzionePerPaziente", "Esenzione", Kind::Text, written, statement},
        {"EsenzionePerPaziente", "DataEsenzione", Kind::Date, both, statement},
        {"EsenzionePerPaziente", "Scadenza", Kind::Date, both, statement},
        {"VwEsenzionePerPaziente", "IDPaziente", Kind::Number, read, statement},
        {"VwEsenzionePerPaziente", "IDEsenzione", Kind::Number, read, statement},
        {"VwEsenzionePerPaziente", "CodiceIdentificativoEsenzione", Kind::Text, read, statement},
        {"VwEsenzionePerPaziente", "Esenzione", Kind::Text, read, statement},
        {"VwPartecipazioneSpesa", "IDEsenzione", Kind::Number, read, statement},
        {"VwPartecipazioneSpesa", "CodiceIdentificativo", Kind::Text, read, statement},
        {"VwPartecipazioneSpesa", "Esenzione", Kind::Text, read, statement},
        {"VwPartecipazioneSpesa", "IDTipoEsenzione", Kind::Number, read, statement},
        {"VwPartecipazioneSpesa", "EsenzioneInvalidita", Kind::Flag, read, statement},
        {"Specialista", "IDSpecialista", Kind::Number, read, statement},
        {"Specialista", "IDUtente", Kind::Number, read, statement},
        {"Specialista", "Nome", Kind::Text, read, record},
        {"Specialista", "Cognome", Kind::Text, read, record},
        {"Specialista", "CodiceFiscale", Kind::Text, read, record},
        {"VwRicettaFarmaciSSN2009", "IDRicettaFarmaci", Kind::Number, read, statement},
        {"VwRicettaFarmaciSSN2009", "NumRicetta", Kind::Number, read, statement},
        {"VwRicettaFarmaciSSN2009", "IDPaziente", Kind::Number, read, statement},
        {"VwRicettaFarmaciSSN2009", "PAZ_CodiceFiscale", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "PAZ_Cognome", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "PAZ_Nome", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "PAZ_Sesso", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "PAZ_DataNascita", Kind::Date, read, statement},
        {"VwRicettaFarmaciSSN2009", "PAZ_Eta", Kind::Number, read, statement},
        {"VwRicettaFarmaciSSN2009", "PAZ_Indirizzo", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "PAZ_Comune", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "CodiceRegioneAsl", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "NumeroAsl", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "SiglaProvinciaAsl", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "PS_GruppoEsenzione", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "PS_CodiceIdentificativo", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "IDPartecipazioneSpesa", Kind::Number, read, statement},
        {"VwRicettaFarmaciSSN2009", "IDTipoEsenzione", Kind::Number, read, statement},
        {"VwRicettaFarmaciSSN2009", "NumeroEsenzione", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "DataRicetta", Kind::Date, read, statement},
        {"VwRicettaFarmaciSSN2009", "TipoRicetta", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "CodiceRegioneTariffario", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "IDFormatoRicetta", Kind::Number, read, statement},
        {"VwRicettaFarmaciSSN2009", "IDTipoRichiesta", Kind::Number, read, statement},
        {"VwRicettaFarmaciSSN2009", "IDPrioritaRicetta", Kind::Number, read, statement},
        {"VwRicettaFarmaciSSN2009", "TR_TipoRaggruppamento", Kind::Number, read, statement},
        {"VwRicettaFarmaciSSN2009", "Annotazioni", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "CodiceAIC_1", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "FarmacoBreve_1", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "Quantita_1", Kind::Number, read, statement},
        {"VwRicettaFarmaciSSN2009", "ClasseFarmaco_1", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "PosologiaBreve_1", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "NotaCuf_1_Ori", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "CodiceAIC_2", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "FarmacoBreve_2", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "Quantita_2", Kind::Number, read, statement},
        {"VwRicettaFarmaciSSN2009", "ClasseFarmaco_2", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "PosologiaBreve_2", Kind::Text, read, statement},
        {"VwRicettaFarmaciSSN2009", "NotaCuf_2_Ori", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "IDRicettaAccertamenti", Kind::Number, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "NumRicetta", Kind::Number, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "IDPaziente", Kind::Number, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "PAZ_CodiceFiscale", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "PAZ_Cognome", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "PAZ_Nome", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "PAZ_Sesso", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "PAZ_DataNascita", Kind::Date, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "PAZ_Eta", Kind::Number, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "PAZ_Indirizzo", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "PAZ_Comune", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "CodiceRegioneAsl", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "NumeroAsl", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "SiglaProvinciaAsl", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "PS_GruppoEsenzione", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "PS_CodiceIdentificativo", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "IDPartecipazioneSpesa", Kind::Number, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "IDTipoEsenzione", Kind::Number, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "NumeroEsenzione", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "DataRicetta", Kind::Date, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "TipoRicetta", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "CodiceRegioneTariffario", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "IDFormatoRicetta", Kind::Number, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "IDTipoRichiesta", Kind::Number, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "IDPrioritaRicetta", Kind::Number, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "TR_TipoRaggruppamento", Kind::Number, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "Annotazioni", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "MotivoRicetta", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "PT_CodicePrestazioneTariffario", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "Prestazione", Kind::Text, read, statement},
        {"VwRicettaAccertamentiSSN2009_Dettagli", "Quantita", Kind::Number, read, statement},
        {"RicettaSSN", "IDRicetta", Kind::Number, read, statement},
        {"RicettaSSN", "NumRicetta", Kind::Number, read, statement},
        {"RicettaSSN", "IDMenuItem", Kind::Number, read, statement},
        {"RicettaSSN", "CodiceIUP", Kind::Text, both, statement},
        {"RicettaSSN", "Annullata", Kind::Flag, both, statement},
        {"RicettaSSN", "NumeroProtocollo", Kind::Text, both, record},
        {"CertificatoMalattia", "IDSpecialista", Kind::Number, read, record},
        {"CertificatoMalattia", "IDPaziente", Kind::Number, read, record},
        {"CertificatoMalattia", "NumeroASL", Kind::Text, read, record},
        {"CertificatoMalattia", "CodiceRegione", Kind::Text, read, record},
        {"CertificatoMalattia", "IndirizzoDomicilio", Kind::Text, read, record},
        {"CertificatoMalattia", "CapDomicilio", Kind::Text, read, record},
        {"CertificatoMalattia", "IDComuneDomicilio", Kind::Number, read, record},
        {"CertificatoMalattia", "ComuneDomicilio", Kind::Text, read, record},
        {"CertificatoMalattia", "ProvinciaDomicilio", Kind::Text, read, record},
        {"CertificatoMalattia", "IndirizzoResidenza", Kind::Text, read, record},
        {"CertificatoMalattia", "CapResidenza", Kind::Text, read, record},
        {"CertificatoMalattia", "IDComuneResidenza", Kind::Number, read, record},
        {"CertificatoMalattia", "ComuneResidenza", Kind::Text, read, record},
        {"CertificatoMalattia", "ProvinciaResidenza", Kind::Text, read, record},
        {"CertificatoMalattia", "DataCertificato", Kind::Date, read, record},
        {"CertificatoMalattia", "DataInizio", Kind::Date, read, record},
        {"CertificatoMalattia", "DataScadenza", Kind::Date, read, record},
        {"CertificatoMalattia", "CodicePatologia", Kind::Text, read, record},
        {"CertificatoMalattia", "Annotazioni", Kind::Text, read, record},
        {"CertificatoMalattia", "IDTipoCertificato", Kind::Number, read, record},
        {"CertificatoMalattia", "IDCategoriaVisita", Kind::Number, read, record},
        {"CertificatoMalattia", "NumeroProtocollo", Kind::UnpaddedText, both, record},
        {"CertificatoMalattia", "NumeroProtocolloOrigine", Kind::Text, written, record},
        {"CertificatoMalattia", "NumeroProtocolloAnnullamento", Kind::Text, written, record},
        {"CertificatoMalattia", "DataRicezione", Kind::Date, written, record},
        {"Norda..Comune", "IDComune", Kind::Number, read, statement},
        {"Norda..Comune", "Comune", Kind::Text, read, statement},
        {"Norda..Comune", "CodiceISTAT", Kind::Text, read, statement},
        {"Norda..Comune", "Cap", Kind::Text, read, statement},
        {"Norda..Comune", "IDProvincia", Kind::Number, read, statement},
        {"Norda..Provincia", "IDProvincia", Kind::Number, read, statement},
        {"Norda..Provincia", "SiglaProvincia", Kind::Text, read, statement},
        {"Norda..Regione", "IDRegione", Kind::Number, read, statement},
        {"Norda..Regione", "CodiceRegione", Kind::Text, read, statement},
        {"Norda..Asl", "IDAsl", Kind::Number, read, statement},
        {"Norda..Asl", "NumeroASL", Kind::Text, both, statement},
        {"Norda..Asl", "IDRegione", Kind::Number, both, statement},
        {"Norda..Asl", "ASL", Kind::Text, written, record},
        {"Norda..SISS_Esenzione", "IDSISSEsenzione", Kind::Number, read, statement},
        {"Norda..SISS_Esenzione", "Codice", Kind::Text, both, statement},
        {"Norda..SISS_Esenzione", "IDEsenzione", Kind::Number, both, statement},
        {"Norda..Esenzione", "IDEsenzione", Kind::Number, both, statement},
        {"Norda..Esenzione", "DataInizioValidita", Kind::Date, written, statement},
        {"Norda..Esenzione", "DataFineValidita", Kind::Date, written, statement},
    }};
    return needs;
}

bool MayUseColumn(std::string_view table, std::string_view column)
{
    // Simulated hosts ask for each column of each row: the columns, which differ more, are looked at first.
    const auto isTable = [&](const ColumnNeed& need) { return EqualsIgnoringCase(need.table, table); };
    const auto isColumn = [&](const ColumnNeed& need)
    { return EqualsIgnoringCase(need.column, column) && isTable(need); };
    return std::ranges::any_of(DatabaseContract(), isColumn) || std::ranges::none_of(DatabaseContract(), isTable);
}

const char* NameOf(ColumnKind kind) noexcept
{
    switch (kind)
    {
    case Kind::Number:
        return "number";
    case Kind::Flag:
        return "flag";
    case Kind::Text:
        return "text";
    case Kind::UnpaddedText:
        return "unpadded text";
    case Kind::Date:
        return "date";
    }
    return "";
}

} // namespace vellumo::host
