#include "ui/form_progress.h"

namespace vellumo::ui
{

FormProgress::FormProgress()
    : WorkingForm("TITLE")
    , m_header("HEADER")
    , m_description("PROGRESS...")
    , m_details("DETAILS DESCRIPTION TEXT")
    , m_howMany("")
{
    m_header.strong = true;
    m_details.lines = 2;
    m_controls = {&m_header, &m_description, &m_details, &m_bar, &m_howMany};
    m_designSize = {6600, 2000};
}

void FormProgress::Load()
{
    if (!m_loaded)
    {
        m_loaded = true;
        m_bar.visible = BarVisible;
        m_howMany.visible = BarVisible;
    }
}

void FormProgress::InitializeProgress(const std::string& title, const std::string& header)
{
    m_title = title;
    m_header.text = header;
    m_description.text = "Inizializzazione in corso...";
    m_details.text = "L'operazione è in attesa di avvio";
    RefreshView();
}

void FormProgress::SetProgressInformation(const std::string& description, const std::string& details)
{
    m_description.text = description;
    m_details.text = details;
    Report();
}

void FormProgress::SetProgressValue(std::int32_t value, std::int32_t maximum)
{
    m_bar.maximum = static_cast<float>(maximum);
    m_bar.value = static_cast<float>(value);
    m_howMany.text = Grouped(value) + " di " + Grouped(maximum);
    if (m_pace)
    {
        m_howMany.text += m_pace->After(value, maximum);
    }
    Report();
}

void FormProgress::MeasurePace(const host::Clock& clock, const std::string& things)
{
    m_pace.emplace(clock, things);
}

void FormProgress::RaiseOnActivate(const std::any& parameters, std::any& result)
{
    if (const auto job = OnActivate.find(Tag); job != OnActivate.end())
    {
        job->second(*this, parameters, result);
    }
}

void FormProgress::Report()
{
    if (View() == nullptr)
    {
        return;
    }
    if (m_bar.value >= m_bar.maximum)
    { // a bar that goes before it is full looks like a job that was broken off
        View()->Refresh();
    }
    else
    {
        View()->RefreshSoon();
    }
    View()->ProcessMessages();
}

} // namespace vellumo::ui
