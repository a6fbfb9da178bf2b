// What a provider under test finds around it: a bridge that answers a fixed text, record objects in memory, and a
// practice without settings. Everything is offered to COM in this process while it lives.
#pragma once

#include "simulator/norda/windows/class_objects.h"
#include "tests/support/fake_host.h"

namespace vellumo::tests
{

class FakeObjects final : public host::HostObjects
{
public:
    std::unique_ptr<host::Record> CreateRecord(host::RecordKind, const host::HostServices& services) override
    {
        seen = services;
        return std::make_unique<MemoryRecord>(row);
    }
    std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices&) override
    {
        class NoSettings final : public host::PracticeSettings
        {
        public:
            bool Load(std::int32_t) override { return false; }
            [[nodiscard]] host::Value Get(std::string_view) const override { return {}; }
        };
        return std::make_unique<NoSettings>();
    }

    StoredRow row;
    host::HostServices seen; // what the last record was given
};

class FixedLockSrv final : public host::LockSrv
{
public:
    [[nodiscard]] std::int32_t UserId() override
    {
        if (asked)
        {
            asked();
        }
        return 7;
    }

    std::function<void()> asked;
};

struct FakeOutside
{
    FakeBridge bridge;
    FakeObjects objects;
    norda::PrescriptionObjects prescriptions;
    norda::HostClasses classes{norda::Outside{&bridge, &objects, &prescriptions}};
};

} // namespace vellumo::tests
