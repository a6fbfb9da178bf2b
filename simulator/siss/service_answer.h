// What a simulated service makes of one request: the XML of its data node, or its refusal.
#pragma once

#include "simulator/siss/behaviour.h"

#include <string>
#include <variant>

namespace vellumo::siss
{

using ServiceAnswer = std::variant<std::string, Refusal>;

} // namespace vellumo::siss
