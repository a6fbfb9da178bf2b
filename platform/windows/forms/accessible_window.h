// Lets a control answer screen readers: the object is made when the first of them asks, and told when the window goes.
#pragma once

#include "platform/windows/forms/accessible.h"

#include <functional>

namespace vellumo::windows
{

class AccessibleWindow
{
public:
    using Maker = std::function<ComPtr<Accessible>()>;

    AccessibleWindow(HWND window, Maker make);
    ~AccessibleWindow();
    AccessibleWindow(const AccessibleWindow&) = delete;
    AccessibleWindow& operator=(const AccessibleWindow&) = delete;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT OnGetObject(WPARAM wParam);
    void Disconnect() noexcept;

    HWND m_window;
    WNDPROC m_before = nullptr;
    Maker m_make;
    ComPtr<Accessible> m_object;
};

} // namespace vellumo::windows
