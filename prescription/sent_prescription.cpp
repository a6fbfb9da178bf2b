#include "prescription/sent_prescription.h"

namespace vellumo::prescription
{

std::string SentPrescription::GivenIup(const service::ServiceResponse& response)
{
    return response.GetData("datiAmministrativiPrescrizione/identificativoUnivoco");
}

void ReadSentPrescriptions(const host::PrescriptionSession& session, std::vector<SentPrescription>& sent)
{
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
}

} // namespace vellumo::prescription
