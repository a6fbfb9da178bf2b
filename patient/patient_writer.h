// Writes a citizen of a SISS document into the host's records: personal data with the ASL, residence and domicile.
// Faults go through; the caller opens the transaction that makes a patient and its rows one.
#pragma once

#include "host/records.h"
#include "patient/reference_data.h"
#include "service/provider_context.h"
#include "xml/document.h"

#include <cstdint>
#include <span>
#include <string>

namespace vellumo::patient
{

enum class Conversion
{
    Text,
    Date
};

struct FieldMapping
{
    const char* column; // of Paziente
    const char* source; // below the citizen's node
    Conversion conversion;
};

struct AddressMapping
{
    std::int32_t kind; // IDTipoResidenza
    const char* keyFilter;
    const char* address;
    const char* number;
    const char* postcode;
    const char* town;
};

// Filters for AddressMapping.
inline constexpr const char* residenceFilter = "IDPaziente = {0} AND IDTipoResidenza = 1";
inline constexpr const char* domicileFilter = "IDPaziente = {0} AND IDTipoResidenza = 3";

// Where a kind of SISS document has the data of a citizen, as paths below the citizen's node.
struct CitizenLayout
{
    std::span<const FieldMapping> personalData;
    std::span<const AddressMapping> addresses; // in the order in which they are written
    const char* fiscalCode;
    const char* healthCard;
    const char* birthTown;
    const char* asl;
    const char* aslDescription;
};

class PatientWriter
{
public:
    // `layout` and `references` outlive the writer.
    PatientWriter(const service::ProviderContext& context, const CitizenLayout& layout, ReferenceData& references)
        : m_context(context)
        , m_layout(layout)
        , m_references(references)
    {
    }

    // Identifier of the local patient by fiscal code, else by health card; 0 when there is none. An empty key matches
    // nobody: a citizen without a card must not meet a patient without one.
    [[nodiscard]] std::int32_t FindPatient(const xml::Node& citizen) const;

    // Writes personal and registration data and the time of the update into the record; the ASL is stored at once, the
    // record is not.
    void Fill(const xml::Node& citizen, host::Record& patient) const;

    // Stores the record. Faults when the host refuses, or gives it no identifier: rows of a patient 0 would belong to
    // nobody.
    static void Save(host::Record& patient);

    // Each row is updated, or inserted when the patient has none of the kind.
    void WriteAddresses(const xml::Node& citizen, std::int32_t idPaziente) const;

private:
    const service::ProviderContext& m_context;
    const CitizenLayout& m_layout;
    ReferenceData& m_references;
};

} // namespace vellumo::patient
