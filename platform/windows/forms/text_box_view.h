// A box for text with its caption: before it, or above a box of several lines.
#pragma once

#include "platform/windows/forms/control_view.h"

namespace vellumo::windows
{

constexpr int boxHeight = 21; // of one line, at 96 dots an inch; a closed list stands beside such a box

class TextBoxView final : public ControlView
{
public:
    TextBoxView(ui::TextBox& box, const Surface& surface, int id);

    [[nodiscard]] HWND Input() const noexcept override { return m_edit.Get(); }
    [[nodiscard]] LayoutItem Needs() const override;
    void Place(const RECT& place) override;
    void Update() override;
    Event OnCommand(WORD code) override;

private:
    static LRESULT CALLBACK EditProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    void PlaceEdit(const RECT& place);
    void SeeKeysFirst();
    [[nodiscard]] bool IsTall() const noexcept { return m_box.lines > 1; }
    [[nodiscard]] int CaptionWidth() const;
    [[nodiscard]] int CaptionHeight() const { return m_surface.LineHeight() + m_surface.Pixels(2); }
    [[nodiscard]] int TallHeight() const { return m_box.lines * m_surface.LineHeight() + m_surface.Pixels(6); }

    ui::TextBox& m_box;
    const Surface& m_surface;
    TextWindow m_caption;
    TextWindow m_edit;
    WNDPROC m_editProcedure = nullptr;
    bool m_updating = false;
};

} // namespace vellumo::windows
