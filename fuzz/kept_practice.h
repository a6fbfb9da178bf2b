// The practice in which inputs are tried one after the other: made once, since making it takes far longer than an
// input, and as new before each. Its files are below the system's temporary folder.
#pragma once

#include "tests/support/practice.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::fuzz
{

class KeptPractice
{
public:
    // Codes are not kept, and lines only in `lines`: a folder of traces would grow with each input.
    class Lines final : public host::Traces
    {
    public:
        [[nodiscard]] bool Append(std::string_view line) noexcept override;
        [[nodiscard]] std::shared_ptr<host::OpenCodeEntry> Keep(const host::OpenCode&) noexcept override { return {}; }
        void Recover(std::int32_t, const Tell&) noexcept override {}

        std::vector<std::string> lines;
    };

    KeptPractice();
    KeptPractice(const KeptPractice&) = delete;
    KeptPractice& operator=(const KeptPractice&) = delete;

    // Forgets what the input before did. Nobody is known, nothing is due, and the operator agrees to everything.
    void Renew();

    // As often as `begun` a transaction was begun and committed, one after the other, and nothing else.
    [[nodiscard]] bool Committed(std::size_t begun) const;

    tests::Practice parts;
    Lines traces;
    service::Journal journal{parts.services, traces};
    service::ServiceSender sender{parts.bridge, parts.factory, parts.log, parts.desktop, journal};
    service::ProviderContext context{parts.services,
                                     parts.objects,
                                     parts.prescriptions,
                                     parts.installation.settings,
                                     parts.installation.clock,
                                     parts.desktop,
                                     parts.environment,
                                     parts.factory,
                                     sender,
                                     parts.log,
                                     journal};
};

} // namespace vellumo::fuzz
