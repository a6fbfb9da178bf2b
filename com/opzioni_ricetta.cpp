#include "com/opzioni_ricetta.h"

namespace vellumo::com
{

OpzioniRicettaObject::OpzioniRicettaObject(std::shared_ptr<host::OpzioniRicetta> options)
    : m_options(*options)
    , m_kept(std::move(options))
{
}

void* OpzioniRicettaObject::Find(REFIID iid) noexcept
{
    return iid == iidKeptFace ? static_cast<KeptFace*>(this) : OpzioniRicettaBase::Find(iid);
}

HRESULT OpzioniRicettaObject::get_ModalitaStampa(LONG* value)
{
    return GuardResult(*this, IID__OpzioniRicetta, value, [&] { return LONG{m_options.ModalitaStampa}; });
}

HRESULT OpzioniRicettaObject::put_ModalitaStampa(LONG value)
{
    m_options.ModalitaStampa = static_cast<std::int32_t>(value);
    return S_OK;
}

HRESULT OpzioniRicettaObject::get_TipoRicetta(LONG* value)
{
    return GuardResult(*this, IID__OpzioniRicetta, value, [&] { return LONG{m_options.TipoRicetta}; });
}

HRESULT OpzioniRicettaObject::put_TipoRicetta(LONG value)
{
    m_options.TipoRicetta = static_cast<std::int32_t>(value);
    return S_OK;
}

} // namespace vellumo::com
