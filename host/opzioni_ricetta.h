// The print options that the doctor chose when a prescribing session was opened. The session carries them; every
// registration and the session's close go by them. The host may read and write them: nothing is checked.
#pragma once

#include "host/kept_object.h"

#include <cstdint>

namespace vellumo::host
{

// What `ModalitaStampa` means for an electronic prescription. Published in the type library.
enum OpzioniRicettaElettronica : std::int32_t
{
    oreNessuna = 0,          // no reminder is printed
    oreStampaPromemoria = 1, // the reminder for the patient is printed
};

class OpzioniRicetta final : public KeptObject
{
public:
    static constexpr std::int32_t paperForm = 1;     // TipoRicetta: "RUR"
    static constexpr std::int32_t electronic = 2;    // TipoRicetta
    static constexpr std::int32_t printedBySiss = 1; // ModalitaStampa of the paper form
    static constexpr std::int32_t printedByHost = 2; // ModalitaStampa of the paper form

    std::int32_t ModalitaStampa = 0;
    std::int32_t TipoRicetta = 0;
};

} // namespace vellumo::host
