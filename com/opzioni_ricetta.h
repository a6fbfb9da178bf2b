// The print options of a prescribing session as the host sees them. Any number is accepted and kept: what the numbers
// mean is for the one who reads them.
#pragma once

#include "com/com_object.h"

#include <vellumo.h>

namespace vellumo::com
{

using OpzioniRicettaBase =
    ComObject<CLSID_OpzioniRicetta, Dual<_OpzioniRicetta, IID__OpzioniRicetta, Library::Vellumo>>;

class OpzioniRicettaObject final : public OpzioniRicettaBase
{
public:
    HRESULT STDMETHODCALLTYPE get_ModalitaStampa(LONG* value) override;
    HRESULT STDMETHODCALLTYPE put_ModalitaStampa(LONG value) override;
    HRESULT STDMETHODCALLTYPE get_TipoRicetta(LONG* value) override;
    HRESULT STDMETHODCALLTYPE put_TipoRicetta(LONG value) override;

private:
    LONG m_modalitaStampa = 0;
    LONG m_tipoRicetta = 0;
};

} // namespace vellumo::com
