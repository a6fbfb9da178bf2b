#include "torture/native/registry.h"

#include "torture/outside_call.h"

#include <utility>

namespace vellumo::torture
{
namespace
{

// A key that cannot be read looks as if it were not there.
class Registry final : public host::SettingsStore
{
public:
    explicit Registry(std::unique_ptr<host::SettingsStore> store)
        : m_store(std::move(store))
    {
    }
    [[nodiscard]] std::optional<std::string> ReadMachineText(std::string_view key, std::string_view name) override
    {
        const OutsideCall call(Kind::ReadSetting);
        return call.Fails() ? std::nullopt : m_store->ReadMachineText(key, name);
    }
    [[nodiscard]] std::optional<std::string> ReadUserText(std::string_view key, std::string_view name) override
    {
        const OutsideCall call(Kind::ReadSetting);
        return call.Fails() ? std::nullopt : m_store->ReadUserText(key, name);
    }
    void WriteMachineText(std::string_view key, std::string_view name, std::string_view text) override
    {
        const OutsideCall call(Kind::WriteSetting);
        call.FailIfDue();
        m_store->WriteMachineText(key, name, text);
    }

private:
    std::unique_ptr<host::SettingsStore> m_store;
};

} // namespace

std::unique_ptr<host::SettingsStore> Tortured(std::unique_ptr<host::SettingsStore> store)
{
    return std::make_unique<Registry>(std::move(store));
}

} // namespace vellumo::torture
