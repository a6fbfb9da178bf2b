// How the closing steps see the responses that the session keeps.
#pragma once

#include "host/prescriptions.h"
#include "prescription/ricetta_record.h"
#include "service/service_response.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vellumo::prescription
{

// The code that SISS gave at registration, "" when it gave none.
[[nodiscard]] std::string GivenIup(const service::ServiceResponse& response);

struct SentPrescription
{
    std::int32_t kind = 0;
    std::shared_ptr<service::ServiceResponse> response;
    std::shared_ptr<RicettaRecord> record;
    bool settled = false; // confirmed by the end of the phase, or its code is in the journal

    [[nodiscard]] std::string GivenIup() const { return prescription::GivenIup(*response); }
};

// The kept responses that carry a record: drugs first, then tests, each in the order of registration.
[[nodiscard]] std::vector<SentPrescription> SentPrescriptions(const host::PrescriptionSession& session);

// Code of the failure as a whole, else of the first exception, else "".
[[nodiscard]] std::string FirstCode(const service::ServiceResponse& response);

} // namespace vellumo::prescription
