// The window that shows how far a long job is. Shown modally, it raises `OnActivate` the first time it becomes active;
// the handler does the job, reporting through the Set… members; then the window closes itself.
#pragma once

#include "ui/working_form.h"

#include <any>
#include <cstdint>
#include <functional>
#include <string>

namespace vellumo::ui
{

class FormProgress final : public WorkingForm
{
public:
    FormProgress();

    // Read when the window loads; later changes have no effect on the bar.
    bool BarVisible = true;
    // Free text; holds the name of the job.
    std::string Tag;

    void Load() override;
    void InitializeProgress(const std::string& title, const std::string& header);
    // Both let pending messages be processed each time, so that the window lives during a long job.
    void SetProgressInformation(const std::string& description, const std::string& details);
    void SetProgressValue(std::int32_t value, std::int32_t maximum);

    std::function<void(FormProgress& sender, const std::any& parameters, std::any& result)> OnActivate;

private:
    void RaiseOnActivate(const std::any& parameters, std::any& result) override;
    void Report();

    bool m_loaded = false;
    Label m_header;
    Label m_description;
    Label m_details;
    ProgressBar m_bar;
};

} // namespace vellumo::ui
