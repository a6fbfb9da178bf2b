// One SSN prescription of the host, flat: the columns of its view by their own names, and the items by names that end
// in the item's number ("Codice_1"). It travels in the `Object` of its registration's response until the session is
// closed.
#pragma once

#include "host/host_services.h"
#include "host/kept_object.h"
#include "host/prescriptions.h"
#include "host/value.h"
#include "prescription/ricetta_keys.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace vellumo::prescription
{

class RicettaRecord final : public host::KeptObject
{
public:
    // Keys are case-sensitive; one that is not there reads as null.
    [[nodiscard]] host::Value Get(const RicettaKey& key) const { return Find(key.text); }
    void Set(const RicettaKey& key, const host::Value& value) { SetColumn(key.text, value); }
    // A column of the host's view, by its own name.
    void SetColumn(std::string_view name, const host::Value& value);

    // The value of an item, counted from 1.
    [[nodiscard]] host::Value GetItem(const RicettaItemKey& key, std::int32_t item) const;
    void SetItem(const RicettaItemKey& key, std::int32_t item, const host::Value& value);

    [[nodiscard]] std::string Text(const RicettaKey& key) const { return Get(key).ToText(); }
    [[nodiscard]] std::int32_t Integer(const RicettaKey& key) const { return Get(key).ToInteger(); }
    [[nodiscard]] std::int32_t DetailCount() const { return Integer(ricetta::detailCount); }
    // Where the prescription stands in RicettaSSN.
    [[nodiscard]] host::PrescriptionKey Key() const
    {
        return {Integer(ricetta::idRicetta), Integer(ricetta::numRicetta)};
    }

private:
    [[nodiscard]] host::Value Find(std::string_view name) const;

    std::map<std::string, host::Value, std::less<>> m_values;
};

// Reads the prescription from the host's view of its kind. Null when the view has no row for it, and for a kind that
// is neither drugs nor tests. Database faults go through.
[[nodiscard]] std::shared_ptr<RicettaRecord> BuildRicettaRecord(const host::PrescriptionKey& key, std::int32_t kind,
                                                                const host::HostServices& services);

} // namespace vellumo::prescription
