// Statements that make the simulated practice have what a request shows: patients with their addresses, the doctor, a
// certificate. Rows that the practice has already are overwritten, so that their numbers are known.
#pragma once

#include "diagnosi/replay/scenario_text.h"
#include "host/residence_kind.h"
#include "xml/document.h"

#include <string>
#include <string_view>

namespace vellumo::diagnosi
{

// Whom a request is about; each service spells the elements in its own way.
struct Person
{
    std::string codiceFiscale;
    std::string cognome;
    std::string nome;
    std::string sesso;
    std::string dataNascita; // eight digits

    bool operator==(const Person&) const = default;
};

// As the request has it. What a request has no element for stays empty.
struct Town
{
    std::string istat;
    std::string name;
    std::string cap;
    std::string province; // two letters

    [[nodiscard]] bool IsEmpty() const { return istat.empty() && name.empty() && cap.empty() && province.empty(); }
};

class PracticeSeed
{
public:
    explicit PracticeSeed(ScenarioText& out)
        : m_out(out)
    {
    }

    // The patient of that number, from 1 to 40, becomes this one, without addresses and exemptions.
    void MakePatient(int patient, const Person& person) const;
    void Bear(int patient, const Town& birthplace) const;
    void Die(int patient, std::string_view date) const;
    void Settle(int patient, host::ResidenceKind kind, std::string_view address, const Town& town) const;

    // `data` is below the operation's element. The practice's patient 1 is made from each.
    void FromIdentification(const xml::Node& data) const; // profiloCittadino
    void FromContact(const xml::Node& data) const;        // datiContatto, modificaDatiContatto
    void FromCertificate(const xml::Node& data) const;    // invioCertificato: certificate 1, doctor 1

    // How the calls name patient 1.
    [[nodiscard]] static std::string NameOf(const Person& person);
    [[nodiscard]] static Person IdentifiedIn(const xml::Node& data);
    [[nodiscard]] static Person ContactIn(const xml::Node& data);

private:
    // Its number is the highest one then.
    void MakeTown(const Town& town) const;
    // `address` empty: it has none of that kind. `column` ends the names of the certificate's columns.
    void AddToCertificate(const std::string& column, const xml::Node& address) const;

    ScenarioText& m_out;
};

} // namespace vellumo::diagnosi
