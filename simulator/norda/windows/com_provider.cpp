#include "simulator/norda/windows/com_provider.h"

#include "host/fault.h"
#include "platform/windows/adapters/host_fault.h"
#include "platform/windows/adapters/registry_key.h"
#include "platform/windows/adapters/registry_settings_store.h"
#include "platform/windows/adapters/variant.h"
#include "platform/windows/system/bstr.h"
#include "simulator/norda/windows/class_objects.h"
#include "simulator/norda/windows/dispatch_face.h"
#include "simulator/norda/windows/faces.h"
#include "simulator/norda/windows/host_face.h"
#include "simulator/norda/windows/renamed_library.h"

#include <kelnordaccelib.h>
#include <vellumo.h>

#include <bit>

namespace vellumo::norda
{
namespace
{

using windows::Bstr;
using windows::ComPtr;
using windows::Variant;

// What the library said of its failure, as a host would show it.
void Check(HRESULT result, const char* what)
{
    if (SUCCEEDED(result))
    {
        return;
    }
    ComPtr<IErrorInfo> information;
    Bstr description;
    if (GetErrorInfo(0, information.Put()) == S_OK && SUCCEEDED(information->GetDescription(description.Put())) &&
        !description.IsEmpty())
    {
        throw host::Fault(description.Text(), result);
    }
    throw windows::MakeFault(result, what);
}

bool CanUnloadLibrary()
{
    const HMODULE library = GetModuleHandleW(L"Vellumo.dll");
    if (!library)
    {
        return true;
    }
    const auto function = std::bit_cast<HRESULT(STDAPICALLTYPE*)()>(GetProcAddress(library, "DllCanUnloadNow"));
    return function && function() == S_OK;
}

// An argument in the way in which hosts of different languages pass it. Holds what it refers to.
class PassedArgument
{
public:
    explicit PassedArgument(const Argument& argument)
        : m_value(argument.record ? Variant(MakeRecordFace(argument.record).Get()) : Variant(argument.value))
    {
        switch (argument.passing)
        {
        case Passing::Missing:
            m_plain = Variant::Missing().Detach();
            break;
        case Passing::Empty:
            break;
        case Passing::Null:
            V_VT(&m_plain) = VT_NULL;
            break;
        case Passing::NoObject:
            V_VT(&m_plain) = VT_DISPATCH;
            break;
        case Passing::OtherObject:
            m_value = Variant(MakeLockSrvFace(nullptr).Get());
            m_plain = m_value.Get();
            break;
        case Passing::ByValue:
            m_plain = m_value.Get();
            break;
        case Passing::ByReference:
            V_VT(&m_plain) = VT_BYREF | VT_VARIANT;
            V_VARIANTREF(&m_plain) = const_cast<VARIANT*>(&m_value.Get());
            break;
        }
    }

    // Stays this object's; owns nothing itself.
    [[nodiscard]] VARIANT Get() const noexcept { return m_plain; }

private:
    Variant m_value;
    VARIANT m_plain{};
};

class ComProviderClient final : public ProviderClient
{
public:
    explicit ComProviderClient(const Outside& outside)
        : m_classes(std::make_unique<HostClasses>(outside))
    {
        CLSID clsid{};
        windows::ThrowIfFailed(CLSIDFromProgID(L"Vellumo.SISSProvider", &clsid), "Vellumo.SISSProvider");
        if (!outside.renamedIn.empty())
        {
            m_copy.emplace(outside.renamedIn);
        }
        Check(m_copy ? m_copy->Create(CLSID_SISSProvider, IID_ICCEProvider, m_provider.PutVoid())
                     : CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_ICCEProvider, m_provider.PutVoid()),
              "Vellumo.SISSProvider");
        m_database = m_provider.As<ICCEDatabaseProvider>(IID_ICCEDatabaseProvider);
        m_second = m_provider.As<ICCEProvider2>(IID_ICCEProvider2);
        m_contact = m_provider.As<ICCEProviderContact>(IID_ICCEProviderContact);
        m_own = m_provider.As<_SISSProvider>(IID__SISSProvider);
        if (!m_database || !m_second || !m_contact || !m_own)
        {
            throw host::Fault("La libreria non ha tutte le interfacce.");
        }
    }

    void SetConnection(std::shared_ptr<host::Connection> connection) override
    {
        const auto face = connection ? MakeConnectionFace(std::move(connection)) : nullptr;
        Check(m_database->putref_Connection(face.Get()), "Connection");
    }
    void SetLockSrv(std::shared_ptr<host::LockSrv> lockSrv) override
    {
        const auto face = lockSrv ? MakeLockSrvFace(std::move(lockSrv)) : nullptr;
        Check(m_database->putref_LockSrv(face.Get()), "LockSrv");
    }
    void SetUtils(std::shared_ptr<host::Utils> utils) override
    {
        const auto face = utils ? MakeUtilsFace(std::move(utils)) : nullptr;
        Check(m_provider->putref_Utils(face.Get()), "Utils");
    }
    void SetStudio(std::int32_t studio) override { Check(m_database->put_Studio(studio), "Studio"); }
    [[nodiscard]] std::int32_t Studio() override
    {
        LONG studio = 0;
        Check(m_database->get_Studio(&studio), "Studio");
        return studio;
    }

