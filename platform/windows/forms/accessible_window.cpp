#include "platform/windows/forms/accessible_window.h"

#include "host/fault.h"
#include "platform/windows/forms/oleacc_library.h"

#include <map>
#include <utility>

namespace vellumo::windows
{
namespace
{

// Those of all threads. Windows can keep such a thing itself, but every window would then open noticeably later.
class Registry
{
public:
    void Set(HWND window, AccessibleWindow* accessible)
    {
        const Lock lock(m_lock);
        m_all[window] = accessible;
    }
    void Remove(HWND window) noexcept
    {
        const Lock lock(m_lock);
        m_all.erase(window);
    }
    [[nodiscard]] AccessibleWindow* Find(HWND window) noexcept
    {
        const Lock lock(m_lock);
        const auto found = m_all.find(window);
        return found == m_all.end() ? nullptr : found->second;
    }

private:
    class Lock
    {
    public:
        explicit Lock(SRWLOCK& lock) noexcept
            : m_lock(lock)
        {
            AcquireSRWLockExclusive(&m_lock);
        }
        ~Lock() { ReleaseSRWLockExclusive(&m_lock); }
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

    private:
        SRWLOCK& m_lock;
    };

    SRWLOCK m_lock = SRWLOCK_INIT;
    std::map<HWND, AccessibleWindow*> m_all;
};

Registry& All()
{
    static Registry registry;
    return registry;
}

} // namespace

AccessibleWindow::AccessibleWindow(HWND window, Maker make)
    : m_window(window)
    , m_make(std::move(make))
{
    All().Set(m_window, this);
    const LONG_PTR procedure = reinterpret_cast<LONG_PTR>(&AccessibleWindow::Procedure);
    m_before = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(m_window, GWLP_WNDPROC, procedure));
}

AccessibleWindow::~AccessibleWindow()
{
    if (m_window != nullptr)
    {
        SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_before));
    }
    Disconnect();
}

void AccessibleWindow::Disconnect() noexcept
{
    if (m_window != nullptr)
    {
        All().Remove(std::exchange(m_window, nullptr));
    }
    if (const auto object = std::exchange(m_object, nullptr))
    {
        object->Disconnect();
    }
}

// Windows calls here: nothing may escape.
LRESULT CALLBACK AccessibleWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    AccessibleWindow* const self = All().Find(window);
    if (self == nullptr)
    {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    if (message == WM_GETOBJECT && static_cast<LONG>(lParam) == static_cast<LONG>(OBJID_CLIENT))
    {
        return host::Trap(LRESULT{0}, [&] { return self->OnGetObject(wParam); });
    }
    const WNDPROC before = self->m_before;
    if (message == WM_NCDESTROY)
    {
        self->Disconnect();
    }
    return CallWindowProcW(before, window, message, wParam, lParam);
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
