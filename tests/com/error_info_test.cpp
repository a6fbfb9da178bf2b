// What a host reads about a failure is about that failure.
#include "tests/com/fake_outside.h"
#include "tests/com/library.h"

#include <doctest.h>

#include <ocidl.h>

#include <functional>
#include <iterator>

using namespace vellumo;
using namespace vellumo::tests;
using windows::Bstr;
using windows::ComPtr;

namespace
{

// What a failure of another object, earlier on this thread, leaves behind.
void LeaveErrorInfo()
{
    ComPtr<ICreateErrorInfo> creator;
    REQUIRE(CreateErrorInfo(creator.Put()) == S_OK);
    creator->SetDescription(Bstr(std::wstring_view(L"Un errore di prima")).Get());
    SetErrorInfo(0, creator.As<IErrorInfo>(IID_IErrorInfo).Get());
}

} // namespace

TEST_CASE("a missing place for the result is refused before anything happens, and no older failure is told")
{
    FakeOutside outside;
    const Library library;
    const auto provider = library.CreateProvider();
    const auto second = provider.As<ICCEProvider2>(IID_ICCEProvider2);
    const auto contact = provider.As<ICCEProviderContact>(IID_ICCEProviderContact);
    const auto database = provider.As<ICCEDatabaseProvider>(IID_ICCEDatabaseProvider);
    const auto own = provider.As<_SISSProvider>(IID__SISSProvider);
    const auto classInfo = provider.As<IProvideClassInfo>(IID_IProvideClassInfo);
    const auto factory = library.ProviderFactory();
    const VARIANT none{};
    VARIANT_BOOL handled = VARIANT_TRUE;
    const std::function<HRESULT()> calls[] = {
        [&] { return provider->IdentificaPaziente(none, &handled, nullptr); },
        [&] { return provider->IsActive(nullptr); },
        [&] { return provider->VerificaPaziente(none, nullptr); },
        [&] { return provider->Sincronizza(nullptr); },
        [&] { return provider->ApriSessionePrescrizione(nullptr); },
        [&] { return provider->RegistraPrescrizione(nullptr, none, 1, nullptr); },
        [&] { return provider->RegistraPrescrizioneSingola(nullptr, none, none, 1, nullptr); },
        [&] { return provider->VerificaPrescrizione(none, 1, nullptr); },
        [&] { return provider->ChiudiSessionePrescrizione(nullptr, nullptr); },
        [&] { return provider->AnnullaPrescrizione(none, none, 1, nullptr); },
        [&] { return provider->get_Utils(nullptr); },
        [&] { return second->VerificaPrescrizioneSingola(none, none, 1, nullptr); },
        [&] { return second->SincronizzaPazienti(nullptr); },
        [&] { return second->InviaCertificato(none, nullptr); },
        [&] { return second->AnnullaCertificato(none, nullptr); },
        [&] { return contact->InserisciContatto(none, nullptr); },
        [&] { return database->get_Connection(nullptr); },
        [&] { return database->get_LockSrv(nullptr); },
        [&] { return database->get_Studio(nullptr); },
        [&] { return own->IsPersonaleStudio(nullptr); },
        [&] { return own->GetTypeInfoCount(nullptr); },
        [&] { return own->GetTypeInfo(0, 0, nullptr); },
        [&] { return own->QueryInterface(IID_IUnknown, nullptr); },
        [&] { return classInfo->GetClassInfo(nullptr); },
        [&] { return factory->CreateInstance(nullptr, IID_IUnknown, nullptr); },
        [&] { return library.GetClassObject(CLSID_SISSProvider, IID_IClassFactory, nullptr); },
    };
    for (std::size_t i = 0; i < std::size(calls); ++i)
    {
        CAPTURE(i);
        LeaveErrorInfo();
        CHECK(calls[i]() == E_POINTER);
        CHECK(TakeErrorInfo().description.empty());
    }
    CHECK(outside.bridge.requests.empty());
}
