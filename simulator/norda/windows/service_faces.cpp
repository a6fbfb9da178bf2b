#include "simulator/norda/windows/faces.h"

#include "host/fault.h"
#include "platform/windows/adapters/host_names.h"
#include "simulator/norda/windows/host_face.h"
#include "simulator/norda/windows/recordset_face.h"

#include <kelnordaccelib.h>

namespace vellumo::norda
{
namespace
{

using windows::ComPtr;
using windows::Variant;
namespace names = windows::names;

class ConnectionFace final : public DispatchFace
{
public:
    explicit ConnectionFace(std::shared_ptr<host::Connection> connection)
        : DispatchFace(names::connection::self)
        , m_connection(std::move(connection))
    {
        AddMember(names::connection::execute, [this](const Arguments& arguments)
                  { return Variant(MakeRecordsetFace(m_connection->Open(arguments.Text(0))).Get()); });
        AddMember(names::connection::beginTrans, [this](const Arguments&) { return BeginTrans(); });
        AddMember(names::connection::commitTrans,
                  [this](const Arguments&)
                  {
                      m_connection->CommitTransaction();
                      return Variant();
                  });
        AddMember(names::connection::rollbackTrans,
                  [this](const Arguments&)
                  {
                      m_connection->RollbackTransaction();
                      return Variant();
                  });
    }

    [[nodiscard]] const std::shared_ptr<host::Connection>& Native() const noexcept { return m_connection; }

private:
    Variant BeginTrans()
    {
        m_connection->BeginTransaction();
        return Variant(host::Value(1)); // the nesting level, as ADO returns it
    }

    std::shared_ptr<host::Connection> m_connection;
};

class LockSrvFace final : public HostFace
{
public:
    explicit LockSrvFace(std::shared_ptr<host::LockSrv> lockSrv)
        : HostFace(names::lockSrv::self)
        , m_lockSrv(std::move(lockSrv))
    {
        AddMember(names::lockSrv::userId,
                  [this](const Arguments&) { return Variant(host::Value(m_lockSrv->UserId())); });
    }

    [[nodiscard]] const std::shared_ptr<host::LockSrv>& Native() const noexcept { return m_lockSrv; }

private:
    std::shared_ptr<host::LockSrv> m_lockSrv;
};

class ServiceLogFace final : public HostFace
{
public:
    explicit ServiceLogFace(std::shared_ptr<host::Utils> utils)
        : HostFace(names::serviceLog::self)
        , m_utils(std::move(utils))
    {
        AddMember(names::serviceLog::write,
                  [this](const Arguments& arguments)
                  {
                      m_utils->RecordServiceError(arguments.Text(0));
                      return Variant();
                  });
    }

private:
    std::shared_ptr<host::Utils> m_utils;
};

// The first argument of most members is the library's object; a host takes its connection from it.
void RequireDatabaseProvider(const Arguments& arguments)
{
    const ComPtr<IDispatch> provider = arguments.Object(0);
    if (!provider.As<ICCEDatabaseProvider>(IID_ICCEDatabaseProvider))
    {
        throw host::Fault("Il primo argomento non è un ICCEDatabaseProvider.", DISP_E_TYPEMISMATCH);
    }
}

class UtilsFace final : public HostFace
{
public:
    explicit UtilsFace(std::shared_ptr<host::Utils> utils)
        : HostFace(names::utils::self)
        , m_utils(std::move(utils))
    {
        AddQueries();
        AddWrites();
        AddMember(names::utils::serviceLog,
                  [this](const Arguments&) { return Variant(MakeFace<ServiceLogFace>(m_utils).Get()); });
        AddMember(names::utils::toBoolean, [this](const Arguments& arguments)
                  { return Variant(host::Value(m_utils->ToBoolean(arguments.Value(0)))); });
    }

private:
    void AddWithProvider(const wchar_t* name, Body body)
    {
        AddMember(name,
                  [body = std::move(body)](const Arguments& arguments)
                  {
                      RequireDatabaseProvider(arguments);
                      return body(arguments);
                  });
    }

