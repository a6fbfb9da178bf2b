// Finds the local patient that a citizen is, and writes the citizen into the host's records: personal data with the
// ASL, residence and domicile. Faults go through; the caller opens the transaction that makes a patient and its rows
// one.
#pragma once

#include "host/records.h"
#include "patient/citizen.h"
#include "patient/reference_data.h"
#include "service/provider_context.h"

#include <cstdint>

namespace vellumo::patient
{

// The local patient that a citizen is.
struct PatientMatch
{
    std::int32_t id = 0; // 0: there is none
    bool byCard = false; // by the number of the health card, since nobody has the fiscal code
};

class PatientWriter
{
public:
    // `references` outlives the writer.
    PatientWriter(const service::ProviderContext& context, ReferenceData& references)
        : m_context(context)
        , m_references(references)
    {
    }

    // By fiscal code, else by health card. An empty key matches nobody: a citizen without a card must not meet a
    // patient without one.
    [[nodiscard]] PatientMatch FindPatient(const Person& person) const;

    // Writes personal and registration data and the time of the update into the record; the ASL is stored at once, the
    // record is not.
    void Fill(const Citizen& citizen, host::Record& patient) const;

    // Stores the record. Faults when the host refuses, or gives it no identifier: rows of a patient 0 would belong to
    // nobody.
    static void Save(host::Record& patient);

    // Each row is updated, or inserted when the patient has none of the kind.
    void WriteAddresses(const Citizen& citizen, std::int32_t idPaziente) const;

private:
    const service::ProviderContext& m_context;
    ReferenceData& m_references;
};

} // namespace vellumo::patient
