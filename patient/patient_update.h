// Brings the local patient up to date with the citizen of a SISS reply: finds or creates the patient, asks the
// operator, and stores the groups of data that he chose. A patient with all its rows is stored as one transaction.
#pragma once

#include "host/records.h"
#include "patient/exemptions.h"
#include "service/provider_context.h"
#include "service/service_response.h"

#include <cstdint>
#include <memory>

namespace vellumo::patient
{

class PatientWriter;

class PatientUpdate
{
public:
    explicit PatientUpdate(const service::ProviderContext& context);

    // Returns the identifier of the patient stored; of the matched one when it was updated a short while ago and is
    // left alone; 0 when the operator cancelled or the matched patient could not be read. `force` skips the question
    // how long ago that was; without it, `askIfRecent` asks before a patient not updated for a month or more is
    // updated. Faults go through; nothing has been stored then.
    [[nodiscard]] std::int32_t UpdatePatientFromCitizen(const service::ServiceResponse& response, bool askIfRecent,
                                                        bool force) const;

private:
    [[nodiscard]] bool IsDue(const host::Record& patient, bool askIfRecent) const;
    [[nodiscard]] std::int32_t Store(const Citizen& citizen, host::Record& patient, std::int32_t mask,
                                     const PatientWriter& writer) const;

    const service::ProviderContext& m_context;
    Exemptions m_exemptions;
};

} // namespace vellumo::patient
