// What a person at norda's console works with: the practice, who is logged on, the host's program, and the simulated
// network behind it.
#pragma once

#include "simulator/norda/host_program.h"
#include "simulator/siss/network.h"

#include <iosfwd>
#include <string>

namespace vellumo::norda
{

class Desk
{
public:
    // The streams and the workstation outlive it. Faults when the database cannot be opened.
    Desk(const Practice& practice, Workstation& workstation, std::istream& in, std::ostream& out);

    [[nodiscard]] std::ostream& Out() noexcept { return m_out; }
    // Without blanks around it; "" at the end of the input.
    [[nodiscard]] std::string ReadLine(const std::string& prompt);
    [[nodiscard]] bool IsAtEnd() const;
    // Rows of a query in columns.
    void Print(const std::string& sql, const host::Parameters& parameters = {});

    [[nodiscard]] const Practice& ThePractice() const noexcept { return m_practice; }
    [[nodiscard]] HostProgram& Host() noexcept { return m_host; }
    [[nodiscard]] siss::Network& Network() noexcept { return m_network; }

    [[nodiscard]] const User& TheUser() const noexcept { return m_user; }
    void LogOn(const User& user);

    // How SISS answers the call with this number, counted from 1; 0: each that has no answer of its own.
    void Answer(std::size_t call, const siss::Behaviour& reply);
    // An exception or a warning is added to the answer that was set last.
    void AddToAnswer(bool isWarning, const siss::Detail& entry);

private:
    Practice m_practice;
    std::istream& m_in;
    std::ostream& m_out;
    siss::Network m_network;
    HostProgram m_host;
    User m_user;
    std::size_t m_call = 0;
    siss::Behaviour m_reply;
};

} // namespace vellumo::norda
