// norda at the console: a small clinical record program, one command a line.
#pragma once

#include "simulator/norda/program/desk.h"

namespace vellumo::norda
{

class Console
{
public:
    // The desk outlives it.
    explicit Console(Desk& desk)
        : m_desk(desk)
    {
    }

    // Reads commands until "esci" or the end of the input. What goes wrong is told, and the next command read.
    void Run();

private:
    void Obey(const std::string& line);
    void Help();

    Desk& m_desk;
};

} // namespace vellumo::norda
