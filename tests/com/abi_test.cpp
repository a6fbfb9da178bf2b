// What hosts have compiled into themselves: identifiers, order of members, dispatch numbers, argument types. A change
// of any line below breaks every host in the field; a new member needs a new interface.
#include "tests/com/library.h"

#include <doctest.h>

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

using namespace vellumo;
using windows::Bstr;
using windows::ComPtr;

namespace
{

std::string Spell(const GUID& guid)
{
    std::array<wchar_t, 40> text{};
    StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
    return windows::FromWide(text.data());
}

ComPtr<ITypeLib> LoadResource(int number)
{
    const std::wstring path = tests::LibraryPath().wstring() + L"\\" + std::to_wstring(number);
    ComPtr<ITypeLib> library;
    REQUIRE(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Put()) == S_OK);
    return library;
}

std::string NameOf(ITypeInfo& info, MEMBERID member = MEMBERID_NIL)
{
    Bstr name;
    info.GetDocumentation(member, name.Put(), nullptr, nullptr, nullptr);
    return name.Text();
}

class Attributes
{
public:
    explicit Attributes(ITypeInfo& info)
        : m_info(info)
    {
        REQUIRE(info.GetTypeAttr(&m_attributes) == S_OK);
    }
    ~Attributes() { m_info.ReleaseTypeAttr(m_attributes); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    const TYPEATTR* operator->() const { return m_attributes; }

private:
    ITypeInfo& m_info;
    TYPEATTR* m_attributes = nullptr;
};

std::string TypeName(const TYPEDESC& type)
{
    static const std::map<VARTYPE, std::string> names = {{VT_VARIANT, "VARIANT"},
                                                         {VT_BOOL, "VARIANT_BOOL"},
                                                         {VT_I4, "long"},
                                                         {VT_DISPATCH, "IDispatch*"},
                                                         {VT_HRESULT, "HRESULT"}};
    if (type.vt == VT_PTR)
    {
        return TypeName(*type.lptdesc) + "*";
    }
    const auto found = names.find(type.vt);
    return found == names.end() ? "VT " + std::to_string(type.vt) : found->second;
}

std::string ArgumentText(const ELEMDESC& argument)
{
    static constexpr std::pair<USHORT, const char*> flags[] = {{PARAMFLAG_FIN, "in "},
                                                               {PARAMFLAG_FOUT, "out "},
                                                               {PARAMFLAG_FOPT, "optional "},
                                                               {PARAMFLAG_FRETVAL, "retval "}};
    std::string text;
    for (const auto& [flag, name] : flags)
    {
        text += (argument.paramdesc.wParamFlags & flag) != 0 ? name : "";
    }
    return text + TypeName(argument.tdesc);
}

// "slot dispatch-number kind name(arguments)"
std::string MemberText(ITypeInfo& info, UINT index)
{
    static const std::map<INVOKEKIND, std::string> kinds = {{INVOKE_FUNC, "method"},
                                                            {INVOKE_PROPERTYGET, "get"},
                                                            {INVOKE_PROPERTYPUT, "let"},
                                                            {INVOKE_PROPERTYPUTREF, "set"}};
    FUNCDESC* function = nullptr;
    REQUIRE(info.GetFuncDesc(index, &function) == S_OK);
    std::string text = std::to_string(static_cast<std::size_t>(function->oVft) / sizeof(void*)) + " " +
                       std::to_string(function->memid) + " " + kinds.at(function->invkind) + " " +
                       NameOf(info, function->memid) + "(";
    for (SHORT argument = 0; argument < function->cParams; ++argument)
    {
        text += (argument == 0 ? "" : ", ") + ArgumentText(function->lprgelemdescParam[argument]);
    }
    info.ReleaseFuncDesc(function);
    return text + ")";
}

// The members that the interface has beyond IDispatch, in the order of its table.
std::vector<std::string> MembersOf(ITypeLib& library, const IID& iid)
{
    ComPtr<ITypeInfo> dispatch;
    REQUIRE(library.GetTypeInfoOfGuid(iid, dispatch.Put()) == S_OK);
    HREFTYPE reference = 0;
    REQUIRE(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference) == S_OK); // its early-bound side
    ComPtr<ITypeInfo> early;
    REQUIRE(dispatch->GetRefTypeInfo(reference, early.Put()) == S_OK);
    const Attributes attributes(*early);
    CHECK((attributes->wTypeFlags & (TYPEFLAG_FDUAL | TYPEFLAG_FOLEAUTOMATION)) ==
          (TYPEFLAG_FDUAL | TYPEFLAG_FOLEAUTOMATION));
    std::vector<std::string> members;
    for (UINT index = 0; index < attributes->cFuncs; ++index)
    {
        members.push_back(MemberText(*early, index));
    }
    return members;
}

