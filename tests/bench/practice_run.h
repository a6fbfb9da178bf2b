// A provider natively linked, on a practice of its own, with nobody in front of the screen: the file dialog is
// answered, boxes are confirmed.
#pragma once

#include "simulator/norda/host_records.h"
#include "simulator/norda/host_utils.h"
#include "simulator/norda/practice.h"
#include "simulator/norda/provider_client.h"
#include "simulator/siss/network.h"
#include "ui/desktop.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace vellumo::bench
{

// Shows a form as a desktop does; the default has no window at all.
using ShowForm = std::function<void(ui::Form& form)>;

// The practice's databases, whose commits wait for the disk or do not.
[[nodiscard]] std::shared_ptr<norda::Database> OpenDatabase(const norda::Practice& practice, bool waitsForDisk);

class PracticeRun
{
public:
    // `practice` has been created. `listFile` is what the operator chooses.
    PracticeRun(const norda::Practice& practice, const std::filesystem::path& listFile, bool waitsForDisk,
                ShowForm showForm = {});
    ~PracticeRun();
    PracticeRun(const PracticeRun&) = delete;
    PracticeRun& operator=(const PracticeRun&) = delete;

    [[nodiscard]] norda::Database& Database() noexcept { return *m_database; }
    [[nodiscard]] norda::ProviderClient& Provider() noexcept { return *m_provider; }

private:
    siss::Network m_network;
    norda::HostObjects m_objects;
    std::shared_ptr<norda::Database> m_database;
    std::unique_ptr<norda::ProviderClient> m_provider;
};

} // namespace vellumo::bench
