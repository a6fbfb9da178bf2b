// The window that compares the local patient with the SISS citizen and lets the operator choose what to take over: who
// the two are, what differs (personal data, residence and domicile, exemptions), the whole values of the selected row,
// and beside each check box what the confirmation will write.
#pragma once

#include "host/value.h"
#include "ui/desktop.h"
#include "ui/form.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vellumo::ui
{

// Bits of the update mask.
namespace update
{
constexpr std::int32_t personalData = 1;
constexpr std::int32_t addresses = 2;
constexpr std::int32_t exemptions = 4;
constexpr std::int32_t deleteExemptions = 8; // with `exemptions`
constexpr std::int32_t asNewPatient = 0x1000;
constexpr std::int32_t byDefault = personalData | addresses | exemptions;
} // namespace update

// Named values of one side: CodiceFiscale, Cognome, Nome, Sesso, DataNascita, ComuneNascita, NumTesseraSanitaria,
// NumAssistito, Revocato, CodiceRegioneAsl, CodiceAsl. Dates are shown as dd/mm/yyyy.
using NamedValues = std::map<std::string, host::Value>;

struct ComparedExemption
{
    std::int32_t IDEsenzione = 0; // the local one
    std::string Codice;
    std::string Descrizione;
    bool lost = false; // of SISS: the local one is not there any more, so that it cannot be stored
};

struct ComparedAddress
{
    std::string indirizzo = {}; // with the house number
    std::string cap = {};
    std::string comune = {};

    [[nodiscard]] std::string Text() const; // "Via Roma, 1, 20121 Milano"; "" when there is none
};

// One side of the comparison.
struct ComparedPatient
{
    NamedValues values = {};
    std::vector<ComparedExemption> exemptions = {};
    ComparedAddress residence = {};
    ComparedAddress domicile = {};
    bool foundByCard = false; // local: SISS's fiscal code is nobody's here, its health card number is
};

class FormPazienteChanges final : public Form
{
public:
    enum class Decision
    {
        Confirmed, // go on with `Changes`
        Cancelled, // store nothing; also when closed by the frame
    };

    // `changes` is the mask that the check boxes start from.
    FormPazienteChanges(const ComparedPatient& paziente, const ComparedPatient& cittadino, std::int32_t changes,
                        Desktop& desktop);

    [[nodiscard]] Decision Result() const noexcept { return m_result; }
    [[nodiscard]] std::int32_t Changes() const noexcept { return m_changes; }

    void Clicked(Control& control) override;
    void Changed(Control& control) override;

private:
    // What differs, counted; the rows of all three lists tell the same.
    struct Differences
    {
        int fields = 0;
        int addresses = 0;
        int local = 0;     // all local exemptions
        int localOnly = 0; // exemptions of one side, of both
        int sissOnly = 0;
        int both = 0;
        int lost = 0;
        bool otherPerson = false;       // what tells one person from another
        std::optional<bool> nowRevoked; // when that changes
    };

    void LayOut();
    void NameBoth(const ComparedPatient& paziente, const ComparedPatient& cittadino);
    void FillFields(const NamedValues& paziente, const NamedValues& cittadino);
    void FillAddresses(const ComparedPatient& paziente, const ComparedPatient& cittadino);
    void FillExemptions(const ComparedPatient& paziente, const ComparedPatient& cittadino);
    void AddExemption(const ComparedExemption& exemption, const Cell& state, const std::string& detail);
    // Whether the two values differ.
    static bool AddCompared(Grid& grid, const std::string& caption, const std::string& local, const std::string& siss);
    void Summarize();
    void SelectFirstDifference();
    void ShowDetails(const Grid& grid);
    void Explain();
    [[nodiscard]] std::string PersonalDataEffect() const;
    [[nodiscard]] std::string ExemptionsEffect() const;
    [[nodiscard]] std::string RemovalEffect() const;
    void Confirm();
    void CloseWith(std::int32_t changes);

    std::int32_t m_changes;
    Decision m_result = Decision::Cancelled;
    Desktop& m_desktop;
    Differences m_differences;
    std::vector<std::string> m_exemptionDetails; // one a row

    Label m_cittadino;
    Label m_paziente;
    Label m_riepilogo;
    Grid m_campi;
    Grid m_indirizzi;
    Grid m_esenzioni;
    TextBox m_dettagli;
    CheckBox m_chkAnagrafica;
    Label m_seAnagrafica;
    CheckBox m_indirizziSempre; // shows that they are written in any case
    Label m_seIndirizzi;
    CheckBox m_chkEsenzioni;
    Label m_seEsenzioni;
    CheckBox m_chkRimuoviEsenzioni;
    Label m_seRimuovi;
    Button m_conferma;
    Button m_annulla;
};

} // namespace vellumo::ui
