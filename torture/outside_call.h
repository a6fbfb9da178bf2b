// What the library asks of the outside, call by call: how many calls of each kind there were, and which of them is to
// fail. One a process, as the allocator is, whose calls count, too.
//
// What is called by the library counts, what the outside calls by itself does not: a record that asks its database is
// one call. So everybody says where he is: `InLibrary` when the library is entered, `OutsideCall` when it is left.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vellumo::torture
{

// What a database quotes of a row in the description of its fault; it must not get far.
inline constexpr std::string_view quotedByServer = "CNRGLL80A01F205X";

enum class Kind : std::uint8_t
{
    Create, // an object of the host's
    Load,
    Get,
    Set,
    Save,
    Saved, // raises when it has stored
    Identifier,
    List, // the prescriptions of a form, and one of them
    Session,
    Open, // a recordset
    End,
    Move,
    Field,
    LookUp,
    Execute,
    Write,
    Begin,
    Commit,
    Committed, // raises when it has happened
    Rollback,
    User,
    Journal,
    TableDate,
    Bridge,
    Replied, // raises when SISS has done its work
    ReadSetting,
    WriteSetting,
    OpenFile,
    ReadFile,
    WriteFile, // as on a full disk
    MakeFolder,
    Window,
    Draw, // and the messages that wait meanwhile
    Font,
    Picture, // and what it is drawn with
    Timer,
    Message,
    Memory,
    Bstr, // from here on: memory of OLE
    Variant,
    Array,
};
inline constexpr std::size_t kindCount = 41;

// In a word, for the table.
[[nodiscard]] const char* NameOf(Kind kind);
[[nodiscard]] std::optional<Kind> FindKind(std::string_view name);

// The calls of an operation of the provider's.
enum class Operation : std::uint8_t
{
    Creation,
    HandOver,
    IdentificaPaziente,
    VerificaPaziente,
    IsActive,
    IsPersonaleStudio,
    Sincronizza,
    SincronizzaPazienti,
    ApriSessionePrescrizione,
    RegistraPrescrizione,
    RegistraPrescrizioneSingola,
    ChiudiSessionePrescrizione,
    VerificaPrescrizione,
    VerificaPrescrizioneSingola,
    AnnullaPrescrizione,
    InviaCertificato,
    AnnullaCertificato,
    InserisciContatto,
    Release,
};
inline constexpr std::size_t operationCount = 19;

[[nodiscard]] const char* NameOf(Operation operation);

// Which call is to fail.
struct Failure
{
    Kind kind = Kind::Create;
    std::size_t number = 0; // among the calls of that kind, from 1; 0: none fails
    bool forGood = false;   // and all that follow
};

using Counts = std::array<std::size_t, kindCount>;

// All that is known of the calls since `Begin`.
struct Observed
{
    Counts calls{};
    bool failed = false;                      // the call has come
    Operation failedIn = Operation::Creation; // then
    bool isWithoutProvider = false;           // it could not be made, or not be handed what the host has
    bool refusedRollback = false;             // one of those that failed was the taking back
    int transactions = 0;                     // that are open
    std::size_t objects = 0;                  // of the host's that the library holds
    std::size_t blocks = 0;                   // of memory, taken inside the library and not given back
};

void Begin(const Failure& failure) noexcept;
// Nothing fails and nothing counts any more.
void Cease() noexcept;
[[nodiscard]] Observed& Seen() noexcept;

// The library is at work as long as this lives.
class InLibrary
{
public:
    explicit InLibrary(Operation operation) noexcept;
    InLibrary() noexcept; // again, from inside a call of its own
    ~InLibrary();
    InLibrary(const InLibrary&) = delete;
    InLibrary& operator=(const InLibrary&) = delete;

private:
    bool m_before;
    Operation m_operation;
};

// The outside is at work as long as this lives.
class OutsideCall
{
public:
    OutsideCall() noexcept; // counts nowhere
    explicit OutsideCall(Kind kind) noexcept;
    ~OutsideCall();
    OutsideCall(const OutsideCall&) = delete;
    OutsideCall& operator=(const OutsideCall&) = delete;

    [[nodiscard]] bool Fails() const noexcept { return m_fails; }
    // As an object of the host's does.
    void FailIfDue() const;
    // For what fails after it has happened.
    void FailAfter(Kind kind) const;

private:
    bool m_before;
    bool m_fails = false;
};

// For what is asked without leaving the library, such as the allocator. True when that call is to fail.
[[nodiscard]] bool FailsInside(Kind kind) noexcept;
[[nodiscard]] bool IsInLibrary() noexcept;

// Base of what the library is given: counts those that it holds.
class Held
{
public:
    Held() noexcept { ++Seen().objects; }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() { --Seen().objects; }
};

} // namespace vellumo::torture
