#include "platform/windows/forms/form_window.h"

#include "host/fault.h"
#include "platform/windows/forms/abridged.h"
#include "platform/windows/forms/modal.h"
#include "platform/windows/forms/window_message.h"
#include "platform/windows/system/this_module.h"

#include <algorithm>

namespace vellumo::windows
{
namespace
{

constexpr UINT firstActivation = WM_APP; // posted to the window itself
constexpr UINT unusedMessage = WM_APP + 2;
constexpr UINT_PTR activationTimer = 1;
// A job reports position and text one after the other, and both are to be seen together: two drawings in each pause,
// at most twenty a second.
constexpr ULONGLONG drawingPause = 100; // milliseconds
constexpr int drawingsAtOnce = 2;

struct EmptyDialog
{
    alignas(DWORD) DLGTEMPLATE head;
    WORD menu;
    WORD windowClass;
    WORD title;
};

bool HasGrid(const ui::Form& form)
{
    return std::any_of(form.Controls().begin(), form.Controls().end(),
                       [](ui::Control* control) { return ui::As<ui::Grid>(*control) != nullptr; });
}

EmptyDialog DialogFor(const ui::Form& form, bool owned)
{
    EmptyDialog dialog{};
    dialog.head.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
    dialog.head.style |= HasGrid(form) ? WS_THICKFRAME | WS_MAXIMIZEBOX : DWORD{DS_MODALFRAME};
    dialog.head.dwExtendedStyle = WS_EX_DLGMODALFRAME | (owned ? 0 : WS_EX_APPWINDOW);
    return dialog;
}

BOOL CALLBACK TellColourChange(HWND child, LPARAM) noexcept
{
    Send(child, WM_SYSCOLORCHANGE);
    return TRUE;
}

} // namespace

FormWindow::FormWindow(ui::Form& form)
    : m_form(form)
    , m_owner(ModalOwner())
{
}

FormWindow::~FormWindow()
{
    m_form.Attach(nullptr);
}

void FormWindow::ShowModal()
{
    const EmptyDialog dialog = DialogFor(m_form, m_owner != nullptr);
    {
        const OthersDisabled others(m_owner);
        DialogBoxIndirectParamW(ThisModule(), &dialog.head, m_owner, &FormWindow::DialogProcedure,
                                reinterpret_cast<LPARAM>(this));
    }
    if (m_fault)
    {
        std::rethrow_exception(m_fault);
    }
    if (!m_opened)
    {
        throw host::Fault("Non è possibile aprire la finestra \"" + m_form.Title() + "\".");
    }
}

// The only place where Windows calls: nothing may escape from here.
INT_PTR CALLBACK FormWindow::DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    if (message == WM_INITDIALOG)
    {
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        reinterpret_cast<FormWindow*>(lParam)->m_window = window;
    }
    auto* const self = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(window, DWLP_USER));
    if (self == nullptr || self->m_fault) // after a fault not all controls may be there; the window is about to go
    {
        return FALSE;
    }
    try
    {
        return self->OnMessage(message, wParam, lParam);
    }
    catch (...)
    {
        if (!self->m_fault)
        {
            self->m_fault = std::current_exception();
        }
        EndDialog(window, 0);
        return FALSE;
    }
}

INT_PTR FormWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_INITDIALOG:
        OnInitialize();
        return FALSE; // the focus is set when the window is shown
    case WM_SHOWWINDOW:
        if (wParam != FALSE && !m_activated)
        {
            ComeBackActivated();
        }
        return FALSE;
    case WM_TIMER:
        if (wParam == activationTimer)
        {
            KillTimer(m_window, activationTimer);
            OnFirstActivation();
        }
        return TRUE;
    case firstActivation:
        OnFirstActivation();
        return TRUE;
    case WM_ACTIVATE:
        if (m_activated && LOWORD(wParam) != WA_INACTIVE)
        {
            m_form.Activated();
        }
        return FALSE; // the system restores the focus
    case WM_COMMAND:
        return m_opened ? OnCommand(LOWORD(wParam), HIWORD(wParam)) : FALSE;
    case listKeyMessage:
        PassKeyToList(static_cast<WORD>(lParam), wParam);
        return TRUE;
    case WM_NOTIFY:
        return m_opened ? OnNotify(*reinterpret_cast<NMHDR*>(lParam)) : FALSE;
    case WM_SIZE:
        if (m_placement)
        {
            m_placement->PlaceControls();
        }
        return TRUE;
    case WM_DPICHANGED:
        OnDpiChanged(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
        return TRUE;
    case WM_SYSCOLORCHANGE: // the controls of the system hear of it from their window only
        EnumChildWindows(m_window, &TellColourChange, 0);
        RedrawWindow(m_window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        return FALSE;
    case WM_GETMINMAXINFO:
        if (m_placement)
        {
            m_placement->Limit(*reinterpret_cast<MINMAXINFO*>(lParam));
        }
        return TRUE;
    case WM_CLOSE:
        m_form.FrameClosed();
        EndIfClosed();
        return TRUE;
    default:
        return FALSE;
    }
}

