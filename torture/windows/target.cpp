// The DLL with everything in between that may fail: the host's objects, and what it imports from the system.
#include "player/target.h"

#include "host/fault.h"
#include "simulator/norda/windows/workstation.h"
#include "simulator/screen/windows/real_screen.h"
#include "torture/client.h"
#include "torture/host.h"
#include "torture/windows/imports.h"

#include <objbase.h>

namespace vellumo::player
{
namespace
{

class TorturedWorkstation final : public norda::WindowsWorkstation
{
public:
    [[nodiscard]] std::unique_ptr<norda::ProviderClient> CreateProvider(const norda::Outside& outside) override
    {
        Load(outside);
        m_outside = std::make_unique<torture::TorturedOutside>(outside);
        return torture::CreateTortured([&] { return norda::CreateComProvider(m_outside->Get()); });
    }

private:
    // The system loads the DLL when its class is first asked for. A fault inside makes what the compiler needs for the
    // first one, so that it is nobody's loss later.
    void Load(const norda::Outside& outside)
    {
        if (!isLoaded)
        {
            const auto first = norda::CreateComProvider(outside);
            host::PassOver([&] { static_cast<void>(first->VerificaPrescrizione({norda::Passing::ByValue, 1}, 1)); });
            static_cast<void>(first->Release());
            // Kept from here on: each time that it is loaded, the compiler's library for threads takes one of the 1,088
            // thread-local indexes of a process, and does not give it back when it is unloaded.
            HMODULE library = nullptr;
            GetModuleHandleExW(0, L"Vellumo.dll", &library);
            torture::LeadImports(library);
            isLoaded = true;
        }
    }

    std::unique_ptr<torture::TorturedOutside> m_outside;
    static inline bool isLoaded = false;
};

} // namespace

Target MakeTarget(screen::Operator& anOperator, const std::filesystem::path&)
{
    return {std::make_unique<screen::RealScreen>(anOperator), std::make_unique<TorturedWorkstation>()};
}

} // namespace vellumo::player
