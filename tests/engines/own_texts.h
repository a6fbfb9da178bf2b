// Texts that are meant to part one XML engine from another, the same on every target.
#pragma once

#include <functional>
#include <string>

namespace vellumo::engines
{

// Each text once, with a name of its own ("own/names/12").
using Play = std::function<void(const std::string& name, const std::string& text)>;

void PlayOwnTexts(const Play& play);

} // namespace vellumo::engines
