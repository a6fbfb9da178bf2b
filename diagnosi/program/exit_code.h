// How a command ended, which is the program's exit code.
#pragma once

namespace vellumo::diagnosi
{

enum class ExitCode
{
    Done = 0,      // and nothing to say
    Attention = 1, // something to look at
    Wrong = 2,     // something is wrong
    NotDone = 3    // wrong use, or a fault: nothing can be said
};

} // namespace vellumo::diagnosi
