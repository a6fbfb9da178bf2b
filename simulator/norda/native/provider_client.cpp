#include "simulator/norda/native/provider_client.h"

#include "host/clock.h"
#include "host/fault.h"
#include "platform/native/file_settings_store.h"
#include "provider/siss_provider.h"

#include <fstream>

namespace vellumo::norda
{

namespace
{

// The provider owns its parts; these pass on to the host's, which outlive it.
class BridgeProxy final : public host::Bridge
{
public:
    explicit BridgeProxy(host::Bridge& bridge)
        : m_bridge(bridge)
    {
    }
    [[nodiscard]] std::string CallSebMethod(const std::string& requestXml) override
    {
        return m_bridge.CallSebMethod(requestXml);
    }

private:
    host::Bridge& m_bridge;
};

class ObjectsProxy final : public host::HostObjects
{
public:
    explicit ObjectsProxy(host::HostObjects& objects)
        : m_objects(objects)
    {
    }
    [[nodiscard]] std::unique_ptr<host::Record> CreateRecord(host::RecordKind kind,
                                                             const host::HostServices& services) override
    {
        return m_objects.CreateRecord(kind, services);
    }
    [[nodiscard]] std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices& services) override
    {
        return m_objects.CreateSettings(services);
    }

private:
    host::HostObjects& m_objects;
};

class PrescriptionsProxy final : public host::PrescriptionObjects
{
public:
    explicit PrescriptionsProxy(host::PrescriptionObjects& objects)
        : m_objects(objects)
    {
    }
    [[nodiscard]] std::shared_ptr<host::PrescriptionSession> CreateSession() override
    {
        return m_objects.CreateSession();
    }
    [[nodiscard]] std::unique_ptr<host::PrescriptionData>
    CreatePrescriptionData(std::int32_t kind, const host::HostServices& services) override
    {
        return m_objects.CreatePrescriptionData(kind, services);
    }

private:
    host::PrescriptionObjects& m_objects;
};

class NativeProviderClient final : public ProviderClient
{
public:
    explicit NativeProviderClient(provider::PlatformParts parts)
        : m_provider(std::make_unique<provider::SISSProvider>(std::move(parts)))
    {
    }

    void SetConnection(std::shared_ptr<host::Connection> connection) override
    {
        m_provider->SetConnection(std::move(connection));
    }
    void SetLockSrv(std::shared_ptr<host::LockSrv> lockSrv) override { m_provider->SetLockSrv(std::move(lockSrv)); }
    void SetUtils(std::shared_ptr<host::Utils> utils) override { m_provider->SetUtils(std::move(utils)); }
    void SetStudio(std::int32_t studio) override { m_provider->SetStudio(studio); }
    [[nodiscard]] std::int32_t Studio() override { return m_provider->Studio(); }

    std::int32_t IdentificaPaziente(const Argument& idPaziente, bool& gestito) override
    {
        return m_provider->IdentificaPaziente(ValueOf(idPaziente), gestito);
    }
    [[nodiscard]] bool IsActive() override { return m_provider->IsActive(); }
    [[nodiscard]] bool VerificaPaziente(const Argument& idPaziente) override
    {
        return provider::SISSProvider::VerificaPaziente(ValueOf(idPaziente));
    }
    [[nodiscard]] bool IsPersonaleStudio() override { return m_provider->IsPersonaleStudio(); }
    bool Sincronizza() override { return m_provider->Sincronizza(); }
    bool SincronizzaPazienti() override { return m_provider->SincronizzaPazienti(); }

    [[nodiscard]] std::shared_ptr<PrescriptionSession> ApriSessionePrescrizione() override
    {
        return std::dynamic_pointer_cast<PrescriptionSession>(m_provider->ApriSessionePrescrizione());
    }
    bool RegistraPrescrizione(const std::shared_ptr<PrescriptionSession>& session, const Argument& idRicetta,
                              std::int32_t kind) override
    {
        return m_provider->RegistraPrescrizione(session.get(), ValueOf(idRicetta), kind);
    }
    bool RegistraPrescrizioneSingola(const std::shared_ptr<PrescriptionSession>& session, const Argument& idRicetta,
                                     const Argument& numRicetta, std::int32_t kind) override
    {
        return m_provider->RegistraPrescrizioneSingola(session.get(), ValueOf(idRicetta), ValueOf(numRicetta), kind);
    }
    bool ChiudiSessionePrescrizione(const std::shared_ptr<PrescriptionSession>& session) override
    {
        return m_provider->ChiudiSessionePrescrizione(session.get());
    }
    [[nodiscard]] bool VerificaPrescrizione(const Argument& idRicetta, std::int32_t kind) override
    {
        return m_provider->VerificaPrescrizione(ValueOf(idRicetta), kind);
    }
    [[nodiscard]] bool VerificaPrescrizioneSingola(const Argument& idRicetta, const Argument& numRicetta,
                                                   std::int32_t kind) override
    {
        return m_provider->VerificaPrescrizioneSingola(ValueOf(idRicetta), ValueOf(numRicetta), kind);
    }
    bool AnnullaPrescrizione(const Argument& idRicetta, const Argument& numRicetta, std::int32_t value) override
    {
        return m_provider->AnnullaPrescrizione(ValueOf(idRicetta), ValueOf(numRicetta), value);
    }
    [[nodiscard]] host::OpzioniRicetta OptionsOf(const PrescriptionSession& session) override
    {
        const auto options = session.Options();
        return options ? *options : throw host::Fault("La sessione non ha opzioni di stampa.");
    }
    [[nodiscard]] bool InviaCertificato(const Argument& certificato) override
    {
        return m_provider->InviaCertificato(RecordOf(certificato));
    }
    [[nodiscard]] bool AnnullaCertificato(const Argument& certificato) override
    {
        return m_provider->AnnullaCertificato(RecordOf(certificato));
    }
    [[nodiscard]] bool InserisciContatto(const Argument& idPaziente) override
    {
        return m_provider->InserisciContatto(ValueOf(idPaziente));
    }

