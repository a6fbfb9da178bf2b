// The texts of the simulated network's replies.
#pragma once

#include "simulator/siss/behaviour.h"

#include <string>
#include <string_view>

namespace vellumo::siss
{

// The whole reply to the service that the element `service` of the request names ("m:ICCE.identificaCittadinoGUI").
// `data` is the XML of its data node, for a proper reply. A lost reply is an empty one.
[[nodiscard]] std::string WriteReply(const std::string& service, const Behaviour& behaviour, const std::string& data);

// An element with this content as it stands, and one with this text.
[[nodiscard]] std::string Wrapped(const std::string& name, const std::string& content);
[[nodiscard]] std::string Leaf(const std::string& name, const std::string& text);
// The element esitoNegativo.
[[nodiscard]] std::string NegativeOutcome(const Refusal& refusal);

} // namespace vellumo::siss
