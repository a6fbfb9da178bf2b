// The registered DLL, reached through COM as any host does, and the registry.
#pragma once

#include "simulator/norda/windows/com_provider.h"
#include "simulator/norda/workstation.h"

#include <windows.h>
// After windows.h.
#include <objbase.h>

#include <memory>

namespace vellumo::norda
{

// Initializes COM on its thread.
class WindowsWorkstation : public Workstation
{
public:
    [[nodiscard]] std::unique_ptr<ProviderClient> CreateProvider(const Outside& outside) override
    {
        return CreateComProvider(outside);
    }
    [[nodiscard]] Installation& Machine() override { return *m_installation; }

private:
    class Apartment
    {
    public:
        Apartment() { static_cast<void>(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)); }
        ~Apartment() { CoUninitialize(); }
        Apartment(const Apartment&) = delete;
        Apartment& operator=(const Apartment&) = delete;
    };

    Apartment m_apartment;
    std::unique_ptr<Installation> m_installation = MakeRegistryInstallation();
};

} // namespace vellumo::norda
