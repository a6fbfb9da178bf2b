// The native target: the provider linked in, windows as state, settings in a file.
#include "player/target.h"

#include "host/fault.h"
#include "player/native/form_window.h"
#include "simulator/norda/native/provider_client.h"
#include "ui/desktop.h"

#include <cstdlib>
#include <functional>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace vellumo::player
{
namespace
{

// A window that nothing closes any more would keep the run from ending.
constexpr int mostLooks = 100000;

using Look = std::function<std::unique_ptr<Window>()>;

struct Screen
{
    Operator& anOperator;
    std::vector<Look> windows; // the last is on top
    std::uint64_t lastId = 0;
};

class OnTop
{
public:
    OnTop(Screen& screen, Look look)
        : m_screen(screen)
    {
        m_screen.windows.push_back(std::move(look));
    }
    ~OnTop() { m_screen.windows.pop_back(); }
    OnTop(const OnTop&) = delete;
    OnTop& operator=(const OnTop&) = delete;

private:
    Screen& m_screen;
};

class Attached final : public ui::FormView
{
public:
    Attached(ui::Form& form, Operator& anOperator, const FormWindow& window)
        : m_form(form)
        , m_operator(anOperator)
        , m_window(window)
    {
        m_form.Attach(this);
    }
    ~Attached() override { m_form.Attach(nullptr); }
    Attached(const Attached&) = delete;
    Attached& operator=(const Attached&) = delete;

    void Refresh() override { m_operator.OnBusy(m_window); }
    void ProcessMessages() override { m_operator.OnBusy(m_window); }

private:
    ui::Form& m_form;
    Operator& m_operator;
    const FormWindow& m_window;
};

class ScriptedDesktop final : public ui::Desktop
{
public:
    explicit ScriptedDesktop(Screen& screen)
        : m_screen(screen)
    {
    }

    ui::Answer Show(const ui::Prompt& prompt) override
    {
        const auto id = ++m_screen.lastId;
        PromptWindow window(id, prompt);
        const OnTop onTop(m_screen, [id, &prompt] { return std::make_unique<PromptWindow>(id, prompt); });
        for (int looks = 0; looks < mostLooks; ++looks)
        {
            m_screen.anOperator.OnScreen(window);
            if (const auto answer = window.Answered())
            {
                return *answer;
            }
        }
        throw host::Fault("Nessuno risponde alla finestra.");
    }

    void ShowModal(ui::Form& form) override
    {
        const auto id = ++m_screen.lastId;
        FormWindow window(id, form);
        const OnTop onTop(m_screen, [id, &form] { return std::make_unique<FormWindow>(id, form); });
        const Attached view(form, m_screen.anOperator, window);
        form.Activated();
        for (int looks = 0; !form.IsClosed(); ++looks)
        {
            if (looks == mostLooks)
            {
                throw host::Fault("La finestra non si chiude.");
            }
            m_screen.anOperator.OnScreen(window);
        }
    }

    [[nodiscard]] std::optional<std::string> AskFile(const std::string& title, const std::string&) override
    {
        const auto id = ++m_screen.lastId;
        FileWindow window(id, title);
        const OnTop onTop(m_screen, [&] { return std::make_unique<FileWindow>(id, title); });
        for (int looks = 0; looks < mostLooks && !window.Chosen(); ++looks)
        {
            m_screen.anOperator.OnScreen(window);
        }
        return window.Chosen() && !window.Chosen()->empty() ? std::optional(window.Chosen()->string()) : std::nullopt;
    }

private:
    Screen& m_screen;
};

class NativeTarget final : public Target
{
public:
    NativeTarget(Operator& anOperator, const std::filesystem::path& folder)
        : m_screen{anOperator, {}, 0}
        , m_settingsFile(folder / "settings.txt")
        , m_installation(norda::MakeSettingsFile(m_settingsFile))
    {
    }

    [[nodiscard]] std::unique_ptr<norda::ProviderClient> CreateProvider(const norda::Outside& outside) override
    {
        return norda::CreateNativeProvider(outside, std::make_unique<ScriptedDesktop>(m_screen), m_settingsFile);
    }

    [[nodiscard]] norda::Installation& Machine() override { return *m_installation; }

    [[nodiscard]] std::unique_ptr<Window> Topmost() override
    {
        return m_screen.windows.empty() ? nullptr : m_screen.windows.back()();
    }

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

std::optional<int> DoApart(const std::function<void()>& work)
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

} // namespace vellumo::player
