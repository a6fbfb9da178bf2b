// The provider as a COM object: what it promises to any host, whatever language that is written in.
#include "platform/windows/adapters/host_fault.h"
#include "platform/windows/adapters/late_bound.h"
#include "simulator/norda/windows/dispatch_face.h"
#include "simulator/norda/windows/faces.h"
#include "tests/com/fake_outside.h"
#include "tests/com/library.h"

#include <doctest.h>

#include <ocidl.h>

using namespace vellumo;
using namespace vellumo::tests;
using windows::Bstr;
using windows::ComPtr;
using windows::Variant;

namespace
{

// A practice with one user, who is staff: operations that need a doctor stop before they reach the network.
std::shared_ptr<FakeConnection> StaffConnection()
{
    return std::make_shared<FakeConnection>();
}

void HandOver(ICCEProvider& provider, const std::shared_ptr<host::LockSrv>& lockSrv)
{
    const auto database = ComPtr<ICCEProvider>(&provider).As<ICCEDatabaseProvider>(IID_ICCEDatabaseProvider);
    REQUIRE(database);
    REQUIRE(database->putref_Connection(norda::MakeConnectionFace(StaffConnection()).Get()) == S_OK);
    REQUIRE(database->putref_LockSrv(norda::MakeLockSrvFace(lockSrv).Get()) == S_OK);
    REQUIRE(provider.putref_Utils(norda::MakeUtilsFace(std::make_shared<FakeUtils>()).Get()) == S_OK);
}

// The provider's face for late-bound callers of the given interface.
template <class Interface>
windows::LateBound LateFace(const ComPtr<ICCEProvider>& provider, const IID& iid)
{
    const auto face = provider.As<Interface>(iid);
    REQUIRE(face);
    return {ComPtr<IDispatch>(face.Get()), L"Provider"};
}

} // namespace

TEST_CASE("one object behind all interfaces, with IDispatch on the class's own")
{
    FakeOutside outside;
    const Library library;
    {
        const auto provider = library.CreateProvider();
        const auto identity = provider.As<IUnknown>(IID_IUnknown);
        for (const IID& iid : {IID__SISSProvider, IID_ICCEProvider, IID_ICCEProvider2, IID_ICCEDatabaseProvider,
                               IID_ICCEProviderContact, IID_ISupportErrorInfo, IID_IProvideClassInfo, IID_IDispatch})
        {
            const auto face = provider.As<IUnknown>(iid); // a pointer of that interface, seen as IUnknown
            REQUIRE(face);
            CHECK(face.As<IUnknown>(IID_IUnknown).Get() == identity.Get());
            CHECK(face.As<ICCEProvider>(IID_ICCEProvider).Get() == provider.Get());
        }
        CHECK_FALSE(provider.As<IUnknown>(IID_IPersist));

        windows::Member own(L"IsPersonaleStudio");
        const auto dispatch = provider.As<IDispatch>(IID_IDispatch);
        CHECK(own.IdOn(*dispatch, L"Provider") == 1);
        windows::Member foreign(L"IsActive");
        CHECK_THROWS_AS(foreign.IdOn(*dispatch, L"Provider"), host::Fault);

        const auto errors = provider.As<ISupportErrorInfo>(IID_ISupportErrorInfo);
        CHECK(errors->InterfaceSupportsErrorInfo(IID_ICCEProvider2) == S_OK);
        CHECK(errors->InterfaceSupportsErrorInfo(IID_IDispatch) == S_FALSE);
        ComPtr<ITypeInfo> classInfo;
        CHECK(provider.As<IProvideClassInfo>(IID_IProvideClassInfo)->GetClassInfo(classInfo.Put()) == S_OK);
        CHECK_FALSE(library.CanUnload());
    }
    CHECK(library.CanUnload());
}

TEST_CASE("the class factory refuses aggregation and other classes, and locks the library")
{
    FakeOutside outside;
    const Library library;
    {
        void* object = &outside;
        CHECK(library.GetClassObject(CLSID_OpzioniRicetta, IID_IClassFactory, &object) == CLASS_E_CLASSNOTAVAILABLE);
        CHECK(object == nullptr);
        object = &outside;
        CHECK(library.GetClassObject(CLSID_SISSProvider, IID_IDispatch, &object) == E_NOINTERFACE);
        CHECK(object == nullptr);

        const auto factory = library.ProviderFactory();
        object = &outside;
        CHECK(factory->CreateInstance(factory.Get(), IID_IUnknown, &object) == CLASS_E_NOAGGREGATION);
        CHECK(object == nullptr);
        object = &outside;
        CHECK(factory->CreateInstance(nullptr, IID_IPersist, &object) == E_NOINTERFACE);
        CHECK(object == nullptr);
        CHECK(factory->LockServer(TRUE) == S_OK);
    }
    CHECK_FALSE(library.CanUnload());
    CHECK(library.ProviderFactory()->LockServer(FALSE) == S_OK);
    CHECK(library.CanUnload());
}

