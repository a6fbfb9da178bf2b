// The window that stays on screen while one SISS call travels. Shown modally, it raises `OnActivate` the first time
// it becomes active; the handler does the call and fills the result; then the window closes itself. Used once.
#pragma once

#include "ui/activation.h"
#include "ui/form.h"

#include <any>
#include <functional>
#include <string>

namespace vellumo::ui {

class FormWait final : public Form {
public:
  FormWait();

  [[nodiscard]] const std::any& Result() const noexcept { return m_activation.result; }
  std::any& Parameters() noexcept { return m_activation.parameters; }

  // The name of the service being called. It shows at the next repaint; no messages are processed for it.
  void SetOperazione(const std::string& operazione);

  // Handler of the one activation: the window, its parameters, its result by reference. What the handler lets
  // escape is passed over and leaves the result as it was.
  std::function<void(FormWait& sender, const std::any& parameters, std::any& result)> OnActivate;

  void Activated() override;
  // The call cannot be broken off: closing by the frame does nothing while it runs.
  void FrameClosed() override;

private:
  Activation m_activation;
  Label m_operazione;
  Label m_attendere;
  Label m_trasmissione;
};

} // namespace vellumo::ui
