// The window in which the operator gives each SISS exemption of a citizen its local exemption. It lists the citizen's
// exemptions; the local ones, thousands, can be searched by typing. Confirming is possible only when every row has
// one.
#pragma once

#include "host/connection.h"
#include "host/date.h"
#include "ui/desktop.h"
#include "ui/form.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vellumo::ui {

// One exemption that SISS reports for the citizen.
struct SissExemption {
  std::string Codice;
  std::string Descrizione;
  host::Date DataEsenzione; // zero: not received
  host::Date Scadenza;      // zero: not received
  std::int32_t IDEsenzione = 0; // local exemption, 0 = none yet
};

class FormEsenzioni final : public Form {
public:
  // Reads the local exemptions from `connection`; a database fault goes through to the caller.
  FormEsenzioni(std::vector<SissExemption>& esenzioni, host::Connection& connection, Desktop& desktop);

  // 1 = confirmed, and `esenzioni` holds the choices; anything else = cancelled, `esenzioni` unchanged.
  [[nodiscard]] int Result() const noexcept { return m_result; }

  void Clicked(Control& control) override;
  void Changed(Control& control) override;

private:
  struct LocalExemption {
    std::int32_t id;
    std::string codice;
    std::string descrizione;
  };

  std::vector<SissExemption>& m_esenzioni;
  Desktop& m_desktop;
  std::vector<LocalExemption> m_locali;
  std::vector<std::int32_t> m_assigned; // one a row of the grid
  std::vector<std::size_t> m_found;     // rows of the local list that match the search
  int m_result = 0;
};

} // namespace vellumo::ui
