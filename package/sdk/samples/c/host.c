/* The calls that need none of the host's objects, late-bound, in C: how a host without headers reaches the four
 * interfaces. The class's own IDispatch has its own members only; each of the host's interfaces is asked for by its
 * identifier and is an IDispatch of its own.
 *
 * mingw:  x86_64-w64-mingw32-gcc host.c -o host.exe -static -lole32 -loleaut32 -luuid
 * MSVC:   cl host.c ole32.lib oleaut32.lib uuid.lib
 */
#define COBJMACROS
#include <windows.h>

#include <oaidl.h>
#include <objbase.h>

#include <stdio.h>

static const IID idProvider = {0x306b04c7, 0xf014, 0x48d0, {0xbb, 0xd3, 0xdd, 0xca, 0x62, 0x36, 0xbc, 0x9e}};
static const IID idDatabaseProvider = {0xc6905d22, 0x9a91, 0x40e8, {0xb5, 0x4c, 0x62, 0x03, 0xce, 0x0b, 0x65, 0xbf}};

static int failures = 0;

/* Calls a member by its name; the result, when there is one, is printed. */
static void Call(IDispatch* object, WORD how, const wchar_t* name, VARIANT* argument)
{
    DISPID id = DISPID_UNKNOWN, put = DISPID_PROPERTYPUT;
    LPOLESTR names[1];
    DISPPARAMS parameters = {0};
    EXCEPINFO fault = {0};
    VARIANT result, text;
    HRESULT done;

    names[0] = (LPOLESTR)name;
    VariantInit(&result);
    VariantInit(&text);
    parameters.rgvarg = argument;
    parameters.cArgs = argument != NULL ? 1 : 0;
    if (how == DISPATCH_PROPERTYPUT)
    {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    done = IDispatch_GetIDsOfNames(object, &IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    if (SUCCEEDED(done))
    {
        done = IDispatch_Invoke(object, id, &IID_NULL, LOCALE_USER_DEFAULT, how, &parameters, &result, &fault, NULL);
    }
    if (FAILED(done))
    {
        printf("%ls: 0x%08lX %ls\n", name, (unsigned long)done, fault.bstrDescription ? fault.bstrDescription : L"");
        ++failures;
    }
    else if (result.vt != VT_EMPTY && SUCCEEDED(VariantChangeType(&text, &result, VARIANT_ALPHABOOL, VT_BSTR)))
    {
        printf("%ls: %ls\n", name, text.bstrVal);
    }
    SysFreeString(fault.bstrDescription);
    SysFreeString(fault.bstrSource);
    SysFreeString(fault.bstrHelpFile);
    VariantClear(&text);
    VariantClear(&result);
}

int main(void)
{
    CLSID class;
    IUnknown* created = NULL;
    IDispatch *own = NULL, *provider = NULL, *database = NULL;
    VARIANT number;
    HRESULT done;

    CoInitializeEx(NULL, COINIT_APARTMENTTHREADED);
    done = CLSIDFromProgID(L"Vellumo.SISSProvider", &class);
    if (SUCCEEDED(done))
    {
        done = CoCreateInstance(&class, NULL, CLSCTX_INPROC_SERVER, &IID_IUnknown, (void**)&created);
    }
    if (FAILED(done))
    {
        printf("Vellumo.SISSProvider: 0x%08lX\n", (unsigned long)done);
        return 1;
    }
    IUnknown_QueryInterface(created, &IID_IDispatch, (void**)&own);
    IUnknown_QueryInterface(created, &idProvider, (void**)&provider);
    IUnknown_QueryInterface(created, &idDatabaseProvider, (void**)&database);

    VariantInit(&number);
    number.vt = VT_I4;
    number.lVal = 7;
    Call(database, DISPATCH_PROPERTYPUT, L"Studio", &number);
    Call(database, DISPATCH_PROPERTYGET, L"Studio", NULL);
    Call(provider, DISPATCH_METHOD, L"IsActive", NULL);
    Call(provider, DISPATCH_METHOD, L"VerificaPaziente", &number);
    Call(own, DISPATCH_METHOD, L"IsPersonaleStudio", NULL);

    IDispatch_Release(own);
    IDispatch_Release(provider);
    IDispatch_Release(database);
    IUnknown_Release(created);
    CoUninitialize();
    return failures == 0 ? 0 : 1;
}
