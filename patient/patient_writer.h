// Writes a SISS citizen into the host's records: personal data with the ASL, residence and domicile. Faults go
// through; the caller opens the transaction that makes a patient and its rows one.
#pragma once

#include "host/records.h"
#include "service/provider_context.h"
#include "xml/document.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vellumo::patient
{

class PatientWriter
{
public:
    explicit PatientWriter(const service::ProviderContext& context)
        : m_context(context)
    {
    }

    // Writes personal and registration data and the time of the update into the record, and saves it.
    void WritePersonalData(const xml::Node& data, host::Record& patient) const;

    // Residence, then domicile; each row is updated, or inserted when the patient has none of the kind.
    void WriteAddresses(const xml::Node& data, std::int32_t idPaziente) const;

private:
    // Refreshes or creates the ASL that the citizen belongs to; 0 when its region is unknown.
    [[nodiscard]] std::int32_t WriteAsl(const std::string& sigla, const std::string& description) const;
    [[nodiscard]] std::int32_t TownOf(const std::string& name) const;

    const service::ProviderContext& m_context;
};

// The two parts of the code that SISS gives an ASL: region, then number.
[[nodiscard]] std::string RegionCodeOf(std::string_view siglaAsl);
[[nodiscard]] std::string AslNumberOf(std::string_view siglaAsl);

} // namespace vellumo::patient
