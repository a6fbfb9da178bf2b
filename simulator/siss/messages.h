// Requests and replies in few words, for people who follow what is exchanged.
#pragma once

#include <string>

namespace vellumo::siss
{

// The operation element that a request asks for; "?" when it has none.
[[nodiscard]] std::string ServiceOf(const std::string& request);
// What is in a reply: its outcome, or that it is no reply at all.
[[nodiscard]] std::string OutcomeOf(const std::string& reply);

} // namespace vellumo::siss
