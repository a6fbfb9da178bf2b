#include "diagnosi/replay/practice_seed.h"

#include "host/text.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

namespace vellumo::diagnosi
{
namespace
{

constexpr const char* newTown = "(SELECT MAX(IDComune) FROM Norda..Comune)";
constexpr const char* theCertificate = " WHERE IDCertificatoMalattia = 1";
constexpr int onlyPatient = 1;

struct CodeRow
{
    std::string_view code;
    const char* id;
};

constexpr std::array<CodeRow, 3> certificateTypes = {{{"I", "1"}, {"C", "2"}, {"R", "3"}}};
constexpr std::array<CodeRow, 2> visitCategories = {{{"A", "1"}, {"D", "6"}}};

template <std::size_t count>
const char* IdOf(const std::array<CodeRow, count>& rows, const std::string& code)
{
    const auto* const row = std::ranges::find(rows, code, &CodeRow::code);
    return row == rows.end() ? "NULL" : row->id;
}

Person WorkerIn(const xml::Node& data)
{
    const auto worker = data.Select("lavoratore");
    return {worker.Text("codiceFiscale"), worker.Text("cognome"), worker.Text("nome"), worker.Text("sesso"),
            worker.Text("dataNascita")};
}

std::string Where(int patient)
{
    return " WHERE IDPaziente = " + std::to_string(patient);
}

// "COLUMN = 'text', COLUMN = NULL"; the values stand as in a statement.
std::string Assigned(std::initializer_list<std::pair<std::string, std::string>> values)
{
    std::string text;
    for (const auto& [column, value] : values)
    {
        text.append(text.empty() ? "" : ", ").append(column).append(" = ").append(value);
    }
    return text;
}

} // namespace

std::string PracticeSeed::NameOf(const Person& person)
{
    return person.codiceFiscale.empty() ? std::to_string(onlyPatient) : "patient " + InQuotes(person.codiceFiscale);
}

Person PracticeSeed::IdentifiedIn(const xml::Node& data)
{
    const auto profile = data.Select("profiloCittadino");
    return {profile.Text("codiceFiscale"), profile.Text("cognome"), profile.Text("nome"), profile.Text("sesso"),
            profile.Text("dataNascita")};
}

Person PracticeSeed::ContactIn(const xml::Node& data)
{
    const auto contact = data.Select("contatto");
    return {contact.Text("codiceFiscale"), contact.Text("cognome"), contact.Text("nome"), contact.Text("sesso"),
            contact.Text("dataNascita")};
}

void PracticeSeed::MakePatient(int patient, const Person& person) const
{
    const auto number = std::to_string(patient);
    m_out.Sql("DELETE FROM Paziente",
              "WHERE IDPaziente <> " + number + " AND CodiceFiscale = " + Literal(person.codiceFiscale));
    m_out.Sql(
        "UPDATE Paziente SET NumTesseraSanitaria = NULL, NumAssistito = NULL, IDComuneNascita = NULL, Revocato = 0, "
        "Deceduto = 0, DataRevoca = NULL,",
        Assigned({{"CodiceFiscale", Literal(person.codiceFiscale)},
                  {"Cognome", Literal(person.cognome)},
                  {"Nome", Literal(person.nome)},
                  {"Sesso", Literal(person.sesso)},
                  {"DataNascita", DateLiteral(person.dataNascita)}}) +
            Where(patient));
    m_out.Sql("DELETE FROM Residenza" + Where(patient));
    m_out.Sql("DELETE FROM EsenzionePerPaziente" + Where(patient));
}

void PracticeSeed::MakeTown(const Town& town) const
{
    m_out.Sql("INSERT INTO Norda..Provincia (SiglaProvincia, Provincia, IDRegione) VALUES",
              "(" + Literal(town.province) + ", '', 3)");
    m_out.Sql("INSERT INTO Norda..Comune (Comune, CodiceISTAT, CodiceCatastale, Cap, IDProvincia) VALUES",
              "(" + Literal(town.name) + ", " + Literal(town.istat) + ", '', " + Literal(town.cap) +
                  ", (SELECT MAX(IDProvincia) FROM Norda..Provincia))");
}

void PracticeSeed::Bear(int patient, const Town& birthplace) const
{
    if (!birthplace.IsEmpty())
    {
        MakeTown(birthplace);
        m_out.Sql("UPDATE Paziente SET IDComuneNascita = " + std::string(newTown) + Where(patient));
    }
}

void PracticeSeed::Die(int patient, std::string_view date) const
{
    m_out.Sql("UPDATE Paziente SET Deceduto = 1, DataRevoca = " + DateLiteral(date) + Where(patient));
}

void PracticeSeed::Settle(int patient, host::ResidenceKind kind, std::string_view address, const Town& town) const
{
    if (!town.IsEmpty())
    {
        MakeTown(town);
    }
    m_out.Sql("INSERT INTO Residenza (IDPaziente, IDTipoResidenza, Indirizzo, IDComune) VALUES",
              "(" + std::to_string(patient) + ", " + std::to_string(static_cast<int>(kind)) + ", " + Literal(address) +
                  ", " + (town.IsEmpty() ? "NULL" : newTown) + ")");
}

void PracticeSeed::FromIdentification(const xml::Node& data) const
{
    MakePatient(onlyPatient, IdentifiedIn(data));
}

void PracticeSeed::FromContact(const xml::Node& data) const
{
    MakePatient(onlyPatient, ContactIn(data));
    Bear(onlyPatient, {.istat = data.Text("contatto/idLocalitaNascita"), .name = "", .cap = "", .province = ""});
    if (const auto died = data.Text("contatto/dataDecesso"); !died.empty())
    {
        Die(onlyPatient, died);
    }
    for (const auto& [kind, name] : host::residenceKinds)
    {
        if (const auto address = data.Select("puntiIndirizzo" + std::string(name)))
        {
            Settle(onlyPatient, kind, address.Text("indirizzo"),
                   {address.Text("localita"), address.Text("comune"), address.Text("cap"), ""});
        }
    }
}

void PracticeSeed::FromCertificate(const xml::Node& data) const
{
    MakePatient(onlyPatient, WorkerIn(data));
    const auto worker = data.Select("lavoratore");
    Bear(onlyPatient,
         {worker.Text("idComuneNascita"), worker.Text("comuneNascita"), "", worker.Text("provinciaNascita")});
    const auto doctor = data.Select("medico");
    m_out.Sql("UPDATE Specialista SET", Assigned({{"Nome", Literal(doctor.Text("nome"))},
                                                  {"Cognome", Literal(doctor.Text("cognome"))},
                                                  {"CodiceFiscale", Literal(doctor.Text("codiceFiscale"))}}) +
                                            " WHERE IDSpecialista = 1");
    const auto certificate = data.Select("certificato");
    m_out.Sql("UPDATE CertificatoMalattia SET IDSpecialista = 1, IDPaziente = 1, NumeroProtocollo = NULL, "
              "IDComuneDomicilio = 0, IDComuneResidenza = 0,",
              Assigned({{"NumeroASL", Literal(doctor.Text("codiceASL"))},
                        {"CodiceRegione", Literal(doctor.Text("regione"))},
                        {"DataCertificato", DateLiteral(certificate.Text("dataRilascio"))},
                        {"DataInizio", DateLiteral(certificate.Text("dataInizio"))},
                        {"DataScadenza", DateLiteral(certificate.Text("dataFine"))},
                        {"CodicePatologia", Literal(certificate.Text("codiceDiagnosi"))},
                        {"Annotazioni", Literal(certificate.Text("noteDiagnosi"))},
                        {"IDTipoCertificato", IdOf(certificateTypes, certificate.Text("tipoCertificato"))},
                        {"IDCategoriaVisita", IdOf(visitCategories, certificate.Text("tipoVisita"))}}) +
                  theCertificate);
    // INPS calls the domicile during the illness the usual residence.
    AddToCertificate("Domicilio", worker.Select("residenzaAbituale"));
    AddToCertificate("Residenza", worker.Select("residenzaReperibilita"));
}

void PracticeSeed::AddToCertificate(const std::string& column, const xml::Node& address) const
{
    if (!address)
    {
        return;
    }
    MakeTown({address.Text("idComune"), "", "", ""});
    m_out.Sql("UPDATE CertificatoMalattia SET IDComune" + column + " = " + newTown + ",",
              Assigned({{"Indirizzo" + column, Literal(address.Text("indirizzo"))},
                        {"Cap" + column, Literal(address.Text("CAP"))},
                        {"Comune" + column, Literal(address.Text("comune"))},
                        {"Provincia" + column, Literal(address.Text("provincia"))}}) +
                  theCertificate);
}

} // namespace vellumo::diagnosi