    std::int32_t IdentificaPaziente(const Argument& idPaziente, bool& gestito) override
    {
        const PassedArgument passed(idPaziente);
        VARIANT_BOOL handled = gestito ? VARIANT_TRUE : VARIANT_FALSE;
        LONG identifier = 0;
        const HRESULT result = m_provider->IdentificaPaziente(passed.Get(), &handled, &identifier);
        gestito = handled != VARIANT_FALSE;
        Check(result, "IdentificaPaziente");
        return identifier;
    }
    [[nodiscard]] bool IsActive() override
    {
        return Ask([&](VARIANT_BOOL* answer) { return m_provider->IsActive(answer); });
    }
    [[nodiscard]] bool VerificaPaziente(const Argument& idPaziente) override
    {
        const PassedArgument passed(idPaziente);
        return Ask([&](VARIANT_BOOL* answer) { return m_provider->VerificaPaziente(passed.Get(), answer); });
    }
    [[nodiscard]] bool IsPersonaleStudio() override
    {
        return Ask([&](VARIANT_BOOL* answer) { return m_own->IsPersonaleStudio(answer); });
    }

    [[nodiscard]] std::shared_ptr<PrescriptionSession> ApriSessionePrescrizione() override
    {
        ComPtr<IDispatch> opened;
        Check(m_provider->ApriSessionePrescrizione(opened.Put()), "ApriSessionePrescrizione");
        return opened ? SessionOf(opened.Get()) : nullptr;
    }
    bool RegistraPrescrizione(const std::shared_ptr<PrescriptionSession>& session, const Argument& idRicetta,
                              std::int32_t kind) override
    {
        const PassedArgument form(idRicetta);
        return Ask([&](VARIANT_BOOL* answer)
                   { return m_provider->RegistraPrescrizione(FaceOf(session).Get(), form.Get(), kind, answer); });
    }
    bool RegistraPrescrizioneSingola(const std::shared_ptr<PrescriptionSession>& session, const Argument& idRicetta,
                                     const Argument& numRicetta, std::int32_t kind) override
    {
        const PassedArgument form(idRicetta);
        const PassedArgument number(numRicetta);
        return Ask(
            [&](VARIANT_BOOL* answer) {
                return m_provider->RegistraPrescrizioneSingola(FaceOf(session).Get(), form.Get(), number.Get(), kind,
                                                               answer);
            });
    }
    bool ChiudiSessionePrescrizione(const std::shared_ptr<PrescriptionSession>& session) override
    {
        return Ask([&](VARIANT_BOOL* answer)
                   { return m_provider->ChiudiSessionePrescrizione(FaceOf(session).Get(), answer); });
    }
    [[nodiscard]] bool VerificaPrescrizione(const Argument& idRicetta, std::int32_t kind) override
    {
        const PassedArgument form(idRicetta);
        return Ask([&](VARIANT_BOOL* answer) { return m_provider->VerificaPrescrizione(form.Get(), kind, answer); });
    }
    [[nodiscard]] bool VerificaPrescrizioneSingola(const Argument& idRicetta, const Argument& numRicetta,
                                                   std::int32_t kind) override
    {
        const PassedArgument form(idRicetta);
        const PassedArgument number(numRicetta);
        const auto second = m_provider.As<ICCEProvider2>(IID_ICCEProvider2);
        return Ask([&](VARIANT_BOOL* answer)
                   { return second->VerificaPrescrizioneSingola(form.Get(), number.Get(), kind, answer); });
    }
    bool AnnullaPrescrizione(const Argument& idRicetta, const Argument& numRicetta, std::int32_t value) override
    {
        const PassedArgument form(idRicetta);
        const PassedArgument number(numRicetta);
        return Ask([&](VARIANT_BOOL* answer)
                   { return m_provider->AnnullaPrescrizione(form.Get(), number.Get(), value, answer); });
    }
    [[nodiscard]] host::OpzioniRicetta OptionsOf(const PrescriptionSession& session) override
    {
        const auto object = ObjectOf(session.KeptOptions());
        const auto options = object.As<_OpzioniRicetta>(IID__OpzioniRicetta);
        if (!options)
        {
            throw host::Fault("La sessione non ha opzioni di stampa.");
        }
        LONG print = 0;
        LONG type = 0;
        Check(options->get_ModalitaStampa(&print), "ModalitaStampa");
        Check(options->get_TipoRicetta(&type), "TipoRicetta");
        host::OpzioniRicetta read;
        read.ModalitaStampa = static_cast<std::int32_t>(print);
        read.TipoRicetta = static_cast<std::int32_t>(type);
        return read;
    }
    [[nodiscard]] bool InviaCertificato(const Argument& certificato) override
    {
        const PassedArgument passed(certificato);
        return Ask([&](VARIANT_BOOL* answer) { return m_second->InviaCertificato(passed.Get(), answer); });
    }
    [[nodiscard]] bool AnnullaCertificato(const Argument& certificato) override
    {
        const PassedArgument passed(certificato);
        return Ask([&](VARIANT_BOOL* answer) { return m_second->AnnullaCertificato(passed.Get(), answer); });
    }
    [[nodiscard]] bool InserisciContatto(const Argument& idPaziente) override
    {
        const PassedArgument passed(idPaziente);
        return Ask([&](VARIANT_BOOL* answer) { return m_contact->InserisciContatto(passed.Get(), answer); });
    }
    bool Sincronizza() override
    {
        return Ask([&](VARIANT_BOOL* answer) { return m_provider->Sincronizza(answer); });
    }
    bool SincronizzaPazienti() override
    {
        return Ask([&](VARIANT_BOOL* answer) { return m_second->SincronizzaPazienti(answer); });
    }

