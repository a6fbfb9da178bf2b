#include "service/service_failure.h"

#include "host/fault.h"
#include "host/text.h"

#include <string>

namespace vellumo::service
{
namespace
{

// A reply that is no XML is its own message, and that may be megabytes; the code behind it must still be seen.
std::string Shortened(const std::string& message)
{
    constexpr std::size_t most = 1200; // characters
    const auto beginning = host::FirstCharacters(message, most);
    return beginning.size() < message.size() ? beginning + "…" : message;
}

std::string Describe(const ServiceException& detail)
{
    return detail.Message + " ( err : " + detail.Code + " )\r\n" + "Campo " + detail.Field + " : " +
           detail.FieldMessage + " ( err : " + detail.FieldCode + " )";
}

} // namespace

void ReportServiceFailure(const ServiceResponse& response, Journal& journal, ui::Desktop& desktop)
{
    const ServiceException* main = response.FailedResult.get();
    if (main != nullptr)
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
    std::string text = Shortened(main->Message) + "\r\nIl codice di errore restituito è " + main->Code;
    if (details.Count() > 0)
    {
        text += "\r\n\r\nDETTAGLI\r\n" + Describe(*details.Item(details.Count()));
    }
    desktop.Show({text, "Errore!!", ui::Icon::Critical, ui::Buttons::Ok});
}

} // namespace vellumo::service
