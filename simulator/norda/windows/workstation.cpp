#include "simulator/norda/program/workstation.h"

#include "simulator/norda/windows/com_provider.h"

#include <windows.h>
// After windows.h.
#include <objbase.h>

namespace vellumo::norda
{
namespace
{

class Apartment
{
public:
    Apartment() { static_cast<void>(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)); }
    ~Apartment() { CoUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

class WindowsWorkstation final : public Workstation
{
public:
    WindowsWorkstation()
        : m_installation(MakeRegistryInstallation())
    {
        // Texts go to the console in UTF-8, as the program keeps them.
        SetConsoleOutputCP(CP_UTF8);
        SetConsoleCP(CP_UTF8);
    }

    [[nodiscard]] std::unique_ptr<ProviderClient> CreateProvider(const Outside& outside) override
    {
        return CreateComProvider(outside);
    }
    [[nodiscard]] Installation& Machine() override { return *m_installation; }

private:
    Apartment m_apartment;
    std::unique_ptr<Installation> m_installation;
};

} // namespace

std::unique_ptr<Workstation> MakeWorkstation(const std::filesystem::path&)
{
    return std::make_unique<WindowsWorkstation>();
}

} // namespace vellumo::norda
