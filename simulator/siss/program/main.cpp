// siss-simulato: a stand-in for the SISS client, for whoever develops a host without the network.
//
//   siss-simulato [OPTIONS]             registers itself for the current user, shows its window, and takes its entries
//                                       away when that is closed
//   siss-simulato --registra [OPTIONS]  registers only: COM starts the program when a host creates the bridge
//   siss-simulato --togli               takes its entries away
//
// It refuses where another bridge is registered. Nothing leaves this machine, and its codes are no network's.
#include "host/fault.h"
#include "host/version.h"
#include "platform/windows/forms/win32_desktop.h"
#include "platform/windows/system/text.h"
#include "simulator/norda/windows/class_objects.h"
#include "simulator/norda/windows/dispatch_face.h"
#include "simulator/norda/windows/faces.h"
#include "simulator/siss/program/bridge_entry.h"
#include "simulator/siss/program/simulation.h"
#include "simulator/siss/program/simulation_form.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <string_view>

namespace
{

using namespace vellumo;

constexpr const char* usage =
    "uso: siss-simulato [--registra | --togli] [--senza-finestra] [--cittadino CODICEFISCALE] [--senza-sessione]\n"
    "                   [--senza-carta] [--risposta MODO] [--ritardo MILLISECONDI]\n"
    "     siss-simulato --version\n"
    "Sta al posto del client SISS per chi sviluppa un programma senza la rete; nulla arriva al SISS.\n"
    "Senza --registra si registra per l'utente corrente finché la sua finestra è aperta.\n"
    "MODO: ";

struct Orders
{
    enum class What
    {
        Serve,
        Register,
        Remove,
        Started, // by COM
        TellVersion,
        TellUsage
    };
    What what = What::Serve;
    bool window = true;
    siss::Choice choice;
    std::wstring options; // as given, for when COM starts the program
};

std::size_t MannerOf(const std::string& word)
{
    const auto& manners = siss::Manners();
    const auto found = std::ranges::find_if(manners, [&](const auto& manner) { return manner.word == word; });
    if (found == manners.end())
    {
        throw host::Fault("--risposta non conosce \"" + word + '"');
    }
    return static_cast<std::size_t>(found - manners.begin());
}

// A word that wants another one behind it takes that from `next`.
template <class Next>
bool ReadOption(const std::string& word, Orders& orders, Next next)
{
    const bool known = word == "--senza-finestra" || word == "--senza-sessione" || word == "--senza-carta";
    orders.window = orders.window && word != "--senza-finestra";
    orders.choice.sessionActive = orders.choice.sessionActive && word != "--senza-sessione";
    orders.choice.cardInserted = orders.choice.cardInserted && word != "--senza-carta";
    if (word == "--cittadino")
    {
        orders.choice.citizen = next();
    }
    else if (word == "--risposta")
    {
        orders.choice.manner = MannerOf(next());
    }
    else if (word == "--ritardo")
    {
        orders.choice.delayMilliseconds = std::stoi(next());
    }
    else
    {
        return known;
    }
    return true;
}

Orders Read(int count, char** arguments)
{
    Orders orders;
    for (int i = 1; i < count; ++i)
    {
        const std::string word = arguments[i];
        const int first = i;
        const auto next = [&]() -> std::string
        {
            if (i + 1 == count)
            {
                throw host::Fault(word + " vuole un valore");
            }
            return arguments[++i];
        };
        if (word == "--registra")
        {
            orders.what = Orders::What::Register;
        }
        else if (word == "--togli")
        {
            orders.what = Orders::What::Remove;
        }
        else if (word == "-Embedding" || word == "/Embedding")
        {
            orders.what = Orders::What::Started;
        }
        else if (word == "--version")
        {
            orders.what = Orders::What::TellVersion;
        }
        else if (ReadOption(word, orders, next))
        {
            for (int used = first; used <= i; ++used)
            {
                orders.options += L' ' + windows::ToWide(arguments[used]);
            }
        }
        else
        {
            orders.what = Orders::What::TellUsage;
            return orders;
        }
    }
    return orders;
}

std::wstring ProgramPath()
{
    std::array<wchar_t, 32768> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return path.data();
}

// Without a window the program ends with the last bridge that was asked for.
void ServeUnseen(const bool& used)
{
    constexpr UINT idleCheck = 200; // milliseconds
    const UINT_PTR timer = SetTimer(nullptr, 0, idleCheck, nullptr);
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
    {
        DispatchMessageW(&message);
        if (used && norda::DispatchFace::Living() == 0)
        {
            break;
        }
    }
    KillTimer(nullptr, timer);
}

void Serve(const Orders& orders)
{
    siss::Network network;
    network.MarkAsSimulation();
    network.People().LoadSeed();
    bool used = false;
    const norda::ClassObject bridge(norda::bridgeClass, CLSCTX_LOCAL_SERVER,
                                    [&]
                                    {
                                        used = true;
                                        return norda::MakeBridgeFace(network);
                                    });
    if (orders.window)
    {
        siss::SimulationForm form(network, orders.choice);
        windows::Win32Desktop().ShowModal(form);
    }
    else
    {
        siss::Apply(orders.choice, network);
        ServeUnseen(used);
    }
}

void Obey(const Orders& orders)
{
    const siss::BridgeEntry entry(L"\"" + ProgramPath() + L"\"" + orders.options);
    switch (orders.what)
    {
    case Orders::What::Serve:
        entry.Write();
        Serve(orders);
        siss::BridgeEntry::Remove();
        break;
    case Orders::What::Register:
        entry.Write();
        break;
    case Orders::What::Remove:
        siss::BridgeEntry::Remove();
        break;
    case Orders::What::Started:
        Serve(orders);
        break;
    case Orders::What::TellVersion:
        std::cout << "siss-simulato " << host::fullVersion << '\n';
        break;
    case Orders::What::TellUsage:
        std::cout << usage;
        for (const auto& manner : siss::Manners())
        {
            std::cout << manner.word << ' ';
        }
        std::cout << '\n';
        break;
    }
}

} // namespace

int main(int count, char** arguments)
{
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    int status = 0;
    try
    {
        const Orders orders = Read(count, arguments);
        Obey(orders);
        status = orders.what == Orders::What::TellUsage ? 2 : 0;
    }
    catch (const std::exception& failure)
    {
        std::cerr << "siss-simulato: " << failure.what() << '\n';
        status = 1;
    }
    CoUninitialize();
    return status;
}
