// What the person at the stand-in has chosen: whom the operator picks, session and card, and how the network answers.
#pragma once

#include "simulator/siss/network.h"

#include <string>
#include <vector>

namespace vellumo::siss
{

// A way to answer, by the word that the command line takes and the text that the window shows.
struct Manner
{
    const char* word;
    const char* text;
    Behaviour behaviour;
};
[[nodiscard]] const std::vector<Manner>& Manners();

struct Choice
{
    std::string citizen; // fiscal code; "" closes the search window without picking anybody
    bool sessionActive = true;
    bool cardInserted = true;
    std::size_t manner = 0; // of Manners()
    int delayMilliseconds = 0;
};

// The network behaves as chosen from the next call on.
void Apply(const Choice& choice, Network& network);

} // namespace vellumo::siss
