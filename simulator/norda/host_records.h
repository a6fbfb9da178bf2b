// The simulated host's own classes that the library creates: record objects over its tables, and the practice's
// settings.
#pragma once

#include "host/records.h"
#include "simulator/norda/database.h"

#include <cstdint>
#include <map>
#include <memory>

namespace vellumo::norda
{

class HostObjects final : public host::HostObjects
{
public:
    [[nodiscard]] std::unique_ptr<host::Record> CreateRecord(host::RecordKind kind,
                                                             const host::HostServices& services) override;
    [[nodiscard]] std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices& services) override;

    // A sickness certificate of the practice, which the library is handed and never creates. Faults when there is none.
    [[nodiscard]] std::shared_ptr<host::Record> LoadCertificate(std::shared_ptr<Database> database,
                                                                std::int32_t id) const;

    // From now on records of this kind return False from `Save` and store nothing, as when one of the host's own rules
    // forbids it. Returns what counts how often they did.
    std::shared_ptr<const int> RefuseSaves(host::RecordKind kind) { return m_refused[kind] = std::make_shared<int>(); }
    std::shared_ptr<const int> RefuseCertificateSaves() { return m_refusedCertificates = std::make_shared<int>(); }

private:
    std::map<host::RecordKind, std::shared_ptr<int>> m_refused;
    std::shared_ptr<int> m_refusedCertificates; // null: they are saved
};

// The host's connection as its own classes use it; faults when the library handed none over.
[[nodiscard]] std::shared_ptr<Database> DatabaseOf(const host::HostServices& services);
// A record over any table with a single key column. `table` and `key` are not copied. With `refusals` it is never
// saved, which they count.
[[nodiscard]] std::unique_ptr<host::Record> MakeRow(const char* table, const char* key,
                                                    std::shared_ptr<Database> database, std::shared_ptr<int> refusals);

} // namespace vellumo::norda
