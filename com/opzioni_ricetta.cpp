#include "com/opzioni_ricetta.h"

namespace vellumo::com
{
namespace
{

HRESULT Answer(std::int32_t number, LONG* value)
{
    if (!value)
    {
        return E_POINTER;
    }
    *value = number;
    return S_OK;
}

} // namespace

OpzioniRicettaObject::OpzioniRicettaObject(std::shared_ptr<host::OpzioniRicetta> options)
    : m_options(*options)
    , m_kept(std::move(options))
{
}

HRESULT OpzioniRicettaObject::QueryInterface(REFIID iid, void** result)
{
    if (iid != iidKeptFace || !result)
    {
        return OpzioniRicettaBase::QueryInterface(iid, result);
    }
    *result = static_cast<KeptFace*>(this);
    AddRef();
    return S_OK;
}

HRESULT OpzioniRicettaObject::get_ModalitaStampa(LONG* value)
{
    return Answer(m_options.ModalitaStampa, value);
}

HRESULT OpzioniRicettaObject::put_ModalitaStampa(LONG value)
{
    m_options.ModalitaStampa = static_cast<std::int32_t>(value);
    return S_OK;
}

HRESULT OpzioniRicettaObject::get_TipoRicetta(LONG* value)
{
    return Answer(m_options.TipoRicetta, value);
}

HRESULT OpzioniRicettaObject::put_TipoRicetta(LONG value)
{
    m_options.TipoRicetta = static_cast<std::int32_t>(value);
    return S_OK;
}

} // namespace vellumo::com
