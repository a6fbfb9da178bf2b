// The file seed/citizens.txt, built into the program.
#pragma once

#include <string_view>

namespace vellumo::siss::seed
{

extern const std::string_view citizens;

} // namespace vellumo::siss::seed
