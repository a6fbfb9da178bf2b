// The host's objects around prescriptions: the session that it keeps between the calls of one batch, and its access to
// the table RicettaSSN. Members fault with the host's description.
#pragma once

#include "host/kept_object.h"
#include "host/opzioni_ricetta.h"
#include "host/records.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace vellumo::host
{

// Kind codes as the host's interfaces have them.
constexpr std::int32_t kindDrugs = 1;
constexpr std::int32_t kindTests = 2;

// `SessionePrescrizione`. A fresh one has both flags False, no options and no responses.
class PrescriptionSession
{
public:
    virtual ~PrescriptionSession() = default;

    // The doctor went on although SISS refused the session: nothing is registered, no codes are printed.
    [[nodiscard]] virtual bool SenzaSISS() const = 0;
    virtual void SetSenzaSISS(bool value) = 0;

    // Opened by practice staff: the prescriptions wait for the responsible doctor.
    [[nodiscard]] virtual bool DaValidare() const = 0;
    virtual void SetDaValidare(bool value) = 0;

    [[nodiscard]] virtual std::shared_ptr<OpzioniRicetta> Options() const = 0;
    virtual void SetOptions(const std::shared_ptr<OpzioniRicetta>& options) = 0;

    // The responses of the registrations of one kind, in the order in which they were added; positions from 0.
    virtual void AddResponse(std::int32_t kind, const std::shared_ptr<KeptObject>& response) = 0;
    [[nodiscard]] virtual std::size_t ResponseCount(std::int32_t kind) const = 0;
    [[nodiscard]] virtual std::shared_ptr<KeptObject> Response(std::int32_t kind, std::size_t position) const = 0;
};

struct PrescriptionKey
{
    std::int32_t IDRicetta = 0;  // the form
    std::int32_t NumRicetta = 0; // the number within it
};

// The host's prescription data class, made for one kind (or, for a cancellation, with the value that the host passed).
class PrescriptionData
{
public:
    virtual ~PrescriptionData() = default;

    // The rows of a form in the host's order; of one number only when `numRicetta` is not 0.
    [[nodiscard]] virtual std::vector<PrescriptionKey> List(std::int32_t idRicetta, std::int32_t numRicetta) = 0;
    // The row, loaded; null when there is none. Its `Save` is the record's.
    [[nodiscard]] virtual std::unique_ptr<Record> Find(const PrescriptionKey& key) = 0;
};

// Creates the host's objects around prescriptions and hands each what its class wants.
class PrescriptionObjects
{
public:
    virtual ~PrescriptionObjects() = default;

    [[nodiscard]] virtual std::shared_ptr<PrescriptionSession> CreateSession() = 0;
    [[nodiscard]] virtual std::unique_ptr<PrescriptionData> CreatePrescriptionData(std::int32_t kind,
                                                                                   const HostServices& services) = 0;
};

} // namespace vellumo::host
