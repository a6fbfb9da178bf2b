// The SISS client bridge, the only way to the network. One call carries one SOAP envelope out and one back, both as
// whole texts (UTF-8 here). It blocks until the reply is there. It may fault; a reply may be any text at all.
#pragma once

#include <string>

namespace vellumo::host
{

class Bridge
{
public:
    virtual ~Bridge() = default;

    [[nodiscard]] virtual std::string CallSebMethod(const std::string& requestXml) = 0;
};

} // namespace vellumo::host
