#include "tests/bench/practice_run.h"

#include "simulator/norda/native/provider_client.h"
#include "tests/support/fake_desktop.h"

namespace vellumo::bench
{

std::shared_ptr<norda::Database> OpenDatabase(const norda::Practice& practice, bool waitsForDisk)
{
    auto database = practice.Open();
    for (const auto* const name : {"main", "Norda"})
    {
        database->Execute(std::string("PRAGMA ") + name + ".synchronous = " + (waitsForDisk ? "FULL" : "OFF"));
    }
    return database;
}

PracticeRun::PracticeRun(const norda::Practice& practice, const std::filesystem::path& listFile, bool waitsForDisk,
                         ShowForm showForm)
    : m_database(OpenDatabase(practice, waitsForDisk))
{
    auto desktop = std::make_unique<tests::FakeDesktop>();
    desktop->file = listFile.string();
    desktop->showWindow = std::move(showForm);
    const auto settings = practice.Folder() / "settings.txt";
    practice.Register(*norda::MakeSettingsFile(settings));
    m_provider = norda::CreateNativeProvider({&m_network, &m_objects}, std::move(desktop), settings);
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
