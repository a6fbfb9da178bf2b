// A practice in memory: an installation with the delivered templates, the host's objects, the bridge and the operator,
// and what the provider makes of them for one operation.
#pragma once

#include "service/provider_context.h"
#include "service/trace_folder.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/fake_host.h"
#include "tests/support/installation.h"

#include <map>
#include <memory>
#include <string>

namespace vellumo::tests
{

// Can also give requests for services that SISS does not offer yet: their text by type, the first element of the body
// being header and data at once.
class FutureFactory final : public service::ServiceFactory
{
public:
    using ServiceFactory::ServiceFactory;

    [[nodiscard]] std::optional<service::ServiceRequest> GetRequest(service::RequestTypes type) const override;

    std::map<service::RequestTypes, std::string> texts;
};

struct Practice
{
    Practice() { installation.WriteTemplates(); }

    Installation installation;
    std::shared_ptr<FakeConnection> connection = std::make_shared<FakeConnection>();
    std::shared_ptr<FakeLockSrv> lockSrv = std::make_shared<FakeLockSrv>();
    std::shared_ptr<FakeUtils> utils = std::make_shared<FakeUtils>();
    host::HostServices services{connection, lockSrv, utils, 1};
    FakeObjects objects;
    FakePrescriptions prescriptions;
    FakeBridge bridge;
    FakeDesktop desktop;
    FutureFactory factory{installation.settings};
    environment::SISSEnvironment environment{installation.settings, installation.clock};
    service::ExchangeLog log{services, objects, installation.settings, installation.clock};
    service::TraceFolder traces{installation.settings, installation.clock};
    service::Journal journal{services, traces};
    service::ServiceSender sender{bridge, factory, log, desktop, journal};
    service::ProviderContext context{
        services, objects, prescriptions, installation.settings, installation.clock, desktop, environment, factory,
        sender,   log,     journal};
};

} // namespace vellumo::tests
