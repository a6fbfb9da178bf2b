// Shows a form as a modal window of the system's own dialog loop, on the calling thread. Owner and other windows of
// the thread are disabled meanwhile and enabled again before this one is gone. Used once, on the stack of the call.
#pragma once

#include "platform/windows/forms/form_controls.h"
#include "platform/windows/forms/form_placement.h"
#include "platform/windows/forms/message_pump.h"
#include "platform/windows/forms/surface.h"
#include "ui/form.h"

#include <exception>
#include <memory>
#include <string>

namespace vellumo::windows
{

class FormWindow final : private ui::FormView
{
public:
    explicit FormWindow(ui::Form& form);
    ~FormWindow() override;
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;

    // Returns when the window is gone. Faults when none could be made, and with what the form let escape. The form may
    // be still open when the program is ending.
    void ShowModal();
    // Draws what was put off.
    void DrawNow();

private:
    void Refresh() override;
    void RefreshSoon() override;
    void ProcessMessages() override;
    void Focus(const ui::Control& control) override;

    static INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnInitialize();
    void OnDpiChanged(int dpi, const RECT& suggested) const;
    INT_PTR OnCommand(WORD id, WORD code);
    INT_PTR OnNotify(NMHDR& notification);
    void PassKeyToList(WORD boxId, WPARAM key);
    void SendToScreen() const;
    void ComeBackActivated() const;
    void OnFirstActivation();
    void Tell(ControlView& view, Event event);

    void GiveKeyboard(HWND input) const;
    void SetInitialFocus();
    void KeepFocusUsable();
    void EndIfClosed();

    ui::Form& m_form;
    HWND m_owner;
    HWND m_window = nullptr;
    std::unique_ptr<Surface> m_surface;
    std::unique_ptr<FormControls> m_controls; // null while its controls are being made, as the next
    std::unique_ptr<FormPlacement> m_placement;
    std::string m_title;
    bool m_opened = false;
    bool m_activated = false; // the first activation has been raised
    bool m_drawingDue = false;
    ULONGLONG m_pauseBegan = 0;
    int m_drawingsLeft = 0;
    MessagePump m_messages;
    std::exception_ptr m_fault;
};

} // namespace vellumo::windows
