// The host operation InserisciContatto: registers a patient's personal and address data with SISS; when SISS has the
// contact already, sends the same data once more as a modification. Nothing is written to the host's database.
#pragma once

#include "host/records.h"
#include "host/residence_kind.h"
#include "host/value.h"
#include "service/provider_context.h"
#include "service/service_request.h"

#include <memory>
#include <string>

namespace vellumo::certificate
{

class Contacts
{
public:
    explicit Contacts(const service::ProviderContext& context)
        : m_context(context)
    {
    }

    // Returns False always; refusals reach the operator by message box. Faults are trapped; what
    // ends without a message box leaves a line in the journal.
    bool Insert(const host::Value& idPaziente) const noexcept;

private:
    // True when SISS has registered the contact. As a first attempt it goes on to the modification by itself, once.
    bool SendContactData(const host::Value& idPaziente, bool asModification) const;
    void Tell(const host::Value& idPaziente, const std::string& why) const;
    // Faults when the host has no such patient.
    [[nodiscard]] std::unique_ptr<host::Record> LoadPatient(const host::Value& idPaziente) const;
    void FillContactPerson(service::ServiceRequest& request, const host::Record& patient) const;
    void FillContactAddress(service::ServiceRequest& request, const host::Record& patient,
                            host::ResidenceKind kind) const;

    const service::ProviderContext& m_context;
};

} // namespace vellumo::certificate
