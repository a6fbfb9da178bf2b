// What screen readers are told about a control and its parts, through the system's IAccessible. The system describes
// its own controls only as far as it knows them; a caption that stands beside a box, the pictures in a row, a grid of
// our own say nothing to it. So every control of a window answers here, and says what it shows.
//
// A reader may hold an object longer than the window lives; it then refuses every question.
#pragma once

#include "platform/windows/system/com_ptr.h"
#include "platform/windows/system/counted.h"
#include "platform/windows/system/module_lock.h"

#include <windows.h>
// After windows.h.
#include <oleacc.h>
#include <oleidl.h>

#include <optional>
#include <string>

namespace vellumo::windows
{

// Roles and states are the system's ROLE_SYSTEM_… and STATE_SYSTEM_….
struct AccessibleFacts
{
    std::wstring name;
    std::wstring value;
    std::wstring description;
    std::wstring shortcut; // "Alt+C"
    std::wstring action;   // what accDoDefaultAction does
    LONG role = 0;
    LONG state = 0;
    RECT place{}; // on the screen
};

// Part 0 (CHILDID_SELF) is the object itself; its parts count from 1.
class Accessible : public Counted<IAccessible, IOleWindow>
{
public:
    // The window is about to go.
    void Disconnect() noexcept;
    [[nodiscard]] virtual bool IsConnected() const noexcept { return m_connected; }
    [[nodiscard]] HWND Window() const noexcept { return m_window; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* answer, EXCEPINFO* exception, UINT* badArgument) override;

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT which, IDispatch** child) override;
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT which, BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT which, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT which, BSTR* description) override;
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT which, VARIANT* role) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT which, VARIANT* state) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT which, BSTR* help) override;
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT which, LONG* topic) override;
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT which, BSTR* shortcut) override;
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* which) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* which) override;
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT which, BSTR* action) override;
    HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT which) override;
    HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT which) override;
    HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
    HRESULT STDMETHODCALLTYPE accHitTest(LONG left, LONG top, VARIANT* which) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT which) override;
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT which, BSTR name) override;
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT which, BSTR value) override;

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL enter) override;

protected:
    explicit Accessible(HWND window) noexcept
        : m_window(window)
    {
    }
    ~Accessible() override = default;

    // Asked only while the window lives, and for parts that there are.
    [[nodiscard]] virtual AccessibleFacts Facts(LONG part) const = 0;
    [[nodiscard]] virtual LONG PartCount() const { return 0; }
    // A part that has parts of its own; null for one that has none.
    [[nodiscard]] virtual ComPtr<IAccessible> PartObject(LONG part)
    {
        static_cast<void>(part);
        return {};
    }
    // The system's object for the window, unless it is something inside.
    [[nodiscard]] virtual ComPtr<IDispatch> Parent() const;
    [[nodiscard]] virtual std::optional<LONG> FocusedPart() const;
    [[nodiscard]] virtual std::optional<LONG> SelectedPart() const { return std::nullopt; }
    // Of a point inside the object.
    [[nodiscard]] virtual LONG PartAt(POINT onScreen) const
    {
        static_cast<void>(onScreen);
        return CHILDID_SELF;
    }
    virtual bool Select(LONG part)
    {
        static_cast<void>(part);
        return false;
    }
    virtual void Act() {}

private:
    [[nodiscard]] void* Find(REFIID iid) noexcept override;
    [[nodiscard]] std::optional<LONG> PartOf(const VARIANT& which) const;
    template <class Work>
    HRESULT Answer(const VARIANT& which, Work&& work) noexcept;
    HRESULT AnswerText(const VARIANT& which, BSTR* text, std::wstring AccessibleFacts::*member) noexcept;
    HRESULT AnswerNumber(const VARIANT& which, VARIANT* number, LONG AccessibleFacts::*member) noexcept;
    HRESULT AnswerPart(std::optional<LONG> part, VARIANT* which);

    ModuleLock m_moduleLock;
    HWND m_window;
    bool m_connected = true;
};

} // namespace vellumo::windows
