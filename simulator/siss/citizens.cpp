#include "simulator/siss/citizens.h"

#include "host/fault.h"
#include "host/text.h"
#include "simulator/siss/seed.h"
#include "simulator/siss/xml_text.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace vellumo::siss
{
namespace
{

// In the order in which the network sends them.
constexpr std::array citizenElements = {"codiceFiscaleCittadino",
                                        "cognomeCittadino",
                                        "nomeCittadino",
                                        "sessoCittadino",
                                        "dataNascitaCittadino",
                                        "comuneNascitaCittadino",
                                        "codiceSanitarioCittadino",
                                        "statoAssistito",
                                        "siglaAslAppartenenza",
                                        "descrizioneAslAppartenenza",
                                        "dataDecorrenzaIscrizione",
                                        "dataScadenzaIscrizione",
                                        "indirizzoResidenzaCittadino",
                                        "civicoResidenzaCittadino",
                                        "capResidenzaCittadino",
                                        "comuneResidenzaCittadino",
                                        "indirizzoDomicilioCittadino",
                                        "civicoDomicilioCittadino",
                                        "capDomicilioCittadino",
                                        "comuneDomicilioCittadino"};
constexpr std::array doctorElements = {"dataInizioScelta", "dataFineScelta"};

std::string Written(const std::string& name, const std::string& text)
{
    return '<' + name + '>' + Escape(text) + "</" + name + '>';
}

Exemption ReadExemption(const std::string& text)
{
    std::istringstream in(text);
    Exemption exemption;
    in >> exemption.codice >> exemption.decorrenza >> exemption.scadenza;
    return exemption;
}

} // namespace

std::string Citizen::Get(const std::string& name) const
{
    const auto found = data.find(name);
    return found == data.end() ? std::string() : found->second;
}

// An element that the citizen has no text for is left out, as the network does.
std::string Citizen::Xml() const
{
    std::string xml = "<datiRisposta><datiCittadino>";
    for (const std::string name : citizenElements)
    {
        if (const auto found = data.find(name); found != data.end())
        {
            xml += Written(name, found->second);
        }
    }
    xml += "</datiCittadino><datiMedico>";
    for (const std::string name : doctorElements)
    {
        if (const auto found = data.find("medico." + name); found != data.end())
        {
            xml += Written(name, found->second);
        }
    }
    xml += "</datiMedico><esenzioniGodute>";
    for (const auto& esenzione : esenzioni)
    {
        xml += "<esenzione>" + Written("codiceEsenzione", esenzione.codice) +
               Written("decorrenzaEsenzione", esenzione.decorrenza) + Written("scadenzaEsenzione", esenzione.scadenza) +
               "</esenzione>";
    }
    return xml + "</esenzioniGodute></datiRisposta>";
}

void Citizens::Load(std::string_view text)
{
    std::istringstream in{std::string(text)};
    Citizen* citizen = nullptr;
    for (std::string raw; std::getline(in, raw);)
    {
        const std::string line(host::Trimmed(raw));
        if (line.empty() || line.front() == '#')
        {
            continue;
        }
        if (line.front() == '[' && line.back() == ']')
        {
            citizen = &At(line.substr(1, line.size() - 2));
            continue;
        }
        const auto sign = line.find('=');
        if (citizen == nullptr || sign == std::string::npos)
        {
            throw host::Fault("Riga di cittadino non valida: " + line);
        }
        const std::string name(host::Trimmed(std::string_view(line).substr(0, sign)));
        const std::string value(host::Trimmed(std::string_view(line).substr(sign + 1)));
        if (name == "esenzione")
        {
            citizen->esenzioni.push_back(ReadExemption(value));
        }
        else
        {
            citizen->data[name] = value;
        }
    }
}

void Citizens::LoadSeed()
{
    Load(seed::citizens);
}

Citizen& Citizens::At(const std::string& codiceFiscale)
{
    const auto [entry, isNew] = m_citizens.try_emplace(codiceFiscale);
    if (isNew)
    {
        entry->second.data["codiceFiscaleCittadino"] = codiceFiscale;
    }
    return entry->second;
}

const Citizen* Citizens::Find(const std::string& codiceFiscale) const
{
    const auto found = m_citizens.find(codiceFiscale);
    return codiceFiscale.empty() || found == m_citizens.end() ? nullptr : &found->second;
}

const Citizen* Citizens::Find(const std::string& cognome, const std::string& nome, const std::string& dataNascita) const
{
    const auto found =
        std::find_if(m_citizens.begin(), m_citizens.end(),
                     [&](const auto& entry)
                     {
                         const auto& citizen = entry.second;
                         return citizen.Get("cognomeCittadino") == cognome && citizen.Get("nomeCittadino") == nome &&
                                (dataNascita.empty() || citizen.Get("dataNascitaCittadino") == dataNascita);
                     });
    return cognome.empty() || found == m_citizens.end() ? nullptr : &found->second;
}

} // namespace vellumo::siss
