// The record of what went to SISS and what came back, for support staff: one folder a host operation below SISS\Log of
// the host program's folder, named "yyyy-MM-dd hh.mm.ss" (24-hour clock), with the files
//   1 - Richiesta Identifica Cittadino GUI
//   1 - Risposta Identifica Cittadino GUI
// in 8-bit text. Numbers go on across operations as long as the provider lives. Written only when the practice's
// settings CCEAbilitato and CCEAbilitaLog are both on. Failing to write is never told to anyone.
#pragma once

#include "host/clock.h"
#include "host/host_services.h"
#include "host/records.h"
#include "host/settings_store.h"
#include "service/service_request.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vellumo::service
{

class ExchangeLog
{
public:
    ExchangeLog(const host::HostServices& services, host::HostObjects& objects, host::SettingsStore& settings,
                const host::Clock& clock);

    // What the practice's settings say now; False when they cannot be read.
    [[nodiscard]] bool IsEnabled() const noexcept;

    // Makes the folder of the operation that starts now. The folder SISS must be there already. With logging off it
    // does nothing at all.
    void Prepare() noexcept;

    // Writes one call's pair of files into the folder prepared last: the reply as it came, whatever became of it.
    void Write(const ServiceRequest& request, std::string_view reply) noexcept;

    // Called at the end of an operation; hosts rely on its returning False whatever the settings say.
    bool End() noexcept; // callers ignore it on purpose

private:
    // Path of the operation's folder, "" when it cannot be made.
    [[nodiscard]] std::string MakeFolder() const;
    void WritePart(std::string_view part, const ServiceRequest& request, std::string_view text) const;

    const host::HostServices& m_services;
    host::HostObjects& m_objects;
    host::SettingsStore& m_settings;
    const host::Clock& m_clock;
    std::string m_folder;
    std::int32_t m_counter = 0;
};

} // namespace vellumo::service
