// What differs between the targets on which scenarios run: how a provider is created, where the installation keeps
// its settings, and who shows the windows to the operator.
#pragma once

#include "player/screen.h"
#include "simulator/norda/provider_client.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vellumo::player
{

class Target
{
public:
    virtual ~Target() = default;

    // Faults when the library refuses, with the text that a host would get.
    [[nodiscard]] virtual std::unique_ptr<norda::ProviderClient> CreateProvider(const norda::Outside& outside) = 0;

    [[nodiscard]] virtual norda::Installation& Machine() = 0;

    // The window on top while the library is at work (a wait window during a call, which is not waiting for anybody);
    // null when none of the library's is on screen. Good until the next message is dispatched.
    [[nodiscard]] virtual Window* Topmost() = 0;

    // From now on the system makes no window for a form of the library; boxes go on.
    virtual void RefuseWindows() = 0;

    // Saves a picture of the screen. False where there is none to take.
    virtual bool Screenshot(const std::filesystem::path& file) = 0;
};

// Each target's build defines this. `folder` is an empty folder of this run, where the target may keep its own files
// (natively the settings file). Windows that wait for input go to `anOperator`.
[[nodiscard]] std::unique_ptr<Target> MakeTarget(Operator& anOperator, const std::filesystem::path& folder);

// What is found on this machine, by the names of the report of the acceptance kit: system, library, parser.
[[nodiscard]] std::vector<std::pair<std::string, std::string>> MachineFacts();

// Does the work in a process of its own, which may end in the middle of it; returns its exit code. Where a process
// cannot be doubled, this program is started anew with these words, which are to make it do the same.
[[nodiscard]] int DoApart(const std::vector<std::string>& words, const std::function<void()>& work);

// This process ends at once, as one does that the system ends: nothing is closed in an orderly way.
[[noreturn]] void EndProcess(int code);

} // namespace vellumo::player