TEST_CASE("without the bridge there is no provider, and the host is told what to do")
{
    const Library library;
    void* object = nullptr;
    CHECK(library.ProviderFactory()->CreateInstance(nullptr, IID_ICCEProvider, &object) == CO_E_CLASSSTRING);
    CHECK(object == nullptr);
    const auto details = TakeErrorInfo();
    CHECK(details.source == "Vellumo.SISSProvider");
    for (const char* part :
         {"Winbridge4seb.Bean.1", sizeof(void*) == 8 ? "per i programmi a 64 bit" : "per i programmi a 32 bit"})
    {
        CAPTURE(details.description);
        CHECK(details.description.find(part) != std::string::npos);
    }
    CHECK(library.CanUnload());
}

TEST_CASE("what the host hands over comes back as it is, and is let go when it is taken away")
{
    FakeOutside outside;
    const Library library;
    {
        const auto provider = library.CreateProvider();
        const auto database = provider.As<ICCEDatabaseProvider>(IID_ICCEDatabaseProvider);
        using Get = HRESULT (STDMETHODCALLTYPE ICCEDatabaseProvider::*)(IDispatch**);
        using Set = HRESULT (STDMETHODCALLTYPE ICCEDatabaseProvider::*)(IDispatch*);
        const std::pair<Get, Set> properties[] = {
            {&ICCEDatabaseProvider::get_Connection, &ICCEDatabaseProvider::putref_Connection},
            {&ICCEDatabaseProvider::get_LockSrv, &ICCEDatabaseProvider::putref_LockSrv}};
        for (const auto& [get, set] : properties)
        {
            ComPtr<IDispatch> answer;
            CHECK(((*database).*get)(answer.Put()) == S_OK);
            CHECK_FALSE(answer);
            {
                const auto object = norda::MakeLockSrvFace(std::make_shared<FakeLockSrv>());
                CHECK(((*database).*set)(object.Get()) == S_OK);
                CHECK(((*database).*get)(answer.Put()) == S_OK);
                CHECK(answer.Get() == object.Get());
            }
            answer.Reset();
            CHECK(norda::DispatchFace::Living() == 2); // the bridge and this one
            CHECK(((*database).*set)(nullptr) == S_OK);
            CHECK(norda::DispatchFace::Living() == 1);
        }
        HandOver(*provider, std::make_shared<FakeLockSrv>());
        ComPtr<IDispatch> utils;
        CHECK(provider->get_Utils(utils.Put()) == S_OK);
        CHECK(utils);
        for (const LONG studio : {0L, -5L, 2147483647L})
        {
            LONG answer = 1;
            CHECK(database->put_Studio(studio) == S_OK);
            CHECK(database->get_Studio(&answer) == S_OK);
            CHECK(answer == studio);
        }
    }
    CHECK(norda::DispatchFace::Living() == 0);
    CHECK(library.CanUnload());
}

TEST_CASE("practice staff keeps its patient, however the identifier is passed")
{
    FakeOutside outside;
    const Library library;
    const auto provider = library.CreateProvider();
    HandOver(*provider, std::make_shared<FakeLockSrv>());

    LONG number = 4711;
    VARIANT byReference{};
    V_VT(&byReference) = VT_BYREF | VT_I4;
    V_I4REF(&byReference) = &number;
    VARIANT outer{};
    V_VT(&outer) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&outer) = &byReference;
    VARIANT empty{};
    const Variant plain{host::Value(4711)};
    const Variant text = Variant::Text(std::wstring_view(L"4711"));
    const Variant zero{host::Value(0)};
    const Variant missing = Variant::Missing();
    const std::pair<const VARIANT*, LONG> cases[] = {{&plain.Get(), 4711}, {&text.Get(), 4711}, {&byReference, 4711},
                                                     {&outer, 4711},       {&zero.Get(), 0},    {&empty, 0},
                                                     {&missing.Get(), 0}};
    for (const auto& [argument, expected] : cases)
    {
        CAPTURE(V_VT(argument));
        LONG identifier = -1;
        VARIANT_BOOL handled = VARIANT_TRUE;
        CHECK(provider->IdentificaPaziente(*argument, &handled, &identifier) == S_OK);
        CHECK(identifier == expected);
        CHECK(handled == VARIANT_FALSE);
    }
}

