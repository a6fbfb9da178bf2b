// The simulated host's own classes that the library creates: record objects over its tables, and the practice's
// settings.
#pragma once

#include "host/records.h"
#include "simulator/norda/database.h"

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

namespace vellumo::norda
{

// How records save, when not as they should.
struct SaveHabit
{
    bool refuses = false; // False, and nothing stored, as when one of the host's own rules forbids it; otherwise they
                          // store, and `Save` is a procedure without a result
    int met = 0;          // how often it was asked for
};

// What the library is not shown natively, where `Save` always has a result.
class SavingRecord : public host::Record
{
public:
    [[nodiscard]] virtual bool SavesWithoutResult() const noexcept = 0;
};

class HostObjects final : public host::HostObjects
{
public:
    [[nodiscard]] std::unique_ptr<host::Record> CreateRecord(host::RecordKind kind,
                                                             const host::HostServices& services) override;
    [[nodiscard]] std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices& services) override;

    // A sickness certificate of the practice, which the library is handed and never creates. Faults when there is none.
    [[nodiscard]] std::shared_ptr<host::Record> LoadCertificate(std::shared_ptr<Database> database,
                                                                std::int32_t id) const;

    // From now on records of this kind save like that.
    void SetHabit(host::RecordKind kind, std::shared_ptr<SaveHabit> habit) { m_habits[kind] = std::move(habit); }
    void SetCertificateHabit(std::shared_ptr<SaveHabit> habit) { m_certificateHabit = std::move(habit); }

private:
    std::map<host::RecordKind, std::shared_ptr<SaveHabit>> m_habits;
    std::shared_ptr<SaveHabit> m_certificateHabit; // null: as they should
};

// The host's connection as its own classes use it; faults when the library handed none over.
[[nodiscard]] std::shared_ptr<Database> DatabaseOf(const host::HostServices& services);
// A record over any table with a single key column. `table` and `key` are not copied; `habit` may be null.
[[nodiscard]] std::unique_ptr<host::Record>
MakeRow(const char* table, const char* key, std::shared_ptr<Database> database, std::shared_ptr<SaveHabit> habit);

} // namespace vellumo::norda
