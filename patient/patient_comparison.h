// The two sides that the window of changes shows: what the local patient says and what SISS says, by the same names.
#pragma once

#include "host/records.h"
#include "patient/exemptions.h"
#include "service/provider_context.h"
#include "ui/form_paziente_changes.h"
#include "xml/document.h"

namespace vellumo::patient
{

// Faults go through.
[[nodiscard]] ui::NamedValues LocalValues(const host::Record& patient, const service::ProviderContext& context);

// `exemptions` are the citizen's, with the local exemptions that the operator has assigned by now.
[[nodiscard]] ui::NamedValues SissValues(const xml::Node& data, const SissExemptions& exemptions);

} // namespace vellumo::patient
