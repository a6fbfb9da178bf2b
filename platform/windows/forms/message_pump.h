// Lets the calling thread's messages be processed in the middle of a job that blocks it. Owned by the window of the
// job.
#pragma once

#include <windows.h>

namespace vellumo::windows
{

class MessagePump
{
public:
    // Processes what is pending; keys of `dialog` move in it. Not without end: a window that posts from its own handler
    // must not stop the job. Where the queue does not get empty, the calls that follow return at once for as long as
    // this one took.
    void Process(HWND dialog);

private:
    ULONGLONG m_restsUntil = 0; // milliseconds
};

} // namespace vellumo::windows
