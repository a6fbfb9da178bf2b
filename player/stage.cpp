#include "player/stage.h"

#include "host/fault.h"
#include "host/text.h"

#include <algorithm>
#include <thread>

namespace vellumo::player
{
namespace
{

bool Contains(const std::string& text, const std::string& part)
{
    return host::WithoutCase(text).find(host::WithoutCase(part)) != std::string::npos;
}

// Folder by folder: the standard library for Windows cannot copy a tree.
norda::Practice CopyOf(const std::filesystem::path& model, const std::filesystem::path& folder,
                       const std::string& server)
{
    norda::Practice practice(folder, server);
    if (model.empty())
    {
        return practice;
    }
    practice.ResetServer();
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(model))
    {
        const auto copy = folder / entry.path().lexically_relative(model);
        if (entry.is_directory())
        {
            std::filesystem::create_directories(copy);
        }
        else
        {
            std::filesystem::copy_file(entry.path(), copy);
        }
    }
    return practice;
}

// A practice of a scenario need not outlive a power failure, and waiting for the disk takes most of the time.
std::shared_ptr<norda::Database> OpenFast(const norda::Practice& practice)
{
    auto database = practice.Open();
    if (database->GetDialect() == norda::Dialect::SqlServer)
    {
        return database;
    }
    for (const auto* const name : {"main", "Norda"})
    {
        database->Execute(std::string("PRAGMA ") + name + ".synchronous = OFF");
    }
    return database;
}

} // namespace

Stage::Stage(const std::filesystem::path& model, const std::filesystem::path& folder, const std::string& server,
             screen::Operator& anOperator)
    : m_practice(CopyOf(model, folder, server))
    , m_target(MakeTarget(anOperator, folder))
    , m_own(OpenFast(m_practice))
    , m_hosts(OpenFast(m_practice))
    , m_utils(std::make_shared<norda::HostUtils>(m_hosts))
    , m_lockSrv(std::make_shared<norda::HostLockSrv>(1))
{
    m_network.People().LoadSeed();
    m_practice.Register(Machine());
    m_hosts->SetObserver([this](const std::string& sql) { BeforeStatement(sql); });
}

Stage::~Stage()
{
    static_cast<void>(ReleaseProvider());
    if (m_hosts)
    {
        m_hosts->SetObserver({});
    }
}

void Stage::LogOn(std::optional<std::int32_t> user)
{
    m_lockSrv = std::make_shared<norda::HostLockSrv>(user);
    HandOver();
}

void Stage::SetStudio(std::int32_t studio)
{
    m_studio = studio;
    HandOver();
}

void Stage::Withhold(const std::string& part)
{
    m_hosts = part == "Connection" ? nullptr : m_hosts;
    m_lockSrv = part == "LockSrv" ? nullptr : m_lockSrv;
    m_utils = part == "Utils" ? nullptr : m_utils;
    HandOver();
}

void Stage::BecomeStrict()
{
    if (m_hosts && !IsStrict())
    {
        m_hostReads = true; // what it prepares is no statement of the library's
        m_hosts->BecomeStrict();
        if (m_utils)
        {
            m_utils->BecomeStrict();
        }
        m_hostReads = false;
    }
}

std::size_t Stage::SecondConnections() const noexcept
{
    return IsStrict() ? m_hosts->Strictness()->SecondConnections() : 0;
}

void Stage::RollBack()
{
    m_hostReads = true; // which is no statement of the library's
    m_hosts->RollbackTransaction();
    m_hostReads = false;
}

std::shared_ptr<host::Record> Stage::LoadCertificate(std::int32_t id)
{
    m_hostReads = true; // which is no statement of the library's
    auto certificate = m_objects.LoadCertificate(m_hosts ? m_hosts : m_own, id);
    m_hostReads = false;
    return certificate;
}

norda::ProviderClient& Stage::Provider()
{
    if (!m_provider)
    {
        m_provider = m_target.workstation->CreateProvider(
            {m_bridgeInstalled ? &m_network : nullptr, &m_objects, &m_prescriptions, m_renamedIn, IsStrict()});
        HandOver();
    }
    return *m_provider;
}

bool Stage::ReleaseProvider()
{
    if (!m_provider)
    {
        return true;
    }
    const bool unloadable = m_provider->Release();
    m_provider.reset();
    return unloadable;
}

void Stage::HandOver()
{
    if (m_provider)
    {
        m_provider->SetConnection(m_hosts);
        m_provider->SetLockSrv(m_lockSrv);
        m_provider->SetUtils(m_utils);
        m_provider->SetStudio(m_studio);
    }
}

std::size_t Stage::CountStatements(const std::string& part) const
{
    return static_cast<std::size_t>(std::count_if(m_statements.begin(), m_statements.end(),
                                                  [&](const std::string& sql) { return Contains(sql, part); }));
}

void Stage::BeforeStatement(const std::string& sql)
{
    if (m_hostReads)
    {
        return;
    }
    m_statements.push_back(sql);
    if (m_statementSeen)
    {
        m_statementSeen();
    }
    std::this_thread::sleep_for(m_pace);
    for (const auto& fault : m_faults)
    {
        if (Contains(sql, fault->pattern) && (++fault->met == fault->number || fault->number == 0))
        {
            fault->fired = true;
            m_hosts->Fail(fault->kind, fault->message);
        }
    }
}

} // namespace vellumo::player
