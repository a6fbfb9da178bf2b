#include "com/faults.h"

#include "host/fault.h"
#include "platform/windows/system/bstr.h"

#include <new>
#include <string>

namespace vellumo::com
{
namespace
{

constexpr std::wstring_view sourceName = L"Vellumo.SISSProvider";

void Describe(const IID& source, std::string_view description)
{
    windows::ComPtr<ICreateErrorInfo> creator;
    if (SUCCEEDED(CreateErrorInfo(creator.Put())))
    {
        creator->SetGUID(source);
        creator->SetSource(windows::Bstr(sourceName).Get());
        creator->SetDescription(windows::Bstr(description).Get());
        SetErrorInfo(0, creator.As<IErrorInfo>(IID_IErrorInfo).Get());
    }
}

HRESULT Fail(HRESULT result, const IID& source, std::string_view description) noexcept
{
    // Without memory for the description the number alone has to do.
    host::PassOver([&] { Describe(source, description); });
    return result;
}

} // namespace

HRESULT FailWithCurrentException(const IID& source) noexcept
{
    try
    {
        throw;
    }
    catch (const host::Fault& fault)
    {
        return Fail(FAILED(fault.Number()) ? fault.Number() : faultOfTheLibrary, source, fault.what());
    }
    catch (const std::bad_alloc&)
    {
        return Fail(E_OUTOFMEMORY, source, "Memoria insufficiente.");
    }
    catch (const std::exception& failure)
    {
        const auto described = [&] { return std::string("Errore imprevisto in Vellumo: ") + failure.what(); };
        return Fail(E_UNEXPECTED, source, host::Trap(std::string(), described));
    }
    catch (...)
    {
        return Fail(E_UNEXPECTED, source, "Errore imprevisto in Vellumo.");
    }
}

HRESULT RefusePointer() noexcept
{
    SetErrorInfo(0, nullptr);
    return E_POINTER;
}

} // namespace vellumo::com
