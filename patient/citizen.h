// A citizen as SISS describes him, read once from the document that has him: the reply to an identification, or the
// list of the doctor's patients. What a document leaves out is empty text or the zero date.
#pragma once

#include "host/date.h"
#include "host/residence_kind.h"
#include "ui/form_esenzioni.h"
#include "xml/document.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace vellumo::patient
{

struct Person
{
    std::string codiceFiscale;
    std::string codiceSanitario; // of the health card
    std::string cognome;
    std::string nome;
    std::string sesso;
    host::Date dataNascita;
    std::string comuneNascita; // its name

    // False: neither fiscal code nor card number nor surname, so that nobody could tell who it is.
    [[nodiscard]] bool CanBeFound() const noexcept
    {
        return !codiceFiscale.empty() || !codiceSanitario.empty() || !cognome.empty();
    }
};

struct DoctorChoice
{
    host::Date inizio;
    host::Date fine;
};

// The ASL and the citizen's registration with it.
struct Asl
{
    std::string sigla; // empty when SISS names none
    std::string descrizione;
    host::Date decorrenza;
    host::Date scadenza;

    // The two parts of `sigla`, its first three characters and its last three.
    [[nodiscard]] std::string RegionCode() const;
    [[nodiscard]] std::string Number() const;
};

struct Address
{
    host::ResidenceKind kind = host::ResidenceKind::Residence;
    std::string indirizzo;
    std::string civico;
    std::string cap;
    std::string comune; // its name

    // Street and house number as the host keeps them, in one text.
    [[nodiscard]] std::string StreetAndNumber() const;
};

using SissExemptions = std::vector<ui::SissExemption>;

struct Citizen
{
    Person person;
    // Empty when SISS says neither: the local patient then stays as he is.
    std::optional<bool> revoked;
    DoctorChoice choice;
    Asl asl;
    std::array<Address, 2> addresses; // in the order in which they are stored
    SissExemptions exemptions;
};

// `data` is the reply's data node. Descriptions and local exemptions are not in the reply.
[[nodiscard]] Citizen ReadIdentified(const xml::Node& data);

// `citizen` is one element of the list, which has no exemptions. Whoever is on it is the doctor's patient: not revoked.
[[nodiscard]] Citizen ReadListed(const xml::Node& citizen);

} // namespace vellumo::patient