TEST_CASE("what is no identifier reaches the host as an error only where it may")
{
    FakeOutside outside;
    const Library library;
    const auto provider = library.CreateProvider();
    HandOver(*provider, std::make_shared<FakeLockSrv>());
    const auto doctor = StaffConnection();
    VARIANT_BOOL handled = VARIANT_FALSE;
    doctor->rowsOf = [&](const std::string&)
    {
        CHECK(handled == VARIANT_TRUE); // since before the first look into the database
        return Rows{{{"IDSpecialista", 1}}};
    };
    const auto database = provider.As<ICCEDatabaseProvider>(IID_ICCEDatabaseProvider);
    REQUIRE(database->putref_Connection(norda::MakeConnectionFace(doctor).Get()) == S_OK);

    const Variant one{host::Value(1)};
    const Variant values(std::vector<host::Value>{1, 2});
    const auto lockSrv = norda::MakeLockSrvFace(std::make_shared<FakeLockSrv>());
    const Variant object(lockSrv.Get()); // without a default property
    for (const Variant* argument : {&values, &object})
    {
        LONG identifier = -1;
        handled = VARIANT_FALSE;
        CHECK(provider->IdentificaPaziente(argument->Get(), &handled, &identifier) == S_OK);
        CHECK(identifier == 0);
        CHECK(handled == VARIANT_TRUE);
        VARIANT_BOOL answer = VARIANT_TRUE;
        CHECK(provider->AnnullaPrescrizione(argument->Get(), one.Get(), 1, &answer) == S_OK);
        CHECK(answer == VARIANT_FALSE);
        answer = VARIANT_TRUE;
        CHECK(provider->AnnullaPrescrizione(one.Get(), argument->Get(), 1, &answer) == S_OK);
        CHECK(answer == VARIANT_FALSE);
        answer = VARIANT_TRUE;
        CHECK(FAILED(provider->VerificaPrescrizione(argument->Get(), 1, &answer)));
        CHECK(answer == VARIANT_FALSE);
        CHECK(TakeErrorInfo().interfaceId == IID_ICCEProvider);
    }
    CHECK(outside.bridge.requests.empty());
}

TEST_CASE("only an object with a record's members is a certificate, and no fault of one reaches the host")
{
    FakeOutside outside;
    const Library library;
    {
        const auto provider = library.CreateProvider();
        HandOver(*provider, std::make_shared<FakeLockSrv>());
        const auto second = provider.As<ICCEProvider2>(IID_ICCEProvider2);
        const auto contact = provider.As<ICCEProviderContact>(IID_ICCEProviderContact);
        REQUIRE(second);
        REQUIRE(contact);

        class AskedRecord final : public host::Record
        {
        public:
            bool Load(std::int32_t) override { return true; }
            void StartNew() override {}
            [[nodiscard]] host::Value Read(std::string_view) const override
            {
                ++asked;
                throw host::Fault("Campo non leggibile.");
            }
            void Set(std::string_view, const host::Value&) override {}
            bool Save() override { return true; }
            [[nodiscard]] std::int32_t Id() const override { return 1; }

            mutable int asked = 0;
        };
        const auto asked = std::make_shared<AskedRecord>();
        const auto record = norda::MakeRecordFace(asked);
        const auto other = norda::MakeLockSrvFace(std::make_shared<FakeLockSrv>());
        IDispatch* plain = record.Get();
        const Variant byValue(record.Get());
        VARIANT unknown{};
        V_VT(&unknown) = VT_UNKNOWN;
        V_UNKNOWN(&unknown) = record.Get();
        VARIANT reference{};
        V_VT(&reference) = VT_BYREF | VT_DISPATCH;
        V_DISPATCHREF(&reference) = &plain;
        VARIANT outer{};
        V_VT(&outer) = VT_BYREF | VT_VARIANT;
        V_VARIANTREF(&outer) = const_cast<VARIANT*>(&byValue.Get());
        VARIANT null{};
        V_VT(&null) = VT_NULL;
        VARIANT broken{};
        V_VT(&broken) = 77; // no type at all
        const VARIANT empty{};
        const Variant noObject(static_cast<IDispatch*>(nullptr));
        const Variant otherObject(other.Get());
        const Variant number{host::Value(1)};
        const Variant values(std::vector<host::Value>{1});
        const std::pair<const VARIANT*, bool> cases[] = {{&byValue.Get(), true},   {&unknown, true},
                                                         {&reference, true},       {&outer, true},
                                                         {&null, false},           {&empty, false},
                                                         {&noObject.Get(), false}, {&number.Get(), false},
                                                         {&values.Get(), false},   {&otherObject.Get(), false},
                                                         {&broken, false}};
        for (const auto& [argument, expected] : cases)
        {
            CAPTURE(V_VT(argument));
            asked->asked = 0;
            VARIANT_BOOL answer = VARIANT_TRUE;
            CHECK(second->InviaCertificato(*argument, &answer) == S_OK);
            CHECK(answer == VARIANT_FALSE);
            answer = VARIANT_TRUE;
            CHECK(second->AnnullaCertificato(*argument, &answer) == S_OK);
            CHECK(answer == VARIANT_FALSE);
            CHECK((asked->asked > 0) == expected);
        }
        VARIANT_BOOL answer = VARIANT_TRUE;
        CHECK(contact->InserisciContatto(values.Get(), &answer) == S_OK); // no identifier at all
        CHECK(answer == VARIANT_FALSE);
        CHECK(outside.bridge.requests.empty());
    }
    CHECK(norda::DispatchFace::Living() == 0);
    CHECK(library.CanUnload());
}

