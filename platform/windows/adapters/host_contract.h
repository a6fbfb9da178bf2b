// What the library needs of the host and of the SISS client: one row for each class that it creates and each member
// that it calls. docs/host-contract.md shows the same rows, and a test compares the two; whoever checks an installation
// asks for the same.
#pragma once

#include "platform/windows/adapters/host_names.h"

#include <span>

namespace vellumo::windows
{

// English, as programmers read it. VARIANT types in brackets.
struct HostNeed
{
    names::Name name;
    const char* how;       // "class", "method", "property", "property, put" (read and written) or "put only"
    const char* arguments; // in their order
    const char* answer;    // what it may be
    const char* fault;     // what its fault is a fault of, "operation" for that of the call, or what follows
};

// In the order of the document: the classes first, then the objects with their members.
[[nodiscard]] std::span<const HostNeed> HostContract();

} // namespace vellumo::windows
