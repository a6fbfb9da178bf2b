// What a modal window of this module needs of the host's windows: one to belong to, and all of them quiet meanwhile.
#pragma once

#include <windows.h>

#include <vector>

namespace vellumo::windows
{

// The window of this thread that a new modal window is to belong to: the active one, else the topmost that can be
// worked with; null when the host shows none.
[[nodiscard]] HWND ModalOwner() noexcept;

// Disables the other windows of this thread, as the modal windows of the usual host programs do, since their buttons
// could call the library again from within a call. The owner itself is left to the system's modal loop. The destructor
// enables what it disabled.
class OthersDisabled
{
public:
    explicit OthersDisabled(HWND owner); // no memory: throws, and all are as they were
    ~OthersDisabled();
    OthersDisabled(const OthersDisabled&) = delete;
    OthersDisabled& operator=(const OthersDisabled&) = delete;

private:
    std::vector<HWND> m_disabled;
};

} // namespace vellumo::windows