    void LetGo() override
    {
        m_own.Reset();
        m_contact.Reset();
        m_second.Reset();
        m_database.Reset();
        m_provider.Reset();
    }
    [[nodiscard]] bool Release() override
    {
        LetGo();
        m_classes.reset();
        return CanUnloadLibrary() && DispatchFace::Living() == 0;
    }

private:
    // A host that keeps the session in a variable of its own passes another reference each time.
    static ComPtr<IDispatch> FaceOf(const std::shared_ptr<PrescriptionSession>& session)
    {
        return session ? MakeSessionFace(session) : nullptr;
    }

    template <class Call>
    static bool Ask(Call&& call)
    {
        VARIANT_BOOL answer = VARIANT_FALSE;
        Check(call(&answer), "Vellumo.SISSProvider");
        return answer != VARIANT_FALSE;
    }

    std::optional<RenamedLibrary> m_copy; // unloaded last
    std::unique_ptr<HostClasses> m_classes;
    ComPtr<ICCEProvider> m_provider;
    ComPtr<ICCEDatabaseProvider> m_database;
    ComPtr<ICCEProvider2> m_second;
    ComPtr<ICCEProviderContact> m_contact;
    ComPtr<_SISSProvider> m_own;
};

class RegistryInstallation final : public Installation
{
public:
    void SetMachineText(std::string_view key, std::string_view name, const std::optional<std::string>& text) override
    {
        Set(HKEY_LOCAL_MACHINE, key, name, text);
    }
    void SetUserText(std::string_view key, std::string_view name, const std::optional<std::string>& text) override
    {
        Set(HKEY_CURRENT_USER, key, name, text);
    }
    [[nodiscard]] std::optional<std::string> MachineText(std::string_view key, std::string_view name) override
    {
        return windows::RegistrySettingsStore().ReadMachineText(key, name);
    }
    void AddMachineKey(std::string_view key) override
    {
        windows::RegistryKey added;
        const LSTATUS status = added.Create(HKEY_LOCAL_MACHINE, windows::ToWide(key), KEY_SET_VALUE);
        Check(status, key);
    }
    void RemoveMachineKey(std::string_view key) override
    {
        const LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, windows::ToWide(key).c_str());
        if (status != ERROR_FILE_NOT_FOUND)
        {
            Check(status, key);
        }
    }

private:
    static void Check(LSTATUS status, std::string_view path)
    {
        if (status != ERROR_SUCCESS)
        {
            throw windows::MakeFault(HRESULT_FROM_WIN32(static_cast<DWORD>(status)), path);
        }
    }
    static void Set(HKEY root, std::string_view path, std::string_view name, const std::optional<std::string>& text)
    {
        const std::wstring value = windows::ToWide(name);
        windows::RegistryKey key;
        LSTATUS status = key.Create(root, windows::ToWide(path), KEY_SET_VALUE);
        if (status == ERROR_SUCCESS)
        {
            status =
                text ? key.SetText(value.c_str(), windows::ToWide(*text)) : RegDeleteValueW(key.Get(), value.c_str());
        }
        if (text || status != ERROR_FILE_NOT_FOUND)
        {
            Check(status, path);
        }
    }
};

} // namespace

std::unique_ptr<ProviderClient> CreateComProvider(const Outside& outside)
{
    HostFace::SetStrict(outside.strict);
    return std::make_unique<ComProviderClient>(outside);
}

std::unique_ptr<Installation> MakeRegistryInstallation()
{
    return std::make_unique<RegistryInstallation>();
}

} // namespace vellumo::norda
