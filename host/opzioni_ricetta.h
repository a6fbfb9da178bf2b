// The print options that the doctor chose when a prescribing session was opened. The session carries them; every
// registration and the session's close go by them. The host may read and write them: nothing is checked.
#pragma once

#include "host/kept_object.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vellumo::host
{

// What `ModalitaStampa` means for an electronic prescription. Published in the type library.
enum OpzioniRicettaElettronica : std::int32_t
{
    oreNessuna = 0,          // no reminder is printed
    oreStampaPromemoria = 1, // the reminder for the patient is printed
};

// A code that SISS gave to a prescription whose response the session did not keep.
struct UnkeptCode
{
    std::string subject; // the prescription, as lines name it
    std::string iup;
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

    // The library's own: it must not give these codes to another prescription when the session is closed.
    std::vector<UnkeptCode> UnkeptCodes;
};

} // namespace vellumo::host
