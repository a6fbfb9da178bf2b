#include "player/operations.h"

#include <map>

namespace vellumo::player
{
namespace
{

std::string Text(bool value)
{
    return value ? "True" : "False";
}

void IdentificaPaziente(Asked& asked, Outcome& outcome)
{
    bool gestito = false;
    outcome.returned = std::to_string(asked.provider.IdentificaPaziente(asked.argument, gestito));
    outcome.gestito = gestito;
}

void ApriSessionePrescrizione(Asked& asked, Outcome& outcome)
{
    asked.session = asked.provider.ApriSessionePrescrizione();
    outcome.returned = asked.session ? "session" : "nothing";
}

const std::map<std::string, Operation>& Operations()
{
    static const std::map<std::string, Operation> operations = {
        {"IdentificaPaziente", {Arguments::Patient, IdentificaPaziente}},
        {"IsActive",
         {Arguments::None, [](Asked& asked, Outcome& outcome) { outcome.returned = Text(asked.provider.IsActive()); }}},
        {"VerificaPaziente",
         {Arguments::Patient, [](Asked& asked, Outcome& outcome)
          { outcome.returned = Text(asked.provider.VerificaPaziente(asked.argument)); }}},
        {"IsPersonaleStudio",
         {Arguments::None,
          [](Asked& asked, Outcome& outcome) { outcome.returned = Text(asked.provider.IsPersonaleStudio()); }}},
        {"Sincronizza",
         {Arguments::None,
          [](Asked& asked, Outcome& outcome) { outcome.returned = Text(asked.provider.Sincronizza()); }}},
        {"SincronizzaPazienti",
         {Arguments::None,
          [](Asked& asked, Outcome& outcome) { outcome.returned = Text(asked.provider.SincronizzaPazienti()); }}},
        {"Studio",
         {Arguments::None,
          [](Asked& asked, Outcome& outcome) { outcome.returned = std::to_string(asked.provider.Studio()); }}},
        {"InviaCertificato",
         {Arguments::Certificate, [](Asked& asked, Outcome& outcome)
          { outcome.returned = Text(asked.provider.InviaCertificato(asked.argument)); }}},
        {"AnnullaCertificato",
         {Arguments::Certificate, [](Asked& asked, Outcome& outcome)
          { outcome.returned = Text(asked.provider.AnnullaCertificato(asked.argument)); }}},
        {"InserisciContatto",
         {Arguments::Patient, [](Asked& asked, Outcome& outcome)
          { outcome.returned = Text(asked.provider.InserisciContatto(asked.argument)); }}},
        {"ApriSessionePrescrizione", {Arguments::None, ApriSessionePrescrizione}},
        {"RegistraPrescrizione",
         {Arguments::Form,
          [](Asked& asked, Outcome& outcome) {
              outcome.returned = Text(asked.provider.RegistraPrescrizione(asked.session, asked.argument, asked.kind));
          }}},
        {"RegistraPrescrizioneSingola",
         {Arguments::Prescription,
          [](Asked& asked, Outcome& outcome)
          {
              outcome.returned = Text(
                  asked.provider.RegistraPrescrizioneSingola(asked.session, asked.argument, asked.second, asked.kind));
          }}},
        {"ChiudiSessionePrescrizione",
         {Arguments::None, [](Asked& asked, Outcome& outcome)
          { outcome.returned = Text(asked.provider.ChiudiSessionePrescrizione(asked.session)); }}},
        {"VerificaPrescrizione",
         {Arguments::Form, [](Asked& asked, Outcome& outcome)
          { outcome.returned = Text(asked.provider.VerificaPrescrizione(asked.argument, asked.kind)); }}},
        {"VerificaPrescrizioneSingola",
         {Arguments::Prescription,
          [](Asked& asked, Outcome& outcome) {
              outcome.returned =
                  Text(asked.provider.VerificaPrescrizioneSingola(asked.argument, asked.second, asked.kind));
          }}},
        {"AnnullaPrescrizione",
         {Arguments::Prescription, [](Asked& asked, Outcome& outcome)
          { outcome.returned = Text(asked.provider.AnnullaPrescrizione(asked.argument, asked.second, asked.kind)); }}},
    };
    return operations;
}

} // namespace

const Operation* FindOperation(const std::string& name)
{
    const auto found = Operations().find(name);
    return found == Operations().end() ? nullptr : &found->second;
}

} // namespace vellumo::player
