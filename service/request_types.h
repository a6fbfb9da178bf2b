// The SISS services that the library can call. The numbers and names are published in the type library; the
// misspelling of rtIniziaFasePresrittiva is part of it.
#pragma once

#include <cstdint>

namespace vellumo::service
{

enum RequestTypes : std::int32_t
{
    rtIdentificaCittadinoGUI = 0,
    rtIdentificaCittadino = 1,
    rtCalcolaIUP = 2,
    rtIniziaFasePresrittiva = 3,
    rtFineFasePrescrittiva = 4,
    rtRegistraPrescrizioneFarmaci = 5,
    rtRegistraPrescrizioneAccertamenti = 6,
    rtAnnullaPrescrizione = 7,
    rtIdentificaCittadinoEsteso = 8,
    rtInserisciDatiContatto = 9,
    rtModificaDatiContatto = 10,
    rtInviaCertificato = 11,
    rtRettificaCertificato = 12,
    rtAnnullaCertificato = 13,
};

} // namespace vellumo::service
