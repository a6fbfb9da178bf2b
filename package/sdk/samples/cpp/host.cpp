// A clinical record program reduced to what Vellumo needs to see: it creates the provider early-bound, hands over its
// objects and identifies a citizen. Instead of a database there is one patient in memory, whose columns are printed
// when Vellumo saves him.
//
// mingw:  x86_64-w64-mingw32-g++ -std=c++17 -I../../include host.cpp ../../include/vellumo_i.c
//             ../../include/kelnordaccelib_i.c -o host.exe -static -lole32 -loleaut32 -luuid
// MSVC:   cl /std:c++17 /EHsc /I..\..\include host.cpp ..\..\include\vellumo_i.c ..\..\include\kelnordaccelib_i.c
//             ole32.lib oleaut32.lib uuid.lib advapi32.lib
#include <windows.h>

#include <oaidl.h>
#include <objbase.h>

#include "kelnordaccelib.h"
#include "vellumo.h"

#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

// --- A late-bound object: names and what is done for each ------------------------------------------------------------

// Arguments in their order; of a property that is set, the new value is the last.
using Arguments = std::vector<VARIANT>;
using Member = std::function<HRESULT(const Arguments& arguments, VARIANT* result)>;

class Object : public IDispatch
{
public:
    void Add(const wchar_t* name, Member member)
    {
        m_ids[Upper(name)] = static_cast<DISPID>(m_members.size() + 1);
        m_members.push_back(std::move(member));
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override
    {
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch);
        *result = known ? this : nullptr;
        return known ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_references;
        if (left == 0)
        {
            delete this;
        }
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override
    {
        const auto found = m_ids.find(Upper(names[0]));
        ids[0] = found == m_ids.end() ? DISPID_UNKNOWN : found->second;
        return found == m_ids.end() ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*,
                                     UINT*) override
    {
        if (id < 1 || static_cast<std::size_t>(id) > m_members.size())
        {
            return DISP_E_MEMBERNOTFOUND;
        }
        Arguments arguments(parameters->rgvarg, parameters->rgvarg + parameters->cArgs);
        VARIANT ignored;
        VariantInit(&ignored);
        // Callers hand arguments over from the last to the first.
        const HRESULT done = m_members[static_cast<std::size_t>(id) - 1](
            Arguments(arguments.rbegin(), arguments.rend()), result ? result : &ignored);
        VariantClear(&ignored);
        return done;
    }

protected:
    virtual ~Object() = default;

private:
    static std::wstring Upper(std::wstring name)
    {
        for (auto& c : name)
        {
            c = static_cast<wchar_t>(towupper(c));
        }
        return name;
    }

    ULONG m_references = 1;
    std::map<std::wstring, DISPID> m_ids;
    std::vector<Member> m_members;
};

VARIANT Number(long value)
{
    VARIANT variant;
    variant.vt = VT_I4;
    variant.lVal = value;
    return variant;
}

VARIANT Truth(bool value)
{
    VARIANT variant;
    variant.vt = VT_BOOL;
    variant.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    return variant;
}

VARIANT Null()
{
    VARIANT variant;
    VariantInit(&variant);
    variant.vt = VT_NULL;
    return variant;
}

Member Answer(VARIANT value)
{
    return [value](const Arguments&, VARIANT* result) { return VariantCopy(result, const_cast<VARIANT*>(&value)); };
}

Member Nothing()
{
    return [](const Arguments&, VARIANT*) { return S_OK; };
}

Member AnswerObject(std::function<IDispatch*()> make)
{
    return [make](const Arguments&, VARIANT* result)
    {
        result->vt = VT_DISPATCH;
        result->pdispVal = make();
        return S_OK;
    };
}

// --- The host's objects ----------------------------------------------------------------------------------------------

// A column whose value is 1.
Object* MakeFields()
{
    auto* const fields = new Object;
    fields->Add(L"Count", Answer(Number(1)));
    fields->Add(L"Item", AnswerObject(
                             []
                             {
                                 auto* const field = new Object;
                                 field->Add(L"Name", Nothing());
                                 field->Add(L"Value", Answer(Number(1)));
                                 return field;
                             }));
    return fields;
}

// One row, or none.
Object* MakeRecordset(bool hasRow)
{
    const auto atEnd = std::make_shared<bool>(!hasRow);
    auto* const recordset = new Object;
    recordset->Add(L"State", Answer(Number(1)));
    recordset->Add(L"EOF",
                   [atEnd](const Arguments&, VARIANT* result)
                   {
                       *result = Truth(*atEnd);
                       return S_OK;
                   });
    recordset->Add(L"MoveNext",
                   [atEnd](const Arguments&, VARIANT*)
                   {
                       *atEnd = true;
                       return S_OK;
                   });
    recordset->Add(L"Close", Nothing());
    recordset->Add(L"Fields", AnswerObject(MakeFields));
    return recordset;
}

// The user is a doctor: without a row in Specialista he would be staff, for whom Vellumo identifies nobody. Of
// everything else this practice has no row yet.
HRESULT Execute(const Arguments& arguments, VARIANT* result)
{
    result->vt = VT_DISPATCH;
    result->pdispVal = MakeRecordset(wcsstr(arguments[0].bstrVal, L"FROM Specialista") != nullptr);
    return S_OK;
}

Object* MakeConnection()
{
    auto* const connection = new Object;
    connection->Add(L"Execute", Execute);
    connection->Add(L"BeginTrans", Answer(Number(1)));
    connection->Add(L"CommitTrans", Nothing());
    connection->Add(L"RollbackTrans", Nothing());
    return connection;
}

Object* MakeLockSrv()
{
    auto* const lockSrv = new Object;
    lockSrv->Add(L"IDUtente", Answer(Number(1)));
    return lockSrv;
}

Object* MakeServiceLog()
{
    auto* const log = new Object;
    log->Add(L"Write",
             [](const Arguments& arguments, VARIANT*)
             {
                 std::printf("journal: %ls\n", arguments.empty() ? L"" : arguments[0].bstrVal);
                 return S_OK;
             });
    return log;
}

// A host puts the values into the statement and runs it; this one has nothing to run it on.
Object* MakeUtils()
{
    auto* const utils = new Object;
    utils->Add(L"ExecuteScalar", Answer(Null()));
    utils->Add(L"OpenRecordset", AnswerObject([] { return MakeRecordset(false); }));
    utils->Add(L"FindKey", Answer(Null()));
    utils->Add(L"Execute", Nothing());
    utils->Add(L"WriteRow", Answer(Number(1)));
    utils->Add(L"TableDate", Answer(Null()));
    utils->Add(L"StoreTableDate", Nothing());
    utils->Add(L"ServiceLog", AnswerObject(MakeServiceLog));
    utils->Add(L"ToBoolean", Answer(Truth(false)));
    return utils;
}

// A row: columns by name, printed when it is saved.
class Record : public Object
{
public:
    explicit Record(const wchar_t* table)
        : m_table(table)
    {
        for (const wchar_t* property : {L"Connection", L"LockSrv", L"Studio", L"Utils"})
        {
            Add(property, Nothing());
        }
        Add(L"Load", Answer(Truth(false)));
        Add(L"NewRecord", Nothing());
        Add(L"Field", [this](const Arguments& arguments, VARIANT* result) { return Field(arguments, result); });
        Add(L"Save", [this](const Arguments&, VARIANT* result) { return Save(result); });
        Add(L"ID", Answer(Number(1)));
    }

protected:
    ~Record() override
    {
        for (auto& [name, value] : m_columns)
        {
            VariantClear(&value);
        }
    }

private:
    HRESULT Field(const Arguments& arguments, VARIANT* result)
    {
        VARIANT& column = m_columns.try_emplace(arguments[0].bstrVal, Null()).first->second;
        return arguments.size() == 1 ? VariantCopy(result, &column)
                                     : VariantCopy(&column, const_cast<VARIANT*>(&arguments[1]));
    }

