// The parts of the host as the library gets them in this program: each passes on to the simulated host's, and fails
// when its call is due.
#pragma once

#include "simulator/norda/provider_client.h"

#include <memory>

namespace vellumo::torture
{

[[nodiscard]] std::shared_ptr<host::Connection> Tortured(std::shared_ptr<host::Connection> connection);
[[nodiscard]] std::shared_ptr<host::LockSrv> Tortured(std::shared_ptr<host::LockSrv> lockSrv);
[[nodiscard]] std::shared_ptr<host::Utils> Tortured(std::shared_ptr<host::Utils> utils);
[[nodiscard]] std::shared_ptr<host::Record> Tortured(std::shared_ptr<host::Record> record);

// In front of what the library creates by itself. Outlives the provider.
class TorturedOutside
{
public:
    // There is a bridge.
    explicit TorturedOutside(const norda::Outside& outside);
    ~TorturedOutside();
    TorturedOutside(const TorturedOutside&) = delete;
    TorturedOutside& operator=(const TorturedOutside&) = delete;

    [[nodiscard]] const norda::Outside& Get() const noexcept { return m_outside; }

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
    norda::Outside m_outside;
};

} // namespace vellumo::torture
