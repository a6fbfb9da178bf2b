// The host program of a life, its operator and what lies between the library and the network, in memory. Whatever the
// library asks of it may fail, or end the program, as the plan says.
#pragma once

#include "host/traces.h"
#include "provider/siss_provider.h"
#include "tests/life/network.h"
#include "tests/life/outside.h"

#include <memory>
#include <string>
#include <vector>

namespace vellumo::life
{

// A code that a provider keeps in the folder of traces.
struct KeptCode
{
    host::OpenCode code;
    bool settled = false;
    std::weak_ptr<int> owner; // the provider's file
};

// What all of it shares; one a process.
class World
{
public:
    World(const Plan& life, Outside& around, std::string folder)
        : plan(life)
        , outside(around)
        , network(life, around)
        , programFolder(std::move(folder))
    {
    }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    // The library calls the outside. True when that is to fail.
    [[nodiscard]] bool Fails(Point point);
    // The same for what fails with a fault.
    void Call(Point point);

    // A provider to which everything was handed over.
    [[nodiscard]] std::unique_ptr<provider::SISSProvider> StartProvider();

    const Plan& plan;
    Outside& outside;
    Network network;
    std::string programFolder;
    bool fails = false; // faults may come
    bool journalRefuses = false;
    int deathAt = 0;           // the process ends at this call; 0: it does not
    bool tracesOnDisk = false; // else in memory
    Button button = Button::CancelRefused;
    bool givenUp = false; // the operator pressed "Annulla operazione"
    // In the close that runs: codes of the session's responses, and whether it faulted then.
    std::vector<std::string> readCodes;
    bool sessionFaulted = false;
    std::vector<std::shared_ptr<KeptCode>> kept;
    int providers = 0;
};

} // namespace vellumo::life
