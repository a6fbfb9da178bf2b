// The simulated host's own classes around prescriptions: the session that it keeps, and its access to RicettaSSN.
#pragma once

#include "host/prescriptions.h"
#include "simulator/norda/host_records.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace vellumo::norda
{

// Keeps what it is given and gives the same back.
class PrescriptionSession : public host::PrescriptionSession
{
public:
    [[nodiscard]] bool SenzaSISS() const override { return m_withoutSiss; }
    void SetSenzaSISS(bool value) override { m_withoutSiss = value; }
    [[nodiscard]] bool DaValidare() const override { return m_toValidate; }
    void SetDaValidare(bool value) override { m_toValidate = value; }

    // Null also when the options are not an object of this program.
    [[nodiscard]] std::shared_ptr<host::OpzioniRicetta> Options() const override;
    void SetOptions(const std::shared_ptr<host::OpzioniRicetta>& options) override { m_options = options; }
    [[nodiscard]] const std::shared_ptr<host::KeptObject>& KeptOptions() const noexcept { return m_options; }
    void KeepOptions(std::shared_ptr<host::KeptObject> options) { m_options = std::move(options); }

    // From now on it faults when it is to keep, or to give back, more than that many responses. Returns what says
    // whether it has.
    std::shared_ptr<const bool> KeepAtMost(std::size_t count) { return m_kept.Set(count); }
    std::shared_ptr<const bool> GiveAtMost(std::size_t count) { return m_given.Set(count); }

    void AddResponse(std::int32_t kind, const std::shared_ptr<host::KeptObject>& response) override;
    [[nodiscard]] std::size_t ResponseCount(std::int32_t kind) const override;
    [[nodiscard]] std::shared_ptr<host::KeptObject> Response(std::int32_t kind, std::size_t position) const override;

private:
    struct Limit
    {
        std::size_t left = SIZE_MAX;
        std::shared_ptr<bool> met = std::make_shared<bool>(false);

        std::shared_ptr<const bool> Set(std::size_t count);
        // Faults when none is left.
        void Use();
    };

    Limit m_kept;
    mutable Limit m_given;
    bool m_withoutSiss = false;
    bool m_toValidate = false;
    std::shared_ptr<host::KeptObject> m_options;
    std::map<std::int32_t, std::vector<std::shared_ptr<host::KeptObject>>> m_responses; // by kind
};

class PrescriptionObjects final : public host::PrescriptionObjects
{
public:
    [[nodiscard]] std::shared_ptr<host::PrescriptionSession> CreateSession() override
    {
        return std::make_shared<PrescriptionSession>();
    }
    [[nodiscard]] std::unique_ptr<host::PrescriptionData>
    CreatePrescriptionData(std::int32_t kind, const host::HostServices& services) override;

    // From now on rows of RicettaSSN save like that.
    void SetHabit(std::shared_ptr<SaveHabit> habit) { m_habit = std::move(habit); }

private:
    std::shared_ptr<SaveHabit> m_habit; // null: as they should
};

} // namespace vellumo::norda