struct ExpectedInterface
{
    int resource;
    IID iid;
    const char* spelling;
    const char* name;
    std::vector<std::string> members;
};

const ExpectedInterface expectedInterfaces[] = {
    {2,
     IID_ICCEProvider,
     "{306B04C7-F014-48D0-BBD3-DDCA6236BC9E}",
     "ICCEProvider",
     {"7 1 get Utils(out retval IDispatch**)", "8 1 set Utils(in IDispatch*)",
      "9 2 method IdentificaPaziente(in optional VARIANT, in out optional VARIANT_BOOL*, out retval long*)",
      "10 3 method Sincronizza(out retval VARIANT_BOOL*)", "11 4 method IsActive(out retval VARIANT_BOOL*)",
      "12 5 method VerificaPaziente(in optional VARIANT, out retval VARIANT_BOOL*)",
      "13 6 method ApriSessionePrescrizione(out retval IDispatch**)",
      "14 7 method RegistraPrescrizione(in IDispatch*, in VARIANT, in long, out retval VARIANT_BOOL*)",
      "15 8 method RegistraPrescrizioneSingola(in IDispatch*, in VARIANT, in VARIANT, in long, out retval "
      "VARIANT_BOOL*)",
      "16 9 method VerificaPrescrizione(in VARIANT, in long, out retval VARIANT_BOOL*)",
      "17 10 method ChiudiSessionePrescrizione(in IDispatch*, out retval VARIANT_BOOL*)",
      "18 11 method AnnullaPrescrizione(in VARIANT, in VARIANT, in long, out retval VARIANT_BOOL*)"}},
    {2,
     IID_ICCEProvider2,
     "{6490A312-7493-4C91-B9A5-48F2DC986B52}",
     "ICCEProvider2",
     {"7 1 method VerificaPrescrizioneSingola(in VARIANT, in VARIANT, in long, out retval VARIANT_BOOL*)",
      "8 2 method SincronizzaPazienti(out retval VARIANT_BOOL*)",
      "9 3 method InviaCertificato(in VARIANT, out retval VARIANT_BOOL*)",
      "10 4 method AnnullaCertificato(in VARIANT, out retval VARIANT_BOOL*)"}},
    {2,
     IID_ICCEDatabaseProvider,
     "{C6905D22-9A91-40E8-B54C-6203CE0B65BF}",
     "ICCEDatabaseProvider",
     {"7 1 get Connection(out retval IDispatch**)", "8 1 set Connection(in IDispatch*)",
      "9 2 get LockSrv(out retval IDispatch**)", "10 2 set LockSrv(in IDispatch*)", "11 3 get Studio(out retval long*)",
      "12 3 let Studio(in long)"}},
    {2,
     IID_ICCEProviderContact,
     "{9EDC21A1-7E2D-4591-9215-4A88628960CD}",
     "ICCEProviderContact",
     {"7 1 method InserisciContatto(in VARIANT, out retval VARIANT_BOOL*)"}},
    {1,
     IID__SISSProvider,
     "{513CB18F-8210-4699-AB2F-1C61567A5DC2}",
     "_SISSProvider",
     {"7 1 method IsPersonaleStudio(out retval VARIANT_BOOL*)"}},
    {1,
     IID__OpzioniRicetta,
     "{4D5776A7-D724-4DAC-A264-FEB2E9C7D25F}",
     "_OpzioniRicetta",
     {"7 1 get ModalitaStampa(out retval long*)", "8 1 let ModalitaStampa(in long)",
      "9 2 get TipoRicetta(out retval long*)", "10 2 let TipoRicetta(in long)"}},
};

std::map<std::string, std::int32_t> ValuesOf(ITypeLib& library, const wchar_t* enumeration)
{
    Bstr name{std::wstring_view(enumeration)};
    ComPtr<ITypeInfo> info;
    MEMBERID member = MEMBERID_NIL;
    USHORT found = 1;
    REQUIRE(library.FindName(name.Get(), 0, info.Put(), &member, &found) == S_OK);
    REQUIRE(found == 1);
    const Attributes attributes(*info);
    CHECK(attributes->typekind == TKIND_ENUM);
    std::map<std::string, std::int32_t> values;
    for (UINT index = 0; index < attributes->cVars; ++index)
    {
        VARDESC* variable = nullptr;
        REQUIRE(info->GetVarDesc(index, &variable) == S_OK);
        values[NameOf(*info, variable->memid)] = V_I4(variable->lpvarValue);
        info->ReleaseVarDesc(variable);
    }
    return values;
}

