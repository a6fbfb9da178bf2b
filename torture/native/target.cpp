// The native target with everything in between that may fail.
#include "player/native/native_target.h"

#include "torture/client.h"
#include "torture/host.h"
#include "torture/native/registry.h"
#include "torture/native/windows.h"

namespace vellumo::player
{
namespace
{

class TorturedTarget final : public NativeTarget
{
public:
    using NativeTarget::NativeTarget;

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

std::unique_ptr<Target> MakeTarget(Operator& anOperator, const std::filesystem::path& folder)
{
    return std::make_unique<TorturedTarget>(anOperator, folder);
}

} // namespace vellumo::player
