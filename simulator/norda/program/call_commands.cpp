// What the host can call: every operation of the library, and what it answers.
#include "host/prescriptions.h"
#include "simulator/norda/program/command.h"
#include "simulator/norda/program/desk.h"

#include <functional>
#include <ostream>
#include <tuple>
#include <type_traits>

namespace vellumo::norda
{
namespace
{

std::string InWords(bool value)
{
    return value ? "True" : "False";
}

// Whether the number behind the command is that of a certificate, which the host hands over as its own record.
enum class Of
{
    Number,
    Certificate
};

// What the command hands over for a parameter of the call.
template <class Parameter, Of of>
Parameter HandedOver(Desk& desk, const Given& given, std::size_t& next, bool& gestito)
{
    if constexpr (std::is_same_v<Parameter, bool&>)
    {
        return gestito;
    }
    else if constexpr (std::is_same_v<Parameter, std::int32_t>)
    {
        return given.at(next++) == "farmaci" ? host::kindDrugs : host::kindTests;
    }
    else if constexpr (std::is_same_v<Parameter, Argument>)
    {
        if (next >= given.size() || given[next].empty())
        {
            return {};
        }
        const auto number = host::Value(given[next++]).ToInteger();
        return of == Of::Certificate ? Argument{Passing::ByValue, {}, desk.Host().LoadCertificate(number)}
                                     : Argument{Passing::ByValue, number};
    }
    else
    {
        return desk.Host().session;
    }
}

std::string Told(Desk&, bool value)
{
    return InWords(value);
}

std::string Told(Desk&, std::int32_t value)
{
    return std::to_string(value);
}

std::string Told(Desk& desk, const std::shared_ptr<PrescriptionSession>& opened)
{
    desk.Host().session = opened;
    if (!opened)
    {
        return "nessuna sessione";
    }
    auto text =
        "una sessione, SenzaSISS " + InWords(opened->SenzaSISS()) + ", DaValidare " + InWords(opened->DaValidare());
    if (opened->KeptOptions())
    {
        const auto options = desk.Host().Provider().OptionsOf(*opened);
        text += ", TipoRicetta " + std::to_string(options.TipoRicetta) + ", ModalitaStampa " +
                std::to_string(options.ModalitaStampa);
    }
    return text;
}

// As the host's variable has it, not as the callee's parameter.
template <class Parameter>
using Held = std::conditional_t<std::is_same_v<Parameter, bool&>, bool&, std::remove_cvref_t<Parameter>>;

template <Of of, class Result, class... Parameters>
void Make(Desk& desk, const Given& given, Result (ProviderClient::*call)(Parameters...))
{
    [[maybe_unused]] std::size_t next = 0;
    bool gestito = false;
    std::tuple<Held<Parameters>...> handed{HandedOver<Held<Parameters>, of>(desk, given, next, gestito)...};
    const auto result = std::apply([&](auto&... each) { return (desk.Host().Provider().*call)(each...); }, handed);
    desk.Out() << "Risposta: " << Told(desk, result)
               << ((std::is_same_v<Parameters, bool&> || ...) ? ", Gestito " + InWords(gestito) : "") << '\n';
}

template <auto call, Of of = Of::Number>
void Call(Desk& desk, const Given& given)
{
    Make<of>(desk, given, call);
}

// A fresh search opens SISS's own window; here its operator names the citizen.
void IdentifyFresh(Desk& desk, const Given& given)
{
    desk.Network().SetChosenCitizen(
        desk.ReadLine("Finestra di ricerca del SISS - codice fiscale del cittadino (vuoto: nessuno): "));
    Call<&ProviderClient::IdentificaPaziente>(desk, given);
}

} // namespace

const Commands callCommands = {
    {"identifica", "", "identifica sul SISS un cittadino", IdentifyFresh},
    {"identifica", "#PAZIENTE", "identifica sul SISS un paziente dello studio",
     Call<&ProviderClient::IdentificaPaziente>},
    {"verifica", "#PAZIENTE", "risponde sempre True, senza chiedere al SISS", Call<&ProviderClient::VerificaPaziente>},
    {"contatto", "#PAZIENTE", "registra sul SISS i dati di contatto di un paziente",
     Call<&ProviderClient::InserisciContatto>},
    {"apri", "", "apre la sessione in cui si registrano le ricette", Call<&ProviderClient::ApriSessionePrescrizione>},
    {"registra", "#RICETTA farmaci|accertamenti", "registra tutte le prescrizioni di una ricetta nella sessione aperta",
     Call<&ProviderClient::RegistraPrescrizione>},
    {"registra", "#RICETTA #NUMERO farmaci|accertamenti", "ne registra una sola",
     Call<&ProviderClient::RegistraPrescrizioneSingola>},
    {"chiudi", "", "chiude la sessione e mostra l'esito", Call<&ProviderClient::ChiudiSessionePrescrizione>},
    {"controlla", "#RICETTA farmaci|accertamenti", "True se nella ricetta nessuna prescrizione è registrata e valida",
     Call<&ProviderClient::VerificaPrescrizione>},
    {"controlla", "#RICETTA #NUMERO farmaci|accertamenti", "lo stesso di una sola",
     Call<&ProviderClient::VerificaPrescrizioneSingola>},
    {"storna", "#RICETTA #NUMERO farmaci|accertamenti", "segna una prescrizione come annullata, senza dirlo al SISS",
     Call<&ProviderClient::AnnullaPrescrizione>},
    {"invia", "#CERTIFICATO", "invia un certificato all'INPS, o lo rettifica; l'esito è a video",
     Call<&ProviderClient::InviaCertificato, Of::Certificate>},
    {"annulla", "#CERTIFICATO", "annulla un certificato inviato; l'esito è a video",
     Call<&ProviderClient::AnnullaCertificato, Of::Certificate>},
    {"tabelle", "", "importa le tabelle regionali che il SISS ha scaricato", Call<&ProviderClient::Sincronizza>},
    {"elenco", "", "importa un elenco di assistiti", Call<&ProviderClient::SincronizzaPazienti>},
    {"attivo", "", "se il collegamento al SISS è attivo", Call<&ProviderClient::IsActive>},
    {"personale", "", "se l'utente è personale di studio", Call<&ProviderClient::IsPersonaleStudio>},
    {"studio", "", "il numero dello studio", Call<&ProviderClient::Studio>},
};

} // namespace vellumo::norda
