// The host's query helpers. The library hands over SQL texts with numbered placeholders "{0}", "{1}" unformatted;
// the host puts the values in, quoted and formatted for its database, and runs the statement on its connection.
// Every member faults with the host's or the database's description.
#pragma once

#include "host/connection.h"
#include "host/value.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vellumo::host
{

using Parameters = std::vector<Value>;

struct ColumnValue
{
    std::string column;
    Value value;
};

class Utils
{
public:
    virtual ~Utils() = default;

    // First column of the first row, without padding; null when there is no row. Some hosts answer the number 0 then,
    // so 0 is null, too: no column that the library looks up has a 0 that means anything.
    [[nodiscard]] Value SingleValue(const std::string& sql, const Parameters& parameters);

    [[nodiscard]] virtual std::unique_ptr<Recordset> OpenRecordset(const std::string& sql,
                                                                   const Parameters& parameters) = 0;

    // Value of `keyColumn` in the row of `table` that meets `condition`; null, as above, when there is none.
    [[nodiscard]] Value FindKey(const std::string& table, const std::string& keyColumn, const std::string& condition,
                                const Parameters& parameters);

    virtual void Execute(const std::string& sql, const Parameters& parameters) = 0;

    // Updates the row of `table` whose `keyColumn` is `key`, or inserts a new one when `key` is null. Returns the key
    // of the row written.
    virtual Value WriteRow(const std::string& table, const std::string& keyColumn, const Value& key,
                           const std::vector<ColumnValue>& columns) = 0;

    // The date that the host keeps for a regional table.
    [[nodiscard]] virtual Value TableDate(const std::string& table) = 0;
    virtual void StoreTableDate(const std::string& table, Date date, std::int32_t user) = 0;

    // Records one line about a failed SISS service in the host's own journal.
    virtual void RecordServiceError(const std::string& line) = 0;

    // The host's reading of a settings value as a Boolean.
    [[nodiscard]] virtual bool ToBoolean(const Value& value) = 0;

    // The host's own answers, which the two above read.
    [[nodiscard]] virtual Value LookUpValue(const std::string& sql, const Parameters& parameters) = 0;
    [[nodiscard]] virtual Value LookUpKey(const std::string& table, const std::string& keyColumn,
                                          const std::string& condition, const Parameters& parameters) = 0;
};

} // namespace vellumo::host
