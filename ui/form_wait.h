// The window that stays on screen while one SISS call travels. Shown modally, it raises `OnActivate` the first time
// it becomes active; the handler does the call and fills the result; then the window closes itself.
#pragma once

#include "ui/working_form.h"

#include <any>
#include <functional>
#include <string>

namespace vellumo::ui
{

class FormWait final : public WorkingForm
{
public:
    FormWait();

    // The name of the service being called. It is drawn at once, since the call blocks; no messages are processed.
    void SetOperazione(const std::string& operazione);

    std::function<void(FormWait& sender, const std::any& parameters, std::any& result)> OnActivate;

private:
    void RaiseOnActivate(const std::any& parameters, std::any& result) override;

    Label m_operazione;
    Label m_attendere;
    Label m_trasmissione;
};

} // namespace vellumo::ui
