// What the library leaves behind about prescriptions: lines in the host's journal of service errors, in which support
// staff looks for the codes that SISS gave and that are not, or not surely, in the host's table, and, in the folder of
// traces, each code that is not yet in either. Made where it is used.
//
// Nothing here faults: a line that cannot be written must not stop the work that it tells about. A code whose line was
// written is settled; the others stay in the folder, and the next provider tells them.
#pragma once

#include "host/prescriptions.h"
#include "host/traces.h"
#include "service/provider_context.h"

#include <cstdint>
#include <exception>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vellumo::prescription
{

// Drugs and tests number their forms separately.
struct PrescriptionId
{
    std::int32_t kind = 0;
    host::PrescriptionKey key; // NumRicetta 0: the whole form

    // As lines name it: "Ricetta farmaci 101, numero 1".
    [[nodiscard]] std::string Name() const;
    // Of such a name; empty for any other text.
    [[nodiscard]] static std::optional<PrescriptionId> FromName(std::string_view name);
};

// What SISS gave for one prescription; "" for what it did not give.
struct Codes
{
    std::string iup;
    std::string protocollo;

    // As lines name them: "IUP 0300…, protocollo 0300…"; "" for none.
    [[nodiscard]] std::string Text() const;
    [[nodiscard]] static Codes FromText(std::string_view text);
};

// A code in the folder of traces; null when it is settled, or could not be written there.
using OpenCode = std::shared_ptr<host::OpenCodeEntry>;
void Settle(OpenCode& code) noexcept;

class Journal
{
public:
    explicit Journal(const service::ProviderContext& context) noexcept
        : m_context(context)
    {
    }

    // Who is logged on to the host; 0 when it cannot tell. Asked before a request goes out: behind the reply its codes
    // must not wait for the host.
    [[nodiscard]] std::int32_t User() const noexcept;
    // From here on the code is found should the program end. Null also when there is none.
    [[nodiscard]] OpenCode Keep(std::string_view subject, const Codes& codes, std::int32_t user) const noexcept;

    // What SISS said of the prescription is not in the table.
    void NotSaved(const PrescriptionId& id, const Codes& codes, std::string_view reason, OpenCode& open) const noexcept;
    // A code that SISS gave at registration and did not confirm at the end of the phase.
    void NotConfirmed(const PrescriptionId& id, std::string_view iup, OpenCode& open) const noexcept;
    // Two codes for one prescription; "" for none.
    void OtherCode(const PrescriptionId& id, std::string_view given, OpenCode& openGiven, std::string_view final,
                   OpenCode& openFinal) const noexcept;
    // The row had the code of another registration.
    void Replaced(const PrescriptionId& id, std::string_view old, OpenCode& openOld,
                  std::string_view now) const noexcept;
    // A final result that no prescription takes. `subject`: whose it is, as far as that is known.
    void LeftOver(std::string_view subject, const Codes& codes, OpenCode& open) const noexcept;
    void RegistrationBroken(const PrescriptionId& id, const std::exception& fault) const noexcept;
    void ClosingBroken(const std::exception& fault) const noexcept;

private:
    // A line to check, which settles these codes.
    template <class Text>
    void Tell(std::initializer_list<OpenCode*> codes, Text&& text) const noexcept;

    const service::ProviderContext& m_context;
};

} // namespace vellumo::prescription
