// The world of one scenario: a practice in a folder of its own, the simulated network, the host's program, and the
// screen with its operator. Gone with the object.
#pragma once

#include "player/target.h"
#include "simulator/norda/host_program.h"
#include "simulator/siss/network.h"

#include <filesystem>
#include <memory>
#include <string>

namespace vellumo::player
{

class Stage
{
public:
    // `model` is a practice as `Practice::Create` leaves it; a copy of it in `folder` is this stage's own. Without a
    // model it is the practice that an earlier stage left there. `server`: as for `norda::Practice`.
    Stage(const std::filesystem::path& model, const std::filesystem::path& folder, const std::string& server,
          screen::Operator& anOperator);

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
