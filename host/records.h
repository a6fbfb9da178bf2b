// The host's own record objects: one row of one of its tables, read and written by column name. The host's class
// keeps its own rules about saving; the library sees only what stands here. Members fault with the host's
// description; a column that the record does not have is a fault too.
#pragma once

#include "host/value.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace vellumo::host
{

class Record
{
public:
    virtual ~Record() = default;

    // False when there is no row with this identifier.
    [[nodiscard]] virtual bool Load(std::int32_t id) = 0;
    // Starts a row that `Save` will insert.
    virtual void StartNew() = 0;

    // Without the blanks that fill up a column of fixed length.
    [[nodiscard]] Value Get(std::string_view column) const { return Read(column).WithoutPadding(); }
    // As the record gives it.
    [[nodiscard]] virtual Value Read(std::string_view column) const = 0;
    virtual void Set(std::string_view column, const Value& value) = 0;

    // False when the host refused to save.
    [[nodiscard]] virtual bool Save() = 0;

    // Identifier of the row; of a new one, after `Save`.
    [[nodiscard]] virtual std::int32_t Id() const = 0;
};

// The practice's settings.
class PracticeSettings
{
public:
    virtual ~PracticeSettings() = default;

    // False when the practice has no settings.
    [[nodiscard]] virtual bool Load(std::int32_t studio) = 0;
    // Without padding, as a record's.
    [[nodiscard]] Value Get(std::string_view name) const { return Read(name).WithoutPadding(); }
    [[nodiscard]] virtual Value Read(std::string_view name) const = 0;
};

struct HostServices;

enum class RecordKind
{
    Patient,
    Asl,
    Specialist
};

// Creates the host's objects and hands each one the connection, lock service and, where its class wants it, the
// practice that the host gave to the provider.
class HostObjects
{
public:
    virtual ~HostObjects() = default;

    [[nodiscard]] virtual std::unique_ptr<Record> CreateRecord(RecordKind kind, const HostServices& services) = 0;
    [[nodiscard]] virtual std::unique_ptr<PracticeSettings> CreateSettings(const HostServices& services) = 0;
};

} // namespace vellumo::host
