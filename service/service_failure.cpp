#include "service/service_failure.h"

#include "host/fault.h"

#include <string>

namespace vellumo::service
{
namespace
{

std::string Describe(const ServiceException& detail)
{
    return detail.Message + " ( err : " + detail.Code + " )\r\n" + "Campo " + detail.Field + " : " +
           detail.FieldMessage + " ( err : " + detail.FieldCode + " )";
}

} // namespace

void ReportServiceFailure(const ServiceResponse& response, Journal& journal, ui::Desktop& desktop)
{
    const ServiceException* main = response.FailedResult.get();
    if (main != nullptr && !response.IsTold)
    {
        journal.Write("(" + main->Code + ") " + main->Message);
    }
    ShowServiceError(main, response.Exceptions, desktop);
}

void ShowServiceError(const ServiceException* main, const ServiceExceptions& details, ui::Desktop& desktop)
{
    if (main == nullptr)
    {
        return;
    }
    // A reply that is no XML is its own message, and that may be megabytes.
    ui::Prompt box = {main->Message, "Errore!!", ui::Icon::Critical, ui::Buttons::Ok};
    box.ending = "\r\nIl codice di errore restituito è " + main->Code;
    if (details.Count() > 0)
    {
        box.ending += "\r\n\r\nDETTAGLI\r\n" + Describe(*details.Item(details.Count()));
    }
    desktop.Show(box);
}

} // namespace vellumo::service
