// The native target: the provider linked in, windows as state, settings in a file.
#include "player/target.h"

#include "host/fault.h"
#include "player/native/form_window.h"
#include "simulator/norda/native/provider_client.h"

#include <cstdlib>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace vellumo::player
{
namespace
{

class NativeTarget final : public Target
{
public:
    NativeTarget(Operator& anOperator, const std::filesystem::path& folder)
        : m_screen{anOperator, {}, 0, false}
        , m_settingsFile(folder / "settings.txt")
        , m_installation(norda::MakeSettingsFile(m_settingsFile))
    {
    }

    [[nodiscard]] std::unique_ptr<norda::ProviderClient> CreateProvider(const norda::Outside& outside) override
    {
        return norda::CreateNativeProvider(outside, std::make_unique<ScriptedDesktop>(m_screen), m_settingsFile);
    }

    [[nodiscard]] norda::Installation& Machine() override { return *m_installation; }

    [[nodiscard]] Window* Topmost() override { return m_screen.windows.empty() ? nullptr : m_screen.windows.back(); }
    void RefuseWindows() override { m_screen.refuses = true; }
    bool Screenshot(const std::filesystem::path&) override { return false; }

private:
    Screen m_screen;
    std::filesystem::path m_settingsFile;
    std::unique_ptr<norda::Installation> m_installation;
};

} // namespace

std::unique_ptr<Target> MakeTarget(Operator& anOperator, const std::filesystem::path& folder)
{
    return std::make_unique<NativeTarget>(anOperator, folder);
}

std::vector<std::pair<std::string, std::string>> MachineFacts()
{
    return {{"Sistema", "programma nativo, senza Windows"}};
}

int DoApart(const std::vector<std::string>&, const std::function<void()>& work)
{
    const pid_t child = fork();
    if (child == 0)
    {
        try
        {
            work();
            std::_Exit(0);
        }
        catch (...)
        {
            std::_Exit(1);
        }
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child)
    {
        throw host::Fault("a process of its own could not be made");
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

void EndProcess(int code)
{
    std::_Exit(code);
}

} // namespace vellumo::player
