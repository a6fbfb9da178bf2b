// How a failed SISS call is told to the operator and to the host's journal.
#pragma once

#include "service/journal.h"
#include "service/service_response.h"
#include "ui/desktop.h"

namespace vellumo::service
{

// Records "(code) message" with the host, unless a line tells of the failure already, and shows the error. A failure
// without a main exception is neither recorded nor shown. A host that cannot record does not keep the box from
// appearing.
void ReportServiceFailure(const ServiceResponse& response, Journal& journal, ui::Desktop& desktop);

// Shows the box "Errore!!". Of the details only the last one is shown. `main` null: nothing.
void ShowServiceError(const ServiceException* main, const ServiceExceptions& details, ui::Desktop& desktop);

} // namespace vellumo::service
