// The host operations InviaCertificato and AnnullaCertificato: send a sickness certificate on to INPS through SISS,
// rectify one that INPS has already, cancel one. The outcome reaches the operator by message boxes and the host by the
// fields written into its record; the result is always False. Faults are trapped, and a line in the journal says why:
// the record is saved only when every field has been set, so a stored certificate is whole or as it was.
//
// SISS offers no service for rectifying and cancelling yet, so the factory gives no request for them and both end as a
// fault does; all that is missing is the request.
#pragma once

#include "host/records.h"
#include "service/provider_context.h"
#include "service/service_request.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

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
    bool Send(host::Record* certificate) const noexcept;
    bool Cancel(host::Record* certificate) const noexcept;

private:
    // The records that every request is filled from.
    struct Subject
    {
        host::Record& certificate;
        std::string name; // for lines: "Certificato del paziente 6"
        std::unique_ptr<host::Record> doctor;
        std::unique_ptr<host::Record> patient;
    };

    [[nodiscard]] Subject LoadSubject(host::Record& certificate) const;
    void Run(host::Record* certificate, void (Certificates::*operation)(const Subject&) const) const noexcept;
    void SendOrRectify(const Subject& subject) const;
    void SendNew(const Subject& subject) const;
    void Rectify(const Subject& subject) const;
    void CancelSent(const Subject& subject) const;

    [[nodiscard]] service::ServiceRequest MakeRequest(service::RequestTypes type, const char* action,
                                                      const Subject& subject) const;
    void WriteWorker(const host::Record& patient, service::ServiceRequest& request) const;
    void WriteResidences(const host::Record& certificate, service::ServiceRequest& request) const;

    struct Reception
    {
        std::string protocol;
        host::Value date;                          // null when it could not be read
        std::shared_ptr<host::OpenCodeEntry> open; // of the number, until it is stored; null when it could not be kept
    };

    // Sends the request; empty when there is no protocol number, which the operator has been told then.
    [[nodiscard]] std::optional<Reception> Exchange(const service::ServiceRequest& request, const Subject& subject,
                                                    const char* failureText) const;
    // INPS has done its work by then. Stores what it answered, `numbers` being the columns besides the date, and tells
    // the operator `success`. A number that cannot be stored he is asked to note down, since the host does not show it,
    // and sending again would make a second certificate; it goes to the journal, too.
    void Finish(const Subject& subject, const Reception& reception, const std::vector<host::ColumnValue>& numbers,
                const char* success) const;
    [[nodiscard]] bool Store(const Subject& subject, const Reception& reception,
                             const std::vector<host::ColumnValue>& numbers) const noexcept;

    const service::ProviderContext& m_context;
};

} // namespace vellumo::certificate
