#include "platform/native/console_desktop.h"
#include "simulator/norda/native/provider_client.h"
#include "simulator/norda/program/workstation.h"

#include <iostream>

namespace vellumo::norda
{
namespace
{

class NativeWorkstation final : public Workstation
{
public:
    explicit NativeWorkstation(const std::filesystem::path& folder)
        : m_settingsFile(folder / "settings.txt")
        , m_installation(MakeSettingsFile(m_settingsFile))
    {
    }

    [[nodiscard]] std::unique_ptr<ProviderClient> CreateProvider(const Outside& outside) override
    {
        return CreateNativeProvider(outside, std::make_unique<native::ConsoleDesktop>(std::cin, std::cout),
                                    m_settingsFile);
    }
    [[nodiscard]] Installation& Machine() override { return *m_installation; }

private:
    std::filesystem::path m_settingsFile;
    std::unique_ptr<Installation> m_installation;
};

} // namespace

std::unique_ptr<Workstation> MakeWorkstation(const std::filesystem::path& folder)
{
    return std::make_unique<NativeWorkstation>(folder);
}

} // namespace vellumo::norda
