// A window with the same controls as another one, and nothing else: no layout, no state, no decisions. Its texts,
// places and rows are read from the window that it copies.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace vellumo::bench
{

class BareWindow
{
public:
    // A window on the screen.
    explicit BareWindow(HWND model);
    BareWindow(const BareWindow&) = delete;
    BareWindow& operator=(const BareWindow&) = delete;

    // Until it is closed; it draws itself once it is on the screen. With `work` it does that then, and closes.
    using Work = std::function<void(HWND window)>;
    void ShowModal(const Work& work = {});

private:
    struct Control
    {
        std::wstring windowClass;
        std::wstring text;
        DWORD style = 0;
        DWORD extendedStyle = 0;
        RECT place{};
        bool bold = false;
        std::vector<std::wstring> entries; // of a list
        WPARAM chosen = 0;
        WPARAM checked = BST_UNCHECKED;                    // of a check box or an option
        std::vector<std::pair<std::wstring, int>> columns; // of a grid: caption, pixels
        std::vector<std::vector<std::wstring>> rows;
    };

    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    [[nodiscard]] static Control Read(HWND child);
    void Make(HWND window);
    void Fill(HWND child, const Control& control) const;
    [[nodiscard]] LRESULT GiveText(NMHDR& notification) const;

    std::wstring m_title;
    DWORD m_style;
    DWORD m_extendedStyle;
    RECT m_place{};
    std::vector<Control> m_controls;
    Work m_work;
    HFONT m_plain = nullptr; // while it is open
    HFONT m_bold = nullptr;
};

} // namespace vellumo::bench