    void LetGo() override { throw host::Fault("Only COM objects live as long as something refers to them."); }
    [[nodiscard]] bool Release() override
    {
        m_provider.reset();
        return true;
    }

private:
    static bool IsGiven(const Argument& argument)
    {
        return argument.passing == Passing::ByValue || argument.passing == Passing::ByReference;
    }

    static host::Value ValueOf(const Argument& argument) { return IsGiven(argument) ? argument.value : host::Value(); }

    static host::Record* RecordOf(const Argument& argument)
    {
        return IsGiven(argument) ? argument.record.get() : nullptr;
    }

    std::unique_ptr<provider::SISSProvider> m_provider;
};

class SettingsFile final : public Installation
{
public:
    explicit SettingsFile(std::filesystem::path file)
        : m_file(std::move(file))
        , m_store(m_file)
    {
    }

    void SetMachineText(std::string_view key, std::string_view name, const std::optional<std::string>& text) override
    {
        Set(R"(HKLM\)", key, name, text);
    }
    void SetUserText(std::string_view key, std::string_view name, const std::optional<std::string>& text) override
    {
        Set(R"(HKCU\)", key, name, text);
    }
    [[nodiscard]] std::optional<std::string> MachineText(std::string_view key, std::string_view name) override
    {
        return m_store.ReadMachineText(key, name);
    }
    void AddMachineKey(std::string_view key) override { Set(R"(HKLM\)", key, "", ""); }
    void RemoveMachineKey(std::string_view key) override
    {
        std::string lines;
        std::string line;
        const auto below = R"(HKLM\)" + std::string(key) + '\\';
        for (std::ifstream in(m_file, std::ios::binary); std::getline(in, line);)
        {
            lines += line.compare(0, below.size(), below) == 0 ? "" : line + '\n';
        }
        std::ofstream(m_file, std::ios::binary) << lines;
    }

private:
    void Set(const char* root, std::string_view key, std::string_view name, const std::optional<std::string>& text)
    {
        const auto entry = root + std::string(key) + '\\' + std::string(name);
        std::string lines;
        std::string line;
        for (std::ifstream in(m_file, std::ios::binary); std::getline(in, line);)
        {
            if (line.compare(0, entry.size() + 1, entry + '=') != 0)
            {
                lines += line + '\n';
            }
        }
        std::ofstream(m_file, std::ios::binary) << lines << (text ? entry + '=' + *text + '\n' : "");
    }

    std::filesystem::path m_file;
    platform::FileSettingsStore m_store;
};

} // namespace

provider::PlatformParts MakeNativeParts(const Outside& outside, std::unique_ptr<ui::Desktop> desktop,
                                        const std::filesystem::path& settingsFile)
{
    if (outside.bridge == nullptr)
    {
        throw host::Fault("Il componente \"Winbridge4seb.Bean.1\" non è installato.");
    }
    provider::PlatformParts parts;
    parts.bridge = std::make_unique<BridgeProxy>(*outside.bridge);
    parts.objects = std::make_unique<ObjectsProxy>(*outside.objects);
    parts.prescriptions = std::make_unique<PrescriptionsProxy>(*outside.prescriptions);
    parts.settings = std::make_unique<platform::FileSettingsStore>(settingsFile);
    parts.clock = std::make_unique<host::SystemClock>();
    parts.desktop = std::move(desktop);
    return parts;
}

std::unique_ptr<ProviderClient> CreateNativeProvider(provider::PlatformParts parts)
{
    return std::make_unique<NativeProviderClient>(std::move(parts));
}

std::unique_ptr<Installation> MakeSettingsFile(const std::filesystem::path& settingsFile)
{
    return std::make_unique<SettingsFile>(settingsFile);
}

std::vector<std::pair<std::string, std::string>> MachineFacts()
{
    return {{"Sistema", "programma nativo, senza Windows"}};
}

} // namespace vellumo::norda
