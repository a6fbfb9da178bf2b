// A COM server in a DLL with one class, as small as one can be that does what the library must when it is created:
// create the bridge, look where the host and the SISS client are, and read the bridge's configuration.
#include "tests/bench/windows/bare_server.h"

#include <atomic>
#include <fstream>
#include <iterator>
#include <string>

namespace
{

std::atomic<long> objects = 0;

std::wstring ReadText(HKEY root, const wchar_t* key, const wchar_t* name)
{
    wchar_t text[MAX_PATH] = {};
    DWORD size = sizeof text;
    RegGetValueW(root, key, name, RRF_RT_REG_SZ, nullptr, text, &size);
    return text;
}

class Object final : public IUnknown
{
public:
    Object()
    {
        ++objects;
        CLSID clsid{};
        CLSIDFromProgID(L"Winbridge4seb.Bean.1", &clsid);
        CoCreateInstance(clsid, nullptr, CLSCTX_ALL, IID_IDispatch, reinterpret_cast<void**>(&m_bridge));
        const auto folder = ReadText(HKEY_CURRENT_USER, L"Software\\VB and VBA Program Settings\\Norda\\SISS", L"Path");
        std::ifstream in((folder + L"\\SISS\\Conf\\WINBRIDGE4SEBACTIVEX.conf").c_str(), std::ios::binary);
        m_configuration.assign(std::istreambuf_iterator<char>(in), {});
    }
    ~Object()
    {
        if (m_bridge != nullptr)
        {
            m_bridge->Release();
        }
        --objects;
    }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override
    {
        *result = iid == IID_IUnknown ? this : nullptr;
        if (*result == nullptr)
        {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_count; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_count;
        if (left == 0)
        {
            delete this;
        }
        return left;
    }

private:
    std::atomic<ULONG> m_count = 1;
    IDispatch* m_bridge = nullptr;
    std::string m_configuration;
};

class Factory final : public IClassFactory
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override
    {
        *result = iid == IID_IUnknown || iid == IID_IClassFactory ? this : nullptr;
        return *result == nullptr ? E_NOINTERFACE : S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** result) override
    {
        auto* const object = new Object;
        const HRESULT known = object->QueryInterface(iid, result);
        object->Release();
        return known;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

} // namespace

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID clsid, REFIID iid, void** result)
{
    static Factory factory;
    return clsid == vellumo::bench::bareClass ? factory.QueryInterface(iid, result) : CLASS_E_CLASSNOTAVAILABLE;
}

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE DllCanUnloadNow()
{
    return objects == 0 ? S_OK : S_FALSE;
}
