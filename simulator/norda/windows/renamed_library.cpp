#include "simulator/norda/windows/renamed_library.h"

#include "host/fault.h"
#include "platform/windows/adapters/host_contract.h"
#include "platform/windows/adapters/host_name_map.h"
#include "platform/windows/system/text.h"

#include <array>
#include <bit>
#include <fstream>

namespace vellumo::norda
{
namespace
{

namespace fs = std::filesystem;

fs::path RegisteredFile()
{
    std::array<wchar_t, 64> clsid{};
    DWORD bytes = sizeof clsid;
    std::array<wchar_t, 1024> file{};
    if (RegGetValueW(HKEY_CLASSES_ROOT, L"Vellumo.SISSProvider\\CLSID", nullptr, RRF_RT_REG_SZ, nullptr, clsid.data(),
                     &bytes) == ERROR_SUCCESS)
    {
        const auto key = L"CLSID\\" + std::wstring(clsid.data()) + L"\\InprocServer32";
        bytes = sizeof file;
        RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, file.data(), &bytes);
    }
    if (file.front() == L'\0')
    {
        throw host::Fault("Vellumo.SISSProvider non è registrato.");
    }
    return file.data();
}

void WriteNames(const fs::path& file)
{
    std::ofstream out(file, std::ios::binary);
    out << "# Names of a host that has others.\r\n\r\n";
    for (const auto& need : windows::HostContract())
    {
        out << windows::FromWide(windows::KeyOf(need.name)) << " = " << windows::FromWide(need.name.text)
            << windows::FromWide(renamed) << "\r\n";
    }
}

} // namespace

RenamedLibrary::RenamedLibrary(const fs::path& folder)
{
    const auto copy = folder / L"Vellumo.dll";
    if (!fs::exists(copy))
    {
        fs::create_directories(folder);
        fs::copy_file(RegisteredFile(), copy);
        WriteNames(folder / "Vellumo.names.txt");
    }
    m_module = LoadLibraryW(copy.c_str());
    if (m_module == nullptr)
    {
        throw host::Fault("Non si carica " + windows::FromWide(copy.wstring()));
    }
}

RenamedLibrary::~RenamedLibrary()
{
    FreeLibrary(m_module);
}

HRESULT RenamedLibrary::Create(const CLSID& clsid, const IID& iid, void** result) const
{
    using GetClass = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto getClass = std::bit_cast<GetClass>(GetProcAddress(m_module, "DllGetClassObject"));
    windows::ComPtr<IClassFactory> factory;
    const HRESULT found = getClass(clsid, IID_IClassFactory, factory.PutVoid());
    return SUCCEEDED(found) ? factory->CreateInstance(nullptr, iid, result) : found;
}

} // namespace vellumo::norda
