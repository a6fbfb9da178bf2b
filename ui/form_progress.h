// The window that shows how far a long job is. Shown modally, the first time it becomes active it runs the job
// that its tag names, which reports through the Set… members; then the window closes itself.
#pragma once

#include "ui/working_form.h"

#include <any>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace vellumo::ui
{

class FormProgress final : public WorkingForm
{
public:
    FormProgress();

    // Read when the window loads; later changes have no effect on the bar.
    bool BarVisible = true;
    // The name of the job to run.
    std::string Tag;
    using Job = std::function<void(FormProgress& sender, const std::any& parameters, std::any& result)>;
    // The jobs that the window can run, by name; a tag that is not among them runs none.
    std::map<std::string, Job> OnActivate;

    void Load() override;
    void InitializeProgress(const std::string& title, const std::string& header);
    // Both let pending messages be processed each time, so that the window lives during a long job.
    void SetProgressInformation(const std::string& description, const std::string& details);
    void SetProgressValue(std::int32_t value, std::int32_t maximum);

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
