#include "platform/windows/adapters/ado.h"

#include "host/fault.h"
#include "platform/windows/system/text.h"

#include <algorithm>

namespace vellumo::windows
{

AdoRecordset::AdoRecordset(ComPtr<IDispatch> object, const HostNameMap& hostNames)
    : m_recordset(std::move(object), names::recordset::self, hostNames)
{
    if (!m_recordset.Object())
    {
        throw host::Fault("L'interrogazione non ha restituito un recordset.");
    }
    Member state(names::recordset::state);
    m_open = m_recordset.Call(state).Value().ToInteger() != 0;
    if (m_open)
    {
        ReadColumns();
    }
}

AdoRecordset::~AdoRecordset()
{
    if (m_open)
    {
        Member close(names::recordset::close);
        host::PassOver([&] { m_recordset.Call(close); });
    }
}

void AdoRecordset::ReadColumns()
{
    Member fieldsMember(names::recordset::fields);
    const LateBound fields(m_recordset.Call(fieldsMember).Object(), names::fields::self, m_recordset.HostNames());
    Member countMember(names::fields::count);
    Member itemMember(names::fields::item);
    Member nameMember(names::field::name);
    const std::int32_t count = fields.Call(countMember).Value().ToInteger();
    for (std::int32_t index = 0; index < count; ++index)
    {
        LateBound field(fields.Call(itemMember, Variant(host::Value(index))).Object(), names::field::self,
                        m_recordset.HostNames());
        std::wstring name = ToWide(field.Call(nameMember).ToText());
        m_columns.push_back({std::move(field), std::move(name)});
    }
}

bool AdoRecordset::IsAtEnd() const
{
    return !m_open || m_recordset.Call(m_eof).Value().ToBoolean();
}

void AdoRecordset::MoveNext()
{
    m_recordset.Call(m_moveNext);
}

std::size_t AdoRecordset::ColumnCount() const
{
    return m_columns.size();
}

const AdoRecordset::Column& AdoRecordset::ColumnAt(std::size_t column) const
{
    if (column >= m_columns.size())
    {
        throw host::Fault("Il recordset non ha la colonna " + std::to_string(column) + ".");
    }
    return m_columns[column];
}

std::string AdoRecordset::ColumnName(std::size_t column) const
{
    return FromWide(ColumnAt(column).name);
}

// A view of the host may carry bytes, such as the version of a row. They are nothing that goes into a message.
host::Value AdoRecordset::ValueOf(const LateBound& field) const
{
    const Variant value = field.Call(m_value);
    return (V_VT(&value.Get()) & VT_ARRAY) != 0 ? host::Value() : value.Value();
}

host::Value AdoRecordset::Read(std::size_t column) const
{
    return ValueOf(ColumnAt(column).field);
}

host::Value AdoRecordset::Read(std::string_view name) const
{
    const std::wstring wanted = ToWide(name);
    const auto column =
        std::ranges::find_if(m_columns, [&](const Column& each) { return EqualsIgnoringCase(each.name, wanted); });
    if (column == m_columns.end())
    {
        throw host::Fault("Il recordset non ha la colonna " + std::string(name) + ".");
    }
    return ValueOf(column->field);
}

AdoConnection::AdoConnection(ComPtr<IDispatch> connection, const HostNameMap& hostNames)
    : m_connection(std::move(connection), names::connection::self, hostNames)
{
}

std::unique_ptr<host::Recordset> AdoConnection::Open(const std::string& sql)
{
    return std::make_unique<AdoRecordset>(m_connection.Call(m_execute, Variant::Text(sql)).Object(),
                                          m_connection.HostNames());
}

void AdoConnection::BeginTransaction()
{
    m_connection.Call(m_beginTrans);
}

void AdoConnection::CommitTransaction()
{
    m_connection.Call(m_commitTrans);
}

void AdoConnection::RollbackTransaction()
{
    m_connection.Call(m_rollbackTrans);
}

} // namespace vellumo::windows
