// The library's way to objects of the host that it knows only by the names of their members.
#include "host/fault.h"
#include "platform/windows/adapters/ado.h"
#include "platform/windows/adapters/dispatch_records.h"
#include "platform/windows/adapters/dispatch_services.h"
#include "platform/windows/adapters/host_fault.h"
#include "platform/windows/adapters/host_names.h"
#include "platform/windows/system/bstr.h"
#include "simulator/norda/windows/dispatch_face.h"
#include "simulator/norda/windows/faces.h"
#include "tests/com/fake_outside.h"
#include "tests/com/library.h"

#include <doctest.h>

#include <cstdint>
#include <limits>

using namespace vellumo;
using namespace vellumo::tests;
using host::Value;
using windows::Bstr;
using windows::ComPtr;
using windows::LateBound;
using windows::Member;
using windows::Variant;

namespace
{

template <class Set>
Value Read(VARTYPE type, Set&& set)
{
    VARIANT variant{};
    set(variant);
    V_VT(&variant) = type;
    return windows::ToValue(variant);
}

HRESULT STDAPICALLTYPE FillIn(EXCEPINFO* exception)
{
    exception->bstrDescription = Bstr(std::wstring_view(L"Riempito dopo")).Detach();
    return S_OK;
}

// An object that fails in the ways in which real ones do.
class Failing final : public norda::DispatchFace
{
public:
    Failing()
        : DispatchFace(L"Failing")
    {
        AddMember(L"Value", [this](const norda::Arguments&) -> Variant { throw host::Fault(text, number); });
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override
    {
        ++lookedUp;
        return DispatchFace::GetIDsOfNames(reserved, names, count, locale, ids);
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* answer, EXCEPINFO* exception, UINT* badArgument) override
    {
        if (deferred)
        {
            *exception = {};
            exception->wCode = 1004;
            exception->pfnDeferredFillIn = &FillIn;
            return DISP_E_EXCEPTION;
        }
        return plain != S_OK
                   ? plain
                   : DispatchFace::Invoke(member, reserved, locale, flags, parameters, answer, exception, badArgument);
    }

    std::string text;
    std::int32_t number = 0;
    bool deferred = false;
    HRESULT plain = S_OK; // returned without any description
    int lookedUp = 0;
};

host::Fault FaultOf(const LateBound& object, Member& member)
{
    try
    {
        object.Call(member);
    }
    catch (const host::Fault& fault)
    {
        return fault;
    }
    FAIL("no fault");
    return host::Fault("");
}

} // namespace

TEST_CASE("every type that a host passes becomes the same value")
{
    CHECK(Read(VT_I1, [](VARIANT& v) { V_I1(&v) = -3; }) == Value(-3));
    CHECK(Read(VT_UI1, [](VARIANT& v) { V_UI1(&v) = 200; }) == Value(200));
    CHECK(Read(VT_I2, [](VARIANT& v) { V_I2(&v) = -30000; }) == Value(-30000));
    CHECK(Read(VT_UI2, [](VARIANT& v) { V_UI2(&v) = 60000; }) == Value(60000));
    CHECK(Read(VT_INT, [](VARIANT& v) { V_INT(&v) = -7; }) == Value(-7));
    CHECK(Read(VT_UI4, [](VARIANT& v) { V_UI4(&v) = 4000000000U; }) == Value(std::int64_t{4000000000}));
    CHECK(Read(VT_I8, [](VARIANT& v) { V_I8(&v) = 12; }) == Value(12));
    CHECK(Read(VT_UI8, [](VARIANT& v) { V_UI8(&v) = std::numeric_limits<std::uint64_t>::max(); }) ==
          Value(18446744073709551615.0));
    CHECK(Read(VT_R4, [](VARIANT& v) { V_R4(&v) = 1.2F; }) == Value(1.2));
    CHECK(Read(VT_BOOL, [](VARIANT& v) { V_BOOL(&v) = VARIANT_TRUE; }) == Value(true));
    CHECK(Read(VT_CY, [](VARIANT& v) { V_CY(&v).int64 = 125000; }) == Value(12.5));
    CHECK(Read(VT_CY, [](VARIANT& v) { V_CY(&v).int64 = -120000; }) == Value(-12));
    CHECK(Read(VT_DECIMAL, [](VARIANT& v) { VarDecFromI8(9007199254740993, &V_DECIMAL(&v)); }) ==
          Value(std::int64_t{9007199254740993}));
    CHECK(Read(VT_DECIMAL, [](VARIANT& v) { VarDecFromR8(1.25, &V_DECIMAL(&v)); }) == Value(1.25));
    CHECK(Read(VT_DATE, [](VARIANT& v) { V_DATE(&v) = 45356.75; }) ==
          Value(host::Date::FromCalendar(2024, 3, 5, 18).value()));
    CHECK(Read(VT_BSTR, [](VARIANT& v) { V_BSTR(&v) = nullptr; }) == Value(""));
    const Variant text = Variant::Text(std::wstring_view(L"D'Angelo \xD83D\xDE00 \xD83D|", 14));
    CHECK(text.Value() == Value("D'Angelo \xF0\x9F\x98\x80 \xEF\xBF\xBD|"));

    for (const VARTYPE nothing : {VT_EMPTY, VT_NULL, VT_DISPATCH, VT_UNKNOWN})
    {
        CHECK(Read(nothing, [](VARIANT&) {}).IsNull());
    }
    CHECK(Variant::Missing().Value().IsNull());
    CHECK_THROWS_AS(Read(VT_ERROR, [](VARIANT& v) { V_ERROR(&v) = E_FAIL; }), host::Fault);
    CHECK_THROWS_AS(static_cast<void>(Variant(std::vector<Value>{1}).Value()), host::Fault);
}

TEST_CASE("references are followed, also in a circle and into nothing")
{
    Bstr text{std::wstring_view(L"x")};
    BSTR plain = text.Get();
    CHECK(Read(VT_BYREF | VT_BSTR, [&](VARIANT& v) { V_BSTRREF(&v) = &plain; }) == Value("x"));
    SHORT small = 5;
    CHECK(Read(VT_BYREF | VT_I2, [&](VARIANT& v) { V_I2REF(&v) = &small; }) == Value(5));
    DATE date = 0;
    CHECK(Read(VT_BYREF | VT_DATE, [&](VARIANT& v) { V_DATEREF(&v) = &date; }) == Value(host::Date()));
    CHECK(Read(VT_BYREF | VT_I4, [](VARIANT& v) { V_I4REF(&v) = nullptr; }).IsNull());
    CHECK(Read(VT_BYREF | VT_VARIANT, [](VARIANT& v) { V_VARIANTREF(&v) = nullptr; }).IsNull());
    VARIANT circle{};
    V_VT(&circle) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&circle) = &circle;
    CHECK_THROWS_AS(windows::ToValue(circle), host::Fault);
}

