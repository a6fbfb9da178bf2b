#include "player/apart.h"

#include "host/fault.h"

#include <cstdlib>

#include <sys/wait.h>
#include <unistd.h>

namespace vellumo::player
{

int DoApart(const std::vector<std::string>&, const std::function<void()>& work)
{
    const pid_t child = fork();
    if (child == 0)
    {
        try
        {
            work();
            std::_Exit(0);
        }
        catch (...)
        {
            std::_Exit(1);
        }
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child)
    {
        throw host::Fault("a process of its own could not be made");
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

void EndProcess(int code)
{
    std::_Exit(code);
}

} // namespace vellumo::player
