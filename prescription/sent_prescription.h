// A prescription that was sent to SISS, as the closing of its session sees it.
#pragma once

#include "host/prescriptions.h"
#include "prescription/journal.h"
#include "prescription/ricetta_record.h"
#include "service/service_response.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vellumo::prescription
{

struct SentPrescription
{
    std::int32_t kind = 0;
    std::shared_ptr<service::ServiceResponse> response;
    std::shared_ptr<RicettaRecord> record;
    bool settled = false; // confirmed by the end of the phase, or its code is in the journal
    bool stored = false;  // the given code is in its row

    [[nodiscard]] PrescriptionId Id() const { return {kind, record->Key()}; }
    // The code that SISS gave at registration, "" when it gave none.
    [[nodiscard]] std::string GivenIup() const { return GivenIup(*response); }
    [[nodiscard]] static std::string GivenIup(const service::ServiceResponse& response);
};

// Adds the responses kept in the session that carry a record: drugs first, then tests, each in the order of
// registration. Faults of the session go through; what was read before is in `sent`.
void ReadSentPrescriptions(const host::PrescriptionSession& session, std::vector<SentPrescription>& sent);

} // namespace vellumo::prescription
