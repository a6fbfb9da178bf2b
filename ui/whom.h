// A person as every window names him, so that nobody is taken for another of the same name.
#pragma once

#include "host/date.h"

#include <string>

namespace vellumo::ui
{

struct Whom
{
    std::string cognome = {};
    std::string nome = {};
    std::string sesso = {}; // "M", "F"
    host::Date dataNascita = {};
    std::string codiceFiscale = {};
};

// "Rossi Mario, nato il 12/03/1945, codice fiscale RSSMRA45C12F205C"; what is not known is left out. "non indicato"
// when nothing is.
[[nodiscard]] std::string Describe(const Whom& whom);

} // namespace vellumo::ui
