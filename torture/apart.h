// Processes of their own, for what may end the one that it happens in.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace vellumo::torture
{

// Memory that is this process's and its children's, all zero. Never given back.
[[nodiscard]] void* Share(std::size_t size);

// Plays the pieces from 0 to `count`, by `jobs` at a time where a process can be doubled. A piece that ends its
// process, or does not end, goes to `broke`; the others are played all the same, but where processes cannot be doubled.
void PlayApart(std::size_t jobs, std::size_t count, const std::function<void(std::size_t job, std::size_t piece)>& play,
               const std::function<void(std::size_t piece, const std::string& how)>& broke);

} // namespace vellumo::torture
