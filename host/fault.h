// A fault is any run-time failure inside the library: a database error, a host object that refused, a value that
// cannot be converted. It carries the Italian text that the host or the operator reads, and the number that the
// host's own object reported when it comes from there.
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace vellumo::host
{

class Fault : public std::runtime_error
{
public:
    // `number` is the error number of the host object that failed (an HRESULT on Windows), 0 for the library's own.
    // `source` names that object as it names itself, "" when it does not.
    explicit Fault(const std::string& description, std::int32_t number = 0, std::string source = {})
        : std::runtime_error(description)
        , m_number(number)
        , m_source(source.empty() ? nullptr : std::make_shared<const std::string>(std::move(source)))
    {
    }

    [[nodiscard]] std::string Description() const { return what(); }
    [[nodiscard]] std::int32_t Number() const noexcept { return m_number; }
    [[nodiscard]] std::string Source() const { return m_source ? *m_source : std::string(); }

private:
    std::int32_t m_number;
    std::shared_ptr<const std::string> m_source; // shared: copying a fault must not fault
};

// Runs one statement whose failure must not stop the ones after it. One statement each, so that a reader sees
// exactly what may fail unnoticed.
template <class Statement>
void PassOver(Statement&& statement) noexcept
{
    try
    {
        std::forward<Statement>(statement)();
    }
    catch (...)
    {
        // Going on is the point.
    }
}

// Runs a whole operation and returns what it returns; after a fault, wherever it came from, `otherwise`.
template <class Result, class Operation>
[[nodiscard]] Result Trap(Result otherwise, Operation&& operation) noexcept
{
    try
    {
        return std::forward<Operation>(operation)();
    }
    catch (...)
    {
        return otherwise;
    }
}

// The same, and `tell` hears of the fault; what fails in there is passed over.
template <class Result, class Operation, class Tell>
[[nodiscard]] Result Trap(Result otherwise, Operation&& operation, Tell&& tell) noexcept
{
    try
    {
        return std::forward<Operation>(operation)();
    }
    catch (const std::exception& fault)
    {
        PassOver([&] { std::forward<Tell>(tell)(fault); });
    }
    catch (...)
    {
        PassOver([&] { std::forward<Tell>(tell)(Fault("Errore sconosciuto.")); });
    }
    return otherwise;
}

} // namespace vellumo::host
