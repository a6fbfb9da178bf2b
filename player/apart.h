// Processes of their own, for what may end the one that it happens in.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vellumo::player
{

// Does the work in a process of its own, which may end in the middle of it; returns its exit code. Where a process
// cannot be doubled, this program is started anew with these words, which are to make it do the same.
[[nodiscard]] int DoApart(const std::vector<std::string>& words, const std::function<void()>& work);

// This process ends at once, as one does that the system ends: nothing is closed in an orderly way.
[[noreturn]] void EndProcess(int code);

} // namespace vellumo::player
