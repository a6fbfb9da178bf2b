// The simulated SISS client's bridge as a program of its own, for hosts that run in another process (a script host):
// COM starts it when somebody creates "Winbridge4seb.Bean.1", and it ends with its last object.
//
//   siss_bridge --register      enters the ProgID for the current user
//   siss_bridge --unregister    takes it out again
#include "host/fault.h"
#include "platform/windows/adapters/host_names.h"
#include "simulator/norda/windows/class_objects.h"
#include "simulator/norda/windows/dispatch_face.h"
#include "simulator/norda/windows/faces.h"
#include "simulator/siss/network.h"

#include <windows.h>

#include <array>
#include <iostream>
#include <string_view>

namespace
{

using namespace vellumo;

constexpr UINT idleCheck = 200; // milliseconds

std::wstring ProgramPath()
{
    std::array<wchar_t, 32768> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return path.data();
}

void Serve()
{
    siss::Network network;
    network.People().LoadSeed();
    bool used = false;
    const norda::ClassObject bridge(norda::bridgeClass, CLSCTX_LOCAL_SERVER,
                                    [&]
                                    {
                                        used = true;
                                        return norda::MakeBridgeFace(network);
                                    });
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

void Run(std::string_view command)
{
    const wchar_t* progId = windows::names::bridgeProgId;
    if (command == "--register")
    {
        norda::WriteProgId(progId, norda::bridgeClass, L"\"" + ProgramPath() + L"\"");
    }
    else if (command == "--unregister")
    {
        norda::RemoveProgId(progId, norda::bridgeClass);
    }
    else if (command == "-Embedding" || command == "/Embedding")
    {
        Serve();
    }
    else
    {
        throw host::Fault("uso: siss_bridge --register | --unregister");
    }
}

} // namespace

int main(int count, char** arguments)
{
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    int status = 0;
    try
    {
        Run(count > 1 ? arguments[1] : "");
    }
    catch (const std::exception& failure)
    {
        std::cerr << failure.what() << '\n';
        status = 1;
    }
    CoUninitialize();
    return status;
}