TEST_CASE("values go out in types that every host knows")
{
    CHECK(V_VT(&Variant(Value()).Get()) == VT_NULL);
    CHECK(V_VT(&Variant(Value(std::int64_t{5})).Get()) == VT_I4);
    CHECK(V_VT(&Variant(Value(std::int64_t{5000000000})).Get()) == VT_DECIMAL);
    for (const Value& value :
         {Value(), Value(true), Value(-1), Value(std::int64_t{-5000000000}), Value(0.1), Value(""),
          Value("Niccol\xC3\xB2 \xF0\x9F\x98\x80"), Value(host::Date::FromCalendar(1899, 12, 29, 6).value())})
    {
        CHECK(Variant(value).Value() == value);
    }
}

TEST_CASE("a value behind an object is the one of its default property")
{
    const auto connection = std::make_shared<FakeConnection>();
    connection->rowsOf = [](const std::string&) { return Rows{{{"IDPaziente", 31}}}; };
    LateBound late(norda::MakeConnectionFace(connection), L"Connection");
    Member execute(L"Execute");
    const LateBound rows(late.Call(execute, Variant::Text(std::wstring_view(L"x"))).Object(), L"Recordset");
    Member fields(L"Fields");
    const LateBound columns(rows.Call(fields).Object(), L"Fields");
    Member item(L"Item");
    CHECK(columns.Call(item, Variant::Text(std::wstring_view(L"idpaziente"))).Value() == Value(31));
    // An object without one is no value.
    const auto lockSrv = norda::MakeLockSrvFace(std::make_shared<FakeLockSrv>());
    CHECK_THROWS_AS(static_cast<void>(Variant(lockSrv.Get()).Value()), host::Fault);
}

