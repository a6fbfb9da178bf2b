// The registry entries by which COM finds the stand-in when a host asks for the bridge. They are the current user's,
// and this program's: it refuses where any other bridge is registered, and takes away no other's keys.
#pragma once

#include <string>

namespace vellumo::siss
{

class BridgeEntry
{
public:
    // Command line with which COM starts the program when it does not run.
    explicit BridgeEntry(std::wstring server);

    // Faults where another bridge is registered, for this user or for the machine, in either view of the registry.
    void Write() const;
    // Takes away what `Write` made, also of an earlier run; leaves what is not this program's.
    static void Remove() noexcept;

private:
    std::wstring m_server;
};

} // namespace vellumo::siss
