// What a person at norda's console works with: the practice, who is logged on, the provider that the host created and
// the prescribing session that it keeps, and the simulated network behind it.
#pragma once

#include "simulator/norda/host_records.h"
#include "simulator/norda/host_utils.h"
#include "simulator/norda/practice.h"
#include "simulator/norda/workstation.h"
#include "simulator/siss/network.h"

#include <iosfwd>
#include <memory>
#include <string>

namespace vellumo::norda
{

class Desk
{
public:
    // The streams and the workstation outlive it. Faults when the database cannot be opened.
    Desk(const Practice& practice, Workstation& workstation, std::istream& in, std::ostream& out);
    ~Desk();
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    [[nodiscard]] std::ostream& Out() noexcept { return m_out; }
    // Without blanks around it; "" at the end of the input.
    [[nodiscard]] std::string ReadLine(const std::string& prompt);
    [[nodiscard]] bool IsAtEnd() const;
    // Rows of a query in columns.
    void Print(const std::string& sql, const host::Parameters& parameters = {});

    [[nodiscard]] const Practice& ThePractice() const noexcept { return m_practice; }
    [[nodiscard]] const std::shared_ptr<Database>& TheDatabase() const noexcept { return m_database; }
    [[nodiscard]] HostUtils& Utils() noexcept { return *m_utils; }
    [[nodiscard]] HostObjects& Objects() noexcept { return m_objects; }
    [[nodiscard]] siss::Network& Network() noexcept { return m_network; }

    [[nodiscard]] const User& TheUser() const noexcept { return m_user; }
    void LogOn(const User& user);

    // Made when it is first needed, everything handed over. Faults as creating it does.
    [[nodiscard]] ProviderClient& Provider();
    // The session that the host keeps; null before the first is opened.
    std::shared_ptr<PrescriptionSession> session;

    // How SISS answers the call with this number, counted from 1; 0: each that has no answer of its own.
    void Answer(std::size_t call, const siss::Behaviour& reply);
    // The answer that was set last, to which an exception or a warning is added.
    void AddToAnswer(bool isWarning, const siss::Detail& entry);

private:
    Practice m_practice;
    Workstation& m_workstation;
    std::istream& m_in;
    std::ostream& m_out;
    siss::Network m_network;
    HostObjects m_objects;
    PrescriptionObjects m_prescriptions;
    std::shared_ptr<Database> m_database;
    std::shared_ptr<HostUtils> m_utils;
    User m_user;
    std::unique_ptr<ProviderClient> m_provider;
    std::size_t m_call = 0;
    siss::Behaviour m_reply;
};

} // namespace vellumo::norda
