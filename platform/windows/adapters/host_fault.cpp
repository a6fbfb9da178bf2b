#include "platform/windows/adapters/host_fault.h"

#include "platform/windows/system/bstr.h"

#include <array>
#include <cstdio>

namespace vellumo::windows
{
namespace
{

std::string HexNumber(HRESULT result)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%08lX", static_cast<unsigned long>(result));
    return text.data();
}

std::string SystemText(HRESULT result)
{
    std::array<wchar_t, 512> text{};
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, static_cast<DWORD>(result),
                       0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    std::wstring_view message(text.data(), length);
    while (!message.empty() && (message.back() <= L' ' || message.back() == L'.'))
    {
        message.remove_suffix(1);
    }
    return FromWide(message);
}

// Old objects report a small number of their own instead of an HRESULT; this is where Visual Basic puts it.
HRESULT NumberOf(const EXCEPINFO& exception)
{
    return exception.wCode != 0 ? MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, exception.wCode) : exception.scode;
}

} // namespace

host::Fault MakeFault(HRESULT result, std::string_view what)
{
    const std::string reason = SystemText(result);
    return host::Fault(
        std::string(what) + ": " + (reason.empty() ? "errore" : reason) + " (" + HexNumber(result) + ").", result);
}

host::Fault MakeFault(HRESULT result, EXCEPINFO& exception, std::string_view what)
{
    if (result == DISP_E_EXCEPTION && exception.pfnDeferredFillIn)
    {
        // A failing fill-in leaves what is there already.
        static_cast<void>(exception.pfnDeferredFillIn(&exception));
    }
    const Bstr source = Bstr::Attach(exception.bstrSource);
    const Bstr description = Bstr::Attach(exception.bstrDescription);
    const Bstr helpFile = Bstr::Attach(exception.bstrHelpFile);
    if (result != DISP_E_EXCEPTION)
    {
        return MakeFault(result, what);
    }
    const HRESULT number = FAILED(NumberOf(exception)) ? NumberOf(exception) : DISP_E_EXCEPTION;
    return description.IsEmpty() ? MakeFault(number, what) : host::Fault(description.Text(), number, source.Text());
}

} // namespace vellumo::windows
