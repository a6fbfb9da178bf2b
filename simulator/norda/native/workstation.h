// The library linked in, its settings in a file of the practice's folder.
#pragma once

#include "simulator/norda/native/provider_client.h"
#include "simulator/norda/workstation.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <utility>

namespace vellumo::norda
{

class NativeWorkstation : public Workstation
{
public:
    // What shows the windows is made anew for each provider.
    using MakeDesktop = std::function<std::unique_ptr<ui::Desktop>()>;
    NativeWorkstation(const std::filesystem::path& folder, MakeDesktop makeDesktop)
        : m_settingsFile(folder / "settings.txt")
        , m_installation(MakeSettingsFile(m_settingsFile))
        , m_makeDesktop(std::move(makeDesktop))
    {
    }

    [[nodiscard]] std::unique_ptr<ProviderClient> CreateProvider(const Outside& outside) override
    {
        return CreateNativeProvider(MakeParts(outside));
    }
    [[nodiscard]] Installation& Machine() override { return *m_installation; }

protected:
    // What the provider finds around itself.
    [[nodiscard]] provider::PlatformParts MakeParts(const Outside& outside)
    {
        return MakeNativeParts(outside, m_makeDesktop(), m_settingsFile);
    }

private:
    std::filesystem::path m_settingsFile;
    std::unique_ptr<Installation> m_installation;
    MakeDesktop m_makeDesktop;
};

} // namespace vellumo::norda
