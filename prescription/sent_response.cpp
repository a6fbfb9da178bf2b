#include "prescription/sent_response.h"

namespace vellumo::prescription
{

std::string GivenIup(const service::ServiceResponse& response)
{
    return response.GetData("datiAmministrativiPrescrizione/identificativoUnivoco");
}

std::vector<SentPrescription> SentPrescriptions(const host::PrescriptionSession& session)
{
    std::vector<SentPrescription> sent;
    for (const std::int32_t kind : {host::kindDrugs, host::kindTests})
    {
        for (std::size_t position = 0; position < session.ResponseCount(kind); ++position)
        {
            const auto response = std::dynamic_pointer_cast<service::ServiceResponse>(session.Response(kind, position));
            const auto record = response ? std::dynamic_pointer_cast<RicettaRecord>(response->Object) : nullptr;
            if (record)
            {
                sent.push_back({kind, response, record});
            }
        }
    }
    return sent;
}

std::string FirstCode(const service::ServiceResponse& response)
{
    if (response.FailedResult)
    {
        return response.FailedResult->Code;
    }
    return response.Exceptions.Count() > 0 ? response.Exceptions.Item(1)->Code : std::string();
}

} // namespace vellumo::prescription
