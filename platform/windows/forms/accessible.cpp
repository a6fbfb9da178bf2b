#include "platform/windows/forms/accessible.h"

#include "host/fault.h"
#include "platform/windows/forms/oleacc_library.h"
#include "platform/windows/system/bstr.h"

#include <utility>

namespace vellumo::windows
{
namespace
{

VARIANT Self() noexcept
{
    VARIANT self{};
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    return self;
}

} // namespace

void* Accessible::Find(REFIID iid) noexcept
{
    if (iid == IID_IOleWindow)
    {
        return static_cast<IOleWindow*>(this);
    }
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == IID_IAccessible;
    return known ? static_cast<IAccessible*>(this) : nullptr;
}

// Lets go of whoever asks from another process.
void Accessible::Disconnect() noexcept
{
    m_connected = false;
    CoDisconnectObject(static_cast<IAccessible*>(this), 0);
}

std::optional<LONG> Accessible::PartOf(const VARIANT& which) const
{
    const bool known = which.vt == VT_I4 && which.lVal >= CHILDID_SELF && which.lVal <= PartCount();
    return known ? std::optional(which.lVal) : std::nullopt;
}

// No fault leaves to whoever asks.
template <class Work>
HRESULT Accessible::Answer(const VARIANT& which, Work&& work) noexcept
{
    return host::Trap(HRESULT{E_FAIL},
                      [&]() -> HRESULT
                      {
                          if (!IsConnected())
                          {
                              return CO_E_OBJNOTCONNECTED;
                          }
                          const auto part = PartOf(which);
                          return part ? work(*part) : E_INVALIDARG;
                      });
}

HRESULT Accessible::AnswerText(const VARIANT& which, BSTR* text, std::wstring AccessibleFacts::*member) noexcept
{
    if (text == nullptr)
    {
        return E_POINTER;
    }
    *text = nullptr;
    return Answer(which,
                  [&](LONG part)
                  {
                      const AccessibleFacts facts = Facts(part);
                      if ((facts.*member).empty())
                      {
                          return S_FALSE;
                      }
                      *text = Bstr(facts.*member).Detach();
                      return S_OK;
                  });
}

HRESULT Accessible::AnswerNumber(const VARIANT& which, VARIANT* number, LONG AccessibleFacts::*member) noexcept
{
    if (number == nullptr)
    {
        return E_POINTER;
    }
    number->vt = VT_EMPTY;
    return Answer(which,
                  [&](LONG part)
                  {
                      number->lVal = Facts(part).*member;
                      number->vt = VT_I4;
                      return S_OK;
                  });
}

HRESULT Accessible::AnswerPart(std::optional<LONG> part, VARIANT* which)
{
    if (!part)
    {
        return S_FALSE;
    }
    if (const auto object = *part == CHILDID_SELF ? ComPtr<IAccessible>() : PartObject(*part))
    {
        which->vt = VT_DISPATCH;
        which->pdispVal = ComPtr<IAccessible>(object).Detach();
        return S_OK;
    }
    which->vt = VT_I4;
    which->lVal = *part;
    return S_OK;
}

HRESULT Accessible::GetTypeInfoCount(UINT* count)
{
    if (count == nullptr)
    {
        return E_POINTER;
    }
    *count = 0;
    return S_OK;
}

HRESULT Accessible::GetTypeInfo(UINT, LCID, ITypeInfo** info)
{
    if (info != nullptr)
    {
        *info = nullptr;
    }
    return E_NOTIMPL;
}

HRESULT Accessible::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*)
{
    return E_NOTIMPL;
}

HRESULT Accessible::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*)
{
    return E_NOTIMPL;
}

ComPtr<IDispatch> Accessible::Parent() const
{
    return StandardAccessible(m_window, static_cast<LONG>(OBJID_WINDOW)).As<IDispatch>(IID_IDispatch);
}

HRESULT Accessible::get_accParent(IDispatch** parent)
{
    if (parent == nullptr)
    {
        return E_POINTER;
    }
    *parent = nullptr;
    return Answer(Self(),
                  [&](LONG)
                  {
                      *parent = Parent().Detach();
                      return *parent != nullptr ? S_OK : S_FALSE;
                  });
}

HRESULT Accessible::get_accChildCount(LONG* count)
{
    if (count == nullptr)
    {
        return E_POINTER;
    }
    *count = 0;
    return Answer(Self(),
                  [&](LONG)
                  {
                      *count = PartCount();
                      return S_OK;
                  });
}

HRESULT Accessible::get_accChild(VARIANT which, IDispatch** child)
{
    if (child == nullptr)
    {
        return E_POINTER;
    }
    *child = nullptr;
    return Answer(which,
                  [&](LONG part)
                  {
                      *child = part == CHILDID_SELF ? ComPtr<IAccessible>(this).Detach() : PartObject(part).Detach();
                      return *child != nullptr ? S_OK : S_FALSE;
                  });
}

HRESULT Accessible::get_accName(VARIANT which, BSTR* name)
{
    return AnswerText(which, name, &AccessibleFacts::name);
}

HRESULT Accessible::get_accValue(VARIANT which, BSTR* value)
{
    return AnswerText(which, value, &AccessibleFacts::value);
}

