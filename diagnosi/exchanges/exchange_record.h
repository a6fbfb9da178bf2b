// What the folders of SISS\Log tell: the operations of the practice in the order in which they began, each with its
// calls to SISS. A folder "yyyy-MM-dd hh.mm.ss" is begun by an identification, a certificate or a contact and holds
//   4 - Richiesta Identifica Cittadino Esteso
//   4 - Risposta Identifica Cittadino Esteso
// in 8-bit text; numbers go on from folder to folder as long as the host's provider lives. The calls of a prescribing
// session lie in the folder of whatever operation came before each of them, so one session may lie in several folders.
//
// Nothing here faults but for lack of memory: what cannot be read is told in `skipped`.
#pragma once

#include "diagnosi/exchanges/call_outcome.h"
#include "host/date.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::diagnosi
{

// Texts are UTF-8. The files are written when the call is over, so their times are those of its end.
struct Call
{
    std::int32_t number = 0;
    std::string service; // as in the files' names: "Identifica Cittadino GUI"
    std::string folder;  // name of the folder that its files lie in
    // Empty when there is no such file or it cannot be read. A reply of "" means that nothing came.
    std::optional<std::string> request;
    std::optional<std::string> reply;
    std::optional<host::Date> requestTime; // of the file, local
    std::optional<host::Date> replyTime;
    Outcome outcome;

    [[nodiscard]] std::optional<host::Date> Time() const { return replyTime ? replyTime : requestTime; }
};

struct Operation
{
    enum class Kind
    {
        Identification,
        Certificate,
        Contact,
        Prescriptions, // a prescribing session, from its opening to its end, as far as the log has it
        Other,         // services that this library does not call in an operation of its own
        NoCalls        // an empty folder: the operation ended before its first call was over
    };

    Kind kind = Kind::NoCalls;
    host::Date time;    // by the name of its first folder
    std::string folder; // that name
    std::vector<Call> calls;
};

struct ExchangeRecord
{
    std::vector<Operation> operations;
    // "name: why" of what lies in the log folder and is none of its own, or could not be read.
    std::vector<std::string> skipped;
};

struct Tally
{
    std::size_t calls = 0;
    std::size_t bad = 0; // that support should look at
};

[[nodiscard]] Tally TallyOf(const ExchangeRecord& record) noexcept;

// By the names of the folders, both days included. The zero date: no bound on that side.
struct Period
{
    host::Date firstDay;
    host::Date lastDay;

    [[nodiscard]] bool Has(host::Date time) const;
};

// `logFolder`: Windows path text of SISS\Log, or of a folder into which such folders were copied.
[[nodiscard]] ExchangeRecord ReadExchanges(std::string_view logFolder, const Period& period = {});

// Which operation a service belongs to, by its name in the log.
[[nodiscard]] Operation::Kind KindOfService(std::string_view service);

enum class Place // in a prescribing session
{
    None,
    Opens,
    Within,
    Ends
};

[[nodiscard]] Place PlaceOfService(std::string_view service);

} // namespace vellumo::diagnosi
