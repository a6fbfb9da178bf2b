#include "platform/windows/forms/text_box_view.h"

#include "platform/windows/forms/window_message.h"
#include "platform/windows/system/text.h"

#include <algorithm>

namespace vellumo::windows
{
namespace
{

DWORD StyleOf(const ui::TextBox& box)
{
    const DWORD lines = box.lines > 1 ? ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL : ES_AUTOHSCROLL;
    return ES_LEFT | WS_TABSTOP | lines | (box.readOnly ? DWORD{ES_READONLY} : 0);
}

} // namespace

TextBoxView::TextBoxView(ui::TextBox& box, const Surface& surface, int id)
    : ControlView(box)
    , m_box(box)
    , m_surface(surface)
    , m_caption(surface, {.style = SS_LEFT | SS_CENTERIMAGE})
    , m_edit(surface, {.windowClass = L"EDIT", .style = StyleOf(box), .extendedStyle = WS_EX_CLIENTEDGE, .id = id})
{
    m_caption.Update(box);
    m_edit.UpdateState(box);
}

LayoutItem TextBoxView::Needs() const
{
    const int width = m_surface.Pixels(150);
    return {.size = IsTall() ? SIZE{width, CaptionHeight() + TallHeight()}
                             : SIZE{CaptionWidth() + width, m_surface.Pixels(boxHeight)},
            .sameLine = m_box.sameLine,
            .stretches = true};
}

int TextBoxView::CaptionWidth() const
{
    return m_surface.TextWidth(ToWide(m_box.text), false, true) + m_surface.Pixels(6);
}

void TextBoxView::Place(const RECT& place)
{
    if (IsTall())
    {
        m_caption.Place(place.left, place.top, place.right, place.top + CaptionHeight());
        PlaceEdit({place.left, place.top + CaptionHeight(), place.right, place.bottom});
        return;
    }
    const LONG middle = std::min(place.right, place.left + CaptionWidth());
    m_caption.Place(place.left, place.top, middle, place.bottom);
    PlaceEdit({middle, place.top, place.right, place.bottom});
}

void TextBoxView::PlaceEdit(const RECT& place)
{
    if (m_edit.Place(place) && (m_box.list != nullptr || IsTall()))
    {
        SeeKeysFirst();
    }
}

// The window that the box belongs to knows the list and gets the keys that move in it. A box of several lines would
// keep Enter, Escape and Tab to itself.
void TextBoxView::SeeKeysFirst()
{
    const LONG_PTR procedure = reinterpret_cast<LONG_PTR>(&TextBoxView::EditProcedure);
    SetWindowLongPtrW(m_edit.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    m_editProcedure = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(m_edit.Get(), GWLP_WNDPROC, procedure));
}

LRESULT CALLBACK TextBoxView::EditProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    const auto* const self = reinterpret_cast<const TextBoxView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    const bool listKey = wParam == VK_UP || wParam == VK_DOWN || wParam == VK_PRIOR || wParam == VK_NEXT;
    if (message == WM_KEYDOWN && listKey && self->m_box.list != nullptr)
    {
        return Send(GetParent(window), listKeyMessage, wParam, GetDlgCtrlID(window));
    }
    const LRESULT answer = CallWindowProcW(self->m_editProcedure, window, message, wParam, lParam);
    return message == WM_GETDLGCODE ? answer & ~LRESULT{DLGC_WANTALLKEYS | DLGC_WANTTAB} : answer;
}

void TextBoxView::Update()
{
    m_caption.Update(m_box);
    m_updating = true;
    m_edit.UpdateText(m_box.value);
    m_updating = false;
    m_edit.UpdateState(m_box);
}

Event TextBoxView::OnCommand(WORD code)
{
    if (code != EN_CHANGE || m_updating)
    {
        return Event::None;
    }
    std::wstring typed(static_cast<std::size_t>(GetWindowTextLengthW(m_edit.Get())) + 1, L'\0');
    typed.resize(static_cast<std::size_t>(GetWindowTextW(m_edit.Get(), typed.data(), static_cast<int>(typed.size()))));
    m_box.value = FromWide(typed);
    m_edit.Note(m_box.value);
    return Event::Changed;
}

} // namespace vellumo::windows
