// crash
//
// Hands the provider an object that is none, as a host with a wild pointer does: the library crashes inside itself.
// Prints where, as reports of a crash do: "Vellumo.dll+0x1a2b3". Exit code 3 when it crashed.
#include <windows.h>

#include <objbase.h>

#include <kelnordaccelib.h>
#include <vellumo.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cwchar>

namespace
{

LONG CALLBACK Report(EXCEPTION_POINTERS* exception)
{
    const auto* const address = static_cast<const char*>(exception->ExceptionRecord->ExceptionAddress);
    HMODULE module = nullptr;
    std::array<wchar_t, MAX_PATH> file{};
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(address), &module);
    GetModuleFileNameW(module, file.data(), static_cast<DWORD>(file.size()));
    const auto* const name = std::wcsrchr(file.data(), L'\\');
    std::printf("%ls+0x%llx\n", name != nullptr ? name + 1 : file.data(),
                static_cast<unsigned long long>(address - reinterpret_cast<const char*>(module)));
    std::fflush(stdout);
    ExitProcess(3);
}

} // namespace

int main()
{
    static_cast<void>(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    CLSID clsid{};
    ICCEDatabaseProvider* provider = nullptr;
    if (FAILED(CLSIDFromProgID(L"Vellumo.SISSProvider", &clsid)) ||
        FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_ICCEDatabaseProvider,
                                reinterpret_cast<void**>(&provider))))
    {
        return 1;
    }
    SetUnhandledExceptionFilter(Report);
    std::uintptr_t wild = 16; // where its table of functions is said to be
    provider->putref_Connection(reinterpret_cast<IDispatch*>(&wild));
    return 0;
}
