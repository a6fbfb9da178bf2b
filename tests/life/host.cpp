#include "tests/life/host.h"

#include "host/fault.h"
#include "tests/life/judge.h"
#include "tests/life/operator.h"
#include "tests/life/rows.h"

#include <unistd.h>

#include <algorithm>

namespace vellumo::life
{
namespace
{

constexpr std::int32_t studio = 3;

class LifeBridge final : public host::Bridge
{
public:
    explicit LifeBridge(World& world)
        : m_world(world)
    {
    }
    std::string CallSebMethod(const std::string& request) override
    {
        m_world.Call(Point::Bridge);
        m_world.network.Receive(request);
        m_world.Call(Point::Bridged);
        return m_world.network.Deliver();
    }

private:
    World& m_world;
};

class LifeUtils final : public host::Utils
{
public:
    explicit LifeUtils(World& world)
        : m_world(world)
    {
    }
    host::Value LookUpValue(const std::string&, const host::Parameters&) override
    {
        m_world.Call(Point::Statement);
        return {};
    }
    std::unique_ptr<host::Recordset> OpenRecordset(const std::string&, const host::Parameters&) override
    {
        m_world.Call(Point::Statement);
        return NoRows();
    }
    host::Value LookUpKey(const std::string&, const std::string&, const std::string&, const host::Parameters&) override
    {
        return {};
    }
    void Execute(const std::string&, const host::Parameters&) override {}
    host::Value WriteRow(const std::string&, const std::string&, const host::Value&,
                         const std::vector<host::ColumnValue>&) override
    {
        return {};
    }
    host::Value TableDate(const std::string&) override { return {}; }
    void StoreTableDate(const std::string&, host::Date, std::int32_t) override {}
    void RecordServiceError(const std::string& line) override
    {
        Outside& outside = m_world.outside;
        outside.offeredToJournal.Add(line);
        if (line.find("Verdi") != std::string::npos || line.find('\n') != std::string::npos)
        {
            outside.Violated("a line names the patient or is more than one: " + line);
        }
        if (m_world.Fails(Point::Journal) || m_world.journalRefuses)
        {
            outside.refusedByJournal.Add(line);
            throw host::Fault("Il registro non accetta righe.");
        }
        outside.journal.Add(line);
        m_world.Call(Point::Journalled);
    }
    bool ToBoolean(const host::Value& value) override { return value.ToBoolean(); }

private:
    World& m_world;
};

class LifeLockSrv final : public host::LockSrv
{
public:
    explicit LifeLockSrv(World& world)
        : m_world(world)
    {
    }
    std::int32_t UserId() override
    {
        m_world.Call(Point::LockSrv);
        return 7;
    }

private:
    World& m_world;
};

class LifeObjects final : public host::HostObjects
{
public:
    explicit LifeObjects(World& world)
        : m_world(world)
    {
    }
    std::unique_ptr<host::Record> CreateRecord(host::RecordKind, const host::HostServices&) override { return {}; }
    std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices&) override
    {
        class Settings final : public host::PracticeSettings
        {
        public:
            explicit Settings(World& world)
                : m_world(world)
            {
            }
            bool Load(std::int32_t) override
            {
                m_world.Call(Point::SettingsLoad);
                return true;
            }
            [[nodiscard]] host::Value Read(std::string_view name) const override
            {
                m_world.Call(Point::SettingsGet);
                return m_world.plan.electronic && name == "CCECartellaElettronica";
            }

        private:
            World& m_world;
        };
        return std::make_unique<Settings>(m_world);
    }

private:
    World& m_world;
};

class LifeClock final : public host::Clock
{
public:
    [[nodiscard]] host::Date Now() const override { return host::Date::FromCalendar(2024, 3, 5, 15, 4, 9).value(); }
};

// Only the host program's folder is known.
class LifeSettingsStore final : public host::SettingsStore
{
public:
    explicit LifeSettingsStore(const World& world)
        : m_world(world)
    {
    }
    std::optional<std::string> ReadMachineText(std::string_view key, std::string_view) override
    {
        return key.ends_with("Norda.exe") ? std::optional(m_world.programFolder) : std::nullopt;
    }
    std::optional<std::string> ReadUserText(std::string_view, std::string_view) override { return std::nullopt; }
    void WriteMachineText(std::string_view, std::string_view, std::string_view) override {}

private:
    const World& m_world;
};

// --- The folder of traces ---

class LifeEntry final : public host::OpenCodeEntry
{
public:
    LifeEntry(World& world, std::shared_ptr<KeptCode> kept, std::shared_ptr<int> owner)
        : m_world(world)
        , m_kept(std::move(kept))
        , m_owner(std::move(owner))
    {
    }
    void Settle() noexcept override
    {
        JudgeSettled(m_world, m_kept->code);
        m_kept->settled = true;
        m_owner = nullptr;
    }

private:
    World& m_world;
    std::shared_ptr<KeptCode> m_kept;
    std::shared_ptr<int> m_owner;
};

class LifeTraces final : public host::Traces
{
public:
    explicit LifeTraces(World& world)
        : m_world(world)
    {
    }
    bool Append(std::string_view line) noexcept override
    {
        Outside& outside = m_world.outside;
        outside.offeredToTraces.Add(line);
        const bool fails = m_world.Fails(Point::Append);
        (fails ? outside.refusedByTraces : outside.traces).Add(line);
        return !fails;
    }
    std::shared_ptr<host::OpenCodeEntry> Keep(const host::OpenCode& code) noexcept override
    {
        if (m_world.Fails(Point::Keep))
        {
            m_world.outside.refusedCodes.Add(code.code);
            return nullptr;
        }
        auto kept = std::make_shared<KeptCode>(KeptCode{code, false, m_owner});
        m_world.kept.push_back(kept);
        return std::make_shared<LifeEntry>(m_world, std::move(kept), m_owner);
    }
    void Recover(std::int32_t practice, const Tell& tell) noexcept override
    {
        for (const auto& kept : m_world.kept)
        {
            if (!kept->settled && kept->owner.expired() && kept->code.studio == practice)
            {
                kept->settled = tell({kept->code, "PC3", "2024-03-05 15.04.09"});
            }
        }
    }

private:
    World& m_world;
    std::shared_ptr<int> m_owner = std::make_shared<int>();
};

} // namespace

