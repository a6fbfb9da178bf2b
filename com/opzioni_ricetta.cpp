#include "com/opzioni_ricetta.h"

namespace vellumo::com
{
namespace
{

HRESULT Answer(LONG number, LONG* value)
{
    if (!value)
    {
        return E_POINTER;
    }
    *value = number;
    return S_OK;
}

} // namespace

HRESULT OpzioniRicettaObject::get_ModalitaStampa(LONG* value)
{
    return Answer(m_modalitaStampa, value);
}

HRESULT OpzioniRicettaObject::put_ModalitaStampa(LONG value)
{
    m_modalitaStampa = value;
    return S_OK;
}

HRESULT OpzioniRicettaObject::get_TipoRicetta(LONG* value)
{
    return Answer(m_tipoRicetta, value);
}

HRESULT OpzioniRicettaObject::put_TipoRicetta(LONG value)
{
    m_tipoRicetta = value;
    return S_OK;
}

} // namespace vellumo::com
