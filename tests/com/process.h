// Programs of the system that the tests run.
#pragma once

#include <string>

namespace vellumo::tests
{

struct Outcome
{
    unsigned long exitCode = 0;
    std::string output; // standard output and error, as bytes
};

// Runs a command line in `folder` and waits for its end; requires that it starts, and that it ends within a minute.
[[nodiscard]] Outcome Run(const std::wstring& command, const std::wstring& folder);

} // namespace vellumo::tests
