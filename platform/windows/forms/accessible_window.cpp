#include "platform/windows/forms/accessible_window.h"

#include "host/fault.h"
#include "platform/windows/forms/oleacc_library.h"

#include <commctrl.h>

#include <utility>

namespace vellumo::windows
{
namespace
{

constexpr UINT_PTR subclassId = 1;

} // namespace

AccessibleWindow::AccessibleWindow(HWND window, Maker make)
    : m_window(window)
    , m_make(std::move(make))
{
    SetWindowSubclass(m_window, &AccessibleWindow::Procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
}

AccessibleWindow::~AccessibleWindow()
{
    Disconnect();
}

void AccessibleWindow::Disconnect() noexcept
{
    if (m_window != nullptr)
    {
        RemoveWindowSubclass(std::exchange(m_window, nullptr), &AccessibleWindow::Procedure, subclassId);
    }
    if (const auto object = std::exchange(m_object, nullptr))
    {
        object->Disconnect();
    }
}

// Windows calls here: nothing may escape.
LRESULT CALLBACK AccessibleWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                             DWORD_PTR self) noexcept
{
    auto& accessible = *reinterpret_cast<AccessibleWindow*>(self);
    if (message == WM_GETOBJECT && static_cast<LONG>(lParam) == static_cast<LONG>(OBJID_CLIENT))
    {
        return host::Trap(LRESULT{0}, [&] { return accessible.OnGetObject(wParam); });
    }
    if (message == WM_NCDESTROY)
    {
        accessible.Disconnect();
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

LRESULT AccessibleWindow::OnGetObject(WPARAM wParam)
{
    if (!m_object)
    {
        m_object = m_make();
    }
    return AnswerWith(*m_object, wParam);
}

} // namespace vellumo::windows
