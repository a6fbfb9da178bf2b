#include "torture/apart.h"

#include <windows.h>

#include <cstdlib>
#include <exception>

namespace vellumo::torture
{
namespace
{

std::function<void()> atEnd; // of the process, when it comes in the middle of a piece

[[noreturn]] void End()
{
    atEnd();
    TerminateProcess(GetCurrentProcess(), 1);
    std::abort(); // it has ended
}

LONG WINAPI OnException(EXCEPTION_POINTERS*)
{
    End();
}

} // namespace

void* Share(std::size_t size)
{
    return std::calloc(1, size);
}

void PlayApart(std::size_t, std::size_t count, const std::function<void(std::size_t job, std::size_t piece)>& play,
               const std::function<void(std::size_t piece, const std::string& how)>& broke)
{
    std::size_t piece = 0;
    atEnd = [&] { broke(piece, "the program ended"); };
    std::set_terminate(End);
    SetUnhandledExceptionFilter(OnException);
    for (; piece < count; ++piece)
    {
        play(0, piece);
    }
}

} // namespace vellumo::torture
