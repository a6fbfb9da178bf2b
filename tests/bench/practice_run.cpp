#include "tests/bench/practice_run.h"

#include "simulator/norda/native/provider_client.h"

namespace vellumo::bench
{
namespace
{

class EmptyDesktop final : public ui::Desktop
{
public:
    EmptyDesktop(std::filesystem::path file, ShowForm showForm)
        : m_file(std::move(file))
        , m_showForm(std::move(showForm))
    {
    }

    ui::Answer Show(const ui::Prompt&) override { return ui::Answer::Ok; }
    void ShowModal(ui::Form& form) override
    {
        if (m_showForm)
        {
            m_showForm(form);
        }
        else
        {
            form.Activated();
        }
    }
    [[nodiscard]] std::optional<std::string> AskFile(const std::string&, const std::string&) override
    {
        return m_file.string();
    }

private:
    std::filesystem::path m_file;
    ShowForm m_showForm;
};

} // namespace

PracticeRun::PracticeRun(const norda::Practice& practice, const std::filesystem::path& listFile, bool waitsForDisk,
                         ShowForm showForm)
    : m_database(practice.Open())
{
    for (const auto* const name : {"main", "Norda"})
    {
        m_database->Execute(std::string("PRAGMA ") + name + ".synchronous = " + (waitsForDisk ? "FULL" : "OFF"));
    }
    const auto settings = practice.Folder() / "settings.txt";
    practice.Register(*norda::MakeSettingsFile(settings));
    m_provider = norda::CreateNativeProvider({&m_network, &m_objects},
                                             std::make_unique<EmptyDesktop>(listFile, std::move(showForm)), settings);
    m_provider->SetConnection(m_database);
    m_provider->SetUtils(std::make_shared<norda::HostUtils>(m_database));
    m_provider->SetLockSrv(std::make_shared<norda::HostLockSrv>(1));
    m_provider->SetStudio(norda::Practice::studio);
}

PracticeRun::~PracticeRun()
{
    static_cast<void>(m_provider->Release());
    m_database->SetObserver({});
}

} // namespace vellumo::bench
