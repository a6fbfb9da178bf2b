// The Windows targets: the registered DLL reached through COM, its windows on a real screen, the registry.
#include "player/target.h"

#include "player/windows/robot.h"
#include "player/windows/screen_picture.h"
#include "simulator/norda/windows/com_provider.h"

#include <windows.h>
// After windows.h.
#include <objbase.h>

namespace vellumo::player
{
namespace
{

class Apartment
{
public:
    Apartment()
        : m_entered(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
    {
    }
    ~Apartment()
    {
        if (m_entered)
        {
            CoUninitialize();
        }
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

private:
    bool m_entered;
};

class WindowsTarget final : public Target
{
public:
    explicit WindowsTarget(Operator& anOperator)
        : m_installation(norda::MakeRegistryInstallation())
        , m_robot(anOperator)
    {
    }

    [[nodiscard]] std::unique_ptr<norda::ProviderClient> CreateProvider(const norda::Outside& outside) override
    {
        return norda::CreateComProvider(outside);
    }
    [[nodiscard]] norda::Installation& Machine() override { return *m_installation; }
    [[nodiscard]] Window* Topmost() override
    {
        m_top = Robot::Topmost();
        return m_top.get();
    }
    bool Screenshot(const std::filesystem::path& file) override { return SaveScreenPicture(file); }

private:
    Apartment m_apartment;
    std::unique_ptr<norda::Installation> m_installation;
    Robot m_robot;
    std::unique_ptr<Window> m_top;
};

} // namespace

std::unique_ptr<Target> MakeTarget(Operator& anOperator, const std::filesystem::path&)
{
    return std::make_unique<WindowsTarget>(anOperator);
}

std::optional<int> DoApart(const std::function<void()>&)
{
    return std::nullopt;
}

} // namespace vellumo::player
