#include "platform/windows/adapters/dispatch_prescriptions.h"

#include "host/fault.h"
#include "platform/windows/adapters/ado.h"

namespace vellumo::windows
{
namespace
{

Variant Number(std::int32_t number)
{
    return Variant(host::Value(number));
}

class DispatchPrescriptionData final : public host::PrescriptionData
{
public:
    explicit DispatchPrescriptionData(LateBound data)
        : m_data(std::move(data))
    {
    }

    [[nodiscard]] std::vector<host::PrescriptionKey> List(std::int32_t idRicetta, std::int32_t numRicetta) override
    {
        Member list(names::prescriptionData::list);
        AdoRecordset rows(ToObject(m_data.Call(list, Number(idRicetta), Number(numRicetta)).Get()), m_data.HostNames());
        std::vector<host::PrescriptionKey> keys;
        for (; !rows.IsAtEnd(); rows.MoveNext())
        {
            keys.push_back({rows.Field("IDRicetta").ToInteger(), rows.Field("NumRicetta").ToInteger()});
        }
        return keys;
    }

    [[nodiscard]] std::unique_ptr<host::Record> Find(const host::PrescriptionKey& key) override
    {
        Member find(names::prescriptionData::find);
        const Variant found = m_data.Call(find, Number(key.IDRicetta), Number(key.NumRicetta));
        auto row = ToObject(found.Get());
        return row ? MakeDispatchRecord(LateBound(std::move(row), names::record::self, m_data.HostNames())) : nullptr;
    }

private:
    LateBound m_data;
};

} // namespace

DispatchSession::DispatchSession(ComPtr<IDispatch> session, const KeptObjectFaces& faces, const HostNameMap& hostNames)
    : m_session(std::move(session), names::session::self, hostNames)
    , m_faces(faces)
{
}

bool DispatchSession::SenzaSISS() const
{
    return m_session.Call(m_withoutSiss).Value().ToBoolean();
}

void DispatchSession::SetSenzaSISS(bool value)
{
    m_session.Put(m_withoutSiss, Variant(host::Value(value)));
}

bool DispatchSession::DaValidare() const
{
    return m_session.Call(m_toValidate).Value().ToBoolean();
}

void DispatchSession::SetDaValidare(bool value)
{
    m_session.Put(m_toValidate, Variant(host::Value(value)));
}

std::shared_ptr<host::OpzioniRicetta> DispatchSession::Options() const
{
    const Variant options = m_session.Call(m_options);
    return std::dynamic_pointer_cast<host::OpzioniRicetta>(m_faces.Unwrap(ToObject(options.Get()).Get()));
}

void DispatchSession::SetOptions(const std::shared_ptr<host::OpzioniRicetta>& options)
{
    m_session.PutObject(m_options, m_faces.Wrap(options).Get());
}

void DispatchSession::AddResponse(std::int32_t kind, const std::shared_ptr<host::KeptObject>& response)
{
    m_session.Call(m_addResponse, Number(kind), Variant(m_faces.Wrap(response).Get()));
}

std::size_t DispatchSession::ResponseCount(std::int32_t kind) const
{
    const auto count = m_session.Call(m_responseCount, Number(kind)).Value().ToInteger();
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}

std::shared_ptr<host::KeptObject> DispatchSession::Response(std::int32_t kind, std::size_t position) const
{
    const Variant response = m_session.Call(m_response, Number(kind), Number(static_cast<std::int32_t>(position)));
    return m_faces.Unwrap(ToObject(response.Get()).Get());
}

std::shared_ptr<host::PrescriptionSession> DispatchPrescriptionObjects::CreateSession()
{
    return std::make_shared<DispatchSession>(CreateByProgId(m_handles->names.Of(names::sessionProgId)), *m_faces,
                                             m_handles->names);
}

std::unique_ptr<host::PrescriptionData> DispatchPrescriptionObjects::CreatePrescriptionData(std::int32_t kind,
                                                                                            const host::HostServices&)
{
    LateBound data = CreateByProgId(names::prescriptionDataProgId, m_handles->names);
    Member connection(names::prescriptionData::connection);
    Member utils(names::prescriptionData::utils);
    Member kindMember(names::prescriptionData::kind);
    data.PutObject(connection, m_handles->connection.Get());
    data.PutObject(utils, m_handles->utils.Get());
    data.Put(kindMember, Number(kind));
    return std::make_unique<DispatchPrescriptionData>(std::move(data));
}

} // namespace vellumo::windows
