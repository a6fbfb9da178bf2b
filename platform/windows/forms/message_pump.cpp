#include "platform/windows/forms/message_pump.h"

#include <algorithm>

namespace vellumo::windows
{
namespace
{

constexpr int messagesAtOnce = 200;
constexpr ULONGLONG shortestRest = 10; // milliseconds

// Whether the queue got empty.
bool DispatchPending(HWND dialog)
{
    MSG message;
    for (int i = 0; i < messagesAtOnce; ++i)
    {
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) == FALSE)
        {
            return true;
        }
        if (message.message == WM_QUIT)
        {
            PostQuitMessage(static_cast<int>(message.wParam)); // for the loops around this one
            return true;
        }
        if (IsDialogMessageW(dialog, &message) == FALSE)
        {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return false;
}

} // namespace

void MessagePump::Process(HWND dialog)
{
    const ULONGLONG began = GetTickCount64();
    if (began >= m_restsUntil && !DispatchPending(dialog))
    {
        const ULONGLONG ended = GetTickCount64();
        m_restsUntil = ended + std::max(ended - began, shortestRest);
    }
}

} // namespace vellumo::windows