void CheckLibrary(int resource, const char* name, const char* id)
{
    const auto library = LoadResource(resource);
    Bstr found;
    REQUIRE(library->GetDocumentation(-1, found.Put(), nullptr, nullptr, nullptr) == S_OK);
    CHECK(found.Text() == name);
    TLIBATTR* attributes = nullptr;
    REQUIRE(library->GetLibAttr(&attributes) == S_OK);
    CHECK(Spell(attributes->guid) == id);
    CHECK(attributes->wMajorVerNum == 1);
    CHECK(attributes->wMinorVerNum == 0);
    library->ReleaseTLibAttr(attributes);
}

} // namespace

TEST_CASE("interfaces keep their identifiers, their members, the order and the numbers of these")
{
    for (const ExpectedInterface& expected : expectedInterfaces)
    {
        CAPTURE(expected.name);
        CHECK(Spell(expected.iid) == expected.spelling);
        const auto library = LoadResource(expected.resource);
        ComPtr<ITypeInfo> info;
        REQUIRE(library->GetTypeInfoOfGuid(expected.iid, info.Put()) == S_OK);
        CHECK(NameOf(*info) == expected.name);
        const auto members = MembersOf(*library, expected.iid);
        CHECK(members.size() == expected.members.size());
        for (std::size_t index = 0; index < std::min(members.size(), expected.members.size()); ++index)
        {
            CHECK(members[index] == expected.members[index]);
        }
    }
}

TEST_CASE("libraries and classes keep their identifiers; the host's interfaces are in no class of ours")
{
    CheckLibrary(1, "Vellumo", "{4E27D33C-5E1D-4269-9D4A-643B610BFBCC}");
    CheckLibrary(2, "kelnordaccelib", "{915063E3-CA17-4492-8DEC-24F6FEBC855B}");
    CHECK(Spell(CLSID_SISSProvider) == "{33F574FC-7783-4FB1-9F76-E8A7EC26D731}");
    CHECK(Spell(CLSID_OpzioniRicetta) == "{9A26EE3D-A94D-40F7-8BB2-4F6AEE056D71}");
    const auto library = LoadResource(1);
    for (const auto& [clsid, interfaceName, creatable] : {std::tuple(CLSID_SISSProvider, "_SISSProvider", true),
                                                          std::tuple(CLSID_OpzioniRicetta, "_OpzioniRicetta", false)})
    {
        ComPtr<ITypeInfo> info;
        REQUIRE(library->GetTypeInfoOfGuid(clsid, info.Put()) == S_OK);
        const Attributes attributes(*info);
        CHECK(attributes->typekind == TKIND_COCLASS);
        CHECK(((attributes->wTypeFlags & TYPEFLAG_FCANCREATE) != 0) == creatable);
        REQUIRE(attributes->cImplTypes == 1);
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> implemented;
        REQUIRE(info->GetRefTypeOfImplType(0, &reference) == S_OK);
        REQUIRE(info->GetRefTypeInfo(reference, implemented.Put()) == S_OK);
        CHECK(NameOf(*implemented) == interfaceName);
    }
}

TEST_CASE("published enumerations keep their names and values")
{
    const auto library = LoadResource(1);
    CHECK(ValuesOf(*library, L"RequestTypes") ==
          std::map<std::string, std::int32_t>{{"rtIdentificaCittadinoGUI", 0},
                                              {"rtIdentificaCittadino", 1},
                                              {"rtCalcolaIUP", 2},
                                              {"rtIniziaFasePresrittiva", 3},
                                              {"rtFineFasePrescrittiva", 4},
                                              {"rtRegistraPrescrizioneFarmaci", 5},
                                              {"rtRegistraPrescrizioneAccertamenti", 6},
                                              {"rtAnnullaPrescrizione", 7},
                                              {"rtIdentificaCittadinoEsteso", 8},
                                              {"rtInserisciDatiContatto", 9},
                                              {"rtModificaDatiContatto", 10},
                                              {"rtInviaCertificato", 11},
                                              {"rtRettificaCertificato", 12},
                                              {"rtAnnullaCertificato", 13}});
    CHECK(ValuesOf(*library, L"OpzioniRicettaElettronica") ==
          std::map<std::string, std::int32_t>{{"oreNessuna", 0}, {"oreStampaPromemoria", 1}});
}
