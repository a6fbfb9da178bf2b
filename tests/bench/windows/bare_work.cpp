#include "tests/bench/windows/bare_work.h"

#include "platform/windows/adapters/host_fault.h"
#include "platform/windows/adapters/variant.h"
#include "platform/windows/forms/window_message.h"
#include "platform/windows/system/com_ptr.h"

#include <commctrl.h>
#include <commdlg.h>
#include <msxml2.h>

#include <stdexcept>

namespace vellumo::bench
{

void ReadXml(std::string_view text)
{
    constexpr CLSID reader6{0x88d96a0c, 0xf192, 0x11d4, {0xa6, 0x5f, 0x00, 0x40, 0x96, 0x32, 0x51, 0xe5}};
    constexpr IID iidReader{0xa4f96ed0, 0xf829, 0x476e, {0x81, 0xc0, 0xcd, 0xc7, 0xbd, 0x2a, 0x08, 0x02}};
    windows::ComPtr<ISAXXMLReader> reader;
    windows::ThrowIfFailed(CoCreateInstance(reader6, nullptr, CLSCTX_INPROC_SERVER, iidReader, reader.PutVoid()),
                           "SAXXMLReader");
    static_cast<void>(reader->parse(windows::Variant::Text(text.substr(text.find("?>") + 2)).Get()));
}

void AskFile()
{
    std::wstring path(MAX_PATH, L'\0');
    OPENFILENAMEW question{};
    question.lStructSize = sizeof question;
    question.lpstrFile = path.data();
    question.nMaxFile = MAX_PATH;
    question.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    if (GetOpenFileNameW(&question) == FALSE)
    {
        throw std::runtime_error("no file was chosen");
    }
}

BareProgress::BareProgress(HWND window, std::size_t maximum)
    : m_window(window)
    , m_bar(FindWindowExW(window, nullptr, PROGRESS_CLASSW, nullptr))
    , m_label(FindWindowExW(window, nullptr, L"Static", nullptr))
{
    windows::Send(m_bar, PBM_SETRANGE32, 0, static_cast<LPARAM>(maximum));
}

void BareProgress::Report(std::size_t position, const std::string& text)
{
    if (const auto now = GetTickCount64(); now - m_drawn >= 50)
    {
        m_drawn = now;
        windows::Send(m_bar, PBM_SETPOS, position);
        SetWindowTextA(m_label, text.c_str());
        UpdateWindow(m_window);
    }
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE)
    {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

} // namespace vellumo::bench
