// The settings of the machine, as in a registry that this user may not read or write.
#pragma once

#include "host/settings_store.h"

#include <memory>

namespace vellumo::torture
{

[[nodiscard]] std::unique_ptr<host::SettingsStore> Tortured(std::unique_ptr<host::SettingsStore> store);

} // namespace vellumo::torture
