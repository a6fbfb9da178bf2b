// What happens in one simulated life of a prescribing session: what the doctor prescribes, what SISS answers, what he
// presses, and what fails when. Made from a number, so that each life can be played again.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vellumo::life
{

struct Prescription
{
    std::int32_t kind = 1;
    std::int32_t form = 101;
    std::int32_t number = 1;
    bool withoutItems = false;
    bool rowGoes = false; // the host deletes the row between registration and close
    bool hasOldCode = false;
};

// What becomes of a registration.
enum class Fate : std::uint8_t
{
    Accepted,
    WithoutCode,     // accepted, SISS gives the code at the end of the phase
    Flagged,         // accepted with a warning
    Refused,         // without a code
    RefusedWithCode, // `esitoNegativo`, and a code all the same
    RefusedByList,   // only a list of errors, beside a code
    LostBefore,      // the bridge raises, SISS knows nothing
    LostAfter,       // the reply is empty, SISS took it
    WithoutOutcome,  // SISS took it, its reply does not say so
    SameCode,        // accepted with the code that SISS gave last
};
inline constexpr std::size_t fateCount = 10;

// A registration, in the order of the calls.
struct Sending
{
    std::size_t prescription = 0;
    Fate fate = Fate::Accepted;
};

enum class Shape : std::uint8_t
{
    Proper,
    Elsewhere,      // the results stand beside the node where they are expected
    RefusedQuietly, // with a code that is not shown, and the results
    Refused,        // with another code, and the results
    RefusedBare,
    WithoutOutcome,
    LostBefore,
    LostAfter,
    SoapFault,
};
inline constexpr std::size_t shapeCount = 9;

enum class Order : std::uint8_t
{
    AsRegistered, // drugs first
    Reversed,
    Rotated,
};
inline constexpr std::size_t orderCount = 3;

enum class Button : std::uint8_t
{
    PrintWithoutIup,
    CancelRefused,
    CancelAll,
    Frame,
};
inline constexpr std::size_t buttonCount = 4;

// The end of a batch. A bit of a mask stands for a result of the reply, in the order of registration.
struct Closing
{
    Button button = Button::CancelRefused;
    Shape shape = Shape::Proper;
    Order order = Order::AsRegistered;
    unsigned missing = 0;
    unsigned notOk = 0;     // "KO"
    unsigned negative = 0;  // `esitoNegativo` instead of an outcome
    unsigned otherCode = 0; // than at registration
    unsigned codeless = 0;
    bool listsRefused = false; // results also for the refused ones, "KO"
    int strangers = 0;         // results that nobody knows: 1 in front, 2 behind, 3 in the middle
    bool byOtherProvider = false;
    bool firstReleasedBefore = false; // the other provider is made when the first one is gone
};

struct Round
{
    std::vector<Sending> sendings;
    bool wholeForms = false; // RegistraPrescrizione
    bool closes = true;      // false: the host forgets the session
    Closing closing;
};

// What the library asks of the outside.
enum class Point : std::uint8_t
{
    Statement,
    LockSrv,
    SettingsLoad,
    SettingsGet,
    List,
    Find,
    RowGet,
    RowSet,
    Save,
    Saved, // raises after it has stored
    SaveRefused,
    SessionFlags,
    SessionOptions,
    SessionAdd,
    SessionCount,
    SessionRead,
    Journal,
    Append,
    Keep,
    Window,
    WaitBefore,
    WaitAfter,
    Box, // from here on they only let a program end
    Bridge,
    Bridged,
    Journalled,
};
inline constexpr std::size_t pointCount = 26;
inline constexpr std::size_t faultyPoints = 22; // the ones before Box

struct Fault
{
    Point point = Point::Statement;
    int call = 1; // from 1, at that point
    bool forGood = false;
};

struct Plan
{
    std::vector<Prescription> prescriptions;
    std::vector<Round> rounds; // of one session
    std::vector<Fault> faults;
    bool electronic = false;
    bool fromTheStart = false; // faults count from the opening of the session, not from the first registration
    bool brokenTemplates = false;
    bool paddedCodes = false;
    int deathAt = 0;           // the program ends at this call to the outside; 0: it does not
    int secondDeathAt = 0;     // and so does the one that is started then
    bool startsInVain = false; // the one that is started then finds a journal that refuses
};

// Of a random session. The same number gives the same plan everywhere.
[[nodiscard]] Plan RandomPlan(std::uint64_t seed);

// All batches of `size` prescriptions without faults, by number.
[[nodiscard]] std::uint64_t BatchCount(std::size_t size);
[[nodiscard]] Plan Batch(std::size_t size, std::uint64_t number);

// In words, a line each.
[[nodiscard]] std::string Describe(const Plan& plan);

[[nodiscard]] const char* NameOf(Fate fate);
[[nodiscard]] const char* NameOf(Point point);

// "Ricetta farmaci 101, numero 1", as lines name it.
[[nodiscard]] std::string SubjectOf(const Prescription& prescription);

} // namespace vellumo::life
