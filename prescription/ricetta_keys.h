// The keys of a prescription's record that the library itself writes or reads. Each is named here and nowhere else;
// whatever other columns the host's view has stand in the record under their own names.
#pragma once

#include <string_view>

namespace vellumo::prescription
{

// Explicit, so that a text is no key.
struct RicettaKey
{
    constexpr explicit RicettaKey(std::string_view name)
        : text(name)
    {
    }
    std::string_view text;
};

// Of a field that every item has; in the record the item's number follows it ("Codice_1").
struct RicettaItemKey
{
    constexpr explicit RicettaItemKey(std::string_view name)
        : text(name)
    {
    }
    std::string_view text;
};

namespace ricetta
{

// The record's own.
inline constexpr RicettaKey idRicetta("IDRicetta");   // the form
inline constexpr RicettaKey numRicetta("NumRicetta"); // the number within it
inline constexpr RicettaKey detailCount("DetailCount");
inline constexpr RicettaKey annullata("Annullata"); // the operator's decision at the close

// Columns of the views: the citizen.
inline constexpr RicettaKey idPaziente("IDPaziente");
inline constexpr RicettaKey pazCodiceFiscale("PAZ_CodiceFiscale");
inline constexpr RicettaKey pazCognome("PAZ_Cognome");
inline constexpr RicettaKey pazNome("PAZ_Nome");
inline constexpr RicettaKey pazSesso("PAZ_Sesso");
inline constexpr RicettaKey pazDataNascita("PAZ_DataNascita");
inline constexpr RicettaKey pazEta("PAZ_Eta");
inline constexpr RicettaKey pazIndirizzo("PAZ_Indirizzo");
inline constexpr RicettaKey pazComune("PAZ_Comune");
inline constexpr RicettaKey codiceRegioneAsl("CodiceRegioneAsl");
inline constexpr RicettaKey numeroAsl("NumeroAsl");
inline constexpr RicettaKey siglaProvinciaAsl("SiglaProvinciaAsl");

// His exemption.
inline constexpr RicettaKey psGruppoEsenzione("PS_GruppoEsenzione");
inline constexpr RicettaKey psCodiceIdentificativo("PS_CodiceIdentificativo");
inline constexpr RicettaKey idPartecipazioneSpesa("IDPartecipazioneSpesa");
inline constexpr RicettaKey idTipoEsenzione("IDTipoEsenzione");
inline constexpr RicettaKey numeroEsenzione("NumeroEsenzione");

// The form.
inline constexpr RicettaKey dataRicetta("DataRicetta");
inline constexpr RicettaKey tipoRicetta("TipoRicetta");
inline constexpr RicettaKey codiceRegioneTariffario("CodiceRegioneTariffario");
inline constexpr RicettaKey idFormatoRicetta("IDFormatoRicetta");
inline constexpr RicettaKey idTipoRichiesta("IDTipoRichiesta");
inline constexpr RicettaKey idPrioritaRicetta("IDPrioritaRicetta");
inline constexpr RicettaKey trTipoRaggruppamento("TR_TipoRaggruppamento");
inline constexpr RicettaKey annotazioni("Annotazioni");
inline constexpr RicettaKey motivoRicetta("MotivoRicetta");

// Items.
inline constexpr RicettaItemKey itemCodice("Codice");
inline constexpr RicettaItemKey itemDescrizione("Descrizione");
inline constexpr RicettaItemKey itemQuantita("Quantita");
inline constexpr RicettaItemKey itemClasse("Classe");
inline constexpr RicettaItemKey itemPosologia("Posologia");
inline constexpr RicettaItemKey itemNotaCuf("NotaCuf");
inline constexpr RicettaItemKey itemAnnotazione("Annotazione");

} // namespace ricetta

} // namespace vellumo::prescription