TEST_CASE("a failing object's own words and number reach the caller")
{
    auto* failing = new Failing;
    const LateBound object(ComPtr<IDispatch>::Attach(failing), L"Utils");
    Member value(L"Value");
    failing->text = "La tabella è bloccata.";
    failing->number = static_cast<std::int32_t>(0x80040E14);
    CHECK(FaultOf(object, value).Description() == "La tabella è bloccata.");
    CHECK(FaultOf(object, value).Number() == static_cast<std::int32_t>(0x80040E14));
    CHECK(failing->lookedUp == 1); // the member's identifier is kept

    failing->text.clear(); // no words: the system's for the number, and what was called
    CHECK(FaultOf(object, value).Description().find("Utils.Value") != std::string::npos);
    failing->plain = DISP_E_BADPARAMCOUNT;
    CHECK(FaultOf(object, value).Number() == DISP_E_BADPARAMCOUNT);
    failing->deferred = true;
    CHECK(FaultOf(object, value).Description() == "Riempito dopo");
    CHECK(FaultOf(object, value).Number() == static_cast<std::int32_t>(0x800A03EC));

    Member unknown(L"Nessuno");
    CHECK(FaultOf(object, unknown).Number() == DISP_E_UNKNOWNNAME);
    CHECK(FaultOf(object, unknown).Description().find("Utils.Nessuno") != std::string::npos);
    CHECK(FaultOf(LateBound(nullptr, L"LockSrv"), value).Description().find("LockSrv") != std::string::npos);
    CHECK_THROWS_WITH_AS(static_cast<void>(windows::CreateByProgId(L"Norda.Inesistente")),
                         doctest::Contains("Norda.Inesistente"), host::Fault);
}

TEST_CASE("a recordset is walked in the object model of ADO and closed at its end")
{
    const auto connection = std::make_shared<FakeConnection>();
    connection->rowsOf = [](const std::string& sql)
    {
        CHECK(sql == "SELECT * FROM Città");
        return Rows{{{"IDComune", 1}, {"Comune", "Cantù"}}, {{"IDComune", 2}, {"Comune", Value()}}};
    };
    windows::AdoConnection ado(norda::MakeConnectionFace(connection));
    {
        const auto rows = ado.Open("SELECT * FROM Città");
        REQUIRE_FALSE(rows->IsAtEnd());
        CHECK(rows->ColumnCount() == 2);
        CHECK(rows->ColumnName(1) == "IDComune");
        CHECK(rows->Field("COMUNE") == Value("Cantù"));
        CHECK(rows->Field(1) == Value(1));
        rows->MoveNext();
        CHECK(rows->Field("Comune").IsNull());
        CHECK(rows->Field("IDComune") == Value(2));
        CHECK_THROWS_AS(static_cast<void>(rows->Field("Cap")), host::Fault);
        CHECK_THROWS_AS(static_cast<void>(rows->Field(2)), host::Fault);
        rows->MoveNext();
        CHECK(rows->IsAtEnd());
        CHECK_THROWS_AS(rows->MoveNext(), host::Fault);
    }
    CHECK(norda::DispatchFace::Living() == 1);
    connection->rowsOf = nullptr;
    CHECK(ado.Open("DELETE FROM Paziente")->IsAtEnd()); // a closed recordset
    host::Transaction(ado).Commit();
    {
        const host::Transaction undone(ado);
    }
    CHECK(connection->log == "BCBR");
}

