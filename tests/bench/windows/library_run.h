// The registered library on a practice of its own, reached as a host reaches it. Nobody sits in front of the screen:
// the file dialog is answered and boxes are closed by hooks that look at nothing else.
#pragma once

#include "host/bridge.h"
#include "simulator/norda/host_records.h"
#include "simulator/norda/practice.h"
#include "simulator/norda/provider_client.h"
#include "tests/bench/windows/recorded_calls.h"

#include <windows.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace vellumo::bench
{

class LibraryRun
{
public:
    // Makes the practice in `folder`, an empty one.
    explicit LibraryRun(const std::filesystem::path& folder);
    ~LibraryRun();
    LibraryRun(const LibraryRun&) = delete;
    LibraryRun& operator=(const LibraryRun&) = delete;

    // Answers one text to all, at once.
    class Bridge final : public host::Bridge
    {
    public:
        std::string CallSebMethod(const std::string& requestXml) override;

        std::string reply;
        std::function<void()> called; // if anybody wants to know
    };

    [[nodiscard]] norda::ProviderClient& Provider() noexcept { return *m_client; }
    [[nodiscard]] norda::Database& Database() noexcept { return *m_database; }
    [[nodiscard]] const norda::Practice& Practice() const noexcept { return m_practice; }
    [[nodiscard]] Bridge& TheBridge() noexcept { return m_bridge; }
    // COM objects over the same connection, helpers and bridge as those that the library has.
    [[nodiscard]] const RecordedCalls::Roots& Roots() const noexcept { return m_roots; }

    // Creates another provider and lets it go.
    void CreateAndRelease() const;

    // What the operator chooses in the file dialog.
    void Choose(const std::filesystem::path& file);
    // When the dialog had gone, and when the box came that tells of the end, in seconds.
    [[nodiscard]] double Chosen() const noexcept;
    [[nodiscard]] double Told() const noexcept;

    // The library's window that is open now.
    [[nodiscard]] static HWND Window();

private:
    norda::Practice m_practice;
    Bridge m_bridge;
    norda::HostObjects m_objects;
    norda::PrescriptionObjects m_prescriptions;
    std::shared_ptr<norda::Database> m_database;
    std::unique_ptr<norda::ProviderClient> m_client;
    RecordedCalls::Roots m_roots;
    CLSID m_class{};
    HHOOK m_hook;
};

} // namespace vellumo::bench
