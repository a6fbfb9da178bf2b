// The library as the simulated host sees it: every call that a host can make, whatever stands behind it. Natively
// that is the provider itself; on Windows it is the registered Vellumo.dll, reached through COM like any host would.
// Owned by whoever created it. A fault that the library lets through to its host arrives here as host::Fault.
#pragma once

#include "host/bridge.h"
#include "host/connection.h"
#include "host/lock_srv.h"
#include "host/records.h"
#include "host/utils.h"
#include "host/value.h"
#include "simulator/norda/prescriptions.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vellumo::norda
{

// What the simulated host puts in place before a provider is created, because the library creates these by itself
// and does not wait to be handed them. All outlive the client.
struct Outside
{
    host::Bridge* bridge = nullptr; // null: no bridge is installed, so no provider can be created
    host::HostObjects* objects = nullptr;
    host::PrescriptionObjects* prescriptions = nullptr; // its sessions are norda's
    // Where the library finds its host's objects under other names than those that it expects, each with something
    // behind it: a folder for a copy of it and the file that says so. Empty: they have the names that it expects.
    std::filesystem::path renamedIn = {};
    bool strict = false; // its objects answer in every way in which those of real hosts do
};

// How a variant argument is passed. A native provider knows those without a value as one.
enum class Passing
{
    Missing,     // left out by the caller
    Empty,       // a variant without a value
    Null,        // a database NULL
    NoObject,    // an object variable that holds no object
    OtherObject, // an object of the host that is no record
    ByValue,     // `record` where there is one, else `value`
    ByReference  // a variant that refers to another one, which holds the same
};

struct Argument
{
    Passing passing = Passing::Missing;
    host::Value value;
    std::shared_ptr<host::Record> record = nullptr;
};

class ProviderClient
{
public:
    virtual ~ProviderClient() = default;

    // What the host hands over; a null pointer takes it away again.
    virtual void SetConnection(std::shared_ptr<host::Connection> connection) = 0;
    virtual void SetLockSrv(std::shared_ptr<host::LockSrv> lockSrv) = 0;
    virtual void SetUtils(std::shared_ptr<host::Utils> utils) = 0;
    virtual void SetStudio(std::int32_t studio) = 0;
    [[nodiscard]] virtual std::int32_t Studio() = 0;

    virtual std::int32_t IdentificaPaziente(const Argument& idPaziente, bool& gestito) = 0;
    [[nodiscard]] virtual bool IsActive() = 0;
    [[nodiscard]] virtual bool VerificaPaziente(const Argument& idPaziente) = 0;
    [[nodiscard]] virtual bool IsPersonaleStudio() = 0;
    virtual bool Sincronizza() = 0;
    virtual bool SincronizzaPazienti() = 0;

    // Null: no session was opened.
    [[nodiscard]] virtual std::shared_ptr<PrescriptionSession> ApriSessionePrescrizione() = 0;
    // The session may be null, as a careless host passes it.
    virtual bool RegistraPrescrizione(const std::shared_ptr<PrescriptionSession>& session, const Argument& idRicetta,
                                      std::int32_t kind) = 0;
    virtual bool RegistraPrescrizioneSingola(const std::shared_ptr<PrescriptionSession>& session,
                                             const Argument& idRicetta, const Argument& numRicetta,
                                             std::int32_t kind) = 0;
    virtual bool ChiudiSessionePrescrizione(const std::shared_ptr<PrescriptionSession>& session) = 0;
    [[nodiscard]] virtual bool VerificaPrescrizione(const Argument& idRicetta, std::int32_t kind) = 0;
    [[nodiscard]] virtual bool VerificaPrescrizioneSingola(const Argument& idRicetta, const Argument& numRicetta,
                                                           std::int32_t kind) = 0;
    virtual bool AnnullaPrescrizione(const Argument& idRicetta, const Argument& numRicetta, std::int32_t value) = 0;
    // The print options of a session as the host reads them; faults when it has none.
    [[nodiscard]] virtual host::OpzioniRicetta OptionsOf(const PrescriptionSession& session) = 0;

    [[nodiscard]] virtual bool InviaCertificato(const Argument& certificato) = 0;
    [[nodiscard]] virtual bool AnnullaCertificato(const Argument& certificato) = 0;
    [[nodiscard]] virtual bool InserisciContatto(const Argument& idPaziente) = 0;

    // Lets go of each reference to the provider, also while a call of it runs, which then ends as it would have.
    // Nothing but Release may be called afterwards. Faults natively, where nothing is counted.
    virtual void LetGo() = 0;
    // Lets go of the provider; nothing else may be called afterwards. True when the library holds nothing any more, so
    // that a host could unload it (natively there is nothing to unload: True).
    [[nodiscard]] virtual bool Release() = 0;
};

// The machine that the library is installed on, as far as it reads settings from it: the registry on Windows, a
// settings file with the same keys elsewhere. Keys are paths below the machine's or the user's root.
class Installation
{
public:
    virtual ~Installation() = default;

    // An empty optional removes the value.
    virtual void SetMachineText(std::string_view key, std::string_view name,
                                const std::optional<std::string>& text) = 0;
    virtual void SetUserText(std::string_view key, std::string_view name, const std::optional<std::string>& text) = 0;
    [[nodiscard]] virtual std::optional<std::string> MachineText(std::string_view key, std::string_view name) = 0;
    // A key without values; nobody can write below a key that is not there.
    virtual void AddMachineKey(std::string_view key) = 0;
    virtual void RemoveMachineKey(std::string_view key) = 0;
};

} // namespace vellumo::norda
