// The window that shows how far a long job is. Shown modally, the first time it becomes active it runs the job
// that its tag names, which reports through the Set… members; then the window closes itself.
#pragma once

#include "ui/pace.h"
#include "ui/working_form.h"

#include <any>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
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
    // From now on the window also says how many `things` ("pazienti") a minute are done and how long the rest will
    // take, once that can be known. `clock` outlives the window.
    void MeasurePace(const host::Clock& clock, const std::string& things);

private:
    void RaiseOnActivate(const std::any& parameters, std::any& result) override;
    void Report();

    bool m_loaded = false;
    Label m_header;
    Label m_description;
    Label m_details;
    ProgressBar m_bar;
    Label m_howMany;
    std::optional<Pace> m_pace;
};

} // namespace vellumo::ui
