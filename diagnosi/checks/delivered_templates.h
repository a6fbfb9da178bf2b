// The request templates that this version delivers, as they stand in templates/.
#pragma once

#include <span>
#include <string_view>

namespace vellumo::diagnosi
{

struct DeliveredTemplate
{
    std::string_view file; // name, with ".template"
    std::string_view text;
};

[[nodiscard]] std::span<const DeliveredTemplate> DeliveredTemplates();

} // namespace vellumo::diagnosi
