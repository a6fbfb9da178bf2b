// The print options of a prescribing session as the host sees them. Any number is accepted and kept: what the numbers
// mean is for the one who reads them. What the host writes is what the library goes by from then on.
#pragma once

#include "com/com_object.h"
#include "com/kept_objects.h"
#include "host/opzioni_ricetta.h"

#include <vellumo.h>

namespace vellumo::com
{

using OpzioniRicettaBase =
    ComObject<CLSID_OpzioniRicetta, Dual<_OpzioniRicetta, IID__OpzioniRicetta, Library::Vellumo>>;

class OpzioniRicettaObject final : public OpzioniRicettaBase, public KeptFace
{
public:
    // Not null.
    explicit OpzioniRicettaObject(std::shared_ptr<host::OpzioniRicetta> options);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override
    {
        return OpzioniRicettaBase::QueryInterface(iid, result);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return OpzioniRicettaBase::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return OpzioniRicettaBase::Release(); }

    HRESULT STDMETHODCALLTYPE get_ModalitaStampa(LONG* value) override;
    HRESULT STDMETHODCALLTYPE put_ModalitaStampa(LONG value) override;
    HRESULT STDMETHODCALLTYPE get_TipoRicetta(LONG* value) override;
    HRESULT STDMETHODCALLTYPE put_TipoRicetta(LONG value) override;

    [[nodiscard]] const std::shared_ptr<host::KeptObject>& Kept() const noexcept override { return m_kept; }

private:
    ~OpzioniRicettaObject() override = default;
    [[nodiscard]] void* Find(REFIID iid) noexcept override;

    host::OpzioniRicetta& m_options;
    std::shared_ptr<host::KeptObject> m_kept; // owns them
};

} // namespace vellumo::com