    HRESULT Save(VARIANT* result)
    {
        std::printf("%ls saved:\n", m_table.c_str());
        for (auto& [name, value] : m_columns)
        {
            VARIANT text;
            VariantInit(&text);
            if (value.vt != VT_NULL && SUCCEEDED(VariantChangeType(&text, &value, 0, VT_BSTR)))
            {
                std::printf("  %ls = %ls\n", name.c_str(), text.bstrVal);
            }
            VariantClear(&text);
        }
        *result = Truth(true);
        return S_OK;
    }

    std::wstring m_table;
    std::map<std::wstring, VARIANT> m_columns;
};

// --- Classes that Vellumo creates by name ----------------------------------------------------------------------------

class Factory : public IClassFactory
{
public:
    Factory(const wchar_t* progId, const CLSID& clsid)
        : m_progId(progId)
    {
        CoRegisterClassObject(clsid, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_cookie);
        wchar_t text[40];
        StringFromGUID2(clsid, text, 40);
        const std::wstring key = L"Software\\Classes\\" + m_progId + L"\\CLSID";
        const auto bytes = static_cast<DWORD>((wcslen(text) + 1) * sizeof(wchar_t));
        // An installed host has these in the machine's classes; this one leaves nothing behind.
        for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE})
        {
            RegSetKeyValueW(root, key.c_str(), nullptr, REG_SZ, text, bytes);
        }
    }
    virtual ~Factory()
    {
        CoRevokeClassObject(m_cookie);
        for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE})
        {
            RegDeleteTreeW(root, (L"Software\\Classes\\" + m_progId).c_str());
        }
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override
    {
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory);
        *result = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; } // stands in main
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** result) override
    {
        auto* const record = new Record(m_progId.c_str());
        const HRESULT done = record->QueryInterface(iid, result);
        record->Release();
        return done;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    std::wstring m_progId;
    DWORD m_cookie = 0;
};

