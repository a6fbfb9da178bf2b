// What the library gives the host's prescribing session to keep, as objects of COM: the print options, which the host
// may read and change, and the responses of the registrations, which it only holds. An object that comes back is
// recognised by an interface that no other program knows, and stands for the very object that went out.
#pragma once

#include "host/kept_object.h"
#include "platform/windows/adapters/dispatch_prescriptions.h"
#include "platform/windows/system/counted.h"
#include "platform/windows/system/module_lock.h"

#include <memory>

namespace vellumo::com
{

extern const IID iidKeptFace;

// The side of a COM object that only this library asks for. Not marshalled: it is known in this process alone.
class KeptFace : public IUnknown
{
public:
    [[nodiscard]] virtual const std::shared_ptr<host::KeptObject>& Kept() const noexcept = 0;

protected:
    ~KeptFace() = default;
};

// An object without members for the host. It keeps the DLL loaded as long as the host holds it.
class OpaqueObject final : public windows::Counted<IDispatch, KeptFace>
{
public:
    explicit OpaqueObject(std::shared_ptr<host::KeptObject> kept)
        : m_kept(std::move(kept))
    {
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* answer, EXCEPINFO* exception, UINT* badArgument) override;

    [[nodiscard]] const std::shared_ptr<host::KeptObject>& Kept() const noexcept override { return m_kept; }

private:
    ~OpaqueObject() override = default;
    [[nodiscard]] void* Find(REFIID iid) noexcept override;

    windows::ModuleLock m_moduleLock;
    std::shared_ptr<host::KeptObject> m_kept;
};

class ComKeptObjectFaces final : public windows::KeptObjectFaces
{
public:
    [[nodiscard]] windows::ComPtr<IDispatch> Wrap(const std::shared_ptr<host::KeptObject>& object) const override;
    [[nodiscard]] std::shared_ptr<host::KeptObject> Unwrap(IDispatch* face) const override;
};

} // namespace vellumo::com
