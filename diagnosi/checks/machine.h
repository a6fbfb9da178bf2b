// What the tasks of the support program look at: the installation's settings, the time, and the host's database when
// somebody says how to reach it. Everything else they find from there.
#pragma once

#include "host/clock.h"
#include "host/settings_store.h"

#include <string>

namespace vellumo::diagnosi
{

// ODBC connection strings; "" when not given. They may hold a password and appear in no output.
struct Databases
{
    std::string practice;
    // Of the shared tables, where these are not the database "Norda" on the practice's server.
    std::string shared;
};

struct Machine
{
    host::SettingsStore& settings;
    const host::Clock& clock;
    Databases databases = {};
};

// Folders of the host program, "" and relative paths where the settings do not say where it is.
[[nodiscard]] std::string SissFolder(const Machine& machine);
[[nodiscard]] std::string TemplatesFolder(const Machine& machine); // SISS\Templates
[[nodiscard]] std::string LogFolder(const Machine& machine);       // SISS\Log
[[nodiscard]] std::string TraceFolder(const Machine& machine);     // SISS\Tracce

} // namespace vellumo::diagnosi