// --- The program -----------------------------------------------------------------------------------------------------

int Fail(const char* what, HRESULT result)
{
    std::printf("%s: 0x%08lX\n", what, static_cast<unsigned long>(result));
    IErrorInfo* information = nullptr;
    if (GetErrorInfo(0, &information) == S_OK)
    {
        BSTR description = nullptr;
        information->GetDescription(&description);
        std::printf("%ls\n", description ? description : L"");
        SysFreeString(description);
        information->Release();
    }
    return 1;
}

int Identify(ICCEProvider* provider, ICCEDatabaseProvider* database)
{
    Object* const utils = MakeUtils();
    Object* const connection = MakeConnection();
    Object* const lockSrv = MakeLockSrv();
    provider->putref_Utils(utils);
    database->putref_Connection(connection);
    database->putref_LockSrv(lockSrv);
    database->put_Studio(1);
    utils->Release();
    connection->Release();
    lockSrv->Release();

    VARIANT nobody; // a fresh search
    VariantInit(&nobody);
    VARIANT_BOOL handled = VARIANT_FALSE;
    long patient = 0;
    const HRESULT result = provider->IdentificaPaziente(nobody, &handled, &patient);
    if (FAILED(result))
    {
        return Fail("IdentificaPaziente", result);
    }
    std::printf("IdentificaPaziente: %ld, Gestito %s\n", patient, handled ? "True" : "False");
    provider->putref_Utils(nullptr);
    database->putref_Connection(nullptr);
    database->putref_LockSrv(nullptr);
    return 0;
}

int Run()
{
    const CLSID patientClass{0x1f0c7c55, 0x0e1d, 0x4f6b, {0x8b, 0x0a, 0x3d, 0x52, 0x60, 0x1c, 0x77, 0x01}};
    const CLSID aslClass{0x1f0c7c55, 0x0e1d, 0x4f6b, {0x8b, 0x0a, 0x3d, 0x52, 0x60, 0x1c, 0x77, 0x02}};
    const CLSID settingsClass{0x1f0c7c55, 0x0e1d, 0x4f6b, {0x8b, 0x0a, 0x3d, 0x52, 0x60, 0x1c, 0x77, 0x03}};
    const Factory patients(L"Norda.Paziente", patientClass);
    const Factory asls(L"Norda.Asl", aslClass);
    const Factory settings(L"Norda.Impostazioni", settingsClass);

    ICCEProvider* provider = nullptr;
    const HRESULT created = CoCreateInstance(CLSID_SISSProvider, nullptr, CLSCTX_INPROC_SERVER, IID_ICCEProvider,
                                             reinterpret_cast<void**>(&provider));
    if (FAILED(created))
    {
        return Fail("CoCreateInstance", created);
    }
    ICCEDatabaseProvider* database = nullptr;
    provider->QueryInterface(IID_ICCEDatabaseProvider, reinterpret_cast<void**>(&database));
    const int status = Identify(provider, database);
    database->Release();
    provider->Release();
    return status;
}

int main()
{
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const int status = Run();
    CoUninitialize();
    return status;
}
