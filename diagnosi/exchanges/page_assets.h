// Style and script of the page, from the files of diagnosi/exchanges/page.
#pragma once

#include <string_view>

namespace vellumo::diagnosi
{

extern const std::string_view pageStyle;
extern const std::string_view pageScript;

} // namespace vellumo::diagnosi
