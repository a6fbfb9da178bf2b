// Fills the registration request of one prescription from its record, through the request's template. Called in the
// order in which the functions stand here. Faults (database, values of the wrong kind, an address without its comma)
// go through; the request is then not to be sent.
#pragma once

#include "host/host_services.h"
#include "host/opzioni_ricetta.h"
#include "prescription/ricetta_record.h"
#include "service/service_request.h"

#include <cstdint>

namespace vellumo::prescription
{

// Patient and administrative data.
void WriteDatiCittadino(const RicettaRecord& record, service::ServiceRequest& request);

// Exemption, cost-sharing and administrative flags. "S" and "N" are yes and no.
void WriteDatiPrescrizione(const RicettaRecord& record, service::ServiceRequest& request, std::int32_t kind,
                           const host::HostServices& services);

// The prescribed items, one clone of the template's pattern each; the pattern itself goes. Faults when the template has
// none.
void WriteElencoPrestazioni(const RicettaRecord& record, service::ServiceRequest& request, std::int32_t kind);

// What the print options say about the form.
void WriteOpzioni(const host::OpzioniRicetta& options, service::ServiceRequest& request);

// The version that SISS expects for electronic prescriptions; a paper form's request does not carry the attribute.
void WriteDataSetVersion(const host::OpzioniRicetta& options, service::ServiceRequest& request);

} // namespace vellumo::prescription
