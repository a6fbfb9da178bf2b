// The native target: the provider linked in, windows as state, settings in a file.
#pragma once

#include "player/native/form_window.h"
#include "player/target.h"
#include "simulator/norda/native/provider_client.h"

#include <filesystem>
#include <memory>

namespace vellumo::player
{

class NativeTarget : public Target
{
public:
    NativeTarget(Operator& anOperator, const std::filesystem::path& folder);

    [[nodiscard]] std::unique_ptr<norda::ProviderClient> CreateProvider(const norda::Outside& outside) override
    {
        return norda::CreateNativeProvider(MakeParts(outside));
    }

    [[nodiscard]] norda::Installation& Machine() override { return *m_installation; }

    [[nodiscard]] Window* Topmost() override { return m_screen.windows.empty() ? nullptr : m_screen.windows.back(); }
    void RefuseWindows() override { m_screen.refuses = true; }
    bool Screenshot(const std::filesystem::path&) override { return false; }

protected:
    // What the provider finds around itself.
    [[nodiscard]] provider::PlatformParts MakeParts(const norda::Outside& outside)
    {
        return norda::MakeNativeParts(outside, std::make_unique<ScriptedDesktop>(m_screen), m_settingsFile);
    }

private:
    Screen m_screen;
    std::filesystem::path m_settingsFile;
    std::unique_ptr<norda::Installation> m_installation;
};

} // namespace vellumo::player
