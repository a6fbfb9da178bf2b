// What the library writes about prescriptions into the host's journal of service errors. Support staff looks there for
// the codes that SISS gave and that are not, or not surely, in the host's table. Made where it is used.
//
// Nothing here faults: a line that cannot be written must not stop the work that it tells about.
#pragma once

#include "host/host_services.h"
#include "host/prescriptions.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace vellumo::prescription
{

// What SISS gave for one prescription; "" for what it did not give.
struct Codes
{
    std::string iup;
    std::string protocollo;
};

class Journal
{
public:
    explicit Journal(const host::HostServices& services) noexcept
        : m_services(services)
    {
    }

    // The codes are not in the table. Nothing is written when there are none.
    void NotSaved(const host::PrescriptionKey& key, const Codes& codes, std::string_view reason) const noexcept;
    // A code that SISS gave at registration and did not confirm at the end of the phase.
    void NotConfirmed(const host::PrescriptionKey& key, std::string_view iup) const noexcept;
    // Two codes for one prescription; "" for none.
    void OtherCode(const host::PrescriptionKey& key, std::string_view given, std::string_view final) const noexcept;
    // The row had the code of another registration.
    void Replaced(const host::PrescriptionKey& key, std::string_view old, std::string_view now) const noexcept;
    // "Ricetta farmaci 101, numero 1": the two kinds number their forms separately.
    [[nodiscard]] static std::string Name(std::int32_t kind, const host::PrescriptionKey& key);

private:
    void Write(const host::PrescriptionKey& key, std::initializer_list<std::string_view> parts) const noexcept;

    const host::HostServices& m_services;
};

} // namespace vellumo::prescription
