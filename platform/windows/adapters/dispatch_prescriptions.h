// The host's prescribing session and its prescription rows, created by their ProgIDs or passed by the host, and reached
// late-bound. What the session is given to keep must be an object of COM; `KeptObjectFaces` makes one of it.
#pragma once

#include "host/prescriptions.h"
#include "platform/windows/adapters/dispatch_records.h"
#include "platform/windows/adapters/host_names.h"

#include <memory>

namespace vellumo::windows
{

// The library's own objects in the shape in which a host can hold them.
class KeptObjectFaces
{
public:
    virtual ~KeptObjectFaces() = default;

    [[nodiscard]] virtual ComPtr<IDispatch> Wrap(const std::shared_ptr<host::KeptObject>& object) const = 0;
    // Null for an object that is not the library's.
    [[nodiscard]] virtual std::shared_ptr<host::KeptObject> Unwrap(IDispatch* face) const = 0;
};

class DispatchSession final : public host::PrescriptionSession
{
public:
    // All outlive the session's use by the library.
    DispatchSession(ComPtr<IDispatch> session, const KeptObjectFaces& faces, const HostNameMap& hostNames);

    [[nodiscard]] bool SenzaSISS() const override;
    void SetSenzaSISS(bool value) override;
    [[nodiscard]] bool DaValidare() const override;
    void SetDaValidare(bool value) override;
    [[nodiscard]] std::shared_ptr<host::OpzioniRicetta> Options() const override;
    void SetOptions(const std::shared_ptr<host::OpzioniRicetta>& options) override;
    void AddResponse(std::int32_t kind, const std::shared_ptr<host::KeptObject>& response) override;
    [[nodiscard]] std::size_t ResponseCount(std::int32_t kind) const override;
    [[nodiscard]] std::shared_ptr<host::KeptObject> Response(std::int32_t kind, std::size_t position) const override;

    // As the host holds it.
    [[nodiscard]] IDispatch* Object() const noexcept { return m_session.Object(); }

private:
    LateBound m_session;
    const KeptObjectFaces& m_faces;
    mutable Member m_withoutSiss{names::session::withoutSiss};
    mutable Member m_toValidate{names::session::toValidate};
    mutable Member m_options{names::session::options};
    mutable Member m_addResponse{names::session::addResponse};
    mutable Member m_responseCount{names::session::responseCount};
    mutable Member m_response{names::session::response};
};

class DispatchPrescriptionObjects final : public host::PrescriptionObjects
{
public:
    DispatchPrescriptionObjects(std::shared_ptr<const HostHandles> handles,
                                std::unique_ptr<const KeptObjectFaces> faces)
        : m_handles(std::move(handles))
        , m_faces(std::move(faces))
    {
    }

    [[nodiscard]] std::shared_ptr<host::PrescriptionSession> CreateSession() override;
    [[nodiscard]] std::unique_ptr<host::PrescriptionData>
    CreatePrescriptionData(std::int32_t kind, const host::HostServices& services) override;

private:
    std::shared_ptr<const HostHandles> m_handles;
    std::unique_ptr<const KeptObjectFaces> m_faces;
};

} // namespace vellumo::windows
