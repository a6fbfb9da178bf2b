// The two sides that the window of changes shows: what the local patient says and what SISS says, by the same names.
#pragma once

#include "host/records.h"
#include "patient/citizen.h"
#include "patient/patient_writer.h"
#include "service/provider_context.h"
#include "ui/form_paziente_changes.h"

namespace vellumo::patient
{

// Faults go through.
[[nodiscard]] ui::ComparedPatient LocalSide(const host::Record& patient, const PatientMatch& match,
                                            const service::ProviderContext& context);

// The citizen's exemptions have the local ones that the operator has assigned by now.
[[nodiscard]] ui::ComparedPatient SissSide(const Citizen& citizen);

} // namespace vellumo::patient
