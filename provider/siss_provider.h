// The one object that the host creates. It holds what the host hands over, owns everything that reaches SISS, and
// routes each host call to its operation. One thread: the host's user-interface thread.
//
// Members trap their faults as their operation's page in docs/host-contract.md says; what they let through is a
// host::Fault. By-reference arguments have their value before any work starts.
//
// The host may call from inside its own objects, or from a timer while a window is open. What it hands over is taken
// then, too, and IsActive, IsPersonaleStudio and what begins with "Verifica" answer as ever; any other operation ends
// as it does on a fault, with one line in the journal, and disturbs nothing.
#pragma once

#include "host/bridge.h"
#include "host/clock.h"
#include "host/host_services.h"
#include "host/prescriptions.h"
#include "host/records.h"
#include "host/settings_store.h"
#include "host/traces.h"
#include "host/value.h"
#include "ui/desktop.h"

#include <cstdint>
#include <memory>

namespace vellumo::provider
{

// What the platform supplies. The provider owns it.
struct PlatformParts
{
    std::unique_ptr<host::Bridge> bridge;
    std::unique_ptr<host::HostObjects> objects;
    std::unique_ptr<host::PrescriptionObjects> prescriptions;
    std::unique_ptr<host::SettingsStore> settings;
    std::unique_ptr<host::Clock> clock;
    std::unique_ptr<ui::Desktop> desktop;
    std::unique_ptr<host::Traces> traces = nullptr; // null: the folder SISS\Tracce
};

class SISSProvider
{
public:
    // Reads the bridge's configuration file; nothing here faults once the platform's parts are there.
    explicit SISSProvider(PlatformParts platform);
    ~SISSProvider();
    SISSProvider(const SISSProvider&) = delete;
    SISSProvider& operator=(const SISSProvider&) = delete;

    // What the host hands over; set at any time, in any order, replaced or cleared also from inside a call.
    void SetConnection(std::shared_ptr<host::Connection> connection);
    void SetLockSrv(std::shared_ptr<host::LockSrv> lockSrv);
    void SetUtils(std::shared_ptr<host::Utils> utils);
    void SetStudio(std::int32_t studio) noexcept;
    [[nodiscard]] std::int32_t Studio() const noexcept;

    // Returns the local identifier of the citizen identified on SISS, 0 when there is none. `idPaziente` null: a fresh
    // search. `gestito` True: the host takes the identifier as it stands; False: it goes on with its own handling.
    std::int32_t IdentificaPaziente(const host::Value& idPaziente, bool& gestito);

    // Imports the regional tables that are due. True whatever happened in them; False when the progress window could
    // not be shown.
    [[nodiscard]] bool Sincronizza() noexcept;
    // Imports the list of the doctor's patients from a file that the operator chooses. True only when it came to its
    // end; otherwise the operator has been told why, or has chosen no file.
    [[nodiscard]] bool SincronizzaPazienti() noexcept;

    [[nodiscard]] bool IsActive() const noexcept;
    // Always True: nothing is sent and nothing is shown.
    [[nodiscard]] static bool VerificaPaziente(const host::Value& idPaziente) noexcept;
    // Lets the doctor choose the print options and tells SISS that a prescribing phase starts. Null when the operator
    // cancelled, or SISS refused and he did not want to go on without it.
    [[nodiscard]] std::shared_ptr<host::PrescriptionSession> ApriSessionePrescrizione();
    // Sends every prescription of the form, or one, to SISS and keeps the responses in the session. `kind` is 1 drugs,
    // 2 tests. A session of null faults, here and at the close.
    bool RegistraPrescrizione(host::PrescriptionSession* session, const host::Value& idRicetta, std::int32_t kind);
    bool RegistraPrescrizioneSingola(host::PrescriptionSession* session, const host::Value& idRicetta,
                                     const host::Value& numRicetta, std::int32_t kind);
    // Shows what SISS refused or flagged, stores the codes and ends the phase. True: the host prints.
    bool ChiudiSessionePrescrizione(host::PrescriptionSession* session);
    // True when the form, or the one prescription, holds no valid registered prescription of that kind.
    [[nodiscard]] bool VerificaPrescrizione(const host::Value& idRicetta, std::int32_t kind);
    [[nodiscard]] bool VerificaPrescrizioneSingola(const host::Value& idRicetta, const host::Value& numRicetta,
                                                   std::int32_t kind);
    // Marks the host's row as cancelled; nothing is sent. False when there is none, or it could not be stored.
    bool AnnullaPrescrizione(const host::Value& idRicetta, const host::Value& numRicetta, std::int32_t value) noexcept;

    // These return False whatever happens: the operator has been told the outcome. `certificato` null: nothing is done.
    bool InviaCertificato(host::Record* certificato) noexcept;
    bool AnnullaCertificato(host::Record* certificato) noexcept;
    bool InserisciContatto(const host::Value& idPaziente) noexcept;
    // True when the user logged on is practice staff, not a doctor; False also when that cannot be found out.
    [[nodiscard]] bool IsPersonaleStudio() noexcept;

private:
    class HostCalls;
    std::unique_ptr<HostCalls> m_calls;
    bool m_active = true; // cleared once, never set again
};

} // namespace vellumo::provider
