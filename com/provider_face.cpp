#include "com/provider_face.h"

#include "com/kept_objects.h"
#include "com/module.h"
#include "host/fault.h"
#include "platform/windows/adapters/ado.h"
#include "platform/windows/adapters/dispatch_bridge.h"
#include "platform/windows/adapters/dispatch_prescriptions.h"
#include "platform/windows/adapters/dispatch_services.h"
#include "platform/windows/adapters/registry_settings_store.h"
#include "platform/windows/forms/win32_desktop.h"

#include <functional>
#include <optional>

namespace vellumo::com
{
namespace
{

using windows::ComPtr;

std::shared_ptr<windows::HostHandles> MakeHandles()
{
    auto handles = std::make_shared<windows::HostHandles>();
    const std::wstring library = ModulePath();
    handles->names = windows::HostNameMap::ReadFrom(library.substr(0, library.rfind(L'\\')));
    return handles;
}

provider::PlatformParts MakePlatformParts(std::shared_ptr<const windows::HostHandles> handles)
{
    provider::PlatformParts parts;
    parts.bridge = std::make_unique<windows::DispatchBridge>(handles->names);
    parts.prescriptions =
        std::make_unique<windows::DispatchPrescriptionObjects>(handles, std::make_unique<ComKeptObjectFaces>());
    parts.objects = std::make_unique<windows::DispatchHostObjects>(std::move(handles));
    parts.settings = std::make_unique<windows::RegistrySettingsStore>();
    parts.clock = std::make_unique<host::SystemClock>();
    parts.desktop = std::make_unique<windows::Win32Desktop>();
    return parts;
}

VARIANT_BOOL ToVariantBool(bool value)
{
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

// What the host handed over, counted once more for the caller.
template <class Face>
HRESULT HandBack(Face& face, const IID& source, const ComPtr<IDispatch>& object, IDispatch** value)
{
    return GuardResult(face, source, value, [&] { return ComPtr<IDispatch>(object).Detach(); });
}

// Runs the body of a member that returns True or False.
template <class Face, class Body>
HRESULT GuardBool(Face& face, const IID& source, VARIANT_BOOL* result, Body&& body)
{
    return GuardResult(face, source, result, [&] { return ToVariantBool(body()); });
}

// An identifier for an operation that keeps its faults to itself. One that cannot be read goes on as a text that is no
// number: the operation runs into it in its own trap and returns what it does after any fault.
host::Value IdentifierIn(const VARIANT& variant)
{
    return host::Trap(host::Value("illeggibile"), [&] { return windows::ToValue(variant); });
}

// What cannot be looked into is no certificate.
std::unique_ptr<host::Record> CertificateIn(const VARIANT& variant, const windows::HostNameMap& names)
{
    return host::Trap(std::unique_ptr<host::Record>(), [&] { return windows::RecordIn(variant, names); });
}

// The session that the host passes, for one call. Empty where it passes none.
class PassedSession
{
public:
    PassedSession(IDispatch* session, const windows::HostNameMap& names)
    {
        if (session)
        {
            m_session.emplace(ComPtr<IDispatch>(session), m_faces, names);
        }
    }
    [[nodiscard]] host::PrescriptionSession* Get() noexcept { return m_session ? &*m_session : nullptr; }

private:
    ComKeptObjectFaces m_faces;
    std::optional<windows::DispatchSession> m_session;
};

// Keeps what the host handed over and gives the library its adapter; nothing takes both away. The old object is let
// go last, when the new one is in its place: releasing it may call back into the provider.
template <class Adapter, class Service, class... Rest>
void Replace(ComPtr<IDispatch>& handle, provider::SISSProvider& provider,
             void (provider::SISSProvider::*set)(std::shared_ptr<Service>), IDispatch* value, Rest... rest)
{
    ComPtr<IDispatch> object(value);
    (provider.*set)(object ? std::make_shared<Adapter>(object, rest...) : nullptr);
    std::swap(handle, object);
}

} // namespace

ProviderFace::ProviderFace()
    : m_handles(MakeHandles())
    , m_provider(MakePlatformParts(m_handles))
{
}

ProviderFace::~ProviderFace()
{
    // The host's helpers go first, while everything that they might call on their way out is still there.
    host::PassOver([&] { m_provider.SetUtils(nullptr); });
    m_handles->utils.Reset();
}

HRESULT ProviderFace::Create(REFIID iid, void** result) noexcept
{
    return ResultOf(CLSID_SISSProvider,
                    [&]
                    {
                        const auto face = ComPtr<ProviderFace>::Attach(new ProviderFace);
                        return face->QueryInterface(iid, result);
                    });
}

HRESULT ProviderFace::IsPersonaleStudio(VARIANT_BOOL* result)
{
    return GuardBool(*this, IID__SISSProvider, result, [&] { return m_provider.IsPersonaleStudio(); });
}

HRESULT ProviderFace::get_Utils(IDispatch** value)
{
    return HandBack(*this, IID_ICCEProvider, m_handles->utils, value);
}

HRESULT ProviderFace::putref_Utils(IDispatch* value)
{
    return Guard(*this, IID_ICCEProvider,
                 [&]
                 {
                     IDispatch* provider = static_cast<ICCEDatabaseProvider*>(this);
                     Replace<windows::DispatchUtils>(m_handles->utils, m_provider, &provider::SISSProvider::SetUtils,
                                                     value, provider, std::cref(m_handles->names));
                 });
}

HRESULT ProviderFace::IdentificaPaziente(VARIANT idPaziente, VARIANT_BOOL* gestito, LONG* result)
{
    if (!result)
    {
        return RefusePointer();
    }
    VARIANT_BOOL unwanted = VARIANT_FALSE; // a late-bound host may leave the argument out
    gestito = gestito ? gestito : &unwanted;
    *gestito = VARIANT_TRUE;
    bool handled = true;
    const HRESULT status =
        GuardResult(*this, IID_ICCEProvider, result,
                    [&] { return LONG{m_provider.IdentificaPaziente(IdentifierIn(idPaziente), handled)}; });
    *gestito = ToVariantBool(handled);
    return status;
}

HRESULT ProviderFace::IsActive(VARIANT_BOOL* result)
{
    return GuardBool(*this, IID_ICCEProvider, result, [&] { return m_provider.IsActive(); });
}

HRESULT ProviderFace::VerificaPaziente(VARIANT, VARIANT_BOOL* result)
{
    // The argument is not even read: one that cannot be converted is as good as any.
    return GuardBool(*this, IID_ICCEProvider, result, [] { return provider::SISSProvider::VerificaPaziente({}); });
}

HRESULT ProviderFace::OnCertificate(VARIANT certificato, VARIANT_BOOL* result, CertificateOperation operation)
{
    return GuardBool(*this, IID_ICCEProvider2, result,
                     [&] { return (m_provider.*operation)(CertificateIn(certificato, m_handles->names).get()); });
}

HRESULT ProviderFace::InviaCertificato(VARIANT certificato, VARIANT_BOOL* result)
{
    return OnCertificate(certificato, result, &provider::SISSProvider::InviaCertificato);
}

HRESULT ProviderFace::AnnullaCertificato(VARIANT certificato, VARIANT_BOOL* result)
{
    return OnCertificate(certificato, result, &provider::SISSProvider::AnnullaCertificato);
}

HRESULT ProviderFace::InserisciContatto(VARIANT idPaziente, VARIANT_BOOL* result)
{
    return GuardBool(*this, IID_ICCEProviderContact, result,
                     [&] { return m_provider.InserisciContatto(IdentifierIn(idPaziente)); });
}

HRESULT ProviderFace::Sincronizza(VARIANT_BOOL* result)
{
    return GuardBool(*this, IID_ICCEProvider, result, [&] { return m_provider.Sincronizza(); });
}

HRESULT ProviderFace::SincronizzaPazienti(VARIANT_BOOL* result)
{
    return GuardBool(*this, IID_ICCEProvider2, result, [&] { return m_provider.SincronizzaPazienti(); });
}

HRESULT ProviderFace::get_Connection(IDispatch** value)
{
    return HandBack(*this, IID_ICCEDatabaseProvider, m_handles->connection, value);
}

HRESULT ProviderFace::putref_Connection(IDispatch* value)
{
    return Guard(*this, IID_ICCEDatabaseProvider,
                 [&]
                 {
                     Replace<windows::AdoConnection>(m_handles->connection, m_provider,
                                                     &provider::SISSProvider::SetConnection, value,
                                                     std::cref(m_handles->names));
                 });
}

HRESULT ProviderFace::get_LockSrv(IDispatch** value)
{
    return HandBack(*this, IID_ICCEDatabaseProvider, m_handles->lockSrv, value);
}

HRESULT ProviderFace::putref_LockSrv(IDispatch* value)
{
    return Guard(*this, IID_ICCEDatabaseProvider,
                 [&]
                 {
                     Replace<windows::DispatchLockSrv>(m_handles->lockSrv, m_provider,
                                                       &provider::SISSProvider::SetLockSrv, value,
                                                       std::cref(m_handles->names));
                 });
}

HRESULT ProviderFace::get_Studio(LONG* value)
{
    return GuardResult(*this, IID_ICCEDatabaseProvider, value, [&] { return LONG{m_provider.Studio()}; });
}

HRESULT ProviderFace::put_Studio(LONG value)
{
    m_provider.SetStudio(static_cast<std::int32_t>(value));
    return S_OK;
}

// --- Prescriptions ---------------------------------------------------------------------------------------------------

HRESULT ProviderFace::ApriSessionePrescrizione(IDispatch** result)
{
    return GuardResult(*this, IID_ICCEProvider, result,
                       [&]() -> IDispatch*
                       {
                           const auto session = m_provider.ApriSessionePrescrizione();
                           const auto* const opened = dynamic_cast<const windows::DispatchSession*>(session.get());
                           return opened ? ComPtr<IDispatch>(opened->Object()).Detach() : nullptr;
                       });
}

HRESULT ProviderFace::RegistraPrescrizione(IDispatch* sessione, VARIANT idRicetta, LONG tipo, VARIANT_BOOL* result)
{
    return GuardBool(*this, IID_ICCEProvider, result,
                     [&]
                     {
                         return m_provider.RegistraPrescrizione(PassedSession(sessione, m_handles->names).Get(),
                                                                windows::ToValue(idRicetta), tipo);
                     });
}

HRESULT ProviderFace::RegistraPrescrizioneSingola(IDispatch* sessione, VARIANT idRicetta, VARIANT numRicetta, LONG tipo,
                                                  VARIANT_BOOL* result)
{
    return GuardBool(*this, IID_ICCEProvider, result,
                     [&]
                     {
                         return m_provider.RegistraPrescrizioneSingola(PassedSession(sessione, m_handles->names).Get(),
                                                                       windows::ToValue(idRicetta),
                                                                       windows::ToValue(numRicetta), tipo);
                     });
}

HRESULT ProviderFace::VerificaPrescrizione(VARIANT idRicetta, LONG tipo, VARIANT_BOOL* result)
{
    return GuardBool(*this, IID_ICCEProvider, result,
                     [&] { return m_provider.VerificaPrescrizione(windows::ToValue(idRicetta), tipo); });
}

HRESULT ProviderFace::ChiudiSessionePrescrizione(IDispatch* sessione, VARIANT_BOOL* result)
{
    return GuardBool(
        *this, IID_ICCEProvider, result,
        [&] { return m_provider.ChiudiSessionePrescrizione(PassedSession(sessione, m_handles->names).Get()); });
}

HRESULT ProviderFace::AnnullaPrescrizione(VARIANT idRicetta, VARIANT numRicetta, LONG tipo, VARIANT_BOOL* result)
{
    return GuardBool(
        *this, IID_ICCEProvider, result,
        [&] { return m_provider.AnnullaPrescrizione(IdentifierIn(idRicetta), IdentifierIn(numRicetta), tipo); });
}

HRESULT ProviderFace::VerificaPrescrizioneSingola(VARIANT idRicetta, VARIANT numRicetta, LONG tipo,
                                                  VARIANT_BOOL* result)
{
    return GuardBool(*this, IID_ICCEProvider2, result,
                     [&] {
                         return m_provider.VerificaPrescrizioneSingola(windows::ToValue(idRicetta),
                                                                       windows::ToValue(numRicetta), tipo);
                     });
}

} // namespace vellumo::com
