// A database that holds nothing but the host's catalogue of exemptions, read by position.
#pragma once

#include "tests/support/fake_host.h"

#include <array>
#include <vector>

namespace vellumo::tests
{

using CatalogueRow = std::array<host::Value, 4>; // identifier, description, code, type

[[nodiscard]] FakeConnection LocalExemptions(std::vector<CatalogueRow> rows);
// Six of them.
[[nodiscard]] FakeConnection LocalExemptions();

} // namespace vellumo::tests
