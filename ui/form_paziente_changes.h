// The window that compares the local patient with the SISS citizen and lets the operator choose what to take over.
#pragma once

#include "host/value.h"
#include "ui/desktop.h"
#include "ui/form.h"

#include <cstdint>
#include <map>
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
};

// One side of the comparison.
struct ComparedPatient
{
    NamedValues values;
    std::vector<ComparedExemption> exemptions;
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

private:
    void LayOut();
    void FillFields(const NamedValues& paziente, const NamedValues& cittadino);
    // Lists the exemptions of `from` that are not `in` the other side. Two are the same when their local one is.
    void AddMissing(const ComparedPatient& from, const ComparedPatient& in, const Cell& state);
    void Confirm();
    void CloseWith(std::int32_t changes);

    std::int32_t m_changes;
    Decision m_result = Decision::Cancelled;
    Desktop& m_desktop;
    bool m_otherPerson = false; // what tells one person from another differs

    Label m_riepilogo;
    Grid m_campi;
    Grid m_esenzioni;
    CheckBox m_chkAnagrafica;
    CheckBox m_chkEsenzioni;
    CheckBox m_chkRimuoviEsenzioni;
    Label m_avvertenza;
    Button m_conferma;
    Button m_annulla;
};

} // namespace vellumo::ui
