// The citizens that the simulated SISS knows.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vellumo::siss
{

struct Exemption
{
    std::string codice;
    std::string decorrenza; // date texts as sent, "" for none
    std::string scadenza;
};

struct Citizen
{
    // Texts by element name: of datiCittadino plain ("cognomeCittadino"), of datiMedico with "medico." before it.
    std::map<std::string, std::string> data;
    std::vector<Exemption> esenzioni;

    [[nodiscard]] std::string Get(const std::string& name) const;
    // The whole datiRisposta element.
    [[nodiscard]] std::string Xml() const;
};

class Citizens
{
public:
    // Adds the citizens of a text like seed/citizens.txt; faults at a line that it cannot read.
    void Load(std::string_view text);
    // Those of the seed.
    void LoadSeed();

    // The citizen of that fiscal code, made when there is none.
    Citizen& At(const std::string& codiceFiscale);
    void Remove(const std::string& codiceFiscale) { m_citizens.erase(codiceFiscale); }
    // Null when there is none; an empty value matches nothing.
    [[nodiscard]] const Citizen* Find(const std::string& codiceFiscale) const;
    [[nodiscard]] const Citizen* Find(const std::string& cognome, const std::string& nome,
                                      const std::string& dataNascita) const;
    [[nodiscard]] const std::map<std::string, Citizen>& All() const noexcept { return m_citizens; }

private:
    std::map<std::string, Citizen> m_citizens; // by fiscal code
};

} // namespace vellumo::siss
