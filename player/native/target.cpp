// The native target: the provider linked in, windows as state, settings in a file.
#include "player/target.h"

#include "host/fault.h"
#include "player/native/form_window.h"
#include "simulator/norda/native/provider_client.h"
#include "ui/desktop.h"

#include <cstdlib>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace vellumo::player
{
namespace
{

// A window that nothing closes any more would keep the run from ending.
constexpr int mostLooks = 100000;

struct Screen
{
    Operator& anOperator;
    std::vector<Window*> windows; // the last is on top
    std::uint64_t lastId = 0;
};

class OnTop
{
public:
    OnTop(Screen& screen, Window& window)
        : m_screen(screen)
    {
        m_screen.windows.push_back(&window);
    }
    ~OnTop() { m_screen.windows.pop_back(); }
    OnTop(const OnTop&) = delete;
    OnTop& operator=(const OnTop&) = delete;

    // Lets the operator at the window until it is done with.
    template <class IsDone>
    void WaitUntil(const IsDone& isDone)
    {
        for (int looks = 0; !isDone(); ++looks)
        {
            if (looks == mostLooks)
            {
                throw host::Fault("Nessuno chiude la finestra.");
            }
            m_screen.anOperator.OnScreen(*m_screen.windows.back());
        }
    }

private:
    Screen& m_screen;
};

class Attached final : public ui::FormView
{
public:
    Attached(ui::Form& form, Operator& anOperator, FormWindow& window)
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
    FormWindow& m_window;
};

class ScriptedDesktop final : public ui::Desktop
{
public:
    explicit ScriptedDesktop(Screen& screen)
        : m_screen(screen)
    {
    }

    ui::Answer ShowBox(const ui::Prompt& prompt) override
    {
        PromptWindow window(++m_screen.lastId, prompt);
        OnTop(m_screen, window).WaitUntil([&] { return window.Answered().has_value(); });
        return *window.Answered();
    }

    void ShowModal(ui::Form& form) override
    {
        FormWindow window(++m_screen.lastId, form);
        OnTop onTop(m_screen, window);
        const Attached view(form, m_screen.anOperator, window);
        form.Activated();
        onTop.WaitUntil([&] { return form.IsClosed(); });
    }

    [[nodiscard]] std::optional<std::string> AskFile(const std::string& title, const std::string&) override
    {
        FileWindow window(++m_screen.lastId, title);
        OnTop(m_screen, window).WaitUntil([&] { return window.Chosen().has_value(); });
        return window.Chosen()->empty() ? std::nullopt : std::optional(window.Chosen()->string());
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

    [[nodiscard]] Window* Topmost() override { return m_screen.windows.empty() ? nullptr : m_screen.windows.back(); }
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
