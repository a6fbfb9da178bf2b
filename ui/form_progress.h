// The window that shows how far a long job is. Shown modally, it raises `OnActivate` the first time it becomes active;
// the handler does the job, reporting through the Set… members; then the window closes itself. Used once.
#pragma once

#include "ui/activation.h"
#include "ui/form.h"

#include <any>
#include <cstdint>
#include <functional>
#include <string>

namespace vellumo::ui {

class FormProgress final : public Form {
public:
  FormProgress();

  [[nodiscard]] const std::any& Result() const noexcept { return m_activation.result; }
  // Read when the window loads; later changes have no effect on the bar.
  bool BarVisible = true;
  std::any& Parameters() noexcept { return m_activation.parameters; }
  // Free text; holds the name of the job.
  std::string Tag;

  // Makes the window ready: from here on `BarVisible` no longer matters.
  void Load();
  void InitializeProgress(const std::string& title, const std::string& header);
  void SetProgressInformation(const std::string& description, const std::string& details);
  void SetProgressValue(std::int32_t value, std::int32_t maximum);

  // As in FormWait.
  std::function<void(FormProgress& sender, const std::any& parameters, std::any& result)> OnActivate;

  void Activated() override;
  // The job cannot be broken off: closing by the frame does nothing while it runs.
  void FrameClosed() override;

private:
  void Show();

  Activation m_activation;
  Label m_header;
  Label m_description;
  Label m_details;
  ProgressBar m_bar;
};

} // namespace vellumo::ui
