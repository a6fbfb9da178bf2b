// The host operations InviaCertificato and AnnullaCertificato: send a sickness certificate on to INPS through SISS,
// rectify one that INPS has already, cancel one. The outcome reaches the operator by message boxes and the host by the
// fields written into its record; the result is always False. Faults are trapped: the record is saved only when every
// field has been set, so a stored certificate is whole or as it was.
//
// SISS offers no service for rectifying and cancelling yet, so the factory gives no request for them and both end as a
// fault does, in silence; all that is missing is the request.
#pragma once

#include "host/records.h"
#include "service/provider_context.h"
#include "service/service_request.h"

#include <memory>
#include <optional>
#include <string>

namespace vellumo::certificate
{

class Certificates
{
public:
    explicit Certificates(const service::ProviderContext& context)
        : m_context(context)
    {
    }

    // `certificate` null: nothing happens, not even in the log. A certificate that has a protocol number, be it
    // blank, is rectified.
    bool Send(host::Record* certificate) const noexcept;   // NOLINT(modernize-use-nodiscard)
    bool Cancel(host::Record* certificate) const noexcept; // NOLINT(modernize-use-nodiscard)

private:
    // The records that every request is filled from.
    struct Subject
    {
        host::Record& certificate;
        std::unique_ptr<host::Record> doctor;
        std::unique_ptr<host::Record> patient;
    };

    [[nodiscard]] Subject LoadSubject(host::Record& certificate) const;
    void Run(host::Record* certificate, void (Certificates::*operation)(const Subject&) const) const noexcept;
    void SendOrRectify(const Subject& subject) const;
    void SendNew(const Subject& subject) const;
    void Rectify(const Subject& subject) const;
    void CancelSent(const Subject& subject) const;

    [[nodiscard]] service::ServiceRequest MakeRequest(service::RequestTypes type, const Subject& subject) const;
    void WriteWorker(const host::Record& patient, service::ServiceRequest& request) const;
    void WriteResidences(const host::Record& certificate, service::ServiceRequest& request) const;

    struct Reception
    {
        std::string protocol;
        host::Value date; // null when it could not be read
    };

    // Sends the request; empty when there is no protocol number, which the operator has been told then.
    [[nodiscard]] std::optional<Reception> Exchange(const service::ServiceRequest& request,
                                                    const char* failureText) const;
    // INPS has done its work by then: a number that cannot be stored goes to the host's journal of service errors.
    void Store(host::Record& certificate, const Reception& reception,
               const std::vector<host::ColumnValue>& numbers) const;
    void Tell(const char* success) const;

    const service::ProviderContext& m_context;
};

} // namespace vellumo::certificate
