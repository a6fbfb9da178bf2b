#include "torture/outside_call.h"

#include "host/fault.h"

#include <algorithm>
#include <utility>

namespace vellumo::torture
{
namespace
{

struct State
{
    Failure failure;
    Observed seen;
    Operation operation = Operation::Creation;
    bool inLibrary = false;
    bool counts = false;
};

// Each thread for itself: the library has one.
thread_local State state; // NOLINT(bugprone-dynamic-static-initializers)

constexpr std::array kindNames = {
    "create",  "load",    "get",     "set",     "save",    "saved", "id",      "list",   "session", "open",   "end",
    "move",    "field",   "look-up", "exec",    "write",   "begin", "commit",  "commtd", "rollbk",  "user",   "journal",
    "tabdate", "bridge",  "replied", "readreg", "writreg", "fopen", "fread",   "fwrite", "mkdir",   "window", "draw",
    "font",    "picture", "timer",   "message", "memory",  "bstr",  "variant", "array"};
static_assert(kindNames.size() == kindCount);

// What COM reports for a failure of any kind.
constexpr auto failed = static_cast<std::int32_t>(0x80004005U);

bool IsDue(Kind kind) noexcept
{
    if (!state.counts)
    {
        return false;
    }
    const auto number = ++state.seen.calls.at(static_cast<std::size_t>(kind));
    const auto& due = state.failure;
    if (kind != due.kind || due.number == 0 || number < due.number || (number > due.number && !due.forGood))
    {
        return false;
    }
    if (!std::exchange(state.seen.failed, true))
    {
        state.seen.failedIn = state.operation;
    }
    state.seen.refusedRollback = state.seen.refusedRollback || kind == Kind::Rollback;
    return true;
}

[[noreturn]] void Fail(Kind kind)
{
    throw host::Fault(std::string("Chiamata non riuscita: ") + NameOf(kind) + ". (\"" + std::string(quotedByServer) +
                          "\")",
                      failed, "Norda");
}

} // namespace

const char* NameOf(Kind kind)
{
    return kindNames.at(static_cast<std::size_t>(kind));
}

std::optional<Kind> FindKind(std::string_view name)
{
    const auto* const found = std::find(kindNames.begin(), kindNames.end(), name);
    return found == kindNames.end() ? std::nullopt : std::optional(static_cast<Kind>(found - kindNames.begin()));
}

const char* NameOf(Operation operation)
{
    static constexpr std::array names = {"(creation)",
                                         "(handing over)",
                                         "IdentificaPaziente",
                                         "VerificaPaziente",
                                         "IsActive",
                                         "IsPersonaleStudio",
                                         "Sincronizza",
                                         "SincronizzaPazienti",
                                         "ApriSessionePrescrizione",
                                         "RegistraPrescrizione",
                                         "RegistraPrescrizioneSingola",
                                         "ChiudiSessionePrescrizione",
                                         "VerificaPrescrizione",
                                         "VerificaPrescrizioneSingola",
                                         "AnnullaPrescrizione",
                                         "InviaCertificato",
                                         "AnnullaCertificato",
                                         "InserisciContatto",
                                         "(release)"};
    static_assert(names.size() == operationCount);
    return names.at(static_cast<std::size_t>(operation));
}

void Begin(const Failure& failure) noexcept
{
    state.failure = failure;
    state.seen = {};
    state.counts = true;
}

void Cease() noexcept
{
    state.counts = false;
}

Observed& Seen() noexcept
{
    return state.seen;
}

InLibrary::InLibrary(Operation operation) noexcept
    : m_before(std::exchange(state.inLibrary, true))
    , m_operation(std::exchange(state.operation, operation))
{
}

InLibrary::InLibrary() noexcept
    : InLibrary(state.operation)
{
}

InLibrary::~InLibrary()
{
    state.inLibrary = m_before;
    state.operation = m_operation;
}

OutsideCall::OutsideCall() noexcept
    : m_before(std::exchange(state.inLibrary, false))
{
}

OutsideCall::OutsideCall(Kind kind) noexcept
    : OutsideCall()
{
    m_fails = m_before && IsDue(kind);
}

OutsideCall::~OutsideCall()
{
    state.inLibrary = m_before;
}

void OutsideCall::FailIfDue() const
{
    if (m_fails)
    {
        Fail(state.failure.kind);
    }
}

void OutsideCall::FailAfter(Kind kind) const
{
    if (m_before && IsDue(kind))
    {
        Fail(kind);
    }
}

bool FailsInside(Kind kind) noexcept
{
    return state.inLibrary && IsDue(kind);
}

bool IsInLibrary() noexcept
{
    return state.inLibrary;
}

} // namespace vellumo::torture