TEST_CASE("the host's helpers get the provider's face, and arrays counted from 0")
{
    FakeOutside outside;
    const Library library;
    const auto provider = library.CreateProvider();
    const auto database = provider.As<ICCEDatabaseProvider>(IID_ICCEDatabaseProvider);
    const auto fake = std::make_shared<FakeUtils>();
    host::Parameters seen;
    fake->valueOf = [&](const std::string& sql, const host::Parameters& parameters)
    {
        CHECK(sql == "SELECT {0}");
        seen = parameters;
        return Value(8);
    };
    windows::DispatchUtils utils(norda::MakeUtilsFace(fake), database.Get());
    const host::Parameters parameters{"D'Angelo {1}", Value(), 3, host::Date::FromCalendar(2024, 2, 29).value()};
    CHECK(utils.SingleValue("SELECT {0}", parameters) == Value(8));
    CHECK(seen == parameters);
    CHECK(utils.SingleValue("SELECT {0}", {}) == Value(8));
    CHECK(seen.empty());
    CHECK(utils.OpenRecordset("x", {})->IsAtEnd());
    CHECK(utils.WriteRow("Residenza", "IDResidenza", {}, {{"Cap", "22063"}}) == Value(1));
    utils.Execute("DELETE", parameters);
    utils.RecordServiceError("(X) y");
    CHECK(fake->written == std::vector<std::string>{"Residenza", "DELETE", "(X) y"});
    CHECK(utils.ToBoolean("True"));
    CHECK_THROWS_AS(static_cast<void>(utils.ToBoolean("forse")), host::Fault);

    windows::DispatchUtils stranger(norda::MakeUtilsFace(fake), nullptr);
    CHECK_THROWS_AS(static_cast<void>(stranger.SingleValue("SELECT {0}", {})), host::Fault);
}

TEST_CASE("a record gets the very objects that the host handed over")
{
    FakeOutside outside;
    host::HostServices seen;
    outside.objects.created = [&](const host::HostServices& given) { seen = given; };
    const auto handles = std::make_shared<windows::HostHandles>();
    const auto connection = std::make_shared<FakeConnection>();
    handles->connection = norda::MakeConnectionFace(connection);
    handles->lockSrv = norda::MakeLockSrvFace(std::make_shared<FakeLockSrv>());
    windows::DispatchHostObjects objects(handles);
    host::HostServices services;
    services.studio = 3;
    const auto record = objects.CreateRecord(host::RecordKind::Patient, services);
    CHECK(record->Load(12));
    CHECK(seen.connection.get() == connection.get());
    CHECK(seen.lockSrv);
    CHECK(seen.studio == 3);
    record->Set("Cognome", "D'Angelo");
    CHECK(record->Get("Cognome") == Value("D'Angelo"));
    CHECK(record->Save());
    CHECK(record->Id() == 12);
    outside.objects.patient.saves = false;
    CHECK_FALSE(record->Save());
    CHECK_FALSE(objects.CreateSettings(services)->Load(3));
}

TEST_CASE("a record that saves by a procedure, which answers nothing, has saved; one that answers False has not")
{
    class SavingFace final : public norda::DispatchFace
    {
    public:
        explicit SavingFace(const Variant& answer)
            : DispatchFace(L"Record")
        {
            AddMember(windows::names::record::field, [](const norda::Arguments&) { return Variant(); });
            AddMember(windows::names::record::save,
                      [&answer](const norda::Arguments&) { return Variant(answer.Get()); });
        }
    };
    const std::pair<Variant, bool> cases[] = {{Variant(), true},
                                              {Variant(Value()), true},
                                              {Variant(Value(true)), true},
                                              {Variant(Value(false)), false},
                                              {Variant(Value(0)), false}};
    for (const auto& [answer, saved] : cases)
    {
        CAPTURE(V_VT(&answer.Get()));
        const auto face = norda::MakeFace<SavingFace>(answer);
        CHECK(windows::RecordIn(Variant(face.Get()).Get())->Save() == saved);
    }
}
