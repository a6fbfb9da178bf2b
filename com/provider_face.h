// The provider as the host sees it: the host's four interfaces and the class's own, over provider::SISSProvider. It
// converts arguments, calls, and maps faults; it knows no rule of the domain.
//
// The host owns it by reference count. It keeps the objects that the host hands over and gives them back as they
// came; its adapters never count a reference to itself, so releasing the last one of the host ends it.
#pragma once

#include "com/com_object.h"
#include "platform/windows/adapters/dispatch_records.h"
#include "provider/siss_provider.h"

#include <kelnordaccelib.h>
#include <vellumo.h>

#include <memory>

namespace vellumo::com
{

using ProviderFaceBase = ComObject<CLSID_SISSProvider, Dual<_SISSProvider, IID__SISSProvider, Library::Vellumo>,
                                   Dual<ICCEProvider, IID_ICCEProvider, Library::Host>,
                                   Dual<ICCEProvider2, IID_ICCEProvider2, Library::Host>,
                                   Dual<ICCEDatabaseProvider, IID_ICCEDatabaseProvider, Library::Host>,
                                   Dual<ICCEProviderContact, IID_ICCEProviderContact, Library::Host>>;

class ProviderFace final : public ProviderFaceBase
{
public:
    // Faults when the SISS client's bridge cannot be created, and when the file of the host's names is wrong.
    ProviderFace();

    // For the class factory.
    static HRESULT Create(REFIID iid, void** result) noexcept;

    // _SISSProvider
    HRESULT STDMETHODCALLTYPE IsPersonaleStudio(VARIANT_BOOL* result) override;

    // ICCEProvider
    HRESULT STDMETHODCALLTYPE get_Utils(IDispatch** value) override;
    HRESULT STDMETHODCALLTYPE putref_Utils(IDispatch* value) override;
    HRESULT STDMETHODCALLTYPE IdentificaPaziente(VARIANT idPaziente, VARIANT_BOOL* gestito, LONG* result) override;
    HRESULT STDMETHODCALLTYPE Sincronizza(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE IsActive(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE VerificaPaziente(VARIANT idPaziente, VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE ApriSessionePrescrizione(IDispatch** result) override;
    HRESULT STDMETHODCALLTYPE RegistraPrescrizione(IDispatch* sessione, VARIANT idRicetta, LONG tipo,
                                                   VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE RegistraPrescrizioneSingola(IDispatch* sessione, VARIANT idRicetta, VARIANT numRicetta,
                                                          LONG tipo, VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE VerificaPrescrizione(VARIANT idRicetta, LONG tipo, VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE ChiudiSessionePrescrizione(IDispatch* sessione, VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE AnnullaPrescrizione(VARIANT idRicetta, VARIANT numRicetta, LONG tipo,
                                                  VARIANT_BOOL* result) override;

    // ICCEProvider2
    HRESULT STDMETHODCALLTYPE VerificaPrescrizioneSingola(VARIANT idRicetta, VARIANT numRicetta, LONG tipo,
                                                          VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE SincronizzaPazienti(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE InviaCertificato(VARIANT certificato, VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE AnnullaCertificato(VARIANT certificato, VARIANT_BOOL* result) override;

    // ICCEDatabaseProvider
    HRESULT STDMETHODCALLTYPE get_Connection(IDispatch** value) override;
    HRESULT STDMETHODCALLTYPE putref_Connection(IDispatch* value) override;
    HRESULT STDMETHODCALLTYPE get_LockSrv(IDispatch** value) override;
    HRESULT STDMETHODCALLTYPE putref_LockSrv(IDispatch* value) override;
    HRESULT STDMETHODCALLTYPE get_Studio(LONG* value) override;
    HRESULT STDMETHODCALLTYPE put_Studio(LONG value) override;

    // ICCEProviderContact
    HRESULT STDMETHODCALLTYPE InserisciContatto(VARIANT idPaziente, VARIANT_BOOL* result) override;

private:
    ~ProviderFace() override;

    using CertificateOperation = bool (provider::SISSProvider::*)(host::Record* certificato);
    HRESULT OnCertificate(VARIANT certificato, VARIANT_BOOL* result, CertificateOperation operation);

    std::shared_ptr<windows::HostHandles> m_handles;
    provider::SISSProvider m_provider;
};

} // namespace vellumo::com
