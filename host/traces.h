// What the library leaves behind for support staff besides the host's own journal: the folder SISS\Tracce of the host's
// program. It holds a file of lines a month, and files of the codes that SISS gave and that are not yet where they
// belong, so that a program that ends in between loses none.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vellumo::host
{

// A unique prescription code, or INPS's number of a certificate.
struct OpenCode
{
    std::int32_t studio = 0;
    std::int32_t user = 0; // IDUtente; 0: unknown
    std::string subject;   // "Ricetta farmaci 101, numero 1"; of the patient nothing but an identifier
    std::string code;      // "IUP 0300…"
};

// One that a provider left behind.
struct LeftCode : OpenCode
{
    std::string machine;
    std::string time; // "yyyy-MM-dd hh.mm.ss"
};

// Keeps one code from the reply that brought it until it is settled. It travels with the response, so that whichever
// provider closes the session settles it.
class OpenCodeEntry
{
public:
    virtual ~OpenCodeEntry() = default;

    // The code is in its row, or in a line of the host's journal. Without it the code stays in the folder.
    virtual void Settle() noexcept = 0;
};

class Traces
{
public:
    virtual ~Traces() = default;

    // Adds a line. False when it could not be written.
    [[nodiscard]] virtual bool Append(std::string_view line) noexcept = 0;

    // The code is on disk when this returns. Null when it could not be written.
    [[nodiscard]] virtual std::shared_ptr<OpenCodeEntry> Keep(const OpenCode& code) noexcept = 0;

    // Hands over each code of that practice whose provider is no more. One for which `tell` returns True is settled.
    using Tell = std::function<bool(const LeftCode& code)>;
    virtual void Recover(std::int32_t studio, const Tell& tell) noexcept = 0;
};

} // namespace vellumo::host
