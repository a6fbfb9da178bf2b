// Rows of the simulated practice from which the library makes the request of a registration again, as far as the
// request tells them. Many rows make the same request; these are the simplest.
#pragma once

#include "diagnosi/replay/practice_seed.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vellumo::diagnosi
{

// Columns with their values as they stand in a statement.
using NewRow = std::vector<std::pair<std::string, std::string>>;

class PrescriptionSeed
{
public:
    explicit PrescriptionSeed(ScenarioText& out)
        : m_out(out)
        , m_practice(out)
    {
    }

    // Makes a form of one prescription and returns its number. `data` is the request's `param`. Empty, with nothing
    // written, when no rows are known that make this request; `why` says so then.
    [[nodiscard]] std::optional<int> Make(const xml::Node& data, bool isDrug, std::string& why);

private:
    // Its number in the practice: the same person is the same one.
    [[nodiscard]] int PatientOf(const xml::Node& administrative);
    void MakeRow(const xml::Node& prescription, bool isDrug, int form, int patient) const;
    void Insert(const std::string& table, const NewRow& row) const;

    ScenarioText& m_out;
    PracticeSeed m_practice;
    std::vector<std::string> m_patients; // what each prescription says of its patient
    int m_forms = 9000;
};

} // namespace vellumo::diagnosi