void FormWindow::OnInitialize()
{
    m_form.Load();
    LeaveScalingToWindow(m_window);
    m_surface = std::make_unique<Surface>(m_window);
    m_controls = std::make_unique<FormControls>(m_form, *m_surface);
    m_placement = std::make_unique<FormPlacement>(m_form, *m_surface, *m_controls);
    m_placement->Open(m_owner);
    m_form.Attach(this);
    m_opened = true;
    Refresh();
    if (!m_form.ClosesByFrame())
    {
        EnableMenuItem(GetSystemMenu(m_window, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    }
    // Where the keyboard is shows from the start, also to whoever opened the window by mouse.
    Send(m_window, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL));
}

// The job begins when the window stands on the screen. A host that fell behind may have left no room for a message; a
// timer needs none, and without either the window would stay for ever.
void FormWindow::ComeBackActivated() const
{
    if (PostMessageW(m_window, firstActivation, 0, 0) == FALSE)
    {
        SetTimer(m_window, activationTimer, USER_TIMER_MINIMUM, nullptr);
    }
}

void FormWindow::OnFirstActivation()
{
    if (m_activated)
    {
        return;
    }
    m_activated = true;
    SetInitialFocus();
    RedrawWindow(m_window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    if (!m_form.ClosesByFrame()) // its job may take long, and what is drawn has to reach the screen before
    {
        ProcessMessages();
    }
    if (!m_form.IsClosed())
    {
        m_form.Activated();
    }
    DrawNow();
    EndIfClosed();
}

void FormWindow::OnDpiChanged(int dpi, const RECT& suggested) const
{
    if (m_placement)
    {
        m_surface->ChangeDpi(dpi);
        for (const auto& view : m_controls->All())
        {
            view->Rescale();
        }
        m_placement->MoveTo(suggested);
    }
}

INT_PTR FormWindow::OnCommand(WORD id, WORD code)
{
    if (id == IDCANCEL) // Escape
    {
        for (const auto& view : m_controls->All())
        {
            const auto* const button = ui::As<ui::Button>(view->Control());
            if (button != nullptr && button->isCancel && button->enabled)
            {
                Tell(*view, Event::Clicked);
            }
        }
        return TRUE;
    }
    ControlView* const view = m_controls->ViewOfId(id);
    if (view == nullptr)
    {
        return FALSE;
    }
    Tell(*view, view->OnCommand(code));
    return TRUE;
}

void FormWindow::PassKeyToList(WORD boxId, WPARAM key)
{
    const auto* const box = ui::As<ui::TextBox>(m_controls->ViewOfId(boxId)->Control());
    if (box != nullptr && box->list != nullptr)
    {
        Send(m_controls->ViewOf(*box->list)->Input(), WM_KEYDOWN, key);
    }
}

INT_PTR FormWindow::OnNotify(NMHDR& notification)
{
    ControlView* const view = m_controls->ViewOfId(static_cast<WORD>(notification.idFrom));
    if (view == nullptr)
    {
        return FALSE;
    }
    LRESULT answer = 0;
    Tell(*view, view->OnNotify(notification, answer));
    SetWindowLongPtrW(m_window, DWLP_MSGRESULT, answer);
    return TRUE;
}

void FormWindow::Tell(ControlView& view, Event event)
{
    switch (event)
    {
    case Event::None:
        return;
    case Event::Clicked:
        if (const auto* const option = ui::As<ui::OptionButton>(view.Control()))
        {
            m_form.Select(*option);
        }
        m_form.Clicked(view.Control());
        break;
    case Event::Changed:
        m_form.Changed(view.Control());
        break;
    }
    Refresh();
    EndIfClosed();
}

void FormWindow::EndIfClosed()
{
    if (m_form.IsClosed())
    {
        EndDialog(m_window, 1);
    }
}

void FormWindow::Refresh()
{
    if (m_title != m_form.Title())
    {
        m_title = m_form.Title();
        SetWindowTextW(m_window, Abridged(m_title).c_str());
    }
    for (const auto& view : m_controls->All())
    {
        view->Update();
    }
    m_placement->Forget();
    KeepFocusUsable();
    if (IsWindowVisible(m_window) != FALSE)
    {
        RedrawWindow(m_window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        SendToScreen();
    }
    m_drawingDue = false;
}

// The call that follows may block this thread for long. A look into the message queue that takes nothing out tells the
// system that the window still answers, and brings to the screen what was drawn so far.
void FormWindow::SendToScreen() const
{
    MSG message;
    PeekMessageW(&message, m_window, unusedMessage, unusedMessage, PM_NOREMOVE);
}

void FormWindow::RefreshSoon()
{
    m_drawingDue = true;
    const ULONGLONG now = GetTickCount64();
    if (now - m_pauseBegan >= drawingPause)
    {
        m_pauseBegan = now;
        m_drawingsLeft = drawingsAtOnce;
    }
    if (m_drawingsLeft > 0)
    {
        --m_drawingsLeft;
        Refresh();
    }
}

void FormWindow::DrawNow()
{
    if (m_drawingDue)
    {
        Refresh();
    }
}

void FormWindow::ProcessMessages()
{
    m_messages.Process(m_window);
}

void FormWindow::Focus(const ui::Control& control)
{
    if (const ControlView* const view = m_controls->ViewOf(control))
    {
        GiveKeyboard(view->Input());
    }
}

// Not SetFocus: this also moves the frame of the button that Enter presses.
void FormWindow::GiveKeyboard(HWND input) const
{
    if (input != nullptr)
    {
        Send(m_window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(input), TRUE);
    }
}

void FormWindow::SetInitialFocus()
{
    const ui::Control* const first = m_form.InitialFocus();
    GiveKeyboard(first != nullptr ? m_controls->ViewOf(*first)->Input() : GetNextDlgTabItem(m_window, nullptr, FALSE));
}

// A control that was disabled keeps the keyboard or leaves it to nobody, and then no key does anything.
void FormWindow::KeepFocusUsable()
{
    const HWND focus = GetFocus();
    if (GetActiveWindow() == m_window && (focus == nullptr || IsWindowEnabled(focus) == FALSE))
    {
        GiveKeyboard(GetNextDlgTabItem(m_window, focus, FALSE));
    }
}

} // namespace vellumo::windows
