#include "service/service_factory.h"

#include "environment/declared_encoding.h"
#include "environment/files.h"
#include "environment/siss_configuration.h"
#include "host/fault.h"

#include <array>
#include <optional>
#include <utility>

namespace vellumo::service
{
namespace
{

struct RequestRow
{
    const char* name;
    const char* templateFile;
    const char* operation; // element below the body; the request's header
    const char* data;      // element path below the operation
};

// Indexed by RequestTypes. Rectifying and cancelling certificates have no row: SISS offers no such service yet.
constexpr std::array<RequestRow, 12> requests = {{
    {"Identifica Cittadino GUI", "identificaCittadinoGUI.template", "m:ICCE.identificaCittadinoGUI", "param"},
    {"Identifica Cittadino", "identificaCittadino.template", "m:ICCE.identificaCittadino", "param"},
    {"Calcola IUP", "calcolaIUP.template", "m:GSSC.calcolaIup", "param"},
    {"Inizia Fase Prescrittiva", "inizioFasePrescrittiva.template", "m:GSSC.inizioFasePrescrittiva", "param"},
    {"Fine Fase Prescrittiva", "fineFaseprescrittiva.template", "m:GSSC.fineFasePrescrittiva", "param"},
    {"Registra Prescrizione Farmaci", "registraPrescrizioneFarmaco.template", "m:GSSC.registraPrescrizione", "param"},
    {"Registra Prescrizione Accertamenti", "registraPrescrizioneAccertamenti.template", "m:GSSC.registraPrescrizione",
     "param"},
    {"Annulla Prescrizione", "annullaPrescrizione.template", "m:GSSC.annullaPrescrizione", "param"},
    {"Identifica Cittadino Esteso", "identificaCittadinoEsteso.template", "m:ICCE.identificaCittadinoEsteso", "param"},
    {"Inserimento Contatto", "inserisciDatiContatto.template", "m:ICCE.inserisciDatiContatto", "datiContatto"},
    {"Modifica Contatto", "modificaDatiContatto.template", "m:ICCE.modificaDatiContatto", "modificaDatiContatto"},
    {"Invia Certificato", "invioCertificatoMalattia.template", "m:GCM.invioCertificatoMalattia",
     "param/invioCertificato"},
}};

const RequestRow* RowOf(RequestTypes requestType)
{
    const auto position = static_cast<std::size_t>(requestType);
    return requestType < 0 || position >= requests.size() ? nullptr : &requests.at(position);
}

// As a program loads a file: its own declaration says which encoding it has. Empty when it is not XML. A file that is
// there and cannot be read faults, as one for which memory is short: it may be as good as ever.
std::optional<xml::Document> ReadDocument(const std::string& path)
{
    auto bytes = environment::ReadFile(path);
    if (!bytes)
    {
        throw host::Fault("Impossibile leggere il file " + path + ".");
    }
    const auto text = environment::DecodeXml(std::move(*bytes));
    return text ? xml::Document::FromText(*text) : std::nullopt;
}

constexpr const char* templates = "Templates"; // folder
constexpr std::string_view bodyPath = "/SOAP-ENV:Envelope/SOAP-ENV:Body/";

} // namespace

ServiceFactory::ServiceFactory(host::SettingsStore& settings)
    : m_settings(settings)
{
}

std::string ServiceFactory::PathOf(std::string_view folder, std::string_view fileName) const
{
    const std::string root = environment::JoinPath(environment::HostProgramFolder(m_settings), "SISS");
    return environment::JoinPath(environment::JoinPath(root, folder), fileName);
}

std::optional<ServiceRequest> ServiceFactory::GetRequest(RequestTypes requestType) const
{
    const RequestRow* row = RowOf(requestType);
    const std::string path = row != nullptr ? PathOf(templates, row->templateFile) : std::string();
    if (row == nullptr || !environment::FileExists(path))
    {
        return std::nullopt;
    }
    const std::string header = std::string(bodyPath) + row->operation;
    return ServiceRequest(row->name, header + "/" + row->data, header, ReadDocument(path).value_or(xml::Document()));
}

std::string ServiceFactory::WhyNoRequest(RequestTypes requestType)
{
    const RequestRow* row = RowOf(requestType);
    return row == nullptr ? "il SISS non offre questo servizio"
                          : std::string("manca il modello ") + row->templateFile + " in SISS\\" + templates;
}

std::shared_ptr<ServiceResponse> ServiceFactory::GetTestResponse(RequestTypes requestType) const
{
    if (requestType != rtIdentificaCittadino)
    {
        return nullptr;
    }
    const std::string path = PathOf("Tests", "identificaCittadino.test");
    const auto document = environment::FileExists(path) ? ReadDocument(path) : std::nullopt;
    return document ? GetResponse(document->Xml()) : nullptr;
}

} // namespace vellumo::service
