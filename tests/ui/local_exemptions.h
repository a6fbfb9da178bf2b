// A database that holds nothing but the host's catalogue of exemptions, read by position.
#pragma once

#include "host/connection.h"
#include "host/fault.h"

#include <doctest.h>

#include <memory>
#include <string>
#include <vector>

namespace vellumo::ui
{

using Rows = std::vector<std::vector<host::Value>>;

class ListRecordset final : public host::Recordset
{
public:
    explicit ListRecordset(const Rows& rows)
        : m_rows(rows)
    {
    }
    bool IsAtEnd() const override { return m_row == m_rows.size(); }
    void MoveNext() override { ++m_row; }
    std::size_t ColumnCount() const override { return 4; }
    std::string ColumnName(std::size_t) const override { return {}; }
    host::Value Field(std::size_t column) const override { return m_rows.at(m_row).at(column); }
    host::Value Field(std::string_view) const override { throw host::Fault("read by position"); }

private:
    const Rows& m_rows;
    std::size_t m_row = 0;
};

class LocalExemptions final : public host::Connection
{
public:
    std::unique_ptr<host::Recordset> Open(const std::string& sql) override
    {
        CHECK(sql == "SELECT IDEsenzione, Esenzione, CodiceIdentificativo, IDTipoEsenzione FROM VwPartecipazioneSpesa");
        return std::make_unique<ListRecordset>(rows);
    }
    void BeginTransaction() override {}
    void CommitTransaction() override {}
    void RollbackTransaction() override {}

    Rows rows = {{12, "Invalidità civile 100%", "C01", 1},
                 {11, "Reddito: età > 65", "E01", 1},
                 {14, "SOGGETTI CON INVALIDITA' DI SERVIZIO", "S01", 1},
                 {13, "Diabete mellito", "013.250", 1},
                 {15, "Gravidanza, visita 13", "M13", host::Value()},
                 {16, "Diabete", "013", 1}};
};

} // namespace vellumo::ui
