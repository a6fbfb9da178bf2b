// The machine that the acceptance kit runs on. The simulated host and SISS client take the places of the real ones
// while scenarios play, so there must be no real ones; what is changed in the registry is put back.
#pragma once

#include <optional>
#include <string>

namespace vellumo::acceptance
{

class TestMachine
{
public:
    // Remembers what scenarios change.
    TestMachine();
    // Puts it back.
    ~TestMachine();
    TestMachine(const TestMachine&) = delete;
    TestMachine& operator=(const TestMachine&) = delete;

    // Why nothing may be played here, in Italian; empty when it may.
    [[nodiscard]] static std::optional<std::string> WhyNot();

private:
    std::optional<std::string> m_hostFolder;
    std::optional<std::string> m_sissFolder;
};

} // namespace vellumo::acceptance
