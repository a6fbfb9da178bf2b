// The window in which the operator gives each SISS exemption of a citizen its local exemption. It lists the citizen's
// exemptions; the local ones, thousands, can be searched by typing. Confirming is possible only when every row has
// one; that it does not exist any more is shown and does not hinder. Made for the keyboard: it starts on the first row
// that needs a local exemption, with the keyboard in the search box; typing finds, Enter assigns and goes on to the
// next such row. A local exemption with the code of the SISS one is proposed, never assigned by itself. Once nothing is
// left to assign, the keyboard and Enter are at the confirmation; until then and after, any row can be assigned anew.
#pragma once

#include "host/connection.h"
#include "host/date.h"
#include "ui/desktop.h"
#include "ui/form.h"
#include "ui/whom.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vellumo::ui
{

// One exemption that SISS reports for the citizen.
struct SissExemption
{
    std::string Codice;
    std::string Descrizione;
    host::Date DataEsenzione;     // zero: not received
    host::Date Scadenza;          // zero: not received
    std::int32_t IDEsenzione = 0; // local exemption, 0 = none yet
    bool LocaleMancante = false;  // it was confirmed though its local exemption is not there any more
};

class FormEsenzioni final : public Form
{
public:
    enum class Decision
    {
        Confirmed, // `esenzioni` holds the choices
        Cancelled, // `esenzioni` is unchanged; also when closed by the frame
    };

    // `cittadino` as SISS has him. Reads the local exemptions from `connection`; a database fault goes through to the
    // caller.
    FormEsenzioni(const Whom& cittadino, std::vector<SissExemption>& esenzioni, host::Connection& connection,
                  Desktop& desktop);

    [[nodiscard]] Decision Result() const noexcept { return m_result; }

    void Clicked(Control& control) override;
    void Changed(Control& control) override;

private:
    struct LocalExemption
    {
        std::int32_t id = 0;
        std::string codice;
        std::string descrizione;
        std::string searchText;
    };

    void ReadLocalExemptions(host::Connection& connection);
    void LayOut();
    void ShowAssignment(std::size_t row);
    void Search();
    void Propose();
    void Assign();
    void Confirm();
    void GoToRow(std::size_t row);
    [[nodiscard]] std::string Detail() const;
    [[nodiscard]] std::string State() const;
    [[nodiscard]] std::string OnEnter() const;
    void UpdateState();

    enum class Assignment
    {
        Missing,
        Lost, // the local exemption is not there any more
        Good,
    };
    [[nodiscard]] Assignment StateOf(std::size_t row) const;
    [[nodiscard]] const LocalExemption* FindLocal(std::int32_t id) const;
    [[nodiscard]] std::optional<std::size_t> Next(std::size_t from, Assignment state) const;
    [[nodiscard]] std::optional<std::size_t> NextOffered(std::size_t from) const;

    std::vector<SissExemption>& m_esenzioni;
    Desktop& m_desktop;
    std::vector<LocalExemption> m_locali;
    std::vector<std::int32_t> m_assigned; // one a row of the grid
    std::vector<std::size_t> m_found;     // the local exemptions that match the search, one a row of their grid
    Decision m_result = Decision::Cancelled;

    Label m_cittadino;
    Label m_stato;
    Grid m_esenzioniSiss;
    TextBox m_dettaglio; // the whole texts of the selected row
    TextBox m_cerca;
    Button m_assegna;
    Label m_invio; // what Enter will do
    Grid m_esenzioniLocali;
    Button m_conferma;
    Button m_annulla;
};

} // namespace vellumo::ui
