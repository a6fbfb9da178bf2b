// Codes that a program left behind which ended with a session open: what the next one tells of them.
#pragma once

#include "host/traces.h"
#include "service/provider_context.h"

#include <string>

namespace vellumo::prescription
{

class LeftCodes
{
public:
    explicit LeftCodes(const service::ProviderContext& context)
        : m_context(context)
    {
    }

    // A line in the host's journal, which says whether the prescription's row has the code; none when the row has all
    // that SISS gave. True when there is nothing more to tell, also for an INPS number, which is looked for nowhere.
    [[nodiscard]] bool Tell(const host::LeftCode& code) const;

private:
    enum class Stored
    {
        No, // or nobody knows
        Code,
        CodeAndProtocol,
    };
    [[nodiscard]] Stored Find(const host::LeftCode& code) const;

    const service::ProviderContext& m_context;
};

} // namespace vellumo::prescription
