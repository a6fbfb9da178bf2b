// What each operation may answer when something fails, as its row in docs/host-contract.md has it.
#pragma once

#include "player/narrator.h"

#include <optional>
#include <string>
#include <string_view>

namespace vellumo::torture
{

// What is wrong with an answer that is no fault; empty: nothing. `given`: the patient that the call named, "" for none.
[[nodiscard]] std::optional<std::string> FindWrongAnswer(std::string_view operation, const std::string& given,
                                                         const std::string& unhindered, const std::string& seen);

// Whether its faults reach the host.
[[nodiscard]] bool LetsFaultsThrough(std::string_view operation);

// Whether the answer says that everything was stored.
[[nodiscard]] bool SaysDone(std::string_view operation, const player::Outcome& seen);

} // namespace vellumo::torture
