// The native target with everything in between that may fail.
#include "player/target.h"

#include "simulator/norda/native/workstation.h"
#include "simulator/screen/native/form_window.h"
#include "torture/client.h"
#include "torture/host.h"
#include "torture/native/registry.h"
#include "torture/native/windows.h"

namespace vellumo::player
{
namespace
{

class TorturedWorkstation final : public norda::NativeWorkstation
{
public:
    using NativeWorkstation::NativeWorkstation;

    [[nodiscard]] std::unique_ptr<norda::ProviderClient> CreateProvider(const norda::Outside& outside) override
    {
        m_outside = std::make_unique<torture::TorturedOutside>(outside);
        auto parts = MakeParts(m_outside->Get());
        parts.settings = torture::Tortured(std::move(parts.settings));
        parts.desktop = torture::Tortured(std::move(parts.desktop));
        return torture::CreateTortured([&] { return norda::CreateNativeProvider(std::move(parts)); });
    }

private:
    std::unique_ptr<torture::TorturedOutside> m_outside;
};

} // namespace

Target MakeTarget(screen::Operator& anOperator, const std::filesystem::path& folder)
{
    auto screen = std::make_unique<screen::FormScreen>(anOperator);
    auto workstation = std::make_unique<TorturedWorkstation>(
        folder, [&shown = *screen] { return std::make_unique<screen::ScriptedDesktop>(shown); });
    return {std::move(screen), std::move(workstation)};
}

} // namespace vellumo::player
