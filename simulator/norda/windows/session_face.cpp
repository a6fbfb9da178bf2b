#include "simulator/norda/windows/faces.h"

#include "platform/windows/adapters/host_names.h"
#include "simulator/norda/windows/host_face.h"

namespace vellumo::norda
{
namespace
{

using windows::ComPtr;
using windows::Variant;
namespace names = windows::names;

// An object of the library in the hands of the host.
struct HeldObject final : host::KeptObject
{
    explicit HeldObject(ComPtr<IDispatch> held)
        : object(std::move(held))
    {
    }
    ComPtr<IDispatch> object;
};

class SessionFace final : public HostFace
{
public:
    explicit SessionFace(std::shared_ptr<PrescriptionSession> session)
        : HostFace(names::session::self)
        , m_session(std::move(session))
    {
        AddMember(
            names::session::withoutSiss,
            [this](const Arguments&) { return Variant(host::Value(m_session->SenzaSISS())); },
            [this](const Arguments& arguments)
            {
                m_session->SetSenzaSISS(arguments.Value(0).ToBoolean());
                return Variant();
            });
        AddMember(
            names::session::toValidate,
            [this](const Arguments&) { return Variant(host::Value(m_session->DaValidare())); },
            [this](const Arguments& arguments)
            {
                m_session->SetDaValidare(arguments.Value(0).ToBoolean());
                return Variant();
            });
        AddMember(
            names::session::options,
            [this](const Arguments&) { return Variant(ObjectOf(m_session->KeptOptions()).Get()); },
            [this](const Arguments& arguments)
            {
                m_session->KeepOptions(std::make_shared<HeldObject>(arguments.Object(0)));
                return Variant();
            });
        AddResponses();
    }

    [[nodiscard]] const std::shared_ptr<PrescriptionSession>& Native() const noexcept { return m_session; }

private:
    void AddResponses()
    {
        AddMember(names::session::addResponse,
                  [this](const Arguments& arguments)
                  {
                      m_session->AddResponse(arguments.Integer(0), std::make_shared<HeldObject>(arguments.Object(1)));
                      return Variant();
                  });
        AddMember(names::session::responseCount,
                  [this](const Arguments& arguments) {
                      return Variant(
                          host::Value(static_cast<std::int32_t>(m_session->ResponseCount(arguments.Integer(0)))));
                  });
        AddMember(names::session::response,
                  [this](const Arguments& arguments)
                  {
                      const auto position = static_cast<std::size_t>(arguments.Integer(1));
                      return Variant(ObjectOf(m_session->Response(arguments.Integer(0), position)).Get());
                  });
    }

    std::shared_ptr<PrescriptionSession> m_session;
};

} // namespace

ComPtr<IDispatch> MakeSessionFace(std::shared_ptr<PrescriptionSession> session)
{
    return MakeFace<SessionFace>(std::move(session));
}

std::shared_ptr<PrescriptionSession> SessionOf(IDispatch* face)
{
    const auto* const session = dynamic_cast<SessionFace*>(DispatchFace::From(face));
    return session ? session->Native() : nullptr;
}

ComPtr<IDispatch> ObjectOf(const std::shared_ptr<host::KeptObject>& kept)
{
    const auto held = std::dynamic_pointer_cast<HeldObject>(kept);
    return held ? held->object : nullptr;
}

} // namespace vellumo::norda