TEST_CASE("late-bound callers reach every interface, leave arguments out and get references filled")
{
    FakeOutside outside;
    const Library library;
    const auto provider = library.CreateProvider();
    HandOver(*provider, std::make_shared<FakeLockSrv>());
    const auto face = LateFace<ICCEProvider>(provider, IID_ICCEProvider);
    windows::Member identify(L"IdentificaPaziente");
    CHECK(face.Call(identify).Value() == host::Value(0));
    VARIANT_BOOL handled = VARIANT_TRUE;
    Variant reference;
    V_BOOLREF(reference.Put()) = &handled;
    V_VT(&const_cast<VARIANT&>(reference.Get())) = VT_BYREF | VT_BOOL;
    CHECK(face.Call(identify, Variant(host::Value(12)), reference).Value() == host::Value(12));
    CHECK(handled == VARIANT_FALSE);
    windows::Member isActive(L"isactive");
    CHECK(face.Call(isActive).Value() == host::Value(true));

    const auto database = LateFace<ICCEDatabaseProvider>(provider, IID_ICCEDatabaseProvider);
    windows::Member studio(L"Studio");
    database.Put(studio, Variant(host::Value(3)));
    CHECK(database.Call(studio).Value() == host::Value(3));
    windows::Member connection(L"Connection");
    CHECK(database.Call(connection).Object());
    database.PutObject(connection, nullptr);
    CHECK_FALSE(database.Call(connection).Object());
}

TEST_CASE("a prescribing session carries the library's objects through the host's hands")
{
    FakeOutside outside;
    const Library library;
    {
        const auto provider = library.CreateProvider();
        HandOver(*provider, std::make_shared<FakeLockSrv>());
        ComPtr<IDispatch> session;
        REQUIRE(provider->ApriSessionePrescrizione(session.Put()) == S_OK);
        REQUIRE(session);

        // The host writes the options late-bound; who asks again gets the very object, and what was written.
        const windows::LateBound face(session, L"Session");
        windows::Member member(L"OpzioniRicetta");
        const auto options = face.Call(member).Object();
        REQUIRE(options);
        const windows::LateBound late(options, L"OpzioniRicetta");
        windows::Member type(L"TipoRicetta");
        late.Put(type, Variant(host::Value(2)));
        const auto again = face.Call(member).Object();
        CHECK(again.As<IUnknown>(IID_IUnknown).Get() == options.As<IUnknown>(IID_IUnknown).Get());
        LONG read = 0;
        CHECK(again.As<_OpzioniRicetta>(IID__OpzioniRicetta)->get_TipoRicetta(&read) == S_OK);
        CHECK(read == 2);

        VARIANT_BOOL answer = VARIANT_FALSE;
        CHECK(provider->RegistraPrescrizione(session.Get(), Variant(host::Value(1)).Get(), 1, &answer) == S_OK);
        CHECK(answer == VARIANT_TRUE); // it waits for validation: nothing is sent
        answer = VARIANT_TRUE;
        CHECK(provider->RegistraPrescrizione(nullptr, Variant(host::Value(1)).Get(), 1, &answer) ==
              MAKE_HRESULT(SEVERITY_ERROR, FACILITY_ITF, 0x0200));
        CHECK(answer == VARIANT_FALSE);
        CHECK(TakeErrorInfo().interfaceId == IID_ICCEProvider);
    }
    CHECK(library.CanUnload());
}
