// What an operation works with. The provider owns all of it and hands it to each operation's constructor.
#pragma once

#include "environment/siss_environment.h"
#include "host/clock.h"
#include "host/host_services.h"
#include "host/prescriptions.h"
#include "host/records.h"
#include "host/settings_store.h"
#include "service/exchange_log.h"
#include "service/journal.h"
#include "service/service_factory.h"
#include "service/service_sender.h"
#include "ui/desktop.h"

namespace vellumo::service
{

struct ProviderContext
{
    const host::HostServices& services;
    host::HostObjects& objects;
    host::PrescriptionObjects& prescriptions;
    host::SettingsStore& settings;
    const host::Clock& clock;
    ui::Desktop& desktop;
    environment::SISSEnvironment& environment;
    const ServiceFactory& factory;
    ServiceSender& sender;
    ExchangeLog& log;
    Journal& journal;
};

} // namespace vellumo::service