bool World::Fails(Point point)
{
    if (++outside.calls == deathAt)
    {
        _exit(0);
    }
    if (!fails)
    {
        return false;
    }
    const auto place = static_cast<std::size_t>(point);
    const int count = ++outside.callsAt.at(place);
    const bool failed = std::ranges::any_of(
        plan.faults, [&](const Fault& fault)
        { return fault.point == point && (count == fault.call || (fault.forGood && count > fault.call)); });
    if (failed)
    {
        outside.failedAt.at(place) = true;
        ++outside.faults;
    }
    return failed;
}

void World::Call(Point point)
{
    if (Fails(point))
    {
        throw host::Fault(std::string("Guasto simulato per 'Verdi': ") + NameOf(point), 9, "Norda");
    }
}

std::unique_ptr<provider::SISSProvider> World::StartProvider()
{
    ++providers;
    provider::PlatformParts parts{.bridge = std::make_unique<LifeBridge>(*this),
                                  .objects = std::make_unique<LifeObjects>(*this),
                                  .prescriptions = MakePrescriptions(*this),
                                  .settings = std::make_unique<LifeSettingsStore>(*this),
                                  .clock = std::make_unique<LifeClock>(),
                                  .desktop = MakeDesktop(*this),
                                  .traces = nullptr};
    if (!tracesOnDisk)
    {
        parts.traces = std::make_unique<LifeTraces>(*this);
    }
    auto provider = std::make_unique<provider::SISSProvider>(std::move(parts));
    provider->SetConnection(MakeConnection(*this));
    provider->SetLockSrv(std::make_shared<LifeLockSrv>(*this));
    provider->SetUtils(std::make_shared<LifeUtils>(*this));
    provider->SetStudio(studio);
    return provider;
}

} // namespace vellumo::life
