#include "tests/bench/measure.h"

#include <cstdio>
#include <stdexcept>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vellumo::bench
{

double PeakMemory(const std::function<void()>& work)
{
    int ends[2] = {};
    if (pipe(ends) != 0)
    {
        throw std::runtime_error("pipe");
    }
    const pid_t child = fork();
    if (child == 0)
    {
        // A child begins with the peak of its parent, which has done larger things; this sets it to what it has now.
        if (const int file = open("/proc/self/clear_refs", O_WRONLY); file >= 0)
        {
            static_cast<void>(write(file, "5", 1));
            close(file);
        }
        const auto peak = []
        {
            double kilobytes = 0;
            char line[256];
            if (FILE* const status = std::fopen("/proc/self/status", "r"))
            {
                while (std::fgets(line, sizeof line, status) != nullptr)
                {
                    static_cast<void>(std::sscanf(line, "VmHWM: %lf", &kilobytes));
                }
                std::fclose(status);
            }
            return kilobytes * 1024;
        };
        const double before = peak();
        work();
        const double most = peak() - before;
        static_cast<void>(write(ends[1], &most, sizeof most));
        _exit(0);
    }
    close(ends[1]);
    double most = 0;
    const bool read = ::read(ends[0], &most, sizeof most) == static_cast<ssize_t>(sizeof most);
    close(ends[0]);
    waitpid(child, nullptr, 0);
    if (!read)
    {
        throw std::runtime_error("the measuring process ended early");
    }
    return most;
}

} // namespace vellumo::bench
