// The Windows targets: the registered DLL reached through COM, its windows on a real screen, the registry.
#pragma once

#include "player/target.h"
#include "player/windows/robot.h"
#include "simulator/norda/windows/com_provider.h"

#include <windows.h>

#include <filesystem>
#include <memory>

namespace vellumo::player
{

class WindowsTarget : public Target
{
public:
    explicit WindowsTarget(Operator& anOperator);
    ~WindowsTarget() override;
    WindowsTarget(const WindowsTarget&) = delete;
    WindowsTarget& operator=(const WindowsTarget&) = delete;

    [[nodiscard]] std::unique_ptr<norda::ProviderClient> CreateProvider(const norda::Outside& outside) override
    {
        return norda::CreateComProvider(outside);
    }
    [[nodiscard]] norda::Installation& Machine() override { return *m_installation; }
    [[nodiscard]] Window* Topmost() override;
    void RefuseWindows() override;
    bool Screenshot(const std::filesystem::path& file) override;

private:
    class Apartment
    {
    public:
        Apartment();
        ~Apartment();
        Apartment(const Apartment&) = delete;
        Apartment& operator=(const Apartment&) = delete;
    };

    Apartment m_apartment;
    std::unique_ptr<norda::Installation> m_installation;
    Robot m_robot;
    std::unique_ptr<Window> m_top;
    HHOOK m_refusal = nullptr;
};

} // namespace vellumo::player