HRESULT Accessible::get_accDescription(VARIANT which, BSTR* description)
{
    return AnswerText(which, description, &AccessibleFacts::description);
}

HRESULT Accessible::get_accRole(VARIANT which, VARIANT* role)
{
    return AnswerNumber(which, role, &AccessibleFacts::role);
}

HRESULT Accessible::get_accState(VARIANT which, VARIANT* state)
{
    return AnswerNumber(which, state, &AccessibleFacts::state);
}

HRESULT Accessible::get_accHelp(VARIANT, BSTR* help)
{
    if (help != nullptr)
    {
        *help = nullptr;
    }
    return S_FALSE;
}

HRESULT Accessible::get_accHelpTopic(BSTR* file, VARIANT, LONG*)
{
    if (file != nullptr)
    {
        *file = nullptr;
    }
    return S_FALSE;
}

HRESULT Accessible::get_accKeyboardShortcut(VARIANT which, BSTR* shortcut)
{
    return AnswerText(which, shortcut, &AccessibleFacts::shortcut);
}

std::optional<LONG> Accessible::FocusedPart() const
{
    return GetFocus() == m_window ? std::optional<LONG>(CHILDID_SELF) : std::nullopt;
}

HRESULT Accessible::get_accFocus(VARIANT* which)
{
    if (which == nullptr)
    {
        return E_POINTER;
    }
    which->vt = VT_EMPTY;
    return Answer(Self(), [&](LONG) { return AnswerPart(FocusedPart(), which); });
}

HRESULT Accessible::get_accSelection(VARIANT* which)
{
    if (which == nullptr)
    {
        return E_POINTER;
    }
    which->vt = VT_EMPTY;
    return Answer(Self(), [&](LONG) { return AnswerPart(SelectedPart(), which); });
}

HRESULT Accessible::get_accDefaultAction(VARIANT which, BSTR* action)
{
    return AnswerText(which, action, &AccessibleFacts::action);
}

HRESULT Accessible::accSelect(LONG flags, VARIANT which)
{
    return Answer(which,
                  [&](LONG part)
                  {
                      const bool selected = (flags & SELFLAG_TAKESELECTION) == 0 || Select(part);
                      if ((flags & SELFLAG_TAKEFOCUS) != 0)
                      {
                          SetFocus(m_window);
                      }
                      return selected ? S_OK : S_FALSE;
                  });
}

HRESULT Accessible::accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT which)
{
    if (left == nullptr || top == nullptr || width == nullptr || height == nullptr)
    {
        return E_POINTER;
    }
    *left = *top = *width = *height = 0;
    return Answer(which,
                  [&](LONG part)
                  {
                      const RECT place = Facts(part).place;
                      *left = place.left;
                      *top = place.top;
                      *width = place.right - place.left;
                      *height = place.bottom - place.top;
                      return S_OK;
                  });
}

HRESULT Accessible::accNavigate(LONG direction, VARIANT start, VARIANT* end)
{
    if (end == nullptr)
    {
        return E_POINTER;
    }
    end->vt = VT_EMPTY;
    return Answer(start,
                  [&](LONG part)
                  {
                      const LONG count = PartCount();
                      const LONG reached = direction == NAVDIR_FIRSTCHILD                           ? 1
                                           : direction == NAVDIR_LASTCHILD                          ? count
                                           : direction == NAVDIR_NEXT || direction == NAVDIR_DOWN   ? part + 1
                                           : direction == NAVDIR_PREVIOUS || direction == NAVDIR_UP ? part - 1
                                                                                                    : 0;
                      const bool toChild = direction == NAVDIR_FIRSTCHILD || direction == NAVDIR_LASTCHILD;
                      const bool known = reached >= 1 && reached <= count && toChild == (part == CHILDID_SELF);
                      return AnswerPart(known ? std::optional(reached) : std::nullopt, end);
                  });
}

HRESULT Accessible::accHitTest(LONG left, LONG top, VARIANT* which)
{
    if (which == nullptr)
    {
        return E_POINTER;
    }
    which->vt = VT_EMPTY;
    return Answer(Self(),
                  [&](LONG)
                  {
                      const POINT point{left, top};
                      const RECT place = Facts(CHILDID_SELF).place;
                      return PtInRect(&place, point) != FALSE ? AnswerPart(PartAt(point), which) : S_FALSE;
                  });
}

HRESULT Accessible::accDoDefaultAction(VARIANT which)
{
    return Answer(which,
                  [&](LONG part) -> HRESULT
                  {
                      if (Facts(part).action.empty())
                      {
                          return DISP_E_MEMBERNOTFOUND;
                      }
                      Act();
                      return S_OK;
                  });
}

HRESULT Accessible::put_accName(VARIANT, BSTR)
{
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT Accessible::put_accValue(VARIANT, BSTR)
{
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT Accessible::GetWindow(HWND* window)
{
    if (window == nullptr)
    {
        return E_POINTER;
    }
    *window = IsConnected() ? m_window : nullptr;
    return IsConnected() ? S_OK : CO_E_OBJNOTCONNECTED;
}

HRESULT Accessible::ContextSensitiveHelp(BOOL)
{
    return E_NOTIMPL;
}

} // namespace vellumo::windows