    void AddQueries()
    {
        AddWithProvider(names::utils::executeScalar, [this](const Arguments& arguments)
                        { return Variant(m_utils->LookUpValue(arguments.Text(1), arguments.Values(2))); });
        AddWithProvider(
            names::utils::openRecordset,
            [this](const Arguments& arguments) {
                return Variant(MakeRecordsetFace(m_utils->OpenRecordset(arguments.Text(1), arguments.Values(2))).Get());
            });
        AddWithProvider(names::utils::findKey,
                        [this](const Arguments& arguments) {
                            return Variant(m_utils->LookUpKey(arguments.Text(1), arguments.Text(2), arguments.Text(3),
                                                              arguments.Values(4)));
                        });
        AddWithProvider(names::utils::tableDate,
                        [this](const Arguments& arguments) { return Variant(m_utils->TableDate(arguments.Text(1))); });
    }

    void AddWrites()
    {
        AddWithProvider(names::utils::execute,
                        [this](const Arguments& arguments)
                        {
                            m_utils->Execute(arguments.Text(1), arguments.Values(2));
                            return Variant();
                        });
        AddWithProvider(names::utils::writeRow, [this](const Arguments& arguments) { return WriteRow(arguments); });
        AddWithProvider(names::utils::storeTableDate,
                        [this](const Arguments& arguments)
                        {
                            const host::Value date = arguments.Value(2);
                            if (!date.IsNull() && date.ToDate().IsZero())
                            {
                                throw host::Fault("Una data che manca è Null.", DISP_E_TYPEMISMATCH);
                            }
                            m_utils->StoreTableDate(arguments.Text(1), date.ToDate(), arguments.Integer(3));
                            return Variant();
                        });
    }

    Variant WriteRow(const Arguments& arguments)
    {
        const std::vector<host::Value> columns = arguments.Values(4);
        const std::vector<host::Value> values = arguments.Values(5);
        if (columns.size() != values.size())
        {
            throw host::Fault("Il numero dei valori non è quello delle colonne.");
        }
        std::vector<host::ColumnValue> row;
        for (std::size_t index = 0; index < columns.size(); ++index)
        {
            row.push_back({columns[index].ToText(), values[index]});
        }
        return Variant(m_utils->WriteRow(arguments.Text(1), arguments.Text(2), arguments.Value(3), row));
    }

    std::shared_ptr<host::Utils> m_utils;
};

class BridgeFace final : public DispatchFace
{
public:
    explicit BridgeFace(host::Bridge& bridge)
        : DispatchFace(names::bridgeProgId)
    {
        AddMember(names::callSebMethod, [&bridge](const Arguments& arguments)
                  { return Variant::Text(bridge.CallSebMethod(arguments.Text(0))); });
    }
};

} // namespace

ComPtr<IDispatch> MakeConnectionFace(std::shared_ptr<host::Connection> connection)
{
    return MakeFace<ConnectionFace>(std::move(connection));
}

std::shared_ptr<host::Connection> ConnectionOf(IDispatch* face)
{
    const auto* const connection = dynamic_cast<ConnectionFace*>(DispatchFace::From(face));
    return connection ? connection->Native() : nullptr;
}

ComPtr<IDispatch> MakeLockSrvFace(std::shared_ptr<host::LockSrv> lockSrv)
{
    return MakeFace<LockSrvFace>(std::move(lockSrv));
}

std::shared_ptr<host::LockSrv> LockSrvOf(IDispatch* face)
{
    const auto* const lockSrv = dynamic_cast<LockSrvFace*>(DispatchFace::From(face));
    return lockSrv ? lockSrv->Native() : nullptr;
}

ComPtr<IDispatch> MakeUtilsFace(std::shared_ptr<host::Utils> utils)
{
    return MakeFace<UtilsFace>(std::move(utils));
}

ComPtr<IDispatch> MakeBridgeFace(host::Bridge& bridge)
{
    return MakeFace<BridgeFace>(bridge);
}

} // namespace vellumo::norda
