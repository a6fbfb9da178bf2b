#include "service/siss_codes.h"

#include <algorithm>
#include <array>

namespace vellumo::service
{
namespace
{

constexpr std::string_view atTheWorkstation = "chi lavora alla postazione";
constexpr std::string_view sissSupport = "assistenza SISS";
constexpr std::string_view nobody = "nessuno";
constexpr std::string_view tellSupport = "riferire all'assistenza SISS il codice e il testo della risposta";
constexpr std::string_view authenticate = "autenticarsi al SISS con la carta operatore e premere Riprova";
constexpr std::string_view asksToRetry =
    "in identificazione e all'apertura di una prescrizione chiede se riprovare; altrove mostra l'errore";
constexpr std::string_view notAuthenticated = "l'operatore non è autenticato al SISS o manca la carta operatore";
constexpr std::string_view passedOver =
    "alla fine della fase prescrittiva non mostra niente e salva i risultati che la risposta porta; "
    "altrove mostra l'errore";

constexpr std::array<SissCode, 10> known = {{
    {code::sebcont0001,
     "la sessione SISS non è attiva; lo stesso codice prende ogni risposta che non è un documento XML, cioè un errore "
     "del client SISS o nessuna risposta",
     atTheWorkstation,
     "attivare la sessione SISS e ripetere l'operazione; di una ricetta, di una fine fase o di un certificato "
     "guardare prima sul SISS se è già registrata; un testo del client SISS si riferisce all'assistenza SISS",
     "in identificazione e all'apertura di una prescrizione chiede se proseguire senza sessione; altrove mostra "
     "l'errore, e di una ricetta la riga «senza risposta»"},
    {code::sebc00001, "nessuna anagrafica sul server SISS corrisponde ai dati inseriti", atTheWorkstation,
     "controllare i dati del paziente e cercarlo di nuovo, oppure proseguire senza",
     "in identificazione e all'apertura di una prescrizione chiede se proseguire; altrove mostra l'errore"},
    {code::pdcar001, notAuthenticated, atTheWorkstation, authenticate, asksToRetry},
    {code::pdcar012, notAuthenticated, atTheWorkstation, authenticate, asksToRetry},
    {code::appl000091, undocumentedCode, sissSupport, tellSupport,
     "mostra l'errore; dopo un'identificazione la cartella clinica non prosegue da sola"},
    {code::appl000103, undocumentedCode, sissSupport, tellSupport,
     "in identificazione e all'apertura di una prescrizione non mostra niente e finisce lì; altrove mostra l'errore"},
    {code::adpt010003, undocumentedCode, sissSupport, tellSupport, passedOver},
    {code::prxy000032, undocumentedCode, sissSupport, tellSupport, passedOver},
    {code::ea0004, undocumentedCode, sissSupport, tellSupport,
     "di un contatto, con il codice di campo ED0511 nel primo dettaglio, rimanda gli stessi dati come modifica; "
     "altrimenti mostra l'errore con il dettaglio"},
    {code::ed0511, "codice di campo: SISS non inserisce il contatto per via di quel campo", nobody,
     "niente: Vellumo rimanda gli stessi dati come modifica; se anche questa è rifiutata, vale il codice di quella "
     "risposta",
     "di un contatto rifiutato con EA0004, nel primo dettaglio, rimanda gli stessi dati come modifica, una volta"},
}};

constexpr SissCode unknown = {"", undocumentedCode, sissSupport, tellSupport,
                              "mostra l'errore; di una ricetta registrata, nella finestra dei risultati"};

} // namespace

std::span<const SissCode> SissCodes() noexcept
{
    return known;
}

const SissCode& ExplainSissCode(std::string_view code) noexcept
{
    const auto* const found = std::ranges::find(known, code, &SissCode::code);
    return found == known.end() ? unknown : *found;
}

} // namespace vellumo::service
