// The world of one scenario: a practice in a folder of its own, the simulated network, the host's program, and the
// screen with its operator. Gone with the object.
#pragma once

#include "player/target.h"
#include "simulator/norda/host_program.h"
#include "simulator/siss/network.h"

#include <memory>
#include <utility>

namespace vellumo::player
{

class Stage
{
public:
    // `practice` has databases and folders; the target keeps its own files there.
    Stage(norda::Practice practice, screen::Operator& anOperator)
        : m_practice(std::move(practice))
        , m_target(MakeTarget(anOperator, m_practice.Folder()))
        , m_own(m_practice.OpenFast())
        , m_host(*m_target.workstation, m_practice.OpenFast(), m_network, 1)
    {
        m_network.People().LoadSeed();
        m_practice.Register(Machine());
    }

    [[nodiscard]] norda::Practice& Practice() noexcept { return m_practice; }
    [[nodiscard]] siss::Network& Network() noexcept { return m_network; }
    [[nodiscard]] screen::Screen& Screen() noexcept { return *m_target.screen; }
    [[nodiscard]] norda::Installation& Machine() noexcept { return m_target.workstation->Machine(); }
    [[nodiscard]] norda::HostProgram& Host() noexcept { return m_host; }
    // A second connection, which sees what is stored and is never made to fail.
    [[nodiscard]] norda::Database& Database() noexcept { return *m_own; }

private:
    norda::Practice m_practice;
    siss::Network m_network;
    Target m_target;
    std::shared_ptr<norda::Database> m_own;
    norda::HostProgram m_host;
};

} // namespace vellumo::player
