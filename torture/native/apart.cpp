#include "torture/apart.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <map>
#include <stdexcept>

namespace vellumo::torture
{
namespace
{

constexpr unsigned longestPiece = 120; // seconds, then it hangs

pid_t Start(const std::function<void()>& work)
{
    std::cout << std::flush;
    const pid_t child = fork();
    if (child < 0)
    {
        throw std::runtime_error("a process of its own could not be made");
    }
    if (child == 0)
    {
        try
        {
            work();
        }
        catch (const std::exception& fault)
        {
            std::cerr << fault.what() << '\n';
            std::_Exit(1);
        }
        std::cout << std::flush;
        std::_Exit(0);
    }
    return child;
}

} // namespace

void* Share(std::size_t size)
{
    void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
    {
        throw std::runtime_error("no shared memory");
    }
    return memory;
}

void PlayApart(std::size_t jobs, std::size_t count, const std::function<void(std::size_t job, std::size_t piece)>& play,
               const std::function<void(std::size_t piece, const std::string& how)>& broke)
{
    static auto* const at = static_cast<std::size_t*>(Share(sizeof(std::size_t) * 64)); // the piece of each job
    std::map<pid_t, std::size_t> running;
    const auto start = [&](std::size_t job)
    {
        running[Start(
            [&, job]
            {
                for (; at[job] < count; at[job] += jobs)
                {
                    alarm(longestPiece);
                    play(job, at[job]);
                }
            })] = job;
    };
    for (std::size_t job = 0; job < jobs; ++job)
    {
        at[job] = job;
        start(job);
    }
    while (!running.empty())
    {
        int status = 0;
        const auto job = running.extract(wait(&status)).mapped();
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        {
            broke(at[job],
                  WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM ? "it does not end" : "the program ended");
            at[job] += jobs;
            start(job);
        }
    }
}

} // namespace vellumo::torture
