// The host's tables, its prescription objects and its session, over what lies outside the process.
#pragma once

#include "tests/life/host.h"

#include <memory>

namespace vellumo::life
{

[[nodiscard]] std::shared_ptr<host::Connection> MakeConnection(World& world);
[[nodiscard]] std::unique_ptr<host::PrescriptionObjects> MakePrescriptions(World& world);
[[nodiscard]] std::unique_ptr<host::Recordset> NoRows();

} // namespace vellumo::life
